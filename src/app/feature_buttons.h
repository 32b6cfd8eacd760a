// The buttons of the main window.
#pragma once

#include <array>
#include <optional>

#include "base/local_text.h"

namespace sontaro {

enum class FeatureGroup { kPlayback, kPicture, kControl };

struct FeatureButton {
    int id;
    LocalText text;  ///< without an English form the button is in the Chinese layout only
    FeatureGroup group;
    const char* icon;
    char key;  ///< mnemonic of the English text
};

// Control numbers of the buttons.
inline constexpr int kVideoSetButton = 1001;
inline constexpr int kVideoControlButton = 1002;
inline constexpr int kOsdButton = 1003;
inline constexpr int kControlProtocolButton = 1004;
inline constexpr int kExtendedSerialPortButton = 1006;
inline constexpr int kSubtitlesButton = 1007;
inline constexpr int kTouchActionButton = 1008;
inline constexpr int kCaveButton = 1009;

// clang-format off
inline constexpr FeatureButton kFeatureButtons[] = {
    {kVideoSetButton,                {"视频配置", "Video Set"},            FeatureGroup::kPlayback, "video-set",      'S'},
    {kVideoControlButton, {"视频控制", "Video Control"},        FeatureGroup::kPlayback, "video-control",  'V'},
    {1011,                {"播放器时间轴控制", nullptr},        FeatureGroup::kPlayback, "timeline",       ' '},
    {kOsdButton,                {"OSD", "OSD"},                       FeatureGroup::kPicture,  "osd",            'D'},
    {1005,                {"画面分割配置", nullptr},            FeatureGroup::kPicture,  "screen-split",   ' '},
    {kSubtitlesButton,                {"字幕配置", nullptr},                FeatureGroup::kPicture,  "subtitles",      ' '},
    {kCaveButton,                {"Cave配置", nullptr},                FeatureGroup::kPicture,  "cave",           'C'},
    {kControlProtocolButton,                {"控制协议配置", "Setup UART"},       FeatureGroup::kControl,  "setup-uart",     'U'},
    {1010,                {"播放器控制协议", "Player Control"}, FeatureGroup::kControl,  "player-control", 'P'},
    {kExtendedSerialPortButton,                {"扩展串口配置", nullptr},            FeatureGroup::kControl,  "serial-port",    ' '},
    {kTouchActionButton,                {"触控配置", nullptr},                FeatureGroup::kControl,  "touch",          ' '},
};
// clang-format on

struct FeatureGroupText {
    FeatureGroup group;
    LocalText text;
};

inline constexpr FeatureGroupText kFeatureGroups[] = {
    {FeatureGroup::kPlayback, {"视频播放", "Playback"}},
    {FeatureGroup::kPicture, {"画面", "Picture"}},
    {FeatureGroup::kControl, {"协议与接口", "Protocols and ports"}},
};

}  // namespace sontaro
