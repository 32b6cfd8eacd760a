// What the tour does below the timeline's table.
#include <wx/grid.h>
#include <wx/listctrl.h>
#include <wx/tglbtn.h>

#include "timeline/player_time_control.h"
#include "timeline/time_picture_view.h"
#include "timeline/timeline_texts.h"
#include "tour/tour_timeline.h"
#include "widgets/front_dialog.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr const char* kTime = "106.250";  // of the chosen command
constexpr int kTurns = 7;                 // of the wheel
constexpr int kDistance = 120;            // that the mark is dragged

template <class Control>
Control* Below(int id) {
    wxWindow* dialog = Tour::FrontTitled(TitleOf(Window::kPlayerTimeControl));
    return dialog ? dynamic_cast<Control*>(dialog->FindWindow(id)) : nullptr;
}

std::string ChosenTime() {
    const auto* grid = Below<wxGrid>(kTimelineGrid);
    return grid ? FromWx(grid->GetCellValue(grid->GetGridCursorRow(),
                                            static_cast<int>(TimelineColumn::kTime)))
                : "";
}

/// Tells the picture of something that the mouse does beside the chosen mark.
void Mouse(wxEventType type, int right, int turn = 0) {
    auto* picture = Below<TimePictureView>(kTimePicture);
    wxMouseEvent event(type);
    event.SetPosition(picture->ChosenPoint().value_or(wxPoint()) + wxPoint(right, 0));
    event.m_wheelRotation = turn;
    event.m_wheelDelta = 1;
    picture->GetEventHandler()->ProcessEvent(event);
}

void ZoomIn() {
    for (int turn = 0; turn < kTurns; ++turn) Mouse(wxEVT_MOUSEWHEEL, 0, 1);
}

void Drag() {
    Mouse(wxEVT_LEFT_DOWN, 0);
    Mouse(wxEVT_MOTION, kDistance);
}

bool IsDragging() {
    const auto* picture = Below<TimePictureView>(kTimePicture);
    return picture != nullptr && picture->HasCapture();
}

void PressChecks() {
    auto* button = Below<wxToggleButton>(kChecks);
    button->SetValue(!button->GetValue());
    wxCommandEvent press(wxEVT_TOGGLEBUTTON, kChecks);
    press.SetInt(button->GetValue() ? 1 : 0);
    button->GetEventHandler()->ProcessEvent(press);
}

wxListView* Findings() { return Below<wxListView>(kChecks + 1); }

bool HasFindings() { return Findings() != nullptr && Findings()->GetItemCount() > 0; }

}  // namespace

void TourTimeline::DragInPicture() {
    const auto isInSight = [] {
        const auto* picture = Below<TimePictureView>(kTimePicture);
        return picture != nullptr && picture->ChosenPoint();
    };
    Step(ZoomIn, isInSight, "turned the wheel: the picture of time is zoomed", "timeline-picture");
    Step(Drag, IsDragging, "dragged a command in the picture: it shows the time under the pointer",
         "timeline-dragged");
    const auto isMoved = [] { return !IsDragging() && ChosenTime() != kTime; };
    Step([] { Mouse(wxEVT_LEFT_UP, kDistance); }, isMoved, "let it go: the command has this time");
    Step(
        Pressing(kUndoTimeline), [] { return ChosenTime() == kTime; },
        "pressed Undo: it is where it was");
}

void TourTimeline::ReadChecks() {
    Step(PressChecks, HasFindings, "opened the checks: what may go wrong in the show");
    const auto isChosen = [] { return ChosenTime() != kTime; };
    Step([] { Findings()->Select(0); }, isChosen, "chose a finding: its command is chosen",
         "timeline-checks");
    Step(
        PressChecks, [] { return !Findings()->IsShownOnScreen(); }, "closed the checks");
}

}  // namespace sontaro
