#include <gmock/gmock.h>

#include "link/crc16.h"
#include "simulator/player_arguments.h"
#include "simulator/settings_commands.h"
#include "support/link_surroundings.h"
#include "support/literals.h"

namespace sontaro::simulator {
namespace {

using namespace std::chrono_literals;
using test::Hex;
using testing::ElementsAre;

constexpr std::uint32_t kParameterBlock = 0x136;

/// Players as the program's command line has them.
std::vector<PlayerOptions> Players(const std::vector<std::string_view>& arguments) {
    return *LineUp(ParsePlayerArguments(arguments)->lineUp);
}

/// Width, height, corrections and outputs as a player tells them; none when the checksum is wrong.
std::vector<int> Told(PlayerState state, const FaultScript& faults = {}) {
    Answer answer = HandleRequest(state, DevicePacket::Request(kParameterBlock, 0));
    Spoil(answer, faults);
    const Bytes& block = answer.reply.payload;
    if (block.empty() || Crc16Modbus(block) != 0) return {};  // as it is over a checksum of its own
    std::vector<int> words;
    for (const std::size_t at : {40U, 42U, 6489U, 6491U})
        words.push_back(block.at(at) + 256 * block.at(at + 1));
    EXPECT_EQ(answer.reply.header.payloadLength, state.screens.shortBlock ? 6517U : 6526U);
    return words;
}

TEST(WallPlayer, TellsItsOutputsInTheFormOfItsModelAndAsItsFaultsHaveIt) {
    const auto players = Players({"--count", "3", "--outputs", "2,1", "--resolution", "1280x720",
                                  "--fault", "bad-checksum", "--fault", "3:no-correction"});
    std::vector<PlayerState> states(3);
    for (std::size_t i = 0; i < 3; ++i) states[i].screens = players[i].screens;
    EXPECT_NE(states[0].screens.shortBlock, states[1].screens.shortBlock);
    EXPECT_THAT(Told(states[0]), ElementsAre(1280, 720, 2, 2));
    EXPECT_THAT(Told(states[1]), ElementsAre(1280, 720, 1, 1));
    EXPECT_THAT(Told(states[1], players[1].faults), ElementsAre());
    EXPECT_THAT(Told(states[2], players[2].faults), ElementsAre(1280, 720, 0, 0));
    EXPECT_THAT(Told(states[2], *ParseFaultScript("other-resolution")),
                ElementsAre(640, 360, 1, 1));
    for (const char* wrong : {"0:no-ack", "x:no-ack", ":no-ack", "1:nonsense"})
        EXPECT_FALSE(ParsePlayerArguments({"--fault", wrong})) << wrong;
    for (const char* wrong : {"", "3", "1,", "1,,2"})
        EXPECT_FALSE(ParsePlayerArguments({"--outputs", wrong})) << wrong;
    EXPECT_FALSE(LineUp(ParsePlayerArguments({"--fault", "2:no-ack"})->lineUp));
}

TEST(WallPlayer, KeepsAWallShowsItAndReadsItBackUnlessItRefuses) {
    test::TestNetwork network;
    PlayerOptions options;
    options.address = network.Player(0);
    options.state.timeline = "{}";  // would be printed, too
    std::vector<std::string> printed;
    options.printed = [&](std::string_view line) { printed.emplace_back(line); };
    SimulatedPlayer player(options);
    ASSERT_TRUE(player.Start());
    const std::string wall =
        R"({"configData":{"channelShowArea":[)"
        R"({"screenID":1,"enable":1,"leftTopX":0,"leftTopY":0,"rightBottomX":1919,"rightBottomY":1079},)"
        R"({"screenID":0,"enable":0}, 7]}})";
    const auto ask = [&](std::uint32_t block, std::string_view json, const char* faults) {
        player.SetFaults(*ParseFaultScript(faults));
        Socket tool = Socket::Tcp();
        EXPECT_TRUE(tool.Connect(player.Address(), 5s));
        tool.Send(DevicePacket::Request(kCommandSettings, block, json).Serialize());
        const bool endsItself = std::string_view(faults).ends_with("hang-up");
        return test::ReceiveExactly(tool, endsItself ? 0x10000 : kHeaderSize);
    };
    const Bytes refusal = Hex("5A5A5AA5 83 00 0000 0D00 FF00 00000000");
    const Bytes done = Hex("5A5A5AA5 83 00 0000 0D00 0000 00000000");
    EXPECT_EQ(ask(13, wall, "refused=13"), refusal);
    EXPECT_EQ(player.State().wall, FactoryState().wall);
    EXPECT_EQ(ask(13, wall, "unsupported=12,refused=15"), done);
    EXPECT_EQ(ReadState(WriteState(player.State()))->wall, wall);
    EXPECT_THAT(printed, ElementsAre("wall of 1920 x 1080: screen 1 at 0,0; screen 0 not used; "
                                     "screen 0 not used"));
    EXPECT_EQ(ask(12, "", "hang-up").size(), kHeaderSize + wall.size());
}

}  // namespace
}  // namespace sontaro::simulator
