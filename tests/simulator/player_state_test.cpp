#include "simulator/player_state.h"

#include <gmock/gmock.h>

#include "simulator/fault_script.h"
#include "simulator/packet_parser.h"
#include "simulator/playback.h"
#include "simulator/player_arguments.h"
#include "support/literals.h"

namespace sontaro::simulator {
namespace {

using namespace std::chrono_literals;
using test::ToBytes;
using testing::ElementsAre;

struct Playback : testing::Test {
    Playback() { state.folders = {{"A", {{"a1", 10}, {"a2", 20}}}, {"B", {{"b1", 30}}}}; }
    std::string Now() { return CurrentVideo(state)->name + (state.playing ? "" : " paused"); }

    PlayerState state = FactoryState();
};

TEST_F(Playback, FollowsAVideoAsThePlayModeHasIt) {
    Advance(state, 35s);
    EXPECT_EQ(Now(), "a1");
    EXPECT_EQ(state.position, 5s);
    EXPECT_TRUE(Perform(state, Action::kSingleLoop));
    Advance(state, 14s);
    EXPECT_EQ(Now(), "a1");
    EXPECT_EQ(state.position, 9s);
    EXPECT_TRUE(Perform(state, Action::kSinglePlay));
    Advance(state, 5s);
    EXPECT_EQ(Now(), "a1 paused");
    EXPECT_EQ(state.position, 10s);
}

TEST_F(Playback, ObeysItsButtonsOnlyWhileSwitchedOn) {
    EXPECT_TRUE(Perform(state, Action::kPrevious));
    EXPECT_EQ(Now(), "a2");
    EXPECT_TRUE(Perform(state, Action::kPause));
    Advance(state, 5s);
    EXPECT_EQ(state.position, 0s);
    EXPECT_TRUE(Perform(state, Action::kPowerOff));
    EXPECT_FALSE(Perform(state, Action::kPlay) || Perform(state, Action::kNext));
    EXPECT_TRUE(Perform(state, Action::kPowerOn));
    EXPECT_EQ(Now(), "a2");
    EXPECT_TRUE(PlayVideo(state, "b1") && Perform(state, Action::kUsbNext));
    EXPECT_EQ(Now(), state.usb.videos[0].name);
    EXPECT_FALSE(PlayVideo(state, "c") || PlayFolder(state, "C") || Perform(state, Action{99}));
}

TEST_F(Playback, StateSurvivesItsFileAndBrokenFilesAreTakenAsFarAsTheyGo) {
    state.volume = 7;
    state.layouts = {"四屏.lay"};
    EXPECT_EQ(*ReadState(WriteState(state)), state);
    const auto partial = ReadState(R"({"volume": 9, "folders": 3, "playing": "x", "video": 70})");
    ASSERT_TRUE(partial);
    EXPECT_EQ(partial->volume, 9);
    EXPECT_EQ(partial->folders, FactoryState().folders);
    EXPECT_EQ(CurrentVideo(*partial), nullptr);
    EXPECT_FALSE(ReadState("[]"));
}

TEST(PacketParser, CutsPacketsHoweverTheyWereJoined) {
    const Bytes packet = DevicePacket::Request(59, 4, "payload").Serialize();
    PacketParser parser;
    int whole = 0;
    for (int i = 0; i < 3 * static_cast<int>(packet.size()); ++i) {
        parser.Append({&packet[static_cast<std::size_t>(i) % packet.size()], 1});
        if (i % 40 != 39 && i != 3 * static_cast<int>(packet.size()) - 1) continue;
        for (auto next = parser.Next(); *next; next = parser.Next()) {
            EXPECT_EQ((*next)->payload, ToBytes("payload"));
            ++whole;
        }
    }
    EXPECT_EQ(whole, 3);
    parser.Append(test::Hex("5A5A5AA5 3B 00 0000 0000 0000 0100A000"));
    EXPECT_FALSE(parser.Next());
}

TEST(FaultScript, NamesFaultsAndRefusesTheRest) {
    FaultScript expected;
    expected.cut = 7;
    expected.delay = 500ms;
    expected.closeAfter = 0;
    EXPECT_EQ(*ParseFaultScript("cut=7,delay=500ms,close-after=0"), expected);
    for (const char* bad :
         {"cut", "cut=0", "cut=x", "cut=", "refuse=1", "sleepy", "cut=7,,drop", "CUT=7"})
        EXPECT_FALSE(ParseFaultScript(bad)) << bad;
}

TEST(PlayerArguments, AreTakenOrRefusedWithTheirReason) {
    const auto parsed =
        ParsePlayerArguments({"--count", "3", "--base-address", "127.0.0.9", "--fault", "drop"});
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->lineUp.count, 3U);
    EXPECT_TRUE(parsed->lineUp.faults.drop);
    const std::vector<std::vector<std::string_view>> refused = {
        {"--count"},         {"--count", "0"},
        {"--port", "65536"}, {"--base-address", "x"},
        {"--fault", "x"},    {"-x"}};
    for (const auto& arguments : refused)
        EXPECT_FALSE(ParsePlayerArguments(arguments)) << arguments[0];
}

TEST(LineUp, StaysInItsNetworkAndWithinTheLengthOfAnId) {
    const auto lineUp = [](std::size_t count, const Ipv4Address& first, const char* name) {
        LineUpOptions options;
        options.count = count;
        options.baseAddress = first;
        options.name = name;
        return LineUp(options);
    };
    EXPECT_EQ(lineUp(3, {{127, 0, 0, 252}}, "Bar")->back().identity.id, "Bar3");
    EXPECT_FALSE(lineUp(4, {{127, 0, 0, 252}}, "Bar"));
    EXPECT_FALSE(lineUp(1, {{10, 0, 0, 2}}, "Bar"));
    EXPECT_FALSE(lineUp(100, {{127, 0, 0, 2}}, "TenLetters"));
}

}  // namespace
}  // namespace sontaro::simulator
