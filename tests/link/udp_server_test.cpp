#include "link/udp_server.h"

#include <gmock/gmock.h>

#include "link/discovery.h"
#include "link/faulty_io.h"
#include "support/fake_window.h"
#include "support/link_surroundings.h"
#include "support/literals.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

Bytes Receive(Socket& socket, Endpoint* from = nullptr) {
    Bytes buffer(100);
    Endpoint sender;
    buffer.resize(static_cast<std::size_t>(socket.ReceiveFrom(buffer, sender)));
    if (from) *from = sender;
    return buffer;
}

class UdpServer : public testing::Test {
 protected:
    UdpServer() { EXPECT_TRUE(player.Bind({surroundings.network.Player(0), 0})); }

    void Open(LinkCode fault = {}) {
        io = std::make_shared<FaultyIo>(fault);
        server = std::make_unique<CUDPServer>("scan", surroundings.Services(io));
        ASSERT_TRUE(server->Open(local));
    }
    /// Sends one datagram to the player and returns where it came from.
    Endpoint Ask() {
        EXPECT_TRUE(server->Send(player.Local(), ToBytes("who")));
        Endpoint sender;
        EXPECT_EQ(Receive(player, &sender), ToBytes("who"));
        return sender;
    }
    void AwaitEvents(std::size_t count) {
        EXPECT_TRUE(surroundings.ui.PumpUntil([&] { return window.received.size() >= count; }));
    }

    LinkSurroundings surroundings;
    const std::string local = FormatIpv4(surroundings.network.Local());
    Socket player = Socket::Udp();
    std::function<void()> react = [] {};
    FakeWindow window{surroundings.directory, "scan", [this](WindowMessage&) { react(); }};
    std::shared_ptr<FaultyIo> io;
    std::unique_ptr<CUDPServer> server;
};

TEST_F(UdpServer, ReportsDatagramsWithTheirSenderAndEmptyOnesAsSeven) {
    Open();
    const Endpoint scanner = Ask();
    EXPECT_EQ(FormatIpv4(scanner.address), local);
    player.SendTo({}, scanner);
    player.SendTo(AsBytes("here"), scanner);
    AwaitEvents(2);
    EXPECT_THAT(window.Codes(), ElementsAre(7, 5));
    const WindowMessage& message = window.received.back().message;
    const auto& event = std::get<UdpEvent>(message.record);
    EXPECT_EQ(message.id, MessageId{0x4C8});
    EXPECT_EQ((Endpoint{{event.senderAddress}, event.senderPort}), player.Local());
    EXPECT_EQ(window.AllBytes(), ToBytes("here"));
}

class FaultyUdpServer : public UdpServer, public testing::WithParamInterface<LinkCode> {};

TEST_P(FaultyUdpServer, ReportsTheFaultAndCarriesOn) {
    Open(GetParam());
    const Endpoint scanner = Ask();
    io->Arm();
    player.SendTo(AsBytes("lost"), scanner);
    EXPECT_TRUE(server->Send(player.Local(), ToBytes("who")));
    EXPECT_TRUE(surroundings.ui.PumpUntil([&] { return window.Has(GetParam()); }));
    EXPECT_EQ(Ask(), scanner);
    EXPECT_EQ(Receive(player), ToBytes("who"));
    window.received.clear();
    player.SendTo(AsBytes("here"), scanner);
    EXPECT_TRUE(
        surroundings.ui.PumpUntil([&] { return AsText(window.AllBytes()).ends_with("here"); }));
}

INSTANTIATE_TEST_SUITE_P(EveryCode, FaultyUdpServer,
                         testing::Values(LinkCode::kReceiveException, LinkCode::kShortSend,
                                         LinkCode::kSendWaitTimedOut, LinkCode::kSendWaitFailed,
                                         LinkCode::kReceiveFailed));

TEST_F(UdpServer, ExceptionOfTheWindowIsShownAndEndsNothing) {
    Open();
    const Endpoint scanner = Ask();
    react = [] { throw std::runtime_error("cannot list it"); };
    player.SendTo(AsBytes("first"), scanner);
    EXPECT_TRUE(surroundings.ui.PumpUntil([&] { return !surroundings.prompts.texts.empty(); }));
    EXPECT_THAT(surroundings.prompts.texts, ElementsAre("cannot list it"));
    react = [] {};
    player.SendTo(AsBytes("second"), scanner);
    AwaitEvents(1);
    EXPECT_EQ(window.AllBytes(), ToBytes("second"));
}

TEST_F(UdpServer, OpeningTwiceKeepsTheSocketAndABadAddressLeavesNone) {
    Open();
    const Endpoint scanner = Ask();
    EXPECT_TRUE(server->Open(local));
    EXPECT_EQ(Ask(), scanner);
    server->Close();
    for (const char* bad : {"", "127.0.0.256", "loopback"}) EXPECT_FALSE(server->Open(bad));
    EXPECT_FALSE(server->Send(player.Local(), ToBytes("who")));
    EXPECT_TRUE(server->Open(local));
}

TEST_F(UdpServer, ReportsNothingOnceClosed) {
    Open();
    const Endpoint scanner = Ask();
    player.SendTo(AsBytes("waits"), scanner);
    surroundings.ui.AwaitCaller();
    server->Close();
    player.SendTo(AsBytes("late"), scanner);
    surroundings.ui.RunAside([this] { surroundings.threads.Join(); });
    EXPECT_THAT(window.AllBytes(), testing::AnyOf(ToBytes("waits"), Bytes()));
}

TEST_F(UdpServer, DiscoveryAsksBothPortsOfAPlayer) {
    std::array<Socket, 2> ports = {Socket::Udp(), Socket::Udp()};
    const Ipv4Address address = surroundings.network.Player(0);
    ASSERT_TRUE(ports[0].Bind({address, 6000}) && ports[1].Bind({address, 7656}));
    Open();
    EXPECT_TRUE(SendDiscovery(*server, address));
    for (Socket& port : ports) {
        Bytes expected = Hex("5A5A5AA5 01 00 0000 0000 0100 01000000");
        expected.resize(46);
        EXPECT_EQ(Receive(port), expected);
    }
}

TEST_F(UdpServer, DiscoveryOfAllAnnouncesNoPayload) {
    Bytes expected = Hex("5A5A5AA5 01 00 0000 0000 0100 00000000");
    expected.resize(46);
    EXPECT_EQ(DiscoveryRequest({{255, 255, 255, 255}}), expected);
}

}  // namespace
}  // namespace sontaro::test
