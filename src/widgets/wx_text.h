// Texts between the core (UTF-8) and wxWidgets.
#pragma once

#include <wx/string.h>

#include <string>

#include "base/local_text.h"
#include "base/path_text.h"

namespace sontaro {

inline wxString ToWx(const std::string& text) { return wxString::FromUTF8(text); }
inline wxString ToWx(const LocalText& text) { return ToWx(Localized(text)); }
inline std::string FromWx(const wxString& text) { return text.utf8_string(); }

inline std::filesystem::path PathFromWx(const wxString& path) { return PathOfText(FromWx(path)); }

/// A button's label: the text itself with `key` as its mnemonic where it has that letter. A
/// Chinese text that has none goes without.
inline wxString ButtonLabel(const std::string& text, char key) {
    wxString label = ToWx(text);
    label.Replace("&", "&&");
    if (const std::size_t place = label.find(key); place != wxString::npos)
        label.insert(place, "&");
    return label;
}
inline wxString ButtonLabel(const LocalText& text, char key) {
    return ButtonLabel(Localized(text), key);
}

}  // namespace sontaro
