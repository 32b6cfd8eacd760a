// Chunks of several links through reassembly and routing into the remote control, and into windows
// that take anything.
#include <vector>

#include "base/window_titles.h"
#include "exchange/reply_router.h"
#include "fuzz/fuzz_surroundings.h"
#include "videocontrol/video_control_run.h"

namespace sontaro {
namespace {

constexpr ConnectionNumber kConnection = 1;

class NoActions : public RouterActions {
    void CloseLinks() override {}
    void SendPacket(const Target&, const DevicePacket&) override {}
};

/// Whatever is asked is sent over the one connection, and has its answer there.
class OneConnection : public PlayerChannel {
    Sending Send(const Target&, const SharedPacket&, Boxes) override {
        return Sending::Over(kConnection);
    }
};

class NoTimers : public Timers {
    Id After(std::chrono::milliseconds, std::function<void()>) override { return 0; }
    void Cancel(Id) override {}
};

class NoView : public VideoControlView {
    [[nodiscard]] bool IsInFront() const override { return true; }
    void HideButtons() override {}
    void ShowButton(int, const std::string&) override {}
    void ButtonsChanged() override {}
    void ShowPosition(int, const std::string&) override {}
    void ShowTitle(const std::string&) override {}
    void ShowVolume(int) override {}
    void ShowUsbLabel(const std::string&) override {}
    void ShowUsbVideos(const std::vector<std::string>&) override {}
    void OfferFolders(const std::vector<std::string>&) override {}
    void OfferLayouts(const std::vector<std::string>&) override {}
    void OfferVideos(const std::vector<std::string>&) override {}
    void StateChanged() override {}
};

constexpr Window kOpenWindows[] = {Window::kSetParam,      Window::kControlProtocol,
                                   Window::kPlayerControl, Window::kPlayerTimeControl,
                                   Window::kOsd,           Window::kExtendedSerialPort,
                                   Window::kSubtitles,     Window::kTouchAction,
                                   Window::kCave};

/// Takes events off the input: a code, a length of two bytes, and so many bytes.
void Run(ByteView input) {
    fuzz::SameThread ui;
    fuzz::NoPrompts prompts;
    NoActions actions;
    NoView view;
    WindowDirectory directory(ui);
    ExchangeHub hub;
    OneConnection channel;
    NoTimers timers;
    VideoControlRun control(view, {channel, hub, timers}, {"127.0.0.2", 9000, 0});
    control.Opened();
    std::vector<WindowDirectory::Registration> windows;
    windows.push_back(directory.Register(TitleOf(Window::kVideoControl),
                                         [&](WindowMessage& m) { control.Handle(m); }));
    for (const Window window : kOpenWindows)
        windows.push_back(directory.Register(TitleOf(window), [](WindowMessage&) {}));
    ReplyRouter router(directory, prompts, hub, actions);
    Reassembly reassembly([&](const Reply& reply) { router.Route(reply); });
    while (input.size() >= 3) {
        LinkEvent event{"127.0.0.2", 9000, 0, LinkCode(input[0] % 16), 0, {}, kConnection};
        const std::size_t length =
            std::min(input[1] | std::size_t{input[2]} << 8, input.size() - 3);
        event.bytes = input.subspan(3, length);
        input = input.subspan(3 + length);
        reassembly.Handle(event);
    }
}

}  // namespace
}  // namespace sontaro

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sontaro::Run({data, size});
    return 0;
}
