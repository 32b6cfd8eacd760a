#include "link/udp_server.h"

#include <gmock/gmock.h>

#include "link/discovery.h"
#include "link/faulty_io.h"
#include "support/link_surroundings.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

struct UdpServer : testing::Test, LinkSurroundings {
    UdpServer() { EXPECT_TRUE(player.Bind({network.Player(0), 0})); }

    /// Opens the socket and returns where it sends from.
    Endpoint Open(LinkCode fault = {}) {
        io = std::make_shared<FaultyIo>(fault);
        server = std::make_unique<CUDPServer>("scan", Services(io));
        EXPECT_TRUE(server->Open(local));
        return Ask();
    }
    /// Sends one datagram to the player and returns where it came from.
    Endpoint Ask() {
        EXPECT_TRUE(server->Send(player.Local(), ToBytes("who")));
        Endpoint sender;
        EXPECT_EQ(ReceiveDatagram(player, &sender), ToBytes("who"));
        return sender;
    }
    /// The player answers and is heard.
    void ExpectHeard(const Endpoint& scanner) {
        player.SendTo(AsBytes("here"), scanner);
        Await([&] { return AsText(window.bytes).ends_with("here"); });
    }

    const std::string local = FormatIpv4(network.Local());
    Socket player = Socket::Udp();
    FakeWindow window{directory, "scan"};
    std::shared_ptr<FaultyIo> io;
    std::unique_ptr<CUDPServer> server;
};

TEST_F(UdpServer, ReportsDatagramsWithTheirSenderAndEmptyOnesAsSeven) {
    const Endpoint scanner = Open();
    EXPECT_EQ(FormatIpv4(scanner.address), local);
    player.SendTo({}, scanner);
    ExpectHeard(scanner);
    EXPECT_THAT(window.codes, ElementsAre(7, 5));
    const auto& event = std::get<UdpEvent>(window.messages[1].record);
    EXPECT_EQ(window.messages[1].id, MessageId{0x4C8});
    if (kOnWindows) GTEST_SKIP() << "Wine's datagrams come from 127.0.0.1 alone";
    EXPECT_EQ((Endpoint{{event.senderAddress}, event.senderPort}), player.Local());
}

struct FaultyUdpServer : UdpServer, testing::WithParamInterface<int> {};

TEST_P(FaultyUdpServer, ReportsTheFaultAndCarriesOn) {
    const LinkCode fault{static_cast<std::uint16_t>(GetParam())};
    const Endpoint scanner = Open(fault);
    io->Arm();
    player.SendTo(AsBytes("lost"), scanner);
    EXPECT_TRUE(server->Send(player.Local(), ToBytes("who")));
    Await([&] { return window.Has(fault); });
    EXPECT_EQ(Ask(), scanner);
    ExpectHeard(scanner);
}

INSTANTIATE_TEST_SUITE_P(EveryCode, FaultyUdpServer, testing::Values(1, 2, 3, 4, 6));

TEST_F(UdpServer, ExceptionOfTheWindowIsShownAndEndsNothing) {
    const Endpoint scanner = Open();
    window.react = [](auto&) { throw std::runtime_error("cannot list it"); };
    player.SendTo(AsBytes("first"), scanner);
    ExpectHeard(scanner);
    EXPECT_EQ(prompts.boxes.at(0), Warning("cannot list it"));
}

TEST_F(UdpServer, OpeningTwiceKeepsTheSocketAndABadAddressLeavesNone) {
    const Endpoint scanner = Open();
    EXPECT_TRUE(server->Open(local));
    EXPECT_EQ(Ask(), scanner);
    server->Close();
    for (const char* bad : {"", "127.0.0.256", "loopback"}) EXPECT_FALSE(server->Open(bad));
    EXPECT_FALSE(server->Send(player.Local(), ToBytes("who")));
    EXPECT_TRUE(server->Open(local));
}

TEST_F(UdpServer, ReportsNothingThatComesOnceItIsClosed) {
    const Endpoint scanner = Open();
    server->Close();
    player.SendTo(AsBytes("after"), scanner);
    ui.RunAside([this] { threads.Join(); });
    EXPECT_THAT(window.codes, ElementsAre());
}

TEST_F(UdpServer, DiscoveryAsksBothPortsOfAPlayer) {
    Bytes expected = Hex("5A5A5AA5 01 00 0000 0000 0100 01000000");
    expected.resize(46);
    std::array<Socket, 2> ports = {Socket::Udp(), Socket::Udp()};
    const Ipv4Address address = network.Player(0);
    ASSERT_TRUE(ports[0].Bind({address, 6000}) && ports[1].Bind({address, 7656}));
    Open();
    EXPECT_TRUE(SendDiscovery(*server, address, DiscoveryRequest(address)));
    for (Socket& port : ports) EXPECT_EQ(ReceiveDatagram(port), expected);
    expected[12] = 0;  // no payload is announced to all
    EXPECT_EQ(DiscoveryRequest({{255, 255, 255, 255}}), expected);
}

}  // namespace
}  // namespace sontaro::test
