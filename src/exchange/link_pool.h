// The nine link slots of the main window.
#pragma once

#include <array>
#include <memory>
#include <string>

#include "link/tcp_client.h"
#include "link/window_message.h"

namespace sontaro {

inline constexpr std::size_t kLinkSlots = 9;

/// Carries requests to players over nine TCP links that are connected on demand and reused.
/// User-interface thread.
class LinkPool {
   public:
    /// `eventWindow` is the title of the window that all link events go to.
    LinkPool(const std::string& eventWindow, const LinkServices& services);
    /// Closes every link; blocks about half a second.
    ~LinkPool();
    LinkPool(const LinkPool&) = delete;
    LinkPool& operator=(const LinkPool&) = delete;

    /// Sends the request to each of its targets, to the current device when it names none, and
    /// says in it what became of it. A target that cannot be reached is reported in a message box,
    /// once until `ForgetShownFailure`; so is, each time, one that takes nothing in any more. An
    /// empty request closes every link. Blocks while connecting: 1.2 s per target at most.
    void Submit(SendRequest& request);

    /// Closes every link that is connected; what was queued goes out first, within a second.
    /// Blocks about 200 ms more.
    void CloseAll();

    /// The next failure to connect is shown again.
    void ForgetShownFailure() { failureShown_ = false; }

    void SetCurrentDevice(Target device) { currentDevice_ = std::move(device); }

   private:
    [[nodiscard]] Sending SendTo(const Target& target, const SharedPacket& bytes);
    [[nodiscard]] Sending SendOverFreshLink(const Target& target, const SharedPacket& bytes);
    void Show(NotSent reason);

    Prompts& prompts_;
    std::array<std::unique_ptr<CTCPClient>, kLinkSlots> slots_;
    Target currentDevice_;
    bool failureShown_ = false;
};

}  // namespace sontaro
