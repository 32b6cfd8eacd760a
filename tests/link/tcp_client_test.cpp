#include "link/tcp_client.h"

#include <gmock/gmock.h>

#include "link/faulty_io.h"
#include "link/socket_native.h"
#include "support/link_surroundings.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

/// More than a peer takes in at once; where the time-out of sending is in milliseconds, no more
/// than the system's buffer holds.
#ifdef _WIN32
constexpr std::size_t kMuch = 100'000;
#else
constexpr std::size_t kMuch = 6'000'000;
#endif

struct TcpLink : testing::Test, LinkSurroundings {
    TcpLink() { Make(); }

    void Make(LinkCode fault = {}) {
        io = std::make_shared<FaultyIo>(fault);
        link = std::make_unique<CTCPClient>("main", Services(io));
    }
    Socket ConnectTo(Listener& listener, std::uint16_t tag = 0) {
        EXPECT_TRUE(link->Connect(listener.AsTarget(tag)));
        return listener.Accept();
    }
    bool Queue(std::size_t size, std::uint8_t fill) {
        return bool(link->Queue(std::make_shared<const Bytes>(size, fill)));
    }
    void AwaitCode(LinkCode code) {
        Await([&] { return window.Has(code); });
    }
    void ExpectExchangeWith(Socket& peer) {
        ASSERT_TRUE(Queue(4, 'q'));
        EXPECT_EQ(ReceiveExactly(peer, 4), ToBytes("qqqq"));
        window.Forget();
        peer.Send(AsBytes("reply"));
        AwaitCode(LinkCode::kReceived);
        EXPECT_EQ(window.bytes, ToBytes("reply"));
    }
    void ExpectNoSocket() {
        EXPECT_FALSE(link->HasSocket() || link->IsConnected() || Queue(1, 'x'));
        EXPECT_EQ(link->RemoteIp(), "");
    }

    Listener player{network.Player(0)}, other{network.Player(1)};
    FakeWindow window{directory, "main"};
    std::shared_ptr<FaultyIo> io;
    std::unique_ptr<CTCPClient> link;
};

TEST_F(TcpLink, ReportsWhatArrivesWithAddressAndTag) {
    Socket peer = ConnectTo(player, 77);
    EXPECT_EQ(link->RemoteIp(), player.AsTarget().ip);
    ExpectExchangeWith(peer);
    const auto& event = std::get<LinkEvent>(window.messages[0].record);
    EXPECT_EQ(window.messages[0].id, MessageId{0x464});
    EXPECT_EQ(window.messages[0].wParam, 77U);
    EXPECT_EQ((Target{event.ip, event.port, event.deviceTag}), player.AsTarget(77));
}

struct Ending : NamedCase {
    LinkCode fault;  // of the platform; 0: none
    std::function<void(TcpLink&, Socket& peer)> cause;
    std::vector<int> codes;  // in any order but for the 8 at the end
};

struct EndingTcpLink : TcpLink, testing::WithParamInterface<Ending> {};

TEST_P(EndingTcpLink, ReportsTheCauseThenEightAndConnectsAgain) {
    Make(GetParam().fault);
    Socket peer = ConnectTo(player);
    io->Arm();
    GetParam().cause(*this, peer);
    AwaitCode(LinkCode::kReceiveEnded);
    EXPECT_THAT(window.codes, testing::UnorderedElementsAreArray(GetParam().codes));
    EXPECT_EQ(window.codes.back(), 8);
    ExpectNoSocket();
    window.react = [](auto&) {};
    Socket next = ConnectTo(other);
    ExpectExchangeWith(next);
}

void ResetPeer(TcpLink&, Socket& peer) { peer.ResetOnClose(), peer.Close(); }
void Wake(TcpLink& test, Socket&) { EXPECT_TRUE(test.Queue(1, 'x')); }
void ResetPeerDuringASend(TcpLink& test, Socket& peer) {
    EXPECT_TRUE(test.Queue(kBufferSize, 'x'));  // does not fit into the sockets
    EXPECT_EQ(ReceiveExactly(peer, 1).size(), 1U);
    ResetPeer(test, peer);
}
void LetTheWindowThrow(TcpLink& test, Socket& peer) {
    test.window.react = [](auto&) { throw std::runtime_error("no memory"); };
    peer.Send(AsBytes("x"));
}
constexpr int kOwnClose = kOnWindows ? 6 : 7;  // there a receive that waits is cancelled
const Ending kEndings[] = {
    {"PeerCloses", {}, [](auto&, Socket& peer) { peer.Close(); }, {7, 8}},
    {"PeerResets", {}, ResetPeer, {6, 8}},
    {"PeerResetsDuringASend", {}, ResetPeerDuringASend, {2, 6, 8}},
    {"WindowThrows", {}, LetTheWindowThrow, {5, 1, 8}},
    {"WaitTimesOut", LinkCode::kSendWaitTimedOut, Wake, {3, kOwnClose, 8}},
    {"WaitFails", LinkCode::kSendWaitFailed, Wake, {4, kOwnClose, 8}},
    {"OwnerCloses", {}, [](TcpLink& test, Socket&) { test.link->Close(); }, {kOwnClose, 8}},
};
INSTANTIATE_TEST_SUITE_P(Every, EndingTcpLink, testing::ValuesIn(kEndings), kCaseName);

TEST_F(TcpLink, RefusedOrMistypedTargetFailsAndLeavesNoSocket) {
    const Target refused = Listener(network.Player(2)).AsTarget();
    for (const Target& target : {refused, Target{"127.0.0.256", refused.port, 0}}) {
        EXPECT_FALSE(link->Connect(target));
        ExpectNoSocket();
    }
}

TEST_F(TcpLink, SilentTargetIsGivenUpAfterASecond) {
    const Ipv4Address silent = network.Player(2);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    inet_pton(AF_INET, FormatIpv4(silent).c_str(), &address.sin_addr);
    auto* native = reinterpret_cast<sockaddr*>(&address);
    socklen_t size = sizeof address;
    const auto listener = socket(AF_INET, SOCK_STREAM, 0);
    ASSERT_EQ(
        bind(listener, native, size) + listen(listener, 0) + getsockname(listener, native, &size),
        0);
    const std::uint16_t port = ntohs(address.sin_port);
    std::vector<Socket> queue;  // fills the listener's backlog: nobody else is answered
    while (queue.emplace_back(Socket::Tcp()).Connect({silent, port}, 50ms)) {
    }
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(link->Connect({FormatIpv4(silent), port, 0}));
    const auto elapsed = std::chrono::steady_clock::now() - start;
    EXPECT_TRUE(elapsed > 900ms && elapsed < 3s);
    ExpectNoSocket();
    shutdown(listener, 2);  // the end of the test closes it
}

TEST_F(TcpLink, ConnectOnAHeldSocketKeepsItAndForgetsThePeer) {
    Socket peer = ConnectTo(player);
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(link->Connect(other.AsTarget()));
    EXPECT_TRUE(link->HasSocket());
    EXPECT_FALSE(link->IsConnected());
    EXPECT_EQ(link->RemoteIp(), "");
    ExpectExchangeWith(peer);
}

TEST_F(TcpLink, PeerThatHangsUpWhileThreadsSettleFailsConnect) {
    const std::jthread rudePeer([this] { player.Accept().Close(); });
    EXPECT_FALSE(link->Connect(player.AsTarget()));
    ExpectNoSocket();
    AwaitCode(LinkCode::kReceiveEnded);
    EXPECT_THAT(window.codes, ElementsAre(7, 8));
}

TEST_F(TcpLink, WhatWasQueuedBeforeACloseIsSent) {
    for (int i = 0; i < 5; ++i) {
        Socket peer = ConnectTo(player);
        ASSERT_TRUE(Queue(kMuch, 'a') && Queue(5, 'b'));
        const std::jthread owner([this] { link->Close(); });
        EXPECT_TRUE(ReceiveExactly(peer, kMuch) == Bytes(kMuch, 'a'));
        EXPECT_EQ(ReceiveExactly(peer, 5), ToBytes("bbbbb"));
        peer.Close();
    }
}

TEST_F(TcpLink, CloseWaitsAtMostASecondForAPeerThatTakesNothingIn) {
    Socket peer = ConnectTo(player);
    for (int i = 0; i < 3; ++i) static_cast<void>(Queue(kBufferSize, 'a'));
    EXPECT_FALSE(Queue(kBufferSize + 1, 'a'));
    const auto start = std::chrono::steady_clock::now();
    link->Close();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 3s);
    ExpectNoSocket();
}

TEST_F(TcpLink, SendingIntoADeadConnectionRaisesNoSignal) {
    Socket socket = Socket::Tcp();
    ASSERT_TRUE(socket.Connect({network.Player(0), player.AsTarget().port}, 1s));
    socket.Shutdown();
    EXPECT_LT(socket.Send(AsBytes("x")), 0);  // a signal would have ended the process
}

TEST_F(TcpLink, DestructionDoesNotWaitForAThreadThatWaitsForTheWindow) {
    Socket peer = ConnectTo(player);
    peer.Send(AsBytes("x"));
    ui.AwaitCaller();
    link.reset();
    directory.ShutDown();
    threads.Join();
    EXPECT_THAT(window.codes, ElementsAre());
}

}  // namespace
}  // namespace sontaro::test
