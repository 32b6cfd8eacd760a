#include "app/switchboard.h"

#include <gmock/gmock.h>

#include "base/window_titles.h"
#include "simulator/player_group.h"
#include "support/link_surroundings.h"
#include "support/literals.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

/// The main window's half and two simulated players, of which the first may have faults.
struct MainWindowHalf : testing::Test {
    MainWindowHalf() {
        SetApplicationTitle("Star 1.0");
        EXPECT_TRUE(players.Start());
    }

    static simulator::PlayerOptions PlayerAt(const Ipv4Address& address) {
        simulator::PlayerOptions options;
        options.address = address;
        options.pacing.spacing = 120ms;
        return options;
    }
    void SetFaults(std::string_view script) {
        players.Player(0).SetFaults(*simulator::ParseFaultScript(script));
    }
    void Ask(std::size_t player, Command command) {
        const Endpoint at = players.Player(player).Address();
        const auto bytes = DevicePacket::Request(command, 0x10000).Serialize();
        surroundings.directory.Send("Star 1.0", {MessageId::kSendRequest, 0,
                                                 SendRequest{{{FormatIpv4(at.address), at.port, 5}},
                                                             std::make_shared<const Bytes>(bytes)},
                                                 0});
    }
    void Await(const std::function<bool()>& holds) {
        ASSERT_TRUE(surroundings.ui.PumpUntil(holds));
    }
    void AskAndAwaitData(std::size_t player) {
        Ask(player, kCommandPlayerData);
        Await([this] { return !remote.messages.empty(); });
        EXPECT_TRUE(std::get<ReplyRecord>(remote.messages[0].record).payload == Pattern(207'496));
    }

    LinkSurroundings surroundings;
    simulator::PlayerGroup players{
        {PlayerAt(surroundings.network.Player(0)), PlayerAt(surroundings.network.Player(1))}};
    FakeWindow remote{surroundings.directory, "Star 1.0Video Control"};
    FakeWindow parameters{surroundings.directory, "Set Param"};
    std::unique_ptr<Switchboard> switchboard =
        std::make_unique<Switchboard>("Star 1.0", surroundings.Services());
    FakeWindow window{surroundings.directory, "Star 1.0",
                      [this](auto& message) { switchboard->Handle(message); }};
};

struct Fault : NamedCase {
    const char* script;
    std::size_t bytes = 0;  // that arrive from the faulty player
    bool endsLink = false;
    std::vector<std::string> texts = {};
};

struct CutOrLateReply : MainWindowHalf, testing::WithParamInterface<Fault> {};

TEST_P(CutOrLateReply, ReachesItsWindowWhole) {
    SetFaults(GetParam().script);
    AskAndAwaitData(0);
}

const Fault kHarmless[] = {{"NoFault", ""},
                           {"HeaderFirst", "cut=16"},
                           {"InPieces", "cut=1000"},
                           {"AfterGarbage", "garbage"},
                           {"Late", "delay=100"}};
INSTANTIATE_TEST_SUITE_P(Every, CutOrLateReply, testing::ValuesIn(kHarmless), kCaseName);

struct SickPlayer : MainWindowHalf, testing::WithParamInterface<Fault> {};

TEST_P(SickPlayer, DoesNotKeepTheNextAnswerFromItsWindow) {
    SetFaults(GetParam().script);
    Ask(0, kCommandPlayerData);
    ASSERT_TRUE(players.Player(0).WaitForPacket([](const auto&) { return true; }, 5s));
    Await([this] {
        return window.bytes.size() >= GetParam().bytes &&
               (window.Has(LinkCode::kReceiveEnded) || !GetParam().endsLink);
    });
    EXPECT_EQ(window.bytes.size(), GetParam().bytes);
    EXPECT_TRUE(remote.messages.empty());
    EXPECT_EQ(surroundings.prompts.texts, GetParam().texts);
    EXPECT_EQ(!parameters.messages.empty(), GetParam().endsLink);
    AskAndAwaitData(1);
}

const Fault kSicknesses[] = {
    {"CutsItsHeaderToBytes", "cut=1", 207'512},
    {"CutsItsHeaderToPieces", "cut=7", 207'512},
    {"AnnouncesTooMuch", "oversize", 207'512},
    {"IsSilent", "silent"},
    {"Drops", "drop", 0, true},
    {"DiesInAReply", "close-after=100000", 100'000, true},
    {"DiesInAHeader", "close-after=9", 9, true},
    {"SupportsNothing",
     "not-supported",
     16,
     false,
     {"This function is not supported in the current version!"}},
};
INSTANTIATE_TEST_SUITE_P(Every, SickPlayer, testing::ValuesIn(kSicknesses), kCaseName);

TEST_F(MainWindowHalf, ReachesARefusingPlayerOnceItListens) {
    SetFaults("refuse");
    Ask(0, kCommandPlayerData);
    EXPECT_THAT(surroundings.prompts.texts, ElementsAre("Failed to connect player！"));
    SetFaults("");
    AskAndAwaitData(0);
}

TEST_F(MainWindowHalf, LetsRepliesInWhileAMessageBoxIsOpen) {
    surroundings.prompts.whileShown = [this] { AskAndAwaitData(1); };
    players.Player(0).ChangeState([](simulator::PlayerState& state) { state.layoutLocked = true; });
    Ask(0, kCommandLayoutState);
    Await([this] { return !remote.messages.empty(); });
    EXPECT_EQ(surroundings.prompts.texts.size(), 1U);
}

TEST_F(MainWindowHalf, EndsWhileAPlayerKeepsTalking) {
    SetFaults("cut=1000");
    Ask(0, kCommandPlayerData);
    surroundings.ui.AwaitCaller();
    switchboard.reset();
    EXPECT_TRUE(players.Player(0).WaitForConnectionCount(0, 5s));
}

}  // namespace
}  // namespace sontaro::test
