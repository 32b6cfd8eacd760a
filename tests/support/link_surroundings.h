// What links need around them.
#pragma once

#include "link/link_services.h"
#include "support/manual_ui_thread.h"
#include "support/recording_prompts.h"
#include "support/test_network.h"

namespace sontaro::test {

/// Outlives the links of a test and takes leave of their threads as the program does.
struct LinkSurroundings {
    ~LinkSurroundings() { directory.ShutDown(); }

    [[nodiscard]] LinkServices Services(std::shared_ptr<LinkIo> io = std::make_shared<LinkIo>()) {
        return {directory, threads, prompts, std::move(io)};
    }

    ManualUiThread ui;
    WindowDirectory directory{ui};
    RecordingPrompts prompts;
    ThreadGroup threads;
    TestNetwork network;
};

/// A socket that a link connects to; connections wait until they are accepted.
class Listener {
 public:
    explicit Listener(const Ipv4Address& address) : socket_(Socket::ListenAt({address, 0})) {}

    [[nodiscard]] Target AsTarget(std::uint16_t tag = 0) const {
        const Endpoint local = socket_.Local();
        return {FormatIpv4(local.address), local.port, tag};
    }
    [[nodiscard]] Socket Accept() { return socket_.Accept(); }

 private:
    Socket socket_;
};

/// The next `count` bytes of a connection, fewer when it ends before.
inline Bytes ReceiveExactly(Socket& socket, std::size_t count) {
    Bytes bytes(count);
    std::size_t received = 0;
    while (received < count) {
        const auto got = socket.Receive(std::span(bytes).subspan(received));
        if (got <= 0) break;
        received += static_cast<std::size_t>(got);
    }
    bytes.resize(received);
    return bytes;
}

}  // namespace sontaro::test
