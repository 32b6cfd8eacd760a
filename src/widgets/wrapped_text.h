// Texts that find their room.
#pragma once

#include <wx/window.h>

namespace sontaro {

/// The text in lines of at most `width` pixels in the window's font: broken at blanks, between
/// Chinese characters, and in the middle of a word that is longer than a line.
[[nodiscard]] wxString WrappedText(const wxWindow& window, const wxString& text, int width);

}  // namespace sontaro
