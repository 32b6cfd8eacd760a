#include "base/local_text.h"

#include <atomic>

namespace sontaro {

namespace {

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): of the process
std::atomic<Language> currentLanguage{Language::kEnglish};

constexpr LocalText kSentenceGap = {"", " "};

}  // namespace

void SetLanguage(Language language) { currentLanguage = language; }

Language CurrentLanguage() { return currentLanguage; }

std::string Localized(const LocalText& text) {
    return CurrentLanguage() == Language::kChinese ? text.chinese : text.english;
}

void AddSentence(std::string& text, const std::string& sentence) {
    if (!text.empty() && !sentence.empty()) text += Localized(kSentenceGap);
    text += sentence;
}

Language LanguageOfLocale(std::string_view localeName) {
    const std::string_view region = localeName.substr(0, localeName.find_first_of(".@"));
    return region == "zh_CN" ? Language::kChinese : Language::kEnglish;
}

Language LanguageOfIdentifier(std::uint16_t identifier) {
    constexpr std::uint16_t kChineseSimplified = 0x0804;
    return identifier == kChineseSimplified ? Language::kChinese : Language::kEnglish;
}

}  // namespace sontaro
