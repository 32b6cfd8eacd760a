#include <gtest/gtest.h>

#include "base/json.h"
#include "simulator/settings_commands.h"
#include "support/literals.h"

namespace sontaro::simulator {
namespace {

using test::Hex;

constexpr std::uint32_t kUpload = 0x00010001;
constexpr std::uint32_t kUploadAndRestart = 0x103;  // the command word

struct ServedControlProtocol : testing::Test {
    Answer Ask(std::uint32_t commandWord, std::uint32_t selectorWord, std::string_view json = {},
               std::string_view faults = {}) {
        Answer answer =
            HandleRequest(state, DevicePacket::Request(commandWord, selectorWord, json));
        Spoil(answer, *ParseFaultScript(faults));
        return answer;
    }
    PlayerState state = FactoryState();
};

TEST_F(ServedControlProtocol, ComesWithEverySlotOfItsLists) {
    const auto document = *ParseJson(AsText(Ask(3, 1).reply.payload));
    for (const auto& [section, slots, name] : {std::tuple{"VideoType", 64U, "TypeName"},
                                               {"AudioType", 64U, "TypeName"},
                                               {"LayOut", 64U, "LayOutName"},
                                               {"Projector", 30U, "IP"}}) {
        ASSERT_EQ(document[section].size(), slots) << section;
        EXPECT_FALSE(document[section][0][name].asString().empty()) << section;
        EXPECT_EQ(document[section][slots - 1][name], "") << section;
    }
    EXPECT_EQ(document["Projector"][29]["Cmd"].size(), 6U);
    EXPECT_TRUE(document["KtvDev"].isObject() && document["Serial"].isObject());
}

TEST_F(ServedControlProtocol, IsKeptAndAcknowledgedWithTheFlagOfItsUpload) {
    const Answer saved = Ask(kUploadAndRestart, kUpload, R"({"a":1})");
    EXPECT_EQ(saved.reply.Serialize(), Hex("5A5A5AA5 83 01 0000 0100 0100 00000000"));
    EXPECT_TRUE(Ask(3, kUpload, "[1]").silent);
    EXPECT_TRUE(Ask(3, kUpload, R"({"b":2})", "no-ack").silent);
    state = *ReadState(WriteState(state));
    EXPECT_EQ(Ask(3, 1).reply.Serialize(),
              Hex("5A5A5AA5 83 00 0000 0100 0000 07000000 7B2262223A327D"));
}

TEST_F(ServedControlProtocol, IsSpoiltAsTheFaultsHaveIt) {
    EXPECT_EQ(Ask(3, 1, "", "result=7").reply.header.argument, 7);
    EXPECT_EQ(Ask(3, kUpload, "{}", "result=7").reply.header.argument, 1);
    EXPECT_FALSE(ParseJson(AsText(Ask(3, 1, "", "bad-json").reply.payload)));
    EXPECT_FALSE(ParseFaultScript("result=65536") || ParseFaultScript("no-second-part=1"));
}

TEST_F(ServedControlProtocol, ItsOtherDataComeInTwoPartsAndAsNames) {
    constexpr std::uint32_t kSecondPart = 32767U << 16;
    for (const std::uint32_t part : {0U, 1U << 16, kSecondPart}) {
        const DevicePacket reply = Ask(19, part).reply;
        EXPECT_EQ(reply.payload.size(), kPlayerDataSize);
        EXPECT_EQ(reply.header.argument, part >> 16);
        EXPECT_EQ(Ask(19, part, "", "no-second-part").silent, part == kSecondPart);
    }
    state.layouts = {"one.mp4", "二.lay"};
    for (const auto& [command, selector] : {std::pair{10U, 1U}, {52U, 0U}})
        EXPECT_EQ(AsText(Ask(command, selector).reply.payload), "one.mp4?二.lay?");
}

TEST_F(ServedControlProtocol, KeepAlivesTakeTheSerialBytesOneByOne) {
    state.serialBytes = {Hex("A501"), Hex("02")};
    EXPECT_EQ(Ask(50, 0).reply.Serialize(), Hex("5A5A5AA5 B2 00 0000 0000 0000 02000000 A501"));
    EXPECT_EQ(Ask(50, 0).reply.payload, Hex("02"));
    EXPECT_TRUE(Ask(50, 0).reply.payload.empty());
}

}  // namespace
}  // namespace sontaro::simulator
