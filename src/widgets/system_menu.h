// The menu of a window's own icon.
#pragma once

#include <wx/toplevel.h>

#include <functional>

namespace sontaro {

/// Adds a separator and an entry that calls `chosen`, on the user-interface thread, to the system
/// menu of `window`. Desktops without such a menu of the program's are left as they are. `id` is
/// the command's number: a multiple of 16 below 0xF000, as the system keeps the low bits.
void AddToSystemMenu(wxTopLevelWindow& window, unsigned id, const wxString& text,
                     const std::function<void()>& chosen);

}  // namespace sontaro
