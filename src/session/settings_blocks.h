// The blocks of a player's settings by their names.
#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "link/packet.h"
#include "settings/settings_document.h"

namespace sontaro {

struct SettingsBlockKind {
    const char* name = nullptr;  ///< on the command line and of files
    LocalText title{};
    SettingsBlock readBlock{};
    SettingsBlock writeBlock{};
    /// Whether the player describes its settings itself: what is written are their values
    /// ("select") within the player's present document, never its ranges.
    bool describesItself = false;
    /// Whether a write may have the player restart.
    bool mayRestart = false;
    /// An empty document: reads, shows, checks and writes the block's.
    std::unique_ptr<SettingsDocument> (*makeDocument)() = nullptr;
};

/// All blocks: osd, control-protocol, player-control, timeline, serial-port, subtitles, touch,
/// cave, screen-split.
[[nodiscard]] std::span<const SettingsBlockKind> SettingsBlocks();
/// The block of that name; absent when there is none.
[[nodiscard]] const SettingsBlockKind* FindSettingsBlock(std::string_view name);

}  // namespace sontaro
