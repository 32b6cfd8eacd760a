#include "settings/own_file.h"

#include <fmt/printf.h>

#include <utility>

#include "base/file.h"
#include "base/json.h"
#include "base/path_text.h"
#include "settings/settings_files.h"

namespace sontaro {

namespace {

constexpr LocalText kRefused = {"无法读取“%s”，未作任何更改：%s",
                                "\"%s\" cannot be read, nothing has been changed: %s"};
constexpr LocalText kNewer = {"它来自更新的版本。", "it comes from a later version."};

constexpr const char* kFormat = "format";
constexpr const char* kVersion = "version";
constexpr int kThisVersion = 1;

/// What is wrong with the root of a file; none when it is of the kind.
std::optional<LocalText> TroubleOf(const Result<Json::Value>& root, const OwnFileKind& kind) {
    if (!root || !root->isObject() || (*root)[kFormat] != kind.format || !(*root)[kVersion].isInt())
        return kind.isOtherKind;
    if ((*root)[kVersion].asInt() > kThisVersion) return kNewer;
    return std::nullopt;
}

}  // namespace

void SaveOwnFile(const OwnFileKind& kind, Json::Value content, const std::filesystem::path& path,
                 Prompts& prompts) {
    content[kFormat] = kind.format;
    content[kVersion] = kThisVersion;
    KeepSettingsFile(path, WriteJson(content), prompts);
}

std::optional<Json::Value> OpenOwnFile(const OwnFileKind& kind, const std::filesystem::path& path,
                                       Prompts& prompts) {
    const Result<std::string> text = ReadFile(path);
    Result<Json::Value> root = text ? ParseJson(*text) : Error{text.reason()};
    const auto trouble = text ? TroubleOf(root, kind) : std::optional(kFileUnreadable);
    if (!trouble) return std::move(*root);
    TellFileRefused(path, Localized(*trouble), prompts);
    return std::nullopt;
}

void TellFileRefused(const std::filesystem::path& path, const std::string& why, Prompts& prompts) {
    prompts.Warn(fmt::sprintf(Localized(kRefused), TextOfPath(path.filename()), why));
}

}  // namespace sontaro
