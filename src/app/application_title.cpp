#include "app/application_title.h"

#include "base/encoding.h"
#include "base/file.h"

namespace sontaro {

std::string ProgramVersion() { return SONTARO_VERSION; }

std::string ProgramTitle() { return "Sontaro " + ProgramVersion(); }

std::string CustomisedTitle(const std::string& programTitle, std::string_view customer) {
    const std::size_t blank = programTitle.find(' ');
    const std::string kept = blank == std::string::npos ? "" : programTitle.substr(blank);
    return (IsWellFormedUtf8(customer) ? DecodeUtf8(customer) : DecodeByteByByte(customer)) + kept;
}

std::string TitleFromTemplates(const std::filesystem::path& programFolder) {
    constexpr std::size_t kTitleFileLimit = 1000;
    const auto customer = ReadFile(programFolder / "Templates" / "Co.txt", kTitleFileLimit);
    return customer ? CustomisedTitle(ProgramTitle(), *customer) : ProgramTitle();
}

}  // namespace sontaro
