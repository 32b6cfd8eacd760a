#include "tour/tour_steps.h"

#include <fmt/core.h>
#include <wx/msgdlg.h>

#include "app/features.h"
#include "devices/scan_dialog.h"
#include "widgets/front_dialog.h"

namespace sontaro {

namespace {

bool IsMessageWith(wxDialog* front, int button) {
    return dynamic_cast<wxGenericMessageDialog*>(front) != nullptr &&
           front->FindWindow(button) != nullptr;
}

}  // namespace

wxWindow* TourSteps::FrontWindow() { return FrontDialog(); }

bool TourSteps::QuestionInFront() { return IsMessageWith(FrontDialog(), wxID_YES); }

bool TourSteps::NoticeInFront() { return IsMessageWith(FrontDialog(), wxID_OK); }

DeviceList* TourSteps::List() { return dynamic_cast<DeviceList*>(Find<wxListView>(kScanList)); }

void TourSteps::TickFirst(DeviceList& list, long count) {
    for (long row = 0; row < count; ++row) {
        wxListEvent event(wxEVT_LIST_ITEM_CHECKED, list.GetId());
        event.SetEventObject(&list);
        event.m_itemIndex = row;
        list.ProcessWindowEvent(event);
    }
}

/// The English main window has no button for some features; it obeys their commands all the same.
void TourSteps::OpenFeature(Window window) {
    Step([window] { Tour::Command(FeatureButton(window)); }, InFront(Window::kScan),
         "opened " + TitleOf(window) + ": the scan dialog asks for a player");
    const auto all = [this] {
        return List() != nullptr && List()->GetItemCount() == static_cast<int>(Players().Size());
    };
    Step(Pressing(kScanButton), all, fmt::format("found {} players", Players().Size()));
    ChooseFirstPlayer();
}

void TourSteps::ChooseFirstPlayer(const std::string& picture) {
    Step([] { List()->Select(0); }, [] { return List()->IsSelected(0); },
         "chose player " + Address(), picture);
}

void TourSteps::LeaveFeature(const std::string& picture) {
    Step(Pressing(wxID_CANCEL), QuestionInFront, "asked whether to leave", picture);
    Step(Pressing(wxID_YES), InFront(Window::kMain), "back in the main window");
}

void TourSteps::Fault(std::size_t player, const char* script, const std::string& line) {
    const auto set = [this, player, script] {
        Players().Player(player).SetFaults(*simulator::ParseFaultScript(script));
    };
    Step(
        set, [] { return true; }, line);
}

}  // namespace sontaro
