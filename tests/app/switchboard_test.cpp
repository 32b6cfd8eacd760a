#include "app/switchboard.h"

#include <gmock/gmock.h>

#include "base/window_titles.h"
#include "simulator/player_group.h"
#include "support/fake_window.h"
#include "support/link_surroundings.h"
#include "support/literals.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kTitle[] = "Star 1.0";
constexpr std::size_t kDataReply = kHeaderSize + kPlayerDataSize;

/// The main window's half with two simulated players: the first may have faults, the second is
/// sound.
struct MainWindowHalf : testing::Test {
    MainWindowHalf() {
        SetApplicationTitle(kTitle);
        EXPECT_TRUE(players.Start());
    }

    static std::vector<simulator::PlayerOptions> TwoPlayers(const TestNetwork& network) {
        std::vector<simulator::PlayerOptions> options(2);
        for (std::size_t i = 0; i < 2; ++i) {
            options[i].address = network.Player(i);
            options[i].pacing.spacing = std::chrono::milliseconds(120);
        }
        return options;
    }
    void SetFaults(std::string_view script) {
        players.Player(0).SetFaults(*simulator::ParseFaultScript(script));
    }
    void Ask(std::size_t player, const DevicePacket& packet) {
        const Endpoint address = players.Player(player).Address();
        const Target target{FormatIpv4(address.address), address.port, 5};
        surroundings.directory.Send(
            kTitle, {MessageId::kSendRequest, 0,
                     SendRequest{{target}, std::make_shared<const Bytes>(packet.Serialize())}, 0});
    }
    void AskForData(std::size_t player) {
        Ask(player, DevicePacket::Request(kCommandPlayerData, 0x10000));
    }
    void Await(const std::function<bool()>& holds) {
        ASSERT_TRUE(surroundings.ui.PumpUntil(holds));
    }
    void AwaitData() {
        Await([this] { return !remote.received.empty(); });
        const auto& record = std::get<ReplyRecord>(remote.received[0].message.record);
        EXPECT_TRUE(record.payload == Pattern(kPlayerDataSize));
    }

    LinkSurroundings surroundings;
    simulator::PlayerGroup players{TwoPlayers(surroundings.network)};
    FakeWindow remote{surroundings.directory, "Star 1.0Video Control"};
    FakeWindow parameters{surroundings.directory, "Set Param"};
    std::unique_ptr<Switchboard> switchboard =
        std::make_unique<Switchboard>(kTitle, surroundings.Services());
    std::size_t bytesReceived = 0;
    bool linkEnded = false;
    WindowDirectory::Registration window =
        surroundings.directory.Register(kTitle, [this](WindowMessage& message) {
            if (const auto* event = std::get_if<LinkEvent>(&message.record)) {
                bytesReceived += event->bytes.size();
                linkEnded = linkEnded || event->code == LinkCode::kReceiveEnded;
            }
            switchboard->Handle(message);
        });
};

struct Delivery : NamedCase {
    const char* faults;
};

class AnsweredRequest : public MainWindowHalf, public testing::WithParamInterface<Delivery> {};

TEST_P(AnsweredRequest, ReachesItsWindowWhole) {
    SetFaults(GetParam().faults);
    AskForData(0);
    AwaitData();
    EXPECT_THAT(surroundings.prompts.texts, IsEmpty());
}

const Delivery kDeliveries[] = {{"AtOnce", ""},
                                {"HeaderFirst", "cut=16"},
                                {"InPieces", "cut=1000"},
                                {"AfterGarbage", "garbage"},
                                {"Late", "delay=100"}};
INSTANTIATE_TEST_SUITE_P(Every, AnsweredRequest, testing::ValuesIn(kDeliveries), CaseName());

struct Sickness : NamedCase {
    const char* faults;
    std::size_t bytes;  // that arrive from the sick player
    bool endsLink = false;
    std::vector<std::string> texts = {};
};

class SickPlayer : public MainWindowHalf, public testing::WithParamInterface<Sickness> {};

TEST_P(SickPlayer, DoesNotKeepTheNextAnswerFromItsWindow) {
    SetFaults(GetParam().faults);
    AskForData(0);
    ASSERT_TRUE(
        players.Player(0).WaitForPacket([](const auto&) { return true; }, std::chrono::seconds(5)));
    Await([&] { return bytesReceived >= GetParam().bytes && (linkEnded || !GetParam().endsLink); });
    EXPECT_EQ(bytesReceived, GetParam().bytes);
    EXPECT_THAT(remote.received, IsEmpty());
    EXPECT_EQ(surroundings.prompts.texts, GetParam().texts);
    EXPECT_EQ(!parameters.received.empty(), GetParam().endsLink);
    AskForData(1);
    AwaitData();
}

const Sickness kSicknesses[] = {
    {"CutsItsHeaderToBytes", "cut=1", kDataReply},
    {"CutsItsHeaderToPieces", "cut=7", kDataReply},
    {"AnnouncesTooMuch", "oversize", kDataReply},
    {"IsSilent", "silent", 0},
    {"Drops", "drop", 0, true},
    {"DiesInAReply", "close-after=100000", 100'000, true},
    {"DiesInAHeader", "close-after=9", 9, true},
    {"SupportsNothing",
     "not-supported",
     kHeaderSize,
     false,
     {"This function is not supported in the current version!"}},
};
INSTANTIATE_TEST_SUITE_P(Every, SickPlayer, testing::ValuesIn(kSicknesses), CaseName());

TEST_F(MainWindowHalf, RefusingPlayerIsReportedAndReachedOnceItListens) {
    SetFaults("refuse");
    AskForData(0);
    EXPECT_THAT(surroundings.prompts.texts, ElementsAre("Failed to connect player！"));
    SetFaults("");
    AskForData(0);
    AwaitData();
}

TEST_F(MainWindowHalf, MessageBoxOverAReplyLetsTheNextRepliesIn) {
    surroundings.prompts.whileShown = [this] {
        AskForData(1);
        AwaitData();
    };
    players.Player(0).ChangeState([](simulator::PlayerState& state) { state.layoutLocked = true; });
    Ask(0, DevicePacket::Request(kCommandLayoutState, 0));
    Await([this] { return !remote.received.empty(); });
    EXPECT_THAT(surroundings.prompts.texts,
                ElementsAre("The layout is locked, please unlock it first!"));
}

TEST_F(MainWindowHalf, EndsWhileAPlayerKeepsTalking) {
    SetFaults("cut=1000");
    AskForData(0);
    AskForData(1);
    surroundings.ui.AwaitCaller();
    window = {};
    switchboard.reset();
    EXPECT_TRUE(players.Player(0).WaitForConnectionCount(0, std::chrono::seconds(5)));
}

}  // namespace
}  // namespace sontaro::test
