#include "batchsend/player_inquiry.h"

#include <gmock/gmock.h>

#include "support/fake_player_channel.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using enum PlayerInquiry::Question;
using enum InquiryState;

/// A page that asks players from 192.168.1.21 on; each has a connection of its own.
struct Inquiry : testing::Test, ExchangeBench {
    Inquiry() {
        channel.sent = [this](const PacketHeader& header) {
            channel.log += fmt::format("{}:{}; ", channel.to.ip.substr(10), header.command);
        };
    }
    void Begin(int count, std::vector<PlayerInquiry::Question> questions = {kMode, kFreeSpace}) {
        std::vector<Target> players;
        for (int i = 0; i < count; ++i)
            players.push_back({"192.168.1." + std::to_string(21 + i), 9000, 0});
        inquiry.Ask(std::move(players), std::move(questions));
        timers.Advance(0ms);
    }
    void From(int octet) { player.ip = "192.168.1." + std::to_string(octet); }
    void Mode(int octet, std::uint16_t mode) {
        From(octet);
        WindowMessage message = Message(MessageId::kDeviceModes, kCommandDeviceModes, 0);
        message.record = std::make_unique<DeviceModes>(DeviceModes{mode});
        inquiry.Handle(message);
    }
    void Reply(MessageId id, std::uint8_t command, std::uint32_t selector, std::string_view text) {
        WindowMessage message = Message(id, command, selector, text);
        inquiry.Handle(message);
    }
    void Ends(int octet) {
        From(octet);
        Report(ExchangeNews::Kind::kLinkEnded);
        timers.Advance(0ms);
    }

    PlayerInquiry inquiry{exchange, [](std::size_t) {}};
};

TEST_F(Inquiry, AsksEachOfThePlayersOneThingAfterAnother) {
    Begin(2, {kMode, kFreeSpace, kVideos, kControlProtocol});
    EXPECT_EQ(channel.Log(), "close; 21:36; 22:36; ");
    Mode(22, 2);
    EXPECT_EQ(channel.Log(), "22:19; ");
    Reply(MessageId::kPlayerState, kCommandPlayerData, 0, std::string(kPlayerDataSize, '\x05'));
    EXPECT_EQ(channel.Log(), "22:10; ");
    Reply(MessageId::kPlayerState, kCommandPlayerState, 0, "{}");
    Reply(MessageId::kControlProtocol, kCommandSettings, 1, "{\"a\":1}");
    EXPECT_EQ(inquiry.StateOf(1), kAnswered);
    EXPECT_EQ(inquiry.FactsOf(1).mode, PlayerMode::kSlave);
    EXPECT_EQ(inquiry.FactsOf(1).free, 0x05050505ULL << 20);
    EXPECT_EQ(inquiry.FactsOf(1).videos, VideoList());
    EXPECT_EQ(inquiry.FactsOf(1).controlProtocol, "{\"a\":1}");
    timers.Advance(5s);
    EXPECT_EQ(inquiry.StateOf(0), kSilent);
    EXPECT_FALSE(inquiry.FactsOf(0).isReached || inquiry.IsAsking());
}

TEST_F(Inquiry, AsksNinePlayersAtOnce) {
    Begin(11, {kMode});
    EXPECT_THAT(channel.Log(), testing::EndsWith("28:36; 29:36; "));
    for (int octet = 21; octet < 29; ++octet) Mode(octet, 0);
    timers.Advance(5s);
    EXPECT_EQ(inquiry.StateOf(8), kSilent);
    EXPECT_EQ(channel.Log(), "close; 30:36; 31:36; ");
}

TEST_F(Inquiry, MakesNoConnectionInARoundInWhichALinkHasEnded) {
    channel.sent = [this, write = channel.sent](const PacketHeader& header) {
        write(header);
        if (channel.to.ip != "192.168.1.22") return;
        From(21);
        Report(ExchangeNews::Kind::kLinkEnded);
    };
    Begin(3, {kMode});
    EXPECT_EQ(channel.Log(), "close; 21:36; 22:36; ");
    EXPECT_EQ(inquiry.StateOf(0), kLinkLost);
    inquiry.AskAgain(0);
    Mode(22, 1);
    timers.Advance(0ms);
    EXPECT_EQ(channel.Log(), "close; 23:36; 21:36; ");
}

TEST_F(Inquiry, SaysWhoIsNotThereAndWhoHasGone) {
    channel.refusal = NotSent::kConnectFailed;
    Begin(1);
    EXPECT_EQ(inquiry.StateOf(0), kUnreachable);
    channel.refusal.reset();
    Begin(1);
    Mode(21, 1), Ends(21);
    EXPECT_EQ(inquiry.StateOf(0), kLinkLost);
    EXPECT_TRUE(inquiry.FactsOf(0).isReached && !inquiry.IsAsking());
}

TEST_F(Inquiry, AsksAgainWhatEndedBecauseAnotherPlayerDoesNotKnowAQuestion) {
    Begin(2);
    From(21);
    EXPECT_EQ(Report(ExchangeNews::Kind::kNotSupported, kCommandDeviceModes), Boxes::kMuted);
    channel.Log();
    Ends(21), Ends(22);
    EXPECT_EQ(channel.Log(), "close; 21:19; 22:36; ");
}

}  // namespace
}  // namespace sontaro::test
