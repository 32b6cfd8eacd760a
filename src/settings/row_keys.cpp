#include "settings/row_keys.h"

namespace sontaro {

namespace {

constexpr std::string_view kEscaped = "~/#";

std::string Escaped(std::string_view name) {
    std::string part;
    for (const char character : name) {
        const std::size_t at = kEscaped.find(character);
        if (at == std::string_view::npos)
            part += character;
        else
            (part += '~') += static_cast<char>('0' + at);
    }
    return part;
}

}  // namespace

std::string RowKeys::Next(std::string_view name) {
    std::string part = Escaped(name);
    const int occurrence = seen_[part]++;
    if (occurrence > 0 || part.empty()) part += '#' + std::to_string(occurrence);
    return part;
}

}  // namespace sontaro
