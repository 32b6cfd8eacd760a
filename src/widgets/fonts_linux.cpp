#include "widgets/fonts.h"

#include <fontconfig/fontconfig.h>
#include <wx/window.h>

namespace sontaro {

// Failure shows when the toolkit asks for the same itself.
std::jthread StartFonts() {
    return std::jthread([] { FcInit(); });
}

// What the system's font lacks, it takes from another by itself.
void UseLanguageFont(wxWindow&) {}

int LetterWidth(const wxWindow& window) { return window.GetCharWidth(); }

}  // namespace sontaro
