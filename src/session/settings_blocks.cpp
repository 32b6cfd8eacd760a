#include "session/settings_blocks.h"

#include <algorithm>
#include <iterator>

#include "controlprotocol/control_protocol_settings.h"
#include "osd/osd_document.h"
#include "playercontrol/player_control_settings.h"
#include "session/timeline_settings.h"
#include "session/wall_settings.h"
#include "settings/custom_settings_document.h"

namespace sontaro {

namespace {

template <class Document>
std::unique_ptr<SettingsDocument> Make() {
    return std::make_unique<Document>();
}

// clang-format off
constexpr SettingsBlockKind kBlocks[] = {
    {"osd",              {"OSD", "On-screen display"},                 kBlockOsd,                kBlockOsd,                false, false, Make<OsdSettings>},
    {"control-protocol", {"控制协议配置", "Control protocol"},         kBlockControlProtocol,    kBlockControlProtocol,    false, true,  Make<ControlProtocolSettings>},
    {"player-control",   {"播放器控制协议", "Player control protocol"}, kBlockPlayerControl,      kBlockPlayerControl,      false, false, Make<PlayerControlSettings>},
    {"timeline",         {"播放器时间轴控制", "Timeline"},             kBlockPlayerTimeline,     kBlockPlayerTimeline,     false, false, Make<TimelineSettings>},
    {"serial-port",      {"扩展串口配置", "Extended serial port"},     kBlockExtendedSerialPort, kBlockExtendedSerialPort, true,  false, Make<CustomSettings>},
    {"subtitles",        {"字幕配置", "Subtitles"},                    kBlockSubtitles,          kBlockSubtitles,          true,  false, Make<CustomSettings>},
    {"touch",            {"触控配置", "Touch actions"},                kBlockTouchAction,        kBlockTouchAction,        true,  false, Make<CustomSettings>},
    {"cave",             {"Cave配置", "Cave"},                         kBlockCave,               kBlockCave,               true,  false, Make<CustomSettings>},
    {"screen-split",     {"画面分割配置", "Screen split"},             kBlockScreenSplitRead,    kBlockScreenSplitWrite,   false, false, Make<WallSettings>},
};
// clang-format on

}  // namespace

std::span<const SettingsBlockKind> SettingsBlocks() { return kBlocks; }

const SettingsBlockKind* FindSettingsBlock(std::string_view name) {
    const auto* kind = std::ranges::find(kBlocks, name, &SettingsBlockKind::name);
    return kind == std::end(kBlocks) ? nullptr : kind;
}

}  // namespace sontaro
