#include "simulator/simulated_player.h"

#include <gtest/gtest.h>

#include "base/json.h"
#include "base/name_list.h"
#include "link/discovery.h"
#include "simulator/playback.h"
#include "simulator/player_group.h"
#include "simulator/settings_commands.h"
#include "support/link_surroundings.h"
#include "support/literals.h"
#include "support/temporary_folder.h"
#include "videocontrol/video_control_document.h"

namespace sontaro::simulator {
namespace {

using namespace std::chrono_literals;
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

/// A request about a settings block.
DevicePacket Settings(std::uint16_t block, std::uint32_t argument, std::string_view payload = {}) {
    return DevicePacket::Request(kCommandSettings, argument << 16 | block, payload);
}

TEST_F(Player, KeepsSettingsThatAreSavedAndReadsThemOut) {
    options.state.osd = "damaged";
    for (const auto& [block, argument] :
         {std::pair{4, 0U}, {15, 1U}, {16, 1U}, {18, 1U}, {19, 1U}}) {
        const auto number = static_cast<std::uint16_t>(block);
        const std::string json = "{\"block\": " + std::to_string(block) + "}";
        const Answer saved = HandleRequest(options.state, Settings(number, argument, json));
        EXPECT_EQ(saved.reply.header.argument, argument);
        EXPECT_EQ(AsText(saved.reply.payload), block == 4 ? json : "");
        for (const char* bad : {"{", "[1]", "7"})
            EXPECT_TRUE(HandleRequest(options.state, Settings(number, argument, bad)).silent)
                << bad;
        const PlayerState kept = *ReadState(WriteState(options.state));
        options.state = kept;
        const Answer read = HandleRequest(options.state, Settings(number, 0));
        EXPECT_EQ(AsText(read.reply.payload), json);
    }
}

TEST_F(Player, SpoilsSettingsAsItsFaultsHaveIt) {
    const auto answer = [&](const char* script, const DevicePacket& request) {
        Answer spoilt = HandleRequest(options.state, request);
        Spoil(spoilt, *ParseFaultScript(script));
        EXPECT_EQ(spoilt.reply.header.payloadLength, spoilt.reply.payload.size());
        return spoilt;
    };
    const auto json = [&](const char* script, std::uint16_t block) {
        return ParseJson(AsText(answer(script, Settings(block, 0)).reply.payload));
    };
    EXPECT_FALSE(json("bad-json", 4) || json("bad-json", 19) || json("bad-json,items=9", 15));
    EXPECT_EQ((*json("items=5", 18))["CustomSettings"][0].size(), 1U + 5U);
    EXPECT_TRUE(json("items=5", 4)->isMember("data"));
    EXPECT_TRUE(answer("no-ack", Settings(16, 0x1, R"({"taken":1})")).silent);
    EXPECT_EQ(options.state.subtitles, R"({"taken":1})");
    EXPECT_FALSE(answer("no-ack", Settings(16, 0)).silent);
}

TEST_F(Player, ShowsEveryLayoutByTheNameThatARemoteControlReadsFromItsList) {
    PlayerState& state = options.state;
    const auto choose = [&](const std::string& name) {
        const std::string json = R"({"cmdId":6,"layoutName":")" + name + "\"}";
        const auto request = DevicePacket::Request(kCommandVideo, kVideoLayout, json);
        const Answer answer = HandleRequest(state, request);
        return VideoReply::Parse(AsText(answer.reply.payload))->Code() == 0;
    };
    const DevicePacket list = DevicePacket::Request(kCommandLayoutState, 0);
    const auto names = ParseNameList(AsText(HandleRequest(state, list).reply.payload));
    ASSERT_EQ(names.size(), state.layouts.size());
    for (std::size_t i = names.size(); i-- > 0;) {
        EXPECT_TRUE(choose(names[i])) << names[i];
        EXPECT_EQ(state.layout, state.layouts[i]);
    }
    for (const char* wrong : {"", "Nigh", "Night.lay", "Day"}) EXPECT_FALSE(choose(wrong)) << wrong;
    state.layoutLocked = true;
    EXPECT_FALSE(choose(names[1]));
}

TEST_F(Player, ServesASchemaOfTheUsersAsItIs) {
    const auto lineUp = [&](const std::filesystem::path& schema) {
        LineUpOptions row;
        row.baseAddress = network.Player(0);
        row.schema = schema;
        return LineUp(row);
    };
    EXPECT_FALSE(lineUp(folder / "missing"));
    PlayerOptions served = lineUp(folder.Write("schema", "{\"half\":"))->front();
    served.file = folder.Write("player.json", R"({"cave":"{}"})");
    SimulatedPlayer player(served);
    ASSERT_TRUE(player.Start());
    EXPECT_EQ(player.State().cave, "{\"half\":");
}

TEST_F(Player, HearsOnlyItsOwnNetwork) {
    if (test::kOnWindows) GTEST_SKIP() << "Wine's datagrams come from 127.0.0.1 alone";
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

TEST_F(Player, ItsSerialPortReceivesWhatIsDueAndWhatItIsGiven) {
    options.file.clear();
    options.serialScript = *ParseSerialScript("# first comes last\n\n 3600 01\r\n0\ta5 01 02\n");
    SimulatedPlayer player(options);
    ASSERT_TRUE(player.Start());
    EXPECT_TRUE(player.AddSerialBytes(Bytes(1023)));
    EXPECT_FALSE(player.AddSerialBytes({}) || player.AddSerialBytes(Bytes(1024)));
    const std::deque<Bytes> received{test::Hex("A50102"), Bytes(1023)};
    EXPECT_EQ(player.State().serialBytes, received);
    for (int given = 2; given < 1000; ++given) ASSERT_TRUE(player.AddSerialBytes({1}));
    EXPECT_FALSE(player.AddSerialBytes({1})) << "nobody fetches them";
}

TEST(SerialText, IsTakenLineByLineOrRefused) {
    const auto line = ParseSerialLine(" 2 : a5 01", 2);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->player, 1U);
    EXPECT_EQ(line->bytes, test::Hex("A501"));
    EXPECT_EQ(ParseSerialLine("A501", 2)->player, 0U);
    for (const char* bad : {"", ":", "A5 0", "0G", "0:A5", "3:A5", "-1:A5", "2:", "1:2:A5"})
        EXPECT_FALSE(ParseSerialLine(bad, 2)) << bad;
    EXPECT_EQ((*ParseSerialScript("0.25 A5"))[0].time, 250ms);
    EXPECT_TRUE(ParseSerialScript("1 " + std::string(2046, 'A')));
    for (const std::string& bad : {std::string("A5"), std::string("-1 A5"), std::string("nan A5"),
                                   std::string("1 "), "1 " + std::string(2048, 'A')})
        EXPECT_EQ(ParseSerialScript("# one\n" + bad).reason(), "line 2 is not SECONDS HEX") << bad;
}

/// Uploads a control protocol with a restart, has the links closed if `asks`, and sees the link's
/// end.
void Restart(SimulatedPlayer& player, bool asks = true) {
    Socket tool = Socket::Tcp();
    ASSERT_TRUE(tool.Connect(player.Address(), 5s) && player.WaitForConnectionCount(1, 5s));
    tool.Send(DevicePacket::Request(0x103, 0x10001, R"({"a":1})").Serialize());
    if (asks) tool.Send(DevicePacket::Request(kCommandCloseLinks, 0).Serialize());
    ASSERT_TRUE(player.WaitForConnectionCount(0, 5s));
    EXPECT_EQ(test::ReceiveExactly(tool, 100).size(), asks ? 32U : 16U);
}

TEST_F(Player, ReturnsFromARestartWhetherOrNotTheLinksWereToBeClosed) {
    options.restartTime = 1ms;
    SimulatedPlayer player(options);
    ASSERT_TRUE(player.Start());
    for (const bool asks : {true, false}) {
        Restart(player, asks);
        const auto deadline = std::chrono::steady_clock::now() + 10s;
        Socket again = Socket::Tcp();
        while (!again.Connect(player.Address(), 5s)) {
            ASSERT_LT(std::chrono::steady_clock::now(), deadline);
            again = Socket::Tcp();
        }
        EXPECT_EQ(player.State().controlProtocol, R"({"a":1})");
        ASSERT_TRUE(player.WaitForConnectionCount(1, 5s));
        player.DropConnections();
        ASSERT_TRUE(player.WaitForConnectionCount(0, 5s));
    }
    Restart(player);  // and is stopped on its way back
}

TEST_F(Player, IsNeitherFoundNorReachedDuringARestart) {
    options.faults = *ParseFaultScript("no-return");
    options.restartTime = 0ms;
    SimulatedPlayer player(options);
    ASSERT_TRUE(player.Start());
    Restart(player);
    EXPECT_FALSE(Socket::Tcp().Connect(player.Address(), 5s));
    player.SetFaults({});
    EXPECT_FALSE(Socket::Tcp().Connect(player.Address(), 5s));
    Socket scan = Socket::Udp();
    ASSERT_TRUE(scan.Bind({network.Local(), 0}));
    player.HearRequest(DiscoveryRequest(kBroadcastAddress), scan.Local());
    scan.SendTo(AsBytes("end"), scan.Local());
    EXPECT_EQ(ReceiveDatagram(scan), test::ToBytes("end")) << "it was found";
    ASSERT_TRUE(player.Start());
    EXPECT_TRUE(Socket::Tcp().Connect(player.Address(), 5s));
}

}  // namespace
}  // namespace sontaro::simulator
