// A window that keeps what it is sent.
#pragma once

#include <functional>
#include <vector>

#include "base/window_directory.h"

namespace sontaro::test {

class FakeWindow {
 public:
    struct Received {
        WindowMessage message;
        Bytes bytes;  ///< a copy of what a socket event showed
    };

    /// `react` sees each message before it is kept; what it throws goes to the sender.
    FakeWindow(
        WindowDirectory& directory, std::string title,
        std::function<void(WindowMessage&)> react = [](WindowMessage&) {})
        : registration_(directory.Register(
              std::move(title), [this, react = std::move(react)](WindowMessage& message) {
                  react(message);
                  received.push_back({{}, CopyBytes(message)});
                  received.back().message = std::move(message);
              })) {}

    /// The codes of the socket events, in order.
    [[nodiscard]] std::vector<int> Codes() const {
        std::vector<int> codes;
        for (const Received& entry : received) codes.push_back(CodeOf(entry.message));
        return codes;
    }

    [[nodiscard]] bool Has(LinkCode code) const {
        const std::vector<int> codes = Codes();
        return std::find(codes.begin(), codes.end(), static_cast<int>(code)) != codes.end();
    }

    /// All bytes of the socket events.
    [[nodiscard]] Bytes AllBytes() const {
        Bytes all;
        for (const Received& entry : received)
            all.insert(all.end(), entry.bytes.begin(), entry.bytes.end());
        return all;
    }

    std::vector<Received> received;

 private:
    static Bytes CopyBytes(const WindowMessage& message) {
        ByteView bytes;
        if (const auto* tcp = std::get_if<LinkEvent>(&message.record)) bytes = tcp->bytes;
        if (const auto* udp = std::get_if<UdpEvent>(&message.record)) bytes = udp->bytes;
        return {bytes.begin(), bytes.end()};
    }

    static int CodeOf(const WindowMessage& message) {
        if (const auto* tcp = std::get_if<LinkEvent>(&message.record))
            return static_cast<int>(tcp->code);
        const auto* udp = std::get_if<UdpEvent>(&message.record);
        return udp ? static_cast<int>(udp->code) : 0;
    }

    WindowDirectory::Registration registration_;
};

}  // namespace sontaro::test
