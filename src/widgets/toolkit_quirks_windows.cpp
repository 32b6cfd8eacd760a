#include "widgets/toolkit_quirks.h"

#include <wx/msw/wrapwin.h>

namespace sontaro {

void IgnoreWheel(wxControl& dropDown) {
    dropDown.Bind(wxEVT_MOUSEWHEEL, [](wxMouseEvent&) {});
}

TabBook::~TabBook() = default;

bool KeyedDialog::MSWTranslateMessage(WXMSG* message) {
    if (message->message == WM_SYSCHAR) return ::IsDialogMessage(GetHWND(), message) != 0;
    return wxDialog::MSWTranslateMessage(message);
}

void ScrollWithHidden(wxWindow&, const std::function<void()>& scroll) { scroll(); }

void HearComplaints(std::function<void(const std::string&)>) {}

}  // namespace sontaro
