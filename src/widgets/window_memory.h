// Windows remember size, position and column widths.
#pragma once

#include <wx/listctrl.h>
#include <wx/toplevel.h>

#include <string>
#include <vector>

#include "base/json_file.h"

namespace sontaro {

/// Puts `window` where it stood when it last closed, if that is still on a screen, and gives
/// `list` (may be absent) its column widths. `name` is the window's key in the preferences; it
/// does not depend on the language.
void RestoreWindow(wxTopLevelWindow& window, wxListCtrl* list, const std::string& name,
                   const JsonFile& preferences);

/// Notes place and column widths and writes the preferences. A preferences file that cannot be
/// written loses only this convenience and is not reported.
void RememberWindow(const wxTopLevelWindow& window, const wxListCtrl* list, const std::string& name,
                    JsonFile& preferences);

/// The widths of the columns of a table of `count` columns, which is shown in `window`, as they are
/// remembered under `name`; empty when none are, or they were measured with another font.
[[nodiscard]] std::vector<int> RememberedWidths(const wxWindow& window, std::size_t count,
                                                const std::string& name,
                                                const JsonFile& preferences);

/// Remembers them; a preferences file that cannot be written is not reported.
void RememberWidths(const wxWindow& window, const std::vector<int>& widths, const std::string& name,
                    JsonFile& preferences);

}  // namespace sontaro
