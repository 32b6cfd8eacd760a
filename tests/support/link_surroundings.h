// What links need around them.
#pragma once

#include <gtest/gtest.h>

#include "link/link_services.h"
#include "support/fake_window.h"
#include "support/literals.h"
#include "support/manual_ui_thread.h"
#include "support/recording_prompts.h"
#include "support/test_network.h"

namespace sontaro::test {

/// A base of fixtures: outlives their links and takes leave of link threads as the program does.
struct LinkSurroundings {
    ~LinkSurroundings() { directory.ShutDown(); }

    LinkServices Services(std::shared_ptr<LinkIo> io = std::make_shared<LinkIo>()) {
        return {directory, threads, prompts, std::move(io)};
    }

    /// Serves the link threads until `holds`.
    void Await(const std::function<bool()>& holds) { ASSERT_TRUE(ui.PumpUntil(holds)); }

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
        return {FormatIpv4(socket_.Local().address), socket_.Local().port, tag};
    }
    [[nodiscard]] Socket Accept() { return socket_.Accept(); }

   private:
    Socket socket_;
};

/// The next `count` bytes of a connection, fewer when it ends before.
inline Bytes ReceiveExactly(Socket& socket, std::size_t count) {
    Bytes bytes(count);
    std::size_t received = 0;
    for (std::int64_t got = 1; received < count && got > 0;
         received += static_cast<std::size_t>(got))
        got = std::max<std::int64_t>(0, socket.Receive(std::span(bytes).subspan(received)));
    bytes.resize(received);
    return bytes;
}

/// The datagram that has come to `socket`, and who sent it.
inline Bytes ReceiveDatagram(Socket& socket, Endpoint* sender = nullptr) {
    Bytes datagram(1000);
    Endpoint from;
    datagram.resize(
        static_cast<std::size_t>(socket.ReceiveFrom(datagram, sender ? *sender : from)));
    return datagram;
}

}  // namespace sontaro::test
