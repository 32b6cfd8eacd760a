#include "link/tcp_client.h"

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <sys/socket.h>

#include "link/faulty_io.h"
#include "link/udp_server.h"
#include "support/fake_window.h"
#include "support/link_surroundings.h"
#include "support/literals.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

class TcpLink : public testing::Test {
 protected:
    Socket ConnectTo(Listener& listener, std::uint16_t tag = 0) {
        EXPECT_TRUE(link->Connect(listener.AsTarget(tag)));
        return listener.Accept();
    }
    static std::shared_ptr<const Bytes> Packet(std::size_t size, std::uint8_t fill) {
        return std::make_shared<const Bytes>(size, fill);
    }
    void AwaitEvent(LinkCode code) {
        EXPECT_TRUE(surroundings.ui.PumpUntil([&] { return window.Has(code); }));
    }
    void ExpectExchangeOver(Socket& peer) {
        ASSERT_TRUE(link->Queue(Packet(4, 'q')));
        EXPECT_EQ(ReceiveExactly(peer, 4), ToBytes("qqqq"));
        window.received.clear();
        peer.Send(AsBytes("reply"));
        AwaitEvent(LinkCode::kReceived);
        EXPECT_EQ(window.AllBytes(), ToBytes("reply"));
    }
    void ExpectNoSocket() {
        EXPECT_FALSE(link->HasSocket());
        EXPECT_FALSE(link->IsConnected());
        EXPECT_EQ(link->RemoteIp(), "");
        EXPECT_FALSE(link->Queue(Packet(1, 'x')));
    }

    LinkSurroundings surroundings;
    Listener player{surroundings.network.Player(0)};
    std::function<void(WindowMessage&)> react = [](WindowMessage&) {};
    FakeWindow window{surroundings.directory, "main", [this](WindowMessage& m) { react(m); }};
    std::shared_ptr<FaultyIo> io = std::make_shared<FaultyIo>(LinkCode{});
    std::unique_ptr<CTCPClient> link =
        std::make_unique<CTCPClient>("main", surroundings.Services(io));
};

TEST_F(TcpLink, ReportsWhatArrivesWithAddressAndTag) {
    Socket peer = ConnectTo(player, 77);
    EXPECT_EQ(link->RemoteIp(), player.AsTarget().ip);
    peer.Send(AsBytes("abc"));
    AwaitEvent(LinkCode::kReceived);
    const WindowMessage& message = window.received.front().message;
    const auto& event = std::get<LinkEvent>(message.record);
    EXPECT_EQ(message.id, MessageId{0x464});
    EXPECT_EQ(message.wParam, 77U);
    EXPECT_EQ((Target{event.ip, event.port, event.deviceTag}), player.AsTarget(77));
    EXPECT_EQ(window.AllBytes(), ToBytes("abc"));
}

struct Ending : NamedCase {
    LinkCode fault;  // of the platform; 0: none
    std::function<void(TcpLink&, CTCPClient& link, Socket& peer)> cause;
    std::vector<int> codes;  // in any order; 8 comes last
};

class EndingTcpLink : public TcpLink, public testing::WithParamInterface<Ending> {
 protected:
    EndingTcpLink() {
        io = std::make_shared<FaultyIo>(GetParam().fault);
        link = std::make_unique<CTCPClient>("main", surroundings.Services(io));
        if (GetParam().fault == LinkCode::kReceiveException)
            react = [](WindowMessage& message) {
                if (std::get<LinkEvent>(message.record).code == LinkCode::kReceived)
                    throw std::runtime_error("the window has no memory left");
            };
    }
};

TEST_P(EndingTcpLink, ReportsTheCauseThenEightAndConnectsAgain) {
    Socket peer = ConnectTo(player);
    io->Arm();
    GetParam().cause(*this, *link, peer);
    AwaitEvent(LinkCode::kReceiveEnded);
    EXPECT_THAT(window.Codes(), UnorderedElementsAreArray(GetParam().codes));
    EXPECT_EQ(window.Codes().back(), 8);
    ExpectNoSocket();

    react = [](WindowMessage&) {};
    Listener other(surroundings.network.Player(1));
    Socket next = ConnectTo(other);
    ExpectExchangeOver(next);
}

void Wake(TcpLink&, CTCPClient& link, Socket&) {
    EXPECT_TRUE(link.Queue(std::make_shared<const Bytes>(1)));
}

const Ending kEndings[] = {
    {"PeerCloses", {}, [](auto&, auto&, Socket& peer) { peer.Close(); }, {7, 8}},
    {"PeerResets",
     {},
     [](auto&, auto&, Socket& peer) {
         peer.ResetOnClose();
         peer.Close();
     },
     {6, 8}},
    {"PeerResetsDuringASend",
     {},
     [](auto&, CTCPClient& link, Socket& peer) {
         EXPECT_TRUE(link.Queue(std::make_shared<const Bytes>(kBufferSize)));
         ReceiveExactly(peer, 1);  // the send has begun, and its end does not fit into the sockets
         peer.ResetOnClose();
         peer.Close();
     },
     {2, 6, 8}},
    {"WindowThrows",
     LinkCode::kReceiveException,
     [](auto&, auto&, Socket& peer) { peer.Send(AsBytes("x")); },
     {1, 8}},
    {"WaitTimesOut", LinkCode::kSendWaitTimedOut, Wake, {3, 7, 8}},
    {"WaitFails", LinkCode::kSendWaitFailed, Wake, {4, 7, 8}},
    {"OwnerCloses", {}, [](auto&, CTCPClient& link, auto&) { link.Close(); }, {7, 8}},
};
INSTANTIATE_TEST_SUITE_P(Every, EndingTcpLink, testing::ValuesIn(kEndings), CaseName());

TEST_F(TcpLink, RefusedOrMistypedTargetFailsAndLeavesNoSocket) {
    Target refused = Listener(surroundings.network.Player(1)).AsTarget();
    EXPECT_FALSE(link->Connect(refused));
    ExpectNoSocket();
    EXPECT_FALSE(link->Connect({"127.0.0.256", refused.port, 0}));
    ExpectNoSocket();
}

TEST_F(TcpLink, SilentTargetIsGivenUpAfterASecond) {
    const Endpoint free{surroundings.network.Player(1), 0};
    sockaddr_in address{};
    address.sin_family = AF_INET;
    inet_pton(AF_INET, FormatIpv4(free.address).c_str(), &address.sin_addr);
    auto* native = reinterpret_cast<sockaddr*>(&address);
    socklen_t size = sizeof address;
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    ASSERT_TRUE(bind(listener, native, size) == 0 && listen(listener, 0) == 0 &&
                getsockname(listener, native, &size) == 0);
    const std::uint16_t port = ntohs(address.sin_port);
    std::vector<Socket> queue;  // fills the listener's backlog: further attempts get no answer
    do {
        queue.push_back(Socket::Tcp());
    } while (queue.back().Connect({free.address, port}, 50ms));

    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(link->Connect({FormatIpv4(free.address), port, 0}));
    EXPECT_THAT(std::chrono::steady_clock::now() - start,
                testing::AllOf(testing::Ge(900ms), testing::Lt(3s)));
    ExpectNoSocket();
    close(listener);
}

TEST_F(TcpLink, ConnectOnAHeldSocketKeepsItAndForgetsThePeer) {
    Socket peer = ConnectTo(player);
    Listener other(surroundings.network.Player(1));
    EXPECT_TRUE(link->Connect(other.AsTarget()));
    EXPECT_TRUE(link->HasSocket());
    EXPECT_FALSE(link->IsConnected());
    EXPECT_EQ(link->RemoteIp(), "");
    ExpectExchangeOver(peer);
}

TEST_F(TcpLink, PeerThatHangsUpWhileThreadsSettleFailsConnect) {
    const std::jthread rudePeer([this] { player.Accept().Close(); });
    EXPECT_FALSE(link->Connect(player.AsTarget()));
    ExpectNoSocket();
    AwaitEvent(LinkCode::kReceiveEnded);
    EXPECT_THAT(window.Codes(), ElementsAre(7, 8));
}

TEST_F(TcpLink, PacketsQueuedAtOnceArriveInOrder) {
    Socket peer = ConnectTo(player);
    ASSERT_TRUE(link->Queue(Packet(3'000'000, 'a')));
    ASSERT_TRUE(link->Queue(Packet(5, 'b')));
    EXPECT_FALSE(link->Queue(Packet(kBufferSize + 1, 'c')));
    Bytes expected(3'000'000, 'a');
    expected.insert(expected.end(), 5, 'b');
    EXPECT_TRUE(ReceiveExactly(peer, expected.size()) == expected);
}

TEST_F(TcpLink, SendingIntoADeadConnectionRaisesNoSignal) {
    Socket socket = Socket::Tcp();
    const Target target = player.AsTarget();
    ASSERT_TRUE(socket.Connect({*ParseIpv4(target.ip), target.port}, 1s));
    socket.Shutdown();
    EXPECT_LT(socket.Send(AsBytes("x")), 0);  // a signal would have ended the process
}

TEST_F(TcpLink, DestructionDoesNotWaitForAThreadThatWaitsForTheWindow) {
    Socket peer = ConnectTo(player);
    peer.Send(AsBytes("x"));
    surroundings.ui.AwaitCaller();
    link.reset();
    surroundings.directory.ShutDown();
    surroundings.threads.Join();
    EXPECT_THAT(window.Codes(), ElementsAre());
}

struct StartFailure : NamedCase {
    NetworkStart start;
    const char* text;
};

class NetworkStartFailure : public TcpLink, public testing::WithParamInterface<StartFailure> {};

TEST_P(NetworkStartFailure, IsShownAndLeavesLinksUsable) {
    const auto broken = std::make_shared<FaultyIo>(LinkCode{}, GetParam().start);
    link = std::make_unique<CTCPClient>("main", surroundings.Services(broken));
    CUDPServer server("main", surroundings.Services(broken));
    EXPECT_THAT(surroundings.prompts.texts, ElementsAre(GetParam().text, GetParam().text));
    Socket peer = ConnectTo(player);
    ExpectExchangeOver(peer);
    EXPECT_TRUE(server.Open(FormatIpv4(surroundings.network.Local())));
}

const StartFailure kStartFailures[] = {
    {"Fails", NetworkStart::kFailed, "WSAStartup err"},
    {"HasAnotherVersion", NetworkStart::kWrongVersion, "WSAStartup Ver err"}};
INSTANTIATE_TEST_SUITE_P(Every, NetworkStartFailure, testing::ValuesIn(kStartFailures), CaseName());

}  // namespace
}  // namespace sontaro::test
