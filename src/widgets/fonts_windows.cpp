#include "widgets/fonts.h"

#include <wx/fontenum.h>
#include <wx/window.h>

#include <algorithm>

#include "base/local_text.h"

namespace sontaro {

namespace {

/// From the newest system to the oldest.
constexpr const char* kChineseFonts[] = {"Microsoft YaHei UI", "Microsoft YaHei", "SimSun"};

}  // namespace

// The system keeps its fonts ready.
std::jthread StartFonts() { return {}; }

// An English system draws its own font, and borrows Chinese characters of another height.
void UseLanguageFont(wxWindow& window) {
    if (CurrentLanguage() != Language::kChinese) return;
    const auto* name = std::ranges::find_if(
        kChineseFonts, [](const char* font) { return wxFontEnumerator::IsValidFacename(font); });
    if (name == std::end(kChineseFonts)) return;
    wxFont font = window.GetFont();
    font.SetFaceName(*name);
    window.SetFont(font);
}

int LetterWidth(const wxWindow& window) {
    const wxString letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    return window.GetTextExtent(letters).x / static_cast<int>(letters.length());
}

}  // namespace sontaro
