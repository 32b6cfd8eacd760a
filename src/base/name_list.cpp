#include "base/name_list.h"

#include <cstdint>

#include "base/encoding.h"

namespace sontaro {

namespace {

void DropLastCharacter(std::string& text) {
    const auto isContinuation = [](char byte) {
        return (static_cast<std::uint8_t>(byte) & 0xC0) == 0x80;
    };
    while (!text.empty() && isContinuation(text.back())) text.pop_back();
    if (!text.empty()) text.pop_back();
}

}  // namespace

std::vector<std::string> ParseNameList(std::string_view text) {
    constexpr int kExtensionLength = 4;
    std::vector<std::string> names;
    for (std::size_t end = text.find('?'); end != std::string_view::npos; end = text.find('?')) {
        std::string name = DecodeUtf8(text.substr(0, end));
        for (int i = 0; i < kExtensionLength; ++i) DropLastCharacter(name);
        if (!name.empty()) names.push_back(std::move(name));
        text.remove_prefix(end + 1);
    }
    return names;
}

}  // namespace sontaro
