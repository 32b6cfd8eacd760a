// The title of the application: program name and version, or a customer's name and the version.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace sontaro {

/// Program name, a blank and the version text.
[[nodiscard]] std::string ProgramTitle();

/// The version text, such as "0.1.0".
[[nodiscard]] std::string ProgramVersion();

/// `programTitle` with the part before its first blank replaced by `customer`: the bytes of a
/// title file, read as UTF-8 when they are well-formed, else byte by byte. Nothing is trimmed.
[[nodiscard]] std::string CustomisedTitle(const std::string& programTitle,
                                          std::string_view customer);

/// The title with the customer's name from "Templates/Co.txt" under `programFolder`, of which at
/// most 1000 bytes count; `ProgramTitle()` when there is no such file.
[[nodiscard]] std::string TitleFromTemplates(const std::filesystem::path& programFolder);

}  // namespace sontaro
