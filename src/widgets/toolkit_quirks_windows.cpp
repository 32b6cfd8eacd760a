#include "widgets/toolkit_quirks.h"

namespace sontaro {

void IgnoreWheel(wxComboBox& names) {
    names.Bind(wxEVT_MOUSEWHEEL, [](wxMouseEvent&) {});
}

TabBook::~TabBook() = default;

}  // namespace sontaro
