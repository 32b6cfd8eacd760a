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

using test::ReceiveDatagram;

struct Player : testing::Test {
    Player() {
        options.address = network.Player(0);
        options.file = folder / "player.json";
    }
    test::TestNetwork network;
    test::TemporaryFolder folder;
    PlayerOptions options;
};

TEST_F(Player, KeepsWhatItWasToldFromOneStartToTheNextOnTheSamePort) {
    SimulatedPlayer player(options);
    ASSERT_TRUE(player.Start());
    const Endpoint address = player.Address();
    player.ChangeState([](PlayerState& state) { state.volume = 33; });
    ASSERT_TRUE(player.Start());
    EXPECT_EQ(player.Address(), address);
    player.Stop();
    SimulatedPlayer again(options);
    ASSERT_TRUE(again.Start());
    EXPECT_EQ(again.State().volume, 33);
    folder.Write("player.json", "damaged");
    EXPECT_FALSE(SimulatedPlayer(options).Start());
}

TEST_F(Player, AnswersImpossibleCommandsWithAFailure) {
    for (const char* json :
         {R"({"cmdId":8,"sound":"101"})", R"({"cmdId":6,"layoutName":"-"})", "{"}) {
        const Answer answer =
            HandleRequest(options.state, DevicePacket::Request(kCommandVideo, 0, json));
        EXPECT_EQ((*ParseJson(AsText(answer.reply.payload)))["code"].asInt(), 1) << json;
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

}  // namespace
}  // namespace sontaro::simulator
