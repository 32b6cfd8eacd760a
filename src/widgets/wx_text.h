// Texts between the core (UTF-8) and wxWidgets.
#pragma once

#include <wx/string.h>

#include <string>

#include "base/local_text.h"

namespace sontaro {

inline wxString ToWx(const std::string& text) { return wxString::FromUTF8(text); }
inline wxString ToWx(const LocalText& text) { return ToWx(Localized(text)); }
inline std::string FromWx(const wxString& text) { return text.utf8_string(); }

/// A button's label: the text itself, in English with `key` as its mnemonic. Chinese texts have
/// no letter that could be one.
inline wxString ButtonLabel(const LocalText& text, char key) {
    wxString label = ToWx(text);
    label.Replace("&", "&&");
    const std::size_t place = label.find(key);
    if (CurrentLanguage() == Language::kEnglish && place != wxString::npos)
        label.insert(place, "&");
    return label;
}

}  // namespace sontaro
