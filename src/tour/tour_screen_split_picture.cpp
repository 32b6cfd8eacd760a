// What the tour does in the picture of the wall.
#include "base/window_titles.h"
#include "screensplit/wall_view.h"
#include "tour/tour_screen_split.h"
#include "widgets/undo_buttons.h"

namespace sontaro {

namespace {

using Kind = WallSpot::Kind;

WallView* Picture() {
    wxWindow* wizard = Tour::FrontTitled(TitleOf(Window::kSetParam));
    return wizard ? dynamic_cast<WallView*>(wizard->FindWindow(kWallView)) : nullptr;
}

/// Tells the picture of something that the mouse does there.
void Mouse(wxEventType type, const wxPoint& at) {
    wxMouseEvent event(type);
    event.SetPosition(at);
    Picture()->GetEventHandler()->ProcessEvent(event);
}

wxPoint MiddleOf(const WallRect& area) {
    return {static_cast<int>(area.left + area.width / 2),
            static_cast<int>(area.top + area.height / 2)};
}

wxPoint MiddleOfTile(std::size_t index) {
    return MiddleOf(Picture()->Frame().Placed(Picture()->Picture().Tiles()[index].area));
}

std::function<void()> Dragging(const std::function<wxPoint()>& begin,
                               const std::function<wxPoint()>& end) {
    return [=] {
        Mouse(wxEVT_LEFT_DOWN, begin());
        Mouse(wxEVT_MOTION, end());
    };
}

void LetGo() { Mouse(wxEVT_LEFT_UP, {}); }

bool IsDragging() { return Picture() != nullptr && Picture()->HasCapture(); }

bool IsFirst(std::size_t screen) {
    return !IsDragging() && Picture()->Picture().SpotOf(screen) == WallSpot{Kind::kTile, 0};
}

bool HasUnused() { return !IsDragging() && !Picture()->Picture().Unused().empty(); }

}  // namespace

void TourScreenSplit::DragInPicture() {
    const wxPoint left(-40, 0);
    Step(Dragging([] { return MiddleOfTile(2); }, [=] { return MiddleOfTile(0) + left; }),
         IsDragging, "dragged a screen in the picture: a line shows where it goes", "split-drag");
    Step(
        LetGo, [] { return IsFirst(2); }, "let it go: it is the first one", "split-dragged");
    Step(Dragging([] { return MiddleOfTile(0); },
                  [] { return MiddleOf(Picture()->Frame().Tray()); }),
         IsDragging, "dragged it to those that are not used");
    Step(LetGo, HasUnused, "let it go: two screens are left", "split-tray");
    const auto seam = [] { return MiddleOf(Picture()->Frame().Handle(0)); };
    Step(Dragging(seam, [=] { return seam() + left; }), IsDragging,
         "dragged the seam: the screens overlap", "split-seam");
    Step(
        LetGo, [] { return !IsDragging(); }, "let it go");
    for (int i = 0; i < 3; ++i)
        Step(
            Pressing(kUndoButton), [] { return true; }, "pressed Undo");
    Step(
        {}, [] { return IsFirst(0); }, "all is as it was");
}

}  // namespace sontaro
