#include <gmock/gmock.h>
#include <wx/frame.h>

#include "screensplit/split_samples.h"
#include "screensplit/wall_view.h"
#include "ui/ui_support.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using Kind = WallSpot::Kind;

/// Three screens side by side in a window.
struct WallWindow : testing::Test {
    WallWindow() {
        document.SetDevices(ThreeScreens());
        EXPECT_FALSE(document.ApplyOrder());
        frame->SetClientSize(700, 300);
        frame->Show();
        frame->Raise();
        view->SetFocus();
        view->ShowWall();
        EXPECT_TRUE(PumpUntil([&] { return frame->IsActive() && view->HasFocus(); }));
        changes = 0;
    }
    ~WallWindow() override {
        frame->DestroyChildren();  // at once: the frame itself waits until the program is idle
        frame->Destroy();
    }

    [[nodiscard]] wxPoint Middle(const WallSpot& spot) const {
        const WallFrame at = view->Frame();
        const WallRect area = spot.kind == Kind::kTile
                                  ? at.Placed(view->Picture().Tiles()[spot.index].area)
                              : spot.kind == Kind::kUnused ? at.Unused(spot.index)
                              : spot.kind == Kind::kSeam   ? at.Handle(spot.index)
                                                           : at.Tray();
        return {static_cast<int>(area.left + area.width / 2),
                static_cast<int>(area.top + area.height / 2)};
    }
    void MoveTo(const wxPoint& point) {
        mouse.MouseMove(view->ClientToScreen(point));
        Settle();
    }
    /// Presses something and drags it some pixels.
    void Hold(const WallSpot& spot, const wxPoint& way) {
        const wxPoint from = Middle(spot);
        MoveTo(from);
        mouse.MouseDown();
        MoveTo(from + wxPoint(way.x / 2, way.y / 2));
        MoveTo(from + way);
    }
    void Release() {
        mouse.MouseUp();
        Settle();
    }
    void Drag(const WallSpot& spot, const wxPoint& to) {
        Hold(spot, to - Middle(spot));
        Release();
    }
    [[nodiscard]] std::vector<std::size_t> Order() const {
        return document.Wall().arrangement.Order();
    }
    [[nodiscard]] std::int32_t Overlap(std::size_t seam) const {
        return document.Wall().seams[seam].x;
    }

    SplitDocument document;
    int changes = 0;
    wxFrame* frame = new wxFrame(nullptr, wxID_ANY, "");
    WallView* view = new WallView(frame, document, [this] {
        ++changes;
        view->ShowWall();
    });
    wxUIActionSimulator mouse;
};

TEST_F(WallWindow, ADraggedTileGoesToAnotherPlaceToTheTrayAndBack) {
    Drag({Kind::kTile, 0}, Middle({Kind::kTile, 2}) + wxPoint(40, 0));
    EXPECT_THAT(Order(), ElementsAre(1, 2, 0));
    EXPECT_EQ(view->Chosen(), (WallSpot{Kind::kTile, 2}));
    Drag({Kind::kTile, 0}, Middle({Kind::kTray}));
    EXPECT_THAT(document.Shown().slots, ElementsAre(std::nullopt, 2, 0));
    EXPECT_EQ(view->Chosen(), (WallSpot{Kind::kUnused, 0}));
    Drag({Kind::kUnused, 0}, Middle({Kind::kTile, 0}) - wxPoint(40, 0));
    EXPECT_THAT(Order(), ElementsAre(1, 2, 0));
    EXPECT_EQ(changes, 3);
    Drag({Kind::kTile, 0}, Middle({Kind::kTile, 0}) + wxPoint(30, 0));
    EXPECT_EQ(changes, 3);
}

TEST_F(WallWindow, ADraggedSeamIsOneStep) {
    const double scale = view->Frame().Scale();
    Hold({Kind::kSeam, 1}, {-30, 0});
    Release();
    EXPECT_NEAR(Overlap(1), 30 / scale, 1 / scale);
    EXPECT_EQ(view->Chosen(), (WallSpot{Kind::kSeam, 1}));
    EXPECT_GT(changes, 1);
    document.Undo();
    EXPECT_EQ(Overlap(1), 0);
}

TEST_F(WallWindow, EscapeALostMouseAndASendingTakeADragBack) {
    const auto takeBacks = {std::function<void()>([] { Key(WXK_ESCAPE); }),
                            std::function<void()>([&] {
                                wxMouseCaptureLostEvent lost;
                                view->ProcessWindowEvent(lost);
                            }),
                            std::function<void()>([&] { view->SetEditable(false); })};
    for (const auto& takeBack : takeBacks)
        for (const WallSpot& spot : {WallSpot{Kind::kSeam, 0}, WallSpot{Kind::kTile, 0}}) {
            view->SetEditable(true);
            Hold(spot, {-40, 60});
            takeBack();
            MoveTo({300, 60});
            Release();
            EXPECT_EQ(Overlap(0), 0);
            EXPECT_THAT(Order(), ElementsAre(0, 1, 2));
        }
    document.Undo();
    EXPECT_FALSE(document.IsLaidOut()) << "more than the drag's own step is left";
}

TEST_F(WallWindow, EscapeFromADragThatHasChangedNothingKeepsTheStepBefore) {
    document.SetOverlap(1, 7);
    view->ShowWall();
    Hold({Kind::kSeam, 0}, {40, 0});
    Key(WXK_ESCAPE);
    Release();
    EXPECT_EQ(Overlap(1), 7);
}

TEST_F(WallWindow, AChangeByOthersEndsADragAndKeepsWhatIsChosen) {
    Hold({Kind::kTile, 0}, {500, 0});
    document.PlaceScreen(2, 0);
    view->ShowWall();
    Release();
    EXPECT_THAT(Order(), ElementsAre(2, 0, 1));
    EXPECT_EQ(view->Chosen(), (WallSpot{Kind::kTile, 1}));
    document.SetDevices({DeviceAt(21, 1)});
    view->ShowWall();
    EXPECT_EQ(view->Chosen().kind, Kind::kNothing);
    Settle();
}

TEST_F(WallWindow, KeysGoFromTileToTileAndMoveThem) {
    Key(WXK_RIGHT);
    EXPECT_EQ(view->Chosen(), (WallSpot{Kind::kTile, 1}));
    Key(WXK_RIGHT, wxMOD_ALT);
    EXPECT_THAT(Order(), ElementsAre(0, 2, 1));
    Key(WXK_DELETE);
    EXPECT_THAT(Order(), ElementsAre(0, 2));
    EXPECT_EQ(view->Chosen(), (WallSpot{Kind::kUnused, 0}));
    Key(WXK_UP, wxMOD_ALT);
    EXPECT_THAT(Order(), ElementsAre(0, 2, 1));
    view->SetEditable(false);
    Key(WXK_LEFT, wxMOD_ALT);
    Key(WXK_DELETE);
    EXPECT_THAT(Order(), ElementsAre(0, 2, 1));
}

TEST_F(WallWindow, KeysChangeAnOverlapInOneStep) {
    Key(WXK_RIGHT);
    Key(WXK_UP);
    EXPECT_EQ(view->Chosen(), (WallSpot{Kind::kSeam, 0}));
    Key(WXK_NUMPAD_ADD, wxMOD_SHIFT);
    Key('=');
    Key('=', wxMOD_SHIFT);  // a plus sign
    Key('-');
    EXPECT_EQ(Overlap(0), 11);
    Key(WXK_PAGEUP);
    Key(WXK_PAGEDOWN);
    EXPECT_EQ(Overlap(0), 11);
    Key('-', wxMOD_SHIFT);
    Key(WXK_DELETE);
    EXPECT_EQ(Overlap(0), 1);
    document.Undo();
    EXPECT_EQ(Overlap(0), 0);
    document.Undo();
    EXPECT_FALSE(document.IsLaidOut());
}

}  // namespace
}  // namespace sontaro::test
