#include "widgets/system_menu.h"

namespace sontaro {

// The window manager's menu is not the program's to change.
void AddToSystemMenu(wxTopLevelWindow&, unsigned, const wxString&, const std::function<void()>&) {}

}  // namespace sontaro
