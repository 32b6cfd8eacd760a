#include "app/features.h"

#include <algorithm>

#include "batchsend/video_set_wizard.h"
#include "controlprotocol/control_protocol_dialog.h"
#include "osd/osd_dialog.h"
#include "playercontrol/player_control_dialog.h"
#include "screensplit/screen_split_wizard_set_param.h"
#include "settings/custom_settings_dialogs.h"
#include "timeline/player_time_control.h"
#include "videocontrol/video_control_tab.h"

namespace sontaro {

namespace {

template <class Dialog>
void Run(wxWindow* parent, const UiServices& services, const DeviceRecord& player) {
    Dialog(parent, services, player).ShowModal();
}

// clang-format off
constexpr Feature kFeatures[] = {
    {1001, {"视频配置", "Video Set"},            FeatureGroup::kPlayback, "video-set",      'S', Window::kSetParam,           nullptr, OpenVideoSetWizard},
    {1002, {"视频控制", "Video Control"},        FeatureGroup::kPlayback, "video-control",  'V', Window::kVideoControl,       Run<CVideoControlTab>},
    {1011, {"播放器时间轴控制", nullptr},        FeatureGroup::kPlayback, "timeline",       ' ', Window::kPlayerTimeControl,  Run<CPlayerTimeControl>},
    {1003, {"OSD", "OSD"},                       FeatureGroup::kPicture,  "osd",            'D', Window::kOsd,                Run<COSD>},
    {1005, {"画面分割配置", nullptr},            FeatureGroup::kPicture,  "screen-split",   ' ', Window::kSelectDevices,      nullptr, OpenScreenSplit},
    {1007, {"字幕配置", nullptr},                FeatureGroup::kPicture,  "subtitles",      ' ', Window::kSubtitles,          Run<CVODSubtitles>},
    {1009, {"Cave配置", nullptr},                FeatureGroup::kPicture,  "cave",           'C', Window::kCave,               Run<CCave>},
    {1004, {"控制协议配置", "Setup UART"},       FeatureGroup::kControl,  "setup-uart",     'U', Window::kControlProtocol,    Run<CControlProtocol>},
    {1010, {"播放器控制协议", "Player Control"}, FeatureGroup::kControl,  "player-control", 'P', Window::kPlayerControl,      Run<CPlayerControl>},
    {1006, {"扩展串口配置", nullptr},            FeatureGroup::kControl,  "serial-port",    ' ', Window::kExtendedSerialPort, Run<CExtendedSerialPort>},
    {1008, {"触控配置", nullptr},                FeatureGroup::kControl,  "touch",          ' ', Window::kTouchAction,        Run<CTouchAction>},
};
// clang-format on

}  // namespace

std::span<const Feature> Features() { return kFeatures; }

int FeatureButton(Window window) {
    return std::ranges::find(kFeatures, window, &Feature::window)->button;
}

}  // namespace sontaro
