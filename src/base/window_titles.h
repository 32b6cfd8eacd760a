// Window titles are addresses: all of them stand here.
#pragma once

#include <string>

namespace sontaro {

/// The windows that others find by title.
enum class Window {
    kMain,
    kScan,
    kVideoControl,
    kSelectDevices,
    kSetParam,
    kBatchSend,
    kControlProtocol,
    kPlayerControl,
    kPlayerTimeControl,
    kOsd,
    kExtendedSerialPort,
    kSubtitles,
    kTouchAction,
    kCave,
};

/// Sets the title of the application: the main window's title and the first part of some others.
/// Called once at start, before any window exists.
void SetApplicationTitle(std::string title);

/// The title of the application, UTF-8.
[[nodiscard]] const std::string& ApplicationTitle();

/// The exact title of `window` in the language of the process, UTF-8.
[[nodiscard]] std::string TitleOf(Window window);

}  // namespace sontaro
