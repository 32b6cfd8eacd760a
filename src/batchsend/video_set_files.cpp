#include "batchsend/video_set_files.h"

#include <fmt/printf.h>

#include "base/file.h"
#include "base/json.h"
#include "base/local_text.h"
#include "base/path_text.h"
#include "settings/settings_files.h"

namespace sontaro {

namespace {

constexpr LocalText kNoFile = {"无法读取“%s”，未作任何更改：%s",
                               "\"%s\" cannot be read, nothing has been changed: %s"};
constexpr LocalText kNoSetFile = {"它不是视频配置文件。", "it is no file of a video set."};
constexpr LocalText kNewer = {"它来自更新的版本。", "it comes from a later version."};

constexpr const char* kFormat = "format";
constexpr const char* kFormatName = "sontaro-video-set";
constexpr const char* kVersion = "version";
constexpr int kThisVersion = 1;
constexpr const char* kSet = "set";
constexpr const char* kRemembered = "videoSet";

/// What is wrong with the root of a file; none when it may be a page's.
std::optional<LocalText> TroubleOf(const Result<Json::Value>& root) {
    if (!root || !root->isObject() || (*root)[kFormat] != kFormatName || !(*root)[kVersion].isInt())
        return kNoSetFile;
    if ((*root)[kVersion].asInt() > kThisVersion) return kNewer;
    return std::nullopt;
}

}  // namespace

void SaveVideoSet(const VideoSet& set, const std::filesystem::path& path, Prompts& prompts) {
    Json::Value root(Json::objectValue);
    root[kFormat] = kFormatName;
    root[kVersion] = kThisVersion;
    root[kSet] = VideoSetToJson(set);
    KeepSettingsFile(path, WriteJson(root), prompts);
}

bool OpenVideoSet(VideoSet& set, const std::filesystem::path& path, Prompts& prompts) {
    const auto refuse = [&](const std::string& why) {
        prompts.Warn(fmt::sprintf(Localized(kNoFile), TextOfPath(path.filename()), why));
        return false;
    };
    const Result<std::string> text = ReadFile(path);
    if (!text) return refuse(text.reason());
    const Result<Json::Value> root = ParseJson(*text);
    if (const auto trouble = TroubleOf(root)) return refuse(Localized(*trouble));
    auto opened = VideoSetFromJson((*root)[kSet]);
    if (!opened) return refuse(Localized(kNoSetFile));
    set = std::move(*opened);
    return true;
}

void RememberVideoSet(const VideoSet& set, JsonFile& preferences) {
    // Only a convenience is lost when it cannot be written.
    static_cast<void>(
        preferences.Update([&](Json::Value& root) { root[kRemembered] = VideoSetToJson(set); }));
}

VideoSet RememberedVideoSet(const JsonFile& preferences) {
    return VideoSetFromJson(preferences.Root()[kRemembered]).value_or(VideoSet());
}

}  // namespace sontaro
