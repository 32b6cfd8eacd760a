#include <gmock/gmock.h>
#include <wx/frame.h>

#include "timeline/time_picture_view.h"
#include "ui/ui_support.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

/// Three commands of a video over ten seconds, the last one on another port.
struct TimePicture : testing::Test {
    TimePicture() {
        for (const std::int64_t time : {0, 5000, 9000})
            ids.push_back(document.Insert({0, "t", "v", time, time == 9000 ? 1 : 0, "", 0, "A5"}));
        document.ForgetSteps();
        frame->SetClientSize(1000, 200);
        frame->Show();
        frame->Raise();
        view->SetFocus();
        view->ShowVideoOf(1);
        EXPECT_TRUE(PumpUntil([&] { return frame->IsActive() && view->HasFocus(); }));
    }
    ~TimePicture() override {
        frame->DestroyChildren();  // at once: the frame itself waits until the program is idle
        frame->Destroy();
    }

    /// Does something with the mouse or the keyboard, and waits until it has come.
    void Do(auto action) {
        action();
        PumpUntil([] { return false; }, 100);
    }
    void MoveTo(const wxPoint& point) {
        Do([&] { mouse.MouseMove(view->ClientToScreen(point)); });
    }
    /// Presses the mark of a row and drags it to the right.
    void Hold(std::size_t row, int distance) {
        view->ShowVideoOf(row);
        const wxPoint point = view->ChosenPoint().value_or(wxPoint());
        MoveTo(point);
        mouse.MouseDown();
        MoveTo(point + wxPoint(distance / 2, 0));
        MoveTo(point + wxPoint(distance, 0));
    }
    void Release() {
        Do([&] { mouse.MouseUp(); });
    }
    std::vector<std::int64_t> Times() {
        std::vector<std::int64_t> times;
        for (const NodeId id : ids) times.push_back(document.Find(id)->time);
        return times;
    }
    void Key(int key, int modifiers = wxMOD_NONE) {
        Do([&] { mouse.Char(key, modifiers); });
    }

    TimelineDocument document;
    NodeIds ids;
    NodeIds clicked;
    wxFrame* frame = new wxFrame(nullptr, wxID_ANY, "");
    TimePictureView* view =
        new TimePictureView(frame, wxID_ANY, document,
                            {[this](NodeId id) { clicked.push_back(id); },
                             [this](NodeId id) { view->ShowVideoOf(document.RowOf(id)); }});
    wxUIActionSimulator mouse;
};

TEST_F(TimePicture, AClickChoosesAndADragMovesInOneStep) {
    Hold(2, 2);
    Release();
    EXPECT_THAT(Times(), ElementsAre(0, 5000, 9000));
    EXPECT_THAT(clicked, ElementsAre(ids[2]));
    Hold(1, 100);
    Release();
    EXPECT_THAT(Times(),
                ElementsAre(0, testing::AllOf(testing::Gt(5800), testing::Lt(6500)), 9000));
    document.Undo();
    EXPECT_FALSE(document.CanUndo());
}

TEST_F(TimePicture, EscapeAndAChangeOfTheTimelineEndADrag) {
    Hold(1, 100);
    Key(WXK_ESCAPE);
    Release();
    Hold(1, 100);
    document.Apply({{ids[0]}, {}, {}});
    view->ShowVideoOf(0);
    Release();
    document.Undo();
    EXPECT_THAT(Times(), ElementsAre(0, 5000, 9000));
    EXPECT_THAT(clicked, ElementsAre());
}

TEST_F(TimePicture, ArrowsMoveInOneStepAndNotBeforeTheStart) {
    Key(WXK_RIGHT);
    Key(WXK_RIGHT, wxMOD_SHIFT);
    Key(WXK_LEFT);
    Key(WXK_RIGHT);
    EXPECT_THAT(Times(), ElementsAre(0, 6001, 9000));
    view->ShowVideoOf(0);
    Key(WXK_LEFT);
    Key(WXK_RIGHT);
    EXPECT_THAT(Times(), ElementsAre(1, 6001, 9000));
    document.Undo();
    document.Undo();
    EXPECT_THAT(Times(), ElementsAre(0, 5000, 9000));
}

}  // namespace
}  // namespace sontaro::test
