// Texts that find their room.
#pragma once

#include <wx/window.h>

namespace sontaro {

/// The text in lines of at most `width` pixels in the window's font: broken at blanks, between
/// Chinese characters, and in the middle of a word that is longer than a line.
[[nodiscard]] wxString WrappedText(const wxWindow& window, const wxString& text, int width);

/// The first lines of such a text, `most` at most (and that is one at least); an ellipsis within
/// `width` stands for the rest.
[[nodiscard]] wxString FirstLines(const wxWindow& window, const wxString& wrapped, int width,
                                  std::size_t most);

}  // namespace sontaro
