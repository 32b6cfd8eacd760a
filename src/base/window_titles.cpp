#include "base/window_titles.h"

#include "base/local_text.h"

namespace sontaro {

namespace {

std::string& StoredTitle() {
    static std::string title;
    return title;
}

LocalText CaptionOf(Window window) {
    switch (window) {
        case Window::kMain: return {"", ""};
        case Window::kScan: return {"查找播放器", "Scan for devices"};
        case Window::kVideoControl: return {"视频控制", "Video Control"};
        case Window::kSelectDevices: return {"选择设备", "Select devices"};
        case Window::kSetParam: return {"设置参数", "Set Param"};
        case Window::kBatchSend: return {"批量发送", "Batch Send"};
        case Window::kControlProtocol: return {"控制协议配置", "Setup UART"};
        case Window::kPlayerControl: return {"播放器控制协议", "PlayerControl"};
        case Window::kPlayerTimeControl: return {"播放器时间轴控制", "PlayerTimeControl"};
        case Window::kOsd: return {"OSD", "OSD"};
        case Window::kExtendedSerialPort: return {"扩展串口配置", "ExtendedSerialPort"};
        case Window::kSubtitles: return {"字幕配置", "Subtitles setting"};
        case Window::kTouchAction: return {"触控配置", "TouchAction"};
        case Window::kCave: return {"Cave配置", "Cave"};
    }
    return {"", ""};
}

bool StartsWithApplicationTitle(Window window) {
    return window == Window::kMain || window == Window::kVideoControl;
}

}  // namespace

void SetApplicationTitle(std::string title) { StoredTitle() = std::move(title); }

const std::string& ApplicationTitle() { return StoredTitle(); }

std::string TitleOf(Window window) {
    const std::string caption = Localized(CaptionOf(window));
    return StartsWithApplicationTitle(window) ? ApplicationTitle() + caption : caption;
}

}  // namespace sontaro
