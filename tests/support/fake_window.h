// A window that keeps what it is sent.
#pragma once

#include <algorithm>
#include <functional>
#include <vector>

#include "base/window_directory.h"
#include "link/window_message.h"

namespace sontaro::test {

class FakeWindow {
   public:
    using Reaction = std::function<void(WindowMessage&)>;

    FakeWindow(
        WindowDirectory& directory, std::string title, Reaction reaction = [](auto&) {})
        : react(std::move(reaction)),
          registration_(directory.Register(std::move(title), [this](auto& m) { Keep(m); })) {}

    [[nodiscard]] bool Has(LinkCode code) const {
        return std::ranges::find(codes, static_cast<int>(code)) != codes.end();
    }
    void Forget() { messages.clear(), codes.clear(), bytes.clear(); }

    Reaction react;  ///< sees each message before it is kept; what it throws goes to the sender
    std::vector<WindowMessage> messages;
    std::vector<int> codes;      ///< of the socket events
    Bytes bytes;                 ///< that the socket events showed, all together
    std::size_t firstChunk = 0;  ///< how many of them the first event showed

   private:
    void Keep(WindowMessage& message) {
        const auto keepEvent = [this](const auto& event) {
            codes.push_back(static_cast<int>(event.code));
            if (bytes.empty()) firstChunk = event.bytes.size();
            bytes.insert(bytes.end(), event.bytes.begin(), event.bytes.end());
        };
        if (const auto* tcp = std::get_if<LinkEvent>(&message.record)) keepEvent(*tcp);
        if (const auto* udp = std::get_if<UdpEvent>(&message.record)) keepEvent(*udp);
        react(message);
        messages.push_back(std::move(message));
        if (const auto* request = std::get_if<SendRequest>(&messages.back().record))
            message.record = *request;  // its sender wants to know what became of it
    }

    WindowDirectory::Registration registration_;
};

}  // namespace sontaro::test
