#include "simulator/simulated_player.h"

#include <gtest/gtest.h>

#include "base/json.h"
#include "link/discovery.h"
#include "simulator/playback.h"
#include "simulator/player_arguments.h"
#include "support/link_surroundings.h"
#include "support/literals.h"
#include "support/temporary_folder.h"

namespace sontaro::simulator {
namespace {

using namespace std::chrono_literals;
using test::ReceiveDatagram;
using test::ReceiveExactly;

struct Player : testing::Test {
    Player() {
        options.address = network.Player(0);
        options.file = folder / "player.json";
        options.pacing = {0ms, 1ms};
        options.speed = 10000;
    }
    static Socket ConnectTo(const SimulatedPlayer& player) {
        Socket socket = Socket::Tcp();
        EXPECT_TRUE(socket.Connect(player.Address(), 1s));
        return socket;
    }
    static Json::Value Receive(Socket& socket) {
        const PacketHeader header = DecodeHeader(ReceiveExactly(socket, kHeaderSize));
        return *ParseJson(AsText(ReceiveExactly(socket, header.payloadLength)));
    }
    static Json::Value Ask(Socket& socket, const char* json) {
        socket.Send(DevicePacket::Request(kCommandVideo, 0, json).Serialize());
        return Receive(socket);
    }

    test::TestNetwork network;
    test::TemporaryFolder folder;
    PlayerOptions options;
};

TEST_F(Player, KeepsWhatItWasToldFromOneStartToTheNextOnTheSamePort) {
    SimulatedPlayer player(options);
    ASSERT_TRUE(player.Start());
    const Endpoint address = player.Address();
    Socket socket = ConnectTo(player);
    EXPECT_EQ(Ask(socket, R"({"cmdId":8,"sound":"33"})")["code"].asInt(), 0);
    for (const char* refused :
         {R"({"cmdId":8,"sound":"101"})", R"({"cmdId":6,"layoutName":"-"})", "{"})
        EXPECT_EQ(Ask(socket, refused)["code"].asInt(), 1) << refused;
    player.Stop();
    SimulatedPlayer again(options);
    ASSERT_TRUE(again.Start());
    EXPECT_EQ(again.State().volume, 33);
    again.Stop();
    ASSERT_TRUE(player.Start());
    EXPECT_EQ(player.Address(), address);
    folder.Write("player.json", "damaged");
    EXPECT_FALSE(SimulatedPlayer(options).Start());
}

TEST_F(Player, ReportsAMovingPositionOnceItsCaptionsWereAsked) {
    SimulatedPlayer player(options);
    ASSERT_TRUE(player.Start());
    Socket socket = ConnectTo(player);
    EXPECT_EQ(Ask(socket, R"({"cmdId":3})")["data"].size(), 14U);
    for (int last = -1, moved = 0; moved < 3;) {
        const Json::Value report = Receive(socket);
        const int position =
            report["data"].isObject() ? report["data"]["currentPosition"].asInt() : last;
        if (std::exchange(last, position) != position) ++moved;
    }
}

TEST_F(Player, HearsOnlyItsOwnNetwork) {
    SimulatedPlayer player(options);
    ASSERT_TRUE(player.Start());
    Ipv4Address stranger = network.Local();
    stranger.octets[2] ^= 1;
    Socket far = Socket::Udp();
    Socket near = Socket::Udp();
    ASSERT_TRUE(far.Bind({stranger, 0}) && near.Bind({network.Local(), 0}));
    for (Socket* socket : {&far, &near})
        socket->SendTo(DiscoveryRequest(kBroadcastAddress), {network.Player(0), 7656});
    EXPECT_EQ(ReceiveDatagram(near).size(), 46U);
    far.SendTo(AsBytes("end"), far.Local());
    EXPECT_EQ(ReceiveDatagram(far), test::ToBytes("end")) << "the stranger was answered";
    options.address = {{10, 0, 0, 2}};
    EXPECT_FALSE(SimulatedPlayer(options).Start());
}

TEST(Playback, FollowsAVideoAsThePlayModeHasIt) {
    PlayerState state = FactoryState();
    state.folders = {{"A", {{"a1", 10}, {"a2", 20}}}};
    Advance(state, 35s);
    EXPECT_EQ(state.position, 5s);
    EXPECT_TRUE(Perform(state, Action::kNext) && Perform(state, Action::kSingleLoop));
    Advance(state, 24s);
    EXPECT_EQ(CurrentVideo(state)->name, "a2");
    EXPECT_EQ(state.position, 4s);
    EXPECT_TRUE(Perform(state, Action::kSinglePlay));
    Advance(state, 24s);
    EXPECT_EQ(state.position, 20s);
    EXPECT_FALSE(state.playing);
    EXPECT_TRUE(Perform(state, Action::kPowerOff));
    EXPECT_FALSE(Perform(state, Action::kPlay));
}

TEST(FaultScript, NamesFaultsAndRefusesTheRest) {
    EXPECT_EQ(*ParseFaultScript("cut=7,delay=500ms,close-after=0"),
              (FaultScript{.cut = 7, .closeAfter = 0, .delay = 500ms}));
    for (const char* bad : {"cut", "cut=0", "cut=x", "refuse=1", "sleepy", "cut=7,,drop"})
        EXPECT_FALSE(ParseFaultScript(bad)) << bad;
}

TEST(PlayerArguments, RefuseWhatCannotBe) {
    EXPECT_EQ(ParsePlayerArguments({"--count", "3", "--fault", "drop"})->lineUp.count, 3U);
    const std::vector<std::string_view> refused[] = {
        {"--count"}, {"--count", "0"}, {"--port", "65536"}, {"--fault", "x"}, {"-x"}};
    for (const auto& arguments : refused)
        EXPECT_FALSE(ParsePlayerArguments(arguments)) << arguments[0];
    const Ipv4Address last{{127, 0, 0, 252}};
    EXPECT_EQ(LineUp({3, last, 0, "Bar", {}, {}, nullptr})->back().identity.id, "Bar3");
    EXPECT_FALSE(LineUp({4, last, 0, "Bar", {}, {}, nullptr}) ||
                 LineUp({1, {{10, 0, 0, 2}}, 0, "", {}, {}, nullptr}));
    EXPECT_FALSE(LineUp({100, {{127, 0, 0, 2}}, 0, "TenLetters", {}, {}, nullptr}));
}

}  // namespace
}  // namespace sontaro::simulator
