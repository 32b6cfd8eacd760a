// Settings in files of the user's.
#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

#include "base/local_text.h"
#include "base/prompts.h"

namespace sontaro {

/// Settings that do not fit into a packet.
inline constexpr LocalText kSettingsTooLong = {"设置内容过长，无法发送！",
                                               "The settings are too long to be sent!"};

/// Of settings that a player held once.
inline constexpr LocalText kEarlierUnusable = {
    "这份历史设置无法使用，未作任何更改！",
    "These settings cannot be used. Nothing has been changed!"};

/// Why a file is refused of which there is nothing to be read.
inline constexpr LocalText kFileUnreadable = {"文件无法打开。", "it cannot be opened."};

/// Has `take` read the text of the file at `path`. False when there is no such text, or `take` has
/// no use for it: the user is told that nothing has been changed.
[[nodiscard]] bool TakeSettingsFile(const std::filesystem::path& path,
                                    const std::function<bool(std::string_view)>& take,
                                    Prompts& prompts);

/// Replaces the file at `path` by `text`, and tells the user whether that has worked.
void KeepSettingsFile(const std::filesystem::path& path, std::string_view text, Prompts& prompts);

}  // namespace sontaro
