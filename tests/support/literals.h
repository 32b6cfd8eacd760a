// Short forms for what tests write down.
#pragma once

#include <cctype>
#include <charconv>
#include <ostream>
#include <string>

#include "base/bytes.h"
#include "base/local_text.h"

namespace sontaro::test {

/// The bytes that pairs of hexadecimal digits stand for; blanks separate nothing.
inline Bytes Hex(std::string text) {
    std::erase(text, ' ');
    Bytes bytes(text.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        std::from_chars(&text[2 * i], &text[2 * i] + 2, bytes[i], 16);
    return bytes;
}

inline Bytes ToBytes(std::string_view text) { return {text.begin(), text.end()}; }

/// `size` bytes in a pattern that shows what is lost or swapped.
inline Bytes Pattern(std::size_t size) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i % 251);
    return bytes;
}

/// JSON text without the blanks between its parts.
inline std::string Compact(ByteView json) {
    std::string text(AsText(json));
    std::erase_if(text, [](unsigned char c) { return std::isspace(c) != 0; });
    return text;
}

/// What the cases of a parameterised test begin with.
struct NamedCase {
    const char* name;

    friend std::ostream& operator<<(std::ostream& out, const NamedCase& c) { return out << c.name; }
};

/// Names a parameterised test after its case.
inline constexpr auto kCaseName = [](const auto& info) { return std::string(info.param.name); };

/// The process speaks `language` until the end of the scope, then English again.
class InLanguage {
   public:
    explicit InLanguage(Language language) { SetLanguage(language); }
    ~InLanguage() { SetLanguage(Language::kEnglish); }
    InLanguage(const InLanguage&) = delete;
    InLanguage& operator=(const InLanguage&) = delete;
};

}  // namespace sontaro::test
