// Short forms for what tests write down.
#pragma once

#include <cctype>
#include <charconv>
#include <ostream>
#include <string>

#include "base/bytes.h"
#include "base/local_text.h"
#include "link/packet.h"

namespace sontaro::test {

/// The bytes that pairs of hexadecimal digits stand for; blanks separate nothing.
inline Bytes Hex(std::string_view text) {
    std::string digits;
    for (const char c : text)
        if (std::isxdigit(static_cast<unsigned char>(c)) != 0) digits += c;
    Bytes bytes(digits.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        std::from_chars(&digits[2 * i], &digits[2 * i] + 2, bytes[i], 16);
    return bytes;
}

inline Bytes ToBytes(std::string_view text) {
    const ByteView bytes = AsBytes(text);
    return {bytes.begin(), bytes.end()};
}

/// `size` bytes in a pattern that shows what is lost or swapped.
inline Bytes Pattern(std::size_t size) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i % 251);
    return bytes;
}

/// What the cases of a parameterised test begin with.
struct NamedCase {
    const char* name;

    friend std::ostream& operator<<(std::ostream& out, const NamedCase& named) {
        return out << named.name;
    }
};

/// Names a parameterised test after its case.
struct CaseName {
    template <class Info>
    std::string operator()(const Info& info) const {
        return info.param.name;
    }
};

/// The process speaks `language` until the end of the scope, then English again.
class InLanguage {
 public:
    explicit InLanguage(Language language) { SetLanguage(language); }
    ~InLanguage() { SetLanguage(Language::kEnglish); }
    InLanguage(const InLanguage&) = delete;
    InLanguage& operator=(const InLanguage&) = delete;
};

}  // namespace sontaro::test
