#include "app/tour_steps.h"

#include <wx/msgdlg.h>

#include "devices/scan_dialog.h"
#include "widgets/front_dialog.h"

namespace sontaro {

wxWindow* TourSteps::FrontWindow() { return FrontDialog(); }

bool TourSteps::MessageInFront() {
    return dynamic_cast<wxGenericMessageDialog*>(FrontDialog()) != nullptr;
}

DeviceList* TourSteps::List() { return dynamic_cast<DeviceList*>(Find<wxListView>(kScanList)); }

void TourSteps::ChooseFirstPlayer(const std::string& picture) {
    Step([] { List()->Select(0); }, [] { return List()->IsSelected(0); },
         "chose player " + Address(), picture);
}

void TourSteps::LeaveFeature(const std::string& picture) {
    Step(Pressing(wxID_CANCEL), MessageInFront, "asked whether to leave", picture);
    Step(Pressing(wxID_YES), InFront(Window::kMain), "back in the main window");
}

}  // namespace sontaro
