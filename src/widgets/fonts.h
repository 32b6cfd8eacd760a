// Fonts: the system's, got ready while the toolkit starts, and the one of our windows.
#pragma once

#include <wx/window.h>

#include <thread>

namespace sontaro {

/// Reads the system's font configuration on a thread of its own. The toolkit needs it for the
/// first text; by then it is there. Called before the toolkit starts; join the thread before
/// the first window.
[[nodiscard]] std::jthread StartFonts();

/// Gives a window a font that has the characters of the interface's language, where the system's
/// own may lack them. Its controls take it over as they are made: called before that.
void UseLanguageFont(wxWindow& window);

/// Average width of the Latin letters in a window's font, in pixels. What a font with Chinese
/// characters says of itself can be the width of one of these.
[[nodiscard]] int LetterWidth(const wxWindow& window);

/// Height of a line of text in both scripts: Chinese is taller than the font itself says.
[[nodiscard]] inline int LineHeight(const wxWindow& window) {
    return window.GetTextExtent(wxString::FromUTF8("属性")).y;
}

}  // namespace sontaro
