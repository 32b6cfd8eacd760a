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

    /// Sends the request to each of its targets, to the current device when it names none. A
    /// target that cannot be reached is reported in a message box, once until
    /// `ForgetShownFailure`. An empty request closes every link. Blocks while connecting. False
    /// when a target has not been reached.
    bool Submit(const SendRequest& request);

    /// Closes every link that is connected; blocks about 200 ms.
    void CloseAll();

    /// The next failure to connect is shown again.
    void ForgetShownFailure() { failureShown_ = false; }

    void SetCurrentDevice(Target device) { currentDevice_ = std::move(device); }

   private:
    [[nodiscard]] bool SendTo(const Target& target, const std::shared_ptr<const Bytes>& bytes);
    [[nodiscard]] CTCPClient* LinkTo(const Target& target);
    void ShowFailureOnce();

    Prompts& prompts_;
    std::array<std::unique_ptr<CTCPClient>, kLinkSlots> slots_;
    Target currentDevice_;
    bool failureShown_ = false;
};

}  // namespace sontaro
