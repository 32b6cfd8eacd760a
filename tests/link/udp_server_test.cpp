#include "link/udp_server.h"

#include <gmock/gmock.h>

#include "link/discovery.h"
#include "link/faulty_io.h"
#include "support/link_surroundings.h"
#include "support/literals.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

struct UdpServer : testing::Test {
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
        EXPECT_EQ(ReceiveDatagram(player, &sender), ToBytes("who"));
        return sender;
    }
    void Await(const std::function<bool()>& holds) {
        EXPECT_TRUE(surroundings.ui.PumpUntil(holds));
    }
    void AwaitText(std::string_view text) {
        Await([&] { return AsText(window.bytes).ends_with(text); });
    }

    LinkSurroundings surroundings;
    const std::string local = FormatIpv4(surroundings.network.Local());
    Socket player = Socket::Udp();
    std::string failure;  // of the window, thrown when there is one
    FakeWindow window{surroundings.directory, "scan", [this](auto&) {
                          if (!failure.empty())
                              throw std::runtime_error(std::exchange(failure, ""));
                      }};
    std::shared_ptr<FaultyIo> io;
    std::unique_ptr<CUDPServer> server;
};

TEST_F(UdpServer, ReportsDatagramsWithTheirSenderAndEmptyOnesAsSeven) {
    Open();
    const Endpoint scanner = Ask();
    EXPECT_EQ(FormatIpv4(scanner.address), local);
    player.SendTo({}, scanner);
    player.SendTo(AsBytes("here"), scanner);
    AwaitText("here");
    EXPECT_THAT(window.codes, ElementsAre(7, 5));
    const auto& event = std::get<UdpEvent>(window.messages[1].record);
    EXPECT_EQ(window.messages[1].id, MessageId{0x4C8});
    EXPECT_EQ((Endpoint{{event.senderAddress}, event.senderPort}), player.Local());
}

struct FaultyUdpServer : UdpServer, testing::WithParamInterface<int> {};

TEST_P(FaultyUdpServer, ReportsTheFaultAndCarriesOn) {
    const LinkCode fault{static_cast<std::uint16_t>(GetParam())};
    Open(fault);
    const Endpoint scanner = Ask();
    io->Arm();
    player.SendTo(AsBytes("lost"), scanner);
    EXPECT_TRUE(server->Send(player.Local(), ToBytes("who")));
    Await([&] { return window.Has(fault); });
    EXPECT_EQ(Ask(), scanner);
    player.SendTo(AsBytes("here"), scanner);
    AwaitText("here");
}

INSTANTIATE_TEST_SUITE_P(EveryCode, FaultyUdpServer, testing::Values(1, 2, 3, 4, 6));

TEST_F(UdpServer, ExceptionOfTheWindowIsShownAndEndsNothing) {
    Open();
    const Endpoint scanner = Ask();
    failure = "cannot list it";
    player.SendTo(AsBytes("first"), scanner);
    player.SendTo(AsBytes("second"), scanner);
    AwaitText("second");
    EXPECT_THAT(surroundings.prompts.texts, ElementsAre("cannot list it"));
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

TEST_F(UdpServer, ReportsNothingThatComesOnceItIsClosed) {
    Open();
    const Endpoint scanner = Ask();
    player.SendTo(AsBytes("before"), scanner);
    surroundings.ui.AwaitCaller();
    server->Close();
    player.SendTo(AsBytes("after"), scanner);
    surroundings.ui.RunAside([this] { surroundings.threads.Join(); });
    EXPECT_EQ(window.bytes, ToBytes("before"));
}

TEST_F(UdpServer, DiscoveryAsksBothPortsOfAPlayer) {
    Bytes expected = Hex("5A5A5AA5 01 00 0000 0000 0100 01000000");
    expected.resize(46);
    std::array<Socket, 2> ports = {Socket::Udp(), Socket::Udp()};
    const Ipv4Address address = surroundings.network.Player(0);
    ASSERT_TRUE(ports[0].Bind({address, 6000}) && ports[1].Bind({address, 7656}));
    Open();
    EXPECT_TRUE(SendDiscovery(*server, address));
    for (Socket& port : ports) EXPECT_EQ(ReceiveDatagram(port), expected);
    expected[12] = 0;  // no payload is announced to all
    EXPECT_EQ(DiscoveryRequest({{255, 255, 255, 255}}), expected);
}

}  // namespace
}  // namespace sontaro::test
