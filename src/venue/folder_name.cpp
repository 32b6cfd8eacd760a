#include "venue/folder_name.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "venue/backup_manifest.h"

namespace sontaro {

namespace {

constexpr char kEscape = '%';
constexpr char kCaseMark = '+';
constexpr char kMacMark = '@';
constexpr std::string_view kEmptyId = "%";  // no escape: that has two digits
constexpr std::string_view kHexDigits = "0123456789ABCDEF";

bool IsSmall(char letter) { return letter >= 'a' && letter <= 'z'; }
bool IsLetter(char letter) { return IsSmall(letter) || (letter >= 'A' && letter <= 'Z'); }
bool IsDigit(char digit) { return digit >= '0' && digit <= '9'; }

// Letters of ASCII alone: what else the system holds for the same, no name here has.
char Capital(char letter) {
    return IsSmall(letter) ? static_cast<char>(letter - 'a' + 'A') : letter;
}
std::string Capitals(std::string_view text) {
    std::string capitals(text);
    std::ranges::transform(capitals, capitals.begin(), Capital);
    return capitals;
}

std::optional<unsigned> HexDigit(char digit) {
    const std::size_t value = kHexDigits.find(Capital(digit));
    if (value == std::string_view::npos) return std::nullopt;
    return static_cast<unsigned>(value);
}

/// Bytes of the Chinese character that `text` begins with, as far as no system knows another
/// spelling of it; 0: it begins with none.
std::size_t ChineseBytes(std::string_view text) {
    constexpr std::uint32_t kFirst = 0x4E00;
    constexpr std::uint32_t kLast = 0x9FFF;
    const auto bits = [&](std::size_t place) {
        return std::uint32_t{static_cast<unsigned char>(text[place])};
    };
    if (text.size() < 3 || (bits(0) & 0xF0U) != 0xE0U) return 0;
    std::uint32_t character = bits(0) & 0x0FU;
    for (const std::size_t place : {1U, 2U}) {
        if ((bits(place) & 0xC0U) != 0x80U) return 0;
        character = character << 6 | (bits(place) & 0x3FU);
    }
    return character >= kFirst && character <= kLast ? 3 : 0;
}

/// Bytes at `place` that stand for themselves; 0: the byte there has to be escaped.
std::size_t PlainBytes(std::string_view id, std::size_t place) {
    const char byte = id[place];
    if (IsLetter(byte) || IsDigit(byte) || byte == '-' || byte == '_') return 1;
    // Systems drop a dot at the end, and hide what begins with one.
    if (byte == '.') return place > 0 && place + 1 < id.size() ? 1 : 0;
    return ChineseBytes(id.substr(place));
}

void AddEscaped(std::string& name, char byte) {
    const auto number = static_cast<unsigned char>(byte);
    ((name += kEscape) += kHexDigits[number >> 4]) += kHexDigits[number & 0x0F];
}

/// What tells which letters are small: a binary number with a digit for each letter of `letters`,
/// in hexadecimal ones; nothing where none is.
std::string CaseText(std::string_view letters) {
    std::string text;
    unsigned digit = 0;
    for (std::size_t left = letters.size(); left > 0; --left) {
        digit = 2 * digit + (IsSmall(letters[letters.size() - left]) ? 1 : 0);
        if ((left - 1) % 4 != 0) continue;
        if (digit > 0 || !text.empty()) text += "0123456789abcdef"[digit];
        digit = 0;
    }
    return text;
}

std::string Encode(const std::string& id, bool escapesFirst) {
    std::string name;
    std::string letters;
    for (std::size_t place = 0; place < id.size();) {
        const std::size_t plain = escapesFirst && place == 0 ? 0 : PlainBytes(id, place);
        if (plain == 0) AddEscaped(name, id[place]);
        if (plain == 1 && IsLetter(id[place])) letters += id[place];
        name.append(id, place, plain);
        place += std::max<std::size_t>(plain, 1);
    }
    if (const std::string cases = CaseText(letters); !cases.empty()) (name += kCaseMark) += cases;
    return name;
}

/// Whether a system, or a backup, means something else by the name.
bool IsReserved(std::string_view name) {
    constexpr std::string_view kDevices[] = {"CON", "PRN", "AUX", "NUL"};
    constexpr std::string_view kNumberedDevices[] = {"COM", "LPT"};
    const std::string capitals = Capitals(name);
    if (capitals == Capitals(kManifestName)) return true;
    const std::string_view stem = std::string_view(capitals).substr(0, capitals.find('.'));
    if (std::ranges::find(kDevices, stem) != std::end(kDevices)) return true;
    return stem.size() == 4 && IsDigit(stem.back()) &&
           std::ranges::find(kNumberedDevices, stem.substr(0, 3)) != std::end(kNumberedDevices);
}

/// "02007F000002"; empty for what is no address.
std::string MacDigits(std::string_view mac) {
    constexpr std::size_t kMacLength = 17;
    std::string digits;
    if (mac.size() != kMacLength) return "";
    for (std::size_t place = 0; place < mac.size(); ++place) {
        const bool isColon = place % 3 == 2;
        if (isColon ? mac[place] != ':' : kHexDigits.find(mac[place]) == std::string_view::npos)
            return "";
        if (!isColon) digits += mac[place];
    }
    return digits;
}

std::string MacOf(std::string_view digits) {
    std::string mac;
    for (std::size_t place = 0; place < digits.size(); ++place) {
        if (place > 0 && place % 2 == 0) mac += ':';
        mac += Capital(digits[place]);
    }
    return mac;
}

/// The ID, as far as its letters can be told; `letters` are the places of those that are plain.
std::optional<std::string> Decode(std::string_view name, std::vector<std::size_t>& letters) {
    std::string id;
    for (std::size_t place = 0; place < name.size(); ++place) {
        if (name[place] != kEscape) {
            if (IsLetter(name[place])) letters.push_back(id.size());
            id += name[place];
            continue;
        }
        if (place + 2 >= name.size()) return std::nullopt;
        const auto high = HexDigit(name[++place]);
        const auto low = HexDigit(name[++place]);
        if (!high || !low) return std::nullopt;
        id += static_cast<char>(*high << 4 | *low);
    }
    return id;
}

void SetCases(std::string& id, const std::vector<std::size_t>& letters, std::string_view cases) {
    for (std::size_t i = 0; i < letters.size(); ++i) {
        const std::size_t bit = letters.size() - 1 - i;
        const std::size_t digit = bit / 4;
        const unsigned value =
            digit < cases.size() ? HexDigit(cases[cases.size() - 1 - digit]).value_or(0) : 0;
        char& letter = id[letters[i]];
        letter = Capital(letter);
        if ((value >> bit % 4 & 1) != 0) letter = static_cast<char>(letter - 'A' + 'a');
    }
}

}  // namespace

std::string FolderNameOf(const FolderOwner& owner) {
    const auto whole = [&](bool escapesFirst) {
        std::string name =
            owner.id.empty() ? std::string(kEmptyId) : Encode(owner.id, escapesFirst);
        if (const std::string mac = MacDigits(owner.mac); !mac.empty()) (name += kMacMark) += mac;
        return name;
    };
    const std::string name = whole(false);
    return IsReserved(name) ? whole(true) : name;
}

std::optional<FolderOwner> OwnerOfFolder(std::string_view name) {
    FolderOwner owner;
    std::string_view rest = name;
    if (const std::size_t mark = rest.rfind(kMacMark); mark != std::string_view::npos) {
        owner.mac = MacOf(rest.substr(mark + 1));
        rest = rest.substr(0, mark);
    }
    if (rest != kEmptyId) {
        const std::size_t mark = std::min(rest.rfind(kCaseMark), rest.size());
        std::vector<std::size_t> letters;
        auto id = Decode(rest.substr(0, mark), letters);
        if (!id) return std::nullopt;
        SetCases(*id, letters, rest.substr(std::min(mark + 1, rest.size())));
        owner.id = std::move(*id);
    }
    if (Capitals(FolderNameOf(owner)) != Capitals(name)) return std::nullopt;
    return owner;
}

}  // namespace sontaro
