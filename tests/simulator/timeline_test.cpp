#include <gmock/gmock.h>

#include "simulator/timeline_playback.h"
#include "timeline/timeline_document.h"

namespace sontaro::simulator {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// A player that plays two videos of ten seconds.
struct PlayedTimeline : testing::Test {
    PlayedTimeline() {
        state.folders = {{"t", {{"a", 10}, {"b", 10}}}};
        // clang-format off
        for (const TimeNode& node : {
                 TimeNode{0, "t", "a", 2500, 0, "", 0, "02"}, {0, "t", "a", 0, 0, "", 0, "01"}, {1, "t", "a", 3000, 0, "", 0, "EE"},
                 {0, "t", "b", 1, 0, "", 0, "03"}, {0, "t", "b", 60'000, 0, "", 0, "EE"}})
            document.Insert(node);
        // clang-format on
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
    EXPECT_THAT(Advance(1ms), ElementsAre("01"));
    EXPECT_EQ(playback.UntilNext(state), 2499ms);
    EXPECT_THAT(Advance(2498ms), IsEmpty());
    EXPECT_THAT(Advance(1ms), ElementsAre("02"));
    EXPECT_THAT(Advance(10s), ElementsAre("03"));
    EXPECT_THAT(Advance(20s), ElementsAre("01", "02", "03"));
}

}  // namespace
}  // namespace sontaro::simulator
