#include "batchsend/video_set_files.h"

#include <utility>

#include "settings/own_file.h"

namespace sontaro {

namespace {

constexpr OwnFileKind kFiles = {kVideoSetFormat,
                                {"它不是视频配置文件。", "it is no file of a video set."}};
constexpr const char* kRemembered = "videoSet";

}  // namespace

void SaveVideoSet(const VideoSet& set, const std::filesystem::path& path, Prompts& prompts) {
    Json::Value content(Json::objectValue);
    content[kVideoSetMember] = VideoSetToJson(set);
    SaveOwnFile(kFiles, std::move(content), path, prompts);
}

bool OpenVideoSet(VideoSet& set, const std::filesystem::path& path, Prompts& prompts) {
    const auto content = OpenOwnFile(kFiles, path, prompts);
    if (!content) return false;
    auto opened = VideoSetFromJson((*content)[kVideoSetMember]);
    if (opened)
        set = std::move(*opened);
    else
        TellFileRefused(path, Localized(kFiles.isOtherKind), prompts);
    return opened.has_value();
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
