#include "simulator/simulated_player.h"

#include <gtest/gtest.h>

#include "base/json.h"
#include "base/name_list.h"
#include "simulator/playback.h"
#include "simulator/settings_commands.h"
#include "support/link_surroundings.h"
#include "support/literals.h"
#include "support/temporary_folder.h"
#include "videocontrol/video_control_document.h"

namespace sontaro::simulator {
namespace {

using namespace std::chrono_literals;
using test::Hex;

constexpr std::uint32_t kUpload = 0x00010001;

struct Player : testing::Test {
    Player() {
        options.address = network.Player(0);
        options.file = folder / "player.json";
    }
    /// What is answered by a player with the faults of a script.
    Answer Ask(std::uint32_t commandWord, std::uint32_t selectorWord, std::string_view json = {},
               std::string_view faults = {}) {
        Answer answer =
            HandleRequest(state, DevicePacket::Request(commandWord, selectorWord, json));
        Spoil(answer, *ParseFaultScript(faults));
        EXPECT_EQ(answer.reply.header.payloadLength, answer.reply.payload.size());
        return answer;
    }
    std::string Read(std::uint32_t block, std::string_view faults = {}) {
        const Answer answer = Ask(kCommandSettings, block, {}, faults);
        EXPECT_FALSE(answer.silent);
        return std::string(AsText(answer.reply.payload));
    }
    test::TestNetwork network;
    test::TemporaryFolder folder;
    PlayerOptions options;
    PlayerState& state = options.state;
};

TEST_F(Player, KeepsWhatItWasToldFromOneStartToTheNextOnTheSamePort) {
    SimulatedPlayer player(options);
    ASSERT_TRUE(player.Start());
    const Endpoint address = player.Address();
    player.ChangeState([](PlayerState& told) { told.volume = 33; });
    ASSERT_TRUE(player.Start());
    EXPECT_EQ(player.Address(), address);
    player.Stop();
    SimulatedPlayer again(options);
    ASSERT_TRUE(again.Start());
    EXPECT_EQ(again.State().volume, 33);
    folder.Write("player.json", "damaged");
    EXPECT_FALSE(SimulatedPlayer(options).Start());
    options.address = {{10, 0, 0, 2}};  // of a real network
    options.file.clear();
    EXPECT_FALSE(SimulatedPlayer(options).Start());
}

TEST_F(Player, KeepsSettingsThatAreSavedAndReadsThemOut) {
    state.osd = "damaged";
    for (const std::uint32_t block : {1U, 4U, 15U, 16U, 18U, 19U, 21U, 23U}) {
        const std::uint32_t save = (block == kBlockOsd ? 0U : 1U) << 16 | block;
        const std::string json = "{\"block\": " + std::to_string(block) + "}";
        const Answer saved = Ask(kCommandSettings, save, json);
        EXPECT_EQ(saved.reply.header.argument, save >> 16);
        EXPECT_EQ(AsText(saved.reply.payload), block == kBlockOsd ? json : "");
        for (const char* bad : {"{", "[1]", "7"})
            EXPECT_TRUE(Ask(kCommandSettings, save, bad).silent) << bad;
        state = *ReadState(WriteState(state));  // as by another start
        EXPECT_EQ(Read(block), json);
    }
    EXPECT_EQ(Ask(0x103, kUpload, R"({"a":1})").reply.Serialize(),
              Hex("5A5A5AA5 83 01 0000 0100 0100 00000000"));
}

TEST_F(Player, SpoilsWhatItAnswersAsItsFaultsHaveIt) {
    for (const std::uint32_t block : {1U, 4U, 15U, 19U, 23U})
        EXPECT_FALSE(ParseJson(Read(block, "bad-json,items=9"))) << block;
    EXPECT_EQ(Read(23, "empty-timeline"), "");
    EXPECT_LT(Read(23, "changed-timeline").size(), Read(23).size());
    EXPECT_EQ((*ParseJson(Read(18, "items=5")))["CustomSettings"][0].size(), 1U + 5U);
    EXPECT_FALSE(ParseJson(AsText(Ask(10, 1, "", "bad-list").reply.payload)));
    EXPECT_TRUE(Ask(19, 32767U << 16, "", "no-second-part").silent);
    EXPECT_TRUE(Ask(kCommandSettings, 21, "", "unread=21").silent);
    EXPECT_TRUE(Ask(kCommandSettings, 0x10010, R"({"taken":1})", "no-ack").silent);
    EXPECT_EQ(Read(16, "no-ack,unread=21"), R"({"taken":1})");
    EXPECT_EQ(Ask(kCommandSettings, 1, "", "result=7").reply.header.argument, 7);
    EXPECT_EQ(Ask(kCommandSettings, kUpload, "{}", "result=7").reply.header.argument, 1);
    for (const char* wrong : {"result=65536", "no-second-part=1", "unread=0"})
        EXPECT_FALSE(ParseFaultScript(wrong)) << wrong;
}

TEST_F(Player, ShowsEveryLayoutByTheNameThatARemoteControlReadsFromItsList) {
    const auto choose = [&](const std::string& name) {
        const Answer answer =
            Ask(kCommandVideo, kVideoLayout, R"({"cmdId":6,"layoutName":")" + name + "\"}");
        return VideoReply::Parse(AsText(answer.reply.payload))->Code() == 0;
    };
    const auto names = ParseNameList(AsText(Ask(kCommandLayoutState, 0).reply.payload));
    ASSERT_EQ(names.size(), state.layouts.size());
    for (std::size_t i = names.size(); i-- > 0;) {
        EXPECT_TRUE(choose(names[i])) << names[i];
        EXPECT_EQ(state.layout, state.layouts[i]);
    }
    for (const char* wrong : {"", "Nigh", "Night.lay", "Day"}) EXPECT_FALSE(choose(wrong)) << wrong;
    state.layouts = {"one.mp4", "二.lay"};
    state.olderNames = true;
    for (const auto& [command, selector] : {std::pair{10U, 1U}, {52U, 0U}})
        EXPECT_EQ(AsText(Ask(command, selector).reply.payload), "one.mp4?二.lay?");
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
        while (!Socket::Tcp().Connect(player.Address(), 5s))
            ASSERT_LT(std::chrono::steady_clock::now(), deadline);
        EXPECT_EQ(player.State().controlProtocol, R"({"a":1})");
    }
    Restart(player);  // and is stopped on its way back
}

TEST_F(Player, IsNotReachedDuringARestart) {
    options.faults = *ParseFaultScript("no-return");
    options.restartTime = 0ms;
    SimulatedPlayer player(options);
    ASSERT_TRUE(player.Start());
    Restart(player);
    player.SetFaults({});
    EXPECT_FALSE(Socket::Tcp().Connect(player.Address(), 5s));
    ASSERT_TRUE(player.Start());
    EXPECT_TRUE(Socket::Tcp().Connect(player.Address(), 5s));
}

}  // namespace
}  // namespace sontaro::simulator
