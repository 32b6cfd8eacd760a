#include "simulator/simulated_player.h"

#include <gtest/gtest.h>

#include "base/json.h"
#include "link/discovery.h"
#include "simulator/player_group.h"
#include "support/link_surroundings.h"
#include "support/literals.h"
#include "support/temporary_folder.h"

namespace sontaro::simulator {
namespace {

using namespace std::chrono_literals;
using test::ReceiveExactly;

struct Player : testing::Test {
    PlayerOptions Options() {
        PlayerOptions options;
        options.address = network.Player(0);
        options.file = folder / "player.json";
        options.pacing.spacing = 0ms;
        options.pacing.pushInterval = 1ms;
        options.speed = 10000;
        return options;
    }
    static Socket ConnectTo(const SimulatedPlayer& player) {
        Socket socket = Socket::Tcp();
        EXPECT_TRUE(socket.Connect(player.Address(), 1s));
        return socket;
    }
    static DevicePacket Receive(Socket& socket) {
        const Bytes header = ReceiveExactly(socket, kHeaderSize);
        EXPECT_EQ(header.size(), kHeaderSize);
        DevicePacket packet{DecodeHeader(header), {}};
        packet.payload = ReceiveExactly(socket, packet.header.payloadLength);
        return packet;
    }
    static Json::Value Ask(Socket& socket, const char* json) {
        socket.Send(DevicePacket::Request(kCommandVideo, 0, json).Serialize());
        return *ParseJson(AsText(Receive(socket).payload));
    }

    test::TestNetwork network;
    test::TemporaryFolder folder;
};

TEST_F(Player, KeepsWhatItWasToldFromOneStartToTheNextOnTheSamePort) {
    SimulatedPlayer player(Options());
    ASSERT_TRUE(player.Start());
    const Endpoint address = player.Address();
    Socket socket = ConnectTo(player);
    EXPECT_EQ(Ask(socket, R"({"cmdId":8,"sound":"33"})")["code"].asInt(), 0);
    EXPECT_EQ(Ask(socket, R"({"cmdId":8,"sound":"101"})")["code"].asInt(), 1);
    EXPECT_EQ(Ask(socket, R"({"cmdId":6,"layoutName":"none"})")["code"].asInt(), 1);
    EXPECT_EQ(Ask(socket, "no JSON")["code"].asInt(), 1);
    player.Stop();
    SimulatedPlayer again(Options());
    ASSERT_TRUE(again.Start());
    EXPECT_EQ(again.State().volume, 33);
    again.Stop();
    ASSERT_TRUE(player.Start());
    EXPECT_EQ(player.Address(), address);
    folder.Write("player.json", "damaged");
    EXPECT_FALSE(SimulatedPlayer(Options()).Start());
}

TEST_F(Player, ReportsAMovingPositionOnceItsCaptionsWereAsked) {
    SimulatedPlayer player(Options());
    ASSERT_TRUE(player.Start());
    Socket socket = ConnectTo(player);
    EXPECT_EQ(Ask(socket, R"({"cmdId":3})")["data"].size(), 14U);
    int last = -1;
    for (int moved = 0; moved < 3;) {
        const Json::Value report = *ParseJson(AsText(Receive(socket).payload));
        if (report["cmdId"].asInt() != 10) continue;
        const int position = report["data"]["currentPosition"].asInt();
        if (std::exchange(last, position) != position) ++moved;
    }
}

TEST_F(Player, HearsOnlyItsOwnNetworkAndAnswersBothRequestLengths) {
    PlayerGroup players({Options()});
    ASSERT_TRUE(players.Start());
    Ipv4Address stranger = network.Local();
    stranger.octets[2] ^= 1;
    Socket far = Socket::Udp();
    Socket near = Socket::Udp();
    ASSERT_TRUE(far.Bind({stranger, 0}) && near.Bind({network.Local(), 0}));
    const Bytes all = DiscoveryRequest(kBroadcastAddress);
    far.SendTo(all, {network.Player(0), 6000});
    near.SendTo(ByteView(all).first(kHeaderSize), {network.Player(0), 6000});
    near.SendTo(DiscoveryRequest(network.Player(0)), {network.Player(0), 7656});
    for (int i = 0; i < 2; ++i) {
        Bytes reply(100);
        Endpoint sender;
        EXPECT_EQ(near.ReceiveFrom(reply, sender), 46);
        EXPECT_EQ(sender.address, network.Player(0));
    }
    far.SendTo(AsBytes("end"), far.Local());
    Bytes first(100);
    Endpoint sender;
    EXPECT_EQ(far.ReceiveFrom(first, sender), 3) << "an answer came before the end mark";
}

TEST_F(Player, LeavesTheLoopbackNetworkAlone) {
    PlayerOptions options = Options();
    options.address = {{10, 0, 0, 2}};
    EXPECT_FALSE(SimulatedPlayer(options).Start());
}

}  // namespace
}  // namespace sontaro::simulator
