#include "tour/tour_screen_split.h"

#include <wx/notebook.h>
#include <wx/propgrid/propgrid.h>
#include <wx/radiobut.h>

#include "app/features.h"
#include "base/json.h"
#include "screensplit/screen_split_wizard_set_param.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

enum Tab { kSort, kSplit, kZoom, kAdvanced };

constexpr const char* kFirstSlot = "Sort/1";
constexpr const char* kLastSlot = "Sort/3";
constexpr const char* kOverlap = "Split/2/Overlap";
constexpr const char* kCurve = "varParam/blendGain";

template <class Control = wxWindow>
Control* OnPage(int id) {
    wxWindow* wizard = Tour::FrontTitled(TitleOf(Window::kSetParam));
    return wizard ? dynamic_cast<Control*>(wizard->FindWindow(id)) : nullptr;
}

wxPropertyGrid* Grid(Tab tab) { return OnPage<wxPropertyGrid>(kSplitGrid + tab); }

/// Whether a row is there, with that value unless it is empty.
std::function<bool()> Having(Tab tab, const char* row, const std::string& value = "") {
    return [=] {
        const wxPropertyGrid* grid = Grid(tab);
        const wxPGProperty* property = grid ? grid->GetPropertyByName(row) : nullptr;
        return property != nullptr &&
               (value.empty() || FromWx(property->GetValueAsString()) == value);
    };
}

std::function<void()> Turning(Tab tab) {
    return [=] { OnPage<wxNotebook>(kSplitTabs)->SetSelection(tab); };
}

/// Changes a row as the user does. The toolkit complains of scrolling with an editor.
std::function<void()> Changing(Tab tab, const char* row, const std::string& value) {
    return [=] {
        Turning(tab)();
        wxPropertyGrid* grid = Grid(tab);
        grid->EnsureVisible(row);
        grid->ChangePropertyValue(row, ToWx(value));
    };
}

std::function<bool()> Enabled(int id) {
    return [=] {
        const wxWindow* control = OnPage(id);
        return control != nullptr && control->IsEnabled();
    };
}

std::function<void()> Directing(int id) {
    return [=] {
        OnPage<wxRadioButton>(id)->SetValue(true);
        wxCommandEvent chosen(wxEVT_RADIOBUTTON, id);
        OnPage(id)->GetEventHandler()->AddPendingEvent(chosen);
        Tour::Press(kSplitApply);
    };
}

DeviceList* Ticked() {
    wxWindow* wizard = Tour::FrontTitled(TitleOf(Window::kSelectDevices));
    return wizard ? dynamic_cast<DeviceList*>(wizard->FindWindow(kSplitList)) : nullptr;
}

}  // namespace

void TourScreenSplit::Write() {
    ChoosePlayers();
    Fetch();
    Arrange();
    DragInPicture();
    RefuseOrders();
    TakeOver();
    Edit();
    Send();
    LeaveFeature();
}

void TourScreenSplit::ChoosePlayers() {
    Step([] { Tour::Command(FeatureButton(Window::kSelectDevices)); },
         InFront(Window::kSelectDevices), "opened the screen split wizard", "split-devices");
    const auto all = [this] {
        return Ticked() != nullptr &&
               Ticked()->GetItemCount() == static_cast<int>(Players().Size());
    };
    Step(Pressing(kSplitScan), all, "pressed Scan: all players are found", "split-devices-scan");
    Step(
        Pressing(kSplitScan), [] { return Ticked()->HasCheckBoxes(); }, "pressed Stop");
    Step(Pressing(wxID_FORWARD), NoticeInFront, "pressed Next without a player: it asks for some");
    Step(Pressing(wxID_OK), InFront(Window::kSelectDevices), "dismissed the message");
    Step([] { TickFirst(*Ticked(), 2); }, [] { return Ticked()->IsItemChecked(1); },
         "ticked two players", "split-devices-ticked");
}

void TourScreenSplit::Fetch() {
    Fault(1, "delay=1200ms,no-correction", "the second player is slow, and not corrected");
    Step(Pressing(wxID_FORWARD), InFront(Window::kSetParam), "pressed Next: it fetches",
         "split-fetching");
    Step({}, NoticeInFront, "correction and fusion have to come first", "split-not-corrected");
    Dismiss();
    Fault(1, "other-resolution", "its outputs are smaller than those of the first one");
    Step(Pressing(kSplitRetry), Having(kSort, kLastSlot),
         "pressed Retry: three screens of two players can be sorted", "split-sort");
}

void TourScreenSplit::RefuseOrders() {
    const auto reuse = [] {
        const std::string screen = FromWx(Grid(kSort)->GetPropertyValueAsString(kLastSlot));
        Changing(kSort, kFirstSlot, screen)();
        Tour::Press(kSplitApply);
    };
    Step(reuse, NoticeInFront, "chose a screen twice: it cannot be", "split-reused");
    Dismiss();
    Step(Pressing(kUndoButton), Enabled(kRedoButton), "pressed Undo");
    const std::string invalid = Localized(kInvalidSlot);
    const auto drop = [=] {
        Changing(kSort, kLastSlot, invalid)();
        Tour::Press(kSplitApply);
    };
    const auto hasTwo = [] { return Having(kSplit, kOverlap)() && !Having(kSplit, "Split/3")(); };
    Step(drop, hasTwo, "took a screen out of the wall", "split-invalid");
    Step(Pressing(kUndoButton), Having(kSplit, "Split/3"), "pressed Undo: it is back");
}

/// The resolutions differ at first.
void TourScreenSplit::Arrange() {
    Step(Pressing(kSplitApply), NoticeInFront, "pressed Apply order: the resolutions differ",
         "split-resolutions");
    Dismiss();
    Fault(1, "", "the players have the same resolution");
    Step(Pressing(wxID_BACKWARD), InFront(Window::kSelectDevices), "pressed Back");
    Step(Pressing(wxID_FORWARD), Enabled(kSplitAdvanced), "pressed Next: all is fetched again");
    Step(Pressing(kSplitApply), Having(kSplit, kOverlap), "pressed Apply order: a row of screens",
         "split-horizontal");
    Step(Changing(kSplit, kOverlap, "240"), Having(kSplit, kOverlap, "240"),
         "gave a seam an overlap of 240 pixels", "split-overlap");
    Step(Directing(kSplitVertical), Having(kSplit, kOverlap, "0"),
         "chose the other direction: a column of screens", "split-vertical");
    Step(Directing(kSplitHorizontal), Having(kSplit, kOverlap, "240"),
         "chose the first direction: the overlap is there again");
}

void TourScreenSplit::TakeOver() {
    Step(Pressing(kSplitTakeOver), Having(kZoom, "Zoom/0/Right", "24"),
         "took over the wall that the players hold, with its zoom");
    Step(Turning(kZoom), Enabled(kSplitTakeOver), "turned to the zoom", "split-taken-over");
    Step(Pressing(kSplitHelp), NoticeInFront, "pressed Help", "split-help");
    Dismiss();
}

void TourScreenSplit::Edit() {
    Step(Pressing(kSplitAdvanced), Having(kAdvanced, kCurve), "pressed Advanced", "split-advanced");
    Step(Changing(kAdvanced, kCurve, "abc"), NoticeInFront, "typed no number: it is refused",
         "split-refused");
    Dismiss();
    Step(Changing(kAdvanced, kCurve, "1.5"), Having(kAdvanced, kCurve, "1.5000"),
         "typed a number: it is taken");
    Step(Turning(kSplit), Having(kSplit, kOverlap), "turned to the overlaps");
}

void TourScreenSplit::Send() {
    Fault(1, "delay=1500ms", "the second player is slow");
    const auto isHalfWay = [this] {
        return Players().Player(0).State().wall.find("1.5") != std::string::npos;
    };
    Step(Pressing(wxID_FORWARD), isHalfWay, "pressed Finish: the first player has confirmed",
         "split-sending");
    Step(
        {}, [this] { return NoticeInFront() && BothHold("1.5"); },
        "both players hold the same wall and have confirmed", "split-completed");
    Dismiss();
    Fault(1, "", "the second player is sound again");
    Step({}, Enabled(wxID_FORWARD), "the wizard stays open", "split-sent");
}

void TourScreenSplit::Dismiss(const std::string& line) {
    Step(Pressing(wxID_OK), InFront(Window::kSetParam), line);
}

bool TourScreenSplit::BothHold(const std::string& text) {
    const std::string wall = Players().Player(0).State().wall;
    return wall == Players().Player(1).State().wall && wall.find(text) != std::string::npos;
}

}  // namespace sontaro
