#include "widgets/toolkit_quirks.h"

namespace sontaro {

void IgnoreWheel(wxControl& dropDown) {
    dropDown.Bind(wxEVT_MOUSEWHEEL, [](wxMouseEvent&) {});
}

TabBook::~TabBook() = default;

void ScrollWithHidden(wxWindow&, const std::function<void()>& scroll) { scroll(); }

void HearComplaints(std::function<void(const std::string&)>) {}

}  // namespace sontaro
