// Paths as UTF-8 text. The narrow text of a path itself is in another code page on Windows.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace sontaro {

inline std::filesystem::path PathOfText(std::string_view utf8) {
    return std::u8string(utf8.begin(), utf8.end());
}

inline std::string TextOfPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

}  // namespace sontaro
