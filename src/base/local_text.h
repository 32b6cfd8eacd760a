// User-visible texts in two languages.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace sontaro {

/// The language of the user interface; the values are those that the players' tools agree on.
enum class Language : std::uint32_t { kChinese = 4, kEnglish = 9 };

/// One user-visible text. Both forms are UTF-8 literals.
struct LocalText {
    const char* chinese;
    const char* english;
};

/// A text that is the same in both languages.
[[nodiscard]] constexpr LocalText InBoth(const char* text) { return {text, text}; }

/// Sets the language of the process. Called once at start, before any window exists.
void SetLanguage(Language language);

/// The language of the process. Any thread.
[[nodiscard]] Language CurrentLanguage();

/// The form of `text` in the language of the process, UTF-8.
[[nodiscard]] std::string Localized(const LocalText& text);

/// Puts a sentence behind those that are there, with a blank between them where the language has
/// one.
void AddSentence(std::string& text, const std::string& sentence);

/// The language that a POSIX locale name stands for: "zh_CN" (with or without a code set or
/// modifier) is Chinese, every other name, other Chinese variants included, English.
[[nodiscard]] Language LanguageOfLocale(std::string_view localeName);

/// The language that a Windows language identifier stands for: 0x0804 alone is Chinese.
[[nodiscard]] Language LanguageOfIdentifier(std::uint16_t identifier);

/// The machine's user-interface language.
/// Source: on Windows the thread's user-interface language; elsewhere the first non-empty of the
/// environment variables LC_ALL, LC_MESSAGES and LANG.
[[nodiscard]] Language SystemLanguage();

}  // namespace sontaro
