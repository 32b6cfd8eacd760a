#include <fmt/format.h>
#include <gmock/gmock.h>

#include <future>

#include "base/json.h"
#include "simulator/playback.h"
#include "simulator/settings_commands.h"
#include "simulator/simulated_player.h"
#include "simulator/timeline_playback.h"
#include "support/literals.h"
#include "support/test_network.h"
#include "timeline/timeline_document.h"

namespace sontaro::simulator {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kRead = 23;
constexpr std::uint32_t kSave = 0x10017;
constexpr std::uint32_t kTest = 0x20017;

struct ServedTimeline : testing::Test {
    Answer Ask(std::uint32_t selectorWord, std::string_view json = {},
               std::string_view faults = {}) {
        Answer answer = HandleRequest(state, DevicePacket::Request(3, selectorWord, json));
        Spoil(answer, *ParseFaultScript(faults));
        return answer;
    }
    std::size_t NodesRead(std::string_view faults = {}) {
        TimelineDocument document;
        EXPECT_TRUE(
            document.Take(AsText(Ask(kRead, "", faults).reply.payload), TimelineSource::kFile));
        return document.NodeCount();
    }
    PlayerState state = FactoryState();
};

TEST_F(ServedTimeline, IsKeptAndReadAgain) {
    const std::size_t nodes = NodesRead();
    EXPECT_EQ(NodesRead("changed-timeline"), nodes - 1);
    EXPECT_THAT(Ask(kRead, "", "empty-timeline").reply.payload, IsEmpty());
    EXPECT_FALSE(ParseJson(AsText(Ask(kRead, "", "bad-json").reply.payload)));
    EXPECT_TRUE(Ask(kSave, "[1]").silent);
    EXPECT_EQ(Ask(kSave, R"({"a":1})").reply.Serialize(),
              test::Hex("5A5A5AA5 83 00 0000 1700 0100 00000000"));
    state = *ReadState(WriteState(state));
    EXPECT_EQ(AsText(Ask(kRead).reply.payload), R"({"a":1})");
}

TEST_F(ServedTimeline, TriesACommandAtOnce) {
    EXPECT_EQ(Ask(kTest, R"({"playerNum":0,"expendCmdIndex":0,"cmd":"A501"})").note,
              "test 232:0 A5 01");
    EXPECT_EQ(Ask(kTest, R"({"expendCmdIndex":6,"ip":"10.0.0.1","port":80,"cmd":"0B"})").note,
              "test UDP 10.0.0.1:80 0B");
    EXPECT_EQ(Ask(0x30017, "{}").reply.header.command, 0xC3);
}

/// A player that plays two videos of ten seconds.
struct PlayedTimeline : testing::Test {
    PlayedTimeline() {
        state.folders = {{"t", {{"a", 10}, {"b", 10}}}};
        document.Apply({{},
                        {},
                        {{0, "t", "a", 2500, 0, "", 0, "02"},
                         {0, "t", "a", 0, 0, "", 0, "01"},
                         {1, "t", "a", 3000, 0, "", 0, "EE"},
                         {0, "t", "b", 1, 0, "", 0, "03"},
                         {0, "t", "b", 60'000, 0, "", 0, "EE"}}});
        state.timeline = document.Write();
    }
    std::vector<std::string> Advance(std::chrono::microseconds time) {
        playback.Advance(state, time);
        return std::exchange(commands, {});
    }
    PlayerState state = FactoryState();
    TimelineDocument document;
    std::vector<std::string> commands;
    TimelinePlayback playback{0,
                              [this](const TimeNode& node) { commands.push_back(node.command); }};
};

TEST_F(PlayedTimeline, TellsEachCommandOfThePlayersOwnAtItsMoment) {
    EXPECT_EQ(playback.UntilNext(state), 1us);
    EXPECT_THAT(Advance(1ms), ElementsAre("01"));
    EXPECT_EQ(playback.UntilNext(state), 2499ms);
    EXPECT_THAT(Advance(2498ms), IsEmpty());
    EXPECT_THAT(Advance(1ms), ElementsAre("02"));
    EXPECT_THAT(Advance(10s), ElementsAre("03"));
    EXPECT_THAT(Advance(20s), ElementsAre("01", "02", "03"));
}

TEST_F(PlayedTimeline, FollowsJumpsPausesAndNewTimelines) {
    Advance(5s);
    ASSERT_TRUE(PlayVideo(state, "a"));
    EXPECT_THAT(Advance(1s), ElementsAre("01"));
    ASSERT_TRUE(Perform(state, Action::kPause));
    EXPECT_THAT(Advance(5s), IsEmpty());
    EXPECT_FALSE(playback.UntilNext(state));
    ASSERT_TRUE(Perform(state, Action::kPlay));
    document.Insert({0, "t", "a", 1500, 5, "10.0.0.1", 80, "04"});
    state.timeline = document.Write();
    EXPECT_THAT(Advance(2s), ElementsAre("04", "02"));
    state.timeline = "nonsense";
    EXPECT_THAT(Advance(60s), IsEmpty());
}

TEST_F(PlayedTimeline, IsPrintedByARunningPlayerAsItPlays) {
    const test::TestNetwork network;
    std::promise<void> third;
    PlayerOptions options;
    options.address = network.Player(0);
    options.state = state;
    options.speed = 50;
    options.printed = [&](std::string_view command) {
        commands.emplace_back(command);
        if (commands.size() == 3) third.set_value();
    };
    SimulatedPlayer player(options);
    ASSERT_TRUE(player.Start());
    EXPECT_EQ(third.get_future().wait_for(20s), std::future_status::ready);
    player.Stop();
    commands.resize(3);
    EXPECT_THAT(commands, ElementsAre("0.000 232:0 01", "2.500 232:0 02", "0.001 232:0 03"));
}

}  // namespace
}  // namespace sontaro::simulator
