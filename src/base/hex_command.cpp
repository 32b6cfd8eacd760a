#include "base/hex_command.h"

#include <charconv>

namespace sontaro {

namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";
constexpr std::string_view kDigits = "0123456789ABCDEFabcdef";

constexpr std::string_view DigitsOf(LetterCase letters) {
    return letters == LetterCase::kUpper ? "0123456789ABCDEF" : "0123456789abcdef";
}

/// Only letters of the alphabet have a case here, whatever the user's language says.
char InCase(char character, LetterCase letters) {
    constexpr char kDistance = 'a' - 'A';
    if (letters == LetterCase::kUpper && character >= 'a' && character <= 'z')
        return static_cast<char>(character - kDistance);
    if (letters == LetterCase::kLower && character >= 'A' && character <= 'Z')
        return static_cast<char>(character + kDistance);
    return character;
}

}  // namespace

bool IsHexCommand(std::string_view text) {
    return text.size() % 2 == 0 && text.find_first_not_of(kDigits) == std::string_view::npos;
}

std::optional<std::string> NormalizedHexCommand(std::string_view text, LetterCase letters) {
    std::string command;
    for (const char character : text)
        if (kBlanks.find(character) == std::string_view::npos)
            command += InCase(character, letters);
    if (!IsHexCommand(command)) return std::nullopt;
    return command;
}

std::string HexCommandIn(LetterCase letters, std::string_view text) {
    std::string command(text);
    if (!IsHexCommand(text)) return command;
    for (char& character : command) character = InCase(character, letters);
    return command;
}

std::string HexCommandOf(ByteView bytes, LetterCase letters) {
    const std::string_view digits = DigitsOf(letters);
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += digits[byte >> 4];
        text += digits[byte & 0xF];
    }
    return text;
}

std::optional<Bytes> BytesOfHexCommand(std::string_view text) {
    if (!IsHexCommand(text)) return std::nullopt;
    Bytes bytes(text.size() / 2);
    for (std::uint8_t& byte : bytes) {
        std::from_chars(text.data(), text.data() + 2, byte, 16);
        text.remove_prefix(2);
    }
    return bytes;
}

}  // namespace sontaro
