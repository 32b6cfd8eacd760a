#include <gtest/gtest.h>

#include "playercontrol/player_control_document.h"
#include "simulator/settings_commands.h"
#include "support/literals.h"
#include "videolist/video_list.h"

namespace sontaro::simulator {
namespace {

using test::Hex;

constexpr std::uint32_t kWrite = 0x00010015;

struct ServedPlayerControl : testing::Test {
    Answer Ask(std::uint32_t command, std::uint32_t selectorWord, std::string_view json = {},
               std::string_view faults = {}) {
        Answer answer = HandleRequest(state, DevicePacket::Request(command, selectorWord, json));
        Spoil(answer, *ParseFaultScript(faults));
        return answer;
    }
    PlayerState state = FactoryState();
};

TEST_F(ServedPlayerControl, IsReadAndKept) {
    PlayerControlModel model;
    EXPECT_TRUE(ReadPlayerControl(AsText(Ask(3, 21).reply.payload), model).ok());
    EXPECT_EQ(model.players[0].types[0].name, "舞曲");
    EXPECT_EQ(Ask(3, kWrite, R"({"a":1})").reply.Serialize(),
              Hex("5A5A5AA5 83 00 0000 1500 0100 00000000"));
    EXPECT_TRUE(Ask(3, kWrite, "[1]").silent);
    EXPECT_EQ(Ask(3, 0x00020015, "{}").reply.header.command, 0xC3);
    state = *ReadState(WriteState(state));
    EXPECT_EQ(AsText(Ask(3, 21, "", "items=3").reply.payload), R"({"a":1})");
}

TEST_F(ServedPlayerControl, ListsTheVideosOfEveryScreenInBothForms) {
    for (const std::uint32_t form : {0U, 1U}) {
        const Result<VideoList> list = ReadVideoList(AsText(Ask(10, form).reply.payload));
        ASSERT_TRUE(list.ok());
        EXPECT_EQ(list->players, 2);
        EXPECT_EQ(list->screens[0][1].videos[0].name, "Slow Harbour.mp4");
        EXPECT_EQ(list->screens[0][1].videos[0].size, 7'500'000'000);
        EXPECT_EQ(
            list->screens[1].size() * 100 + list->screens[2].size() * 10 + list->screens[3].size(),
            201U);
    }
    state.olderNames = true;
    EXPECT_TRUE(ReadVideoList(AsText(Ask(10, 0).reply.payload)).ok());
    EXPECT_EQ(AsText(Ask(10, 1).reply.payload), "Night.lay?Party.lay?四屏.lay?");
}

TEST_F(ServedPlayerControl, IsSpoiltAsTheFaultsHaveIt) {
    EXPECT_FALSE(ReadVideoList(AsText(Ask(10, 1, "", "bad-list").reply.payload)));
    EXPECT_TRUE(Ask(3, 21, "", "unread=21").silent);
    EXPECT_FALSE(Ask(3, 21, "", "unread=1").silent || Ask(3, kWrite, "{}", "unread=21").silent);
    EXPECT_TRUE(ParseFaultScript("refuse-saves")->refuseSaves);
    EXPECT_FALSE(ParseFaultScript("unread=0") || ParseFaultScript("bad-list=1"));
}

}  // namespace
}  // namespace sontaro::simulator
