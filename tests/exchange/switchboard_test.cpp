#include "exchange/switchboard.h"

#include <gmock/gmock.h>

#include "base/window_titles.h"
#include "simulator/player_group.h"
#include "support/link_surroundings.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;

/// The main window's half and two simulated players, of which the first may have faults.
struct MainWindowHalf : testing::Test, LinkSurroundings {
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
        directory.Send("Star 1.0", {MessageId::kSendRequest, 0,
                                    SendRequest{{{FormatIpv4(at.address), at.port, 5}},
                                                std::make_shared<const Bytes>(bytes)},
                                    0});
    }
    /// Whether the remote control has been given the player's whole block.
    void ExpectData(bool given) {
        ASSERT_EQ(!remote.messages.empty(), given);
        const Bytes pattern = Pattern(207'496);
        for (const WindowMessage& message : std::exchange(remote.messages, {})) {
            if (std::get_if<PlayerStatus>(&message.record)) continue;
            Bytes block = std::get<ReplyRecord>(message.record).payload;
            std::copy_n(&pattern[4], 4, &block[4]);  // the free space
            EXPECT_TRUE(block == pattern);
        }
    }
    void AskAndAwaitData(std::size_t player) {
        Ask(player, kCommandPlayerData);
        Await([this] { return !remote.messages.empty(); });
        ExpectData(true);
    }

    simulator::PlayerGroup players{{PlayerAt(network.Player(0)), PlayerAt(network.Player(1))}};
    ExchangeHub hub;
    FakeWindow remote{directory, "Star 1.0Video Control"};
    FakeWindow parameters{directory, "Set Param"};
    std::unique_ptr<Switchboard> switchboard =
        std::make_unique<Switchboard>("Star 1.0", Services(), hub);
    FakeWindow window{directory, "Star 1.0",
                      [this](auto& message) { switchboard->Handle(message); }};
};

struct Fault : NamedCase {
    const char* script;
    std::size_t bytes;                     // that arrive from the faulty player
    std::optional<bool> answered = false;  // none: when the system has joined the header's pieces
    bool endsLink = false;
    std::vector<Box> boxes = {};
};

struct FaultyPlayer : MainWindowHalf, testing::WithParamInterface<Fault> {};

TEST_P(FaultyPlayer, IsAnsweredForWholeOrNotAtAllAndTheNextPlayerIsHeard) {
    SetFaults(GetParam().script);
    Ask(0, kCommandPlayerData);
    ASSERT_TRUE(players.Player(0).WaitForPacket([](const auto&) { return true; }, 5s));
    Await([this] {
        return window.bytes.size() >= GetParam().bytes &&
               (window.Has(LinkCode::kReceiveEnded) || !GetParam().endsLink);
    });
    EXPECT_EQ(window.bytes.size(), GetParam().bytes);
    EXPECT_EQ(prompts.boxes, GetParam().boxes);
    EXPECT_EQ(!parameters.messages.empty(), GetParam().endsLink);
    ExpectData(GetParam().answered.value_or(window.firstChunk >= kHeaderSize));
    AskAndAwaitData(1);
}

// clang-format off
const Fault kFaults[] = {
    {"None", "", 207'512, true}, {"CutBehindTheHeader", "cut=16", 207'512, true},
    {"CutToPieces", "cut=1000", 207'512, true}, {"Garbage", "garbage", 207'544, true},
    {"Late", "delay=100", 207'512, true}, {"CutToBytes", "cut=1", 207'512, {}}, {"CutInTheHeader", "cut=7", 207'512, {}},
    {"Oversize", "oversize", 207'512}, {"Silent", "silent", 0}, {"Drops", "drop", 0, false, true},
    {"DiesInAReply", "close-after=100000", 100'000, false, true}, {"DiesInAHeader", "close-after=9", 9, false, true},
    {"SupportsNothing", "not-supported", 16, false, false, {Warning("This function is not supported in the current version!")}},
};
// clang-format on
INSTANTIATE_TEST_SUITE_P(Every, FaultyPlayer, testing::ValuesIn(kFaults), kCaseName);

TEST_F(MainWindowHalf, LetsRepliesInWhileAMessageBoxIsOpen) {
    prompts.whileShown = [this] { AskAndAwaitData(1); };
    players.Player(0).ChangeState([](simulator::PlayerState& state) { state.layoutLocked = true; });
    Ask(0, kCommandLayoutState);
    Await([this] { return !prompts.boxes.empty(); });
}

TEST_F(MainWindowHalf, EndsWhileAPlayerKeepsTalking) {
    SetFaults("cut=1000");
    Ask(0, kCommandPlayerData);
    ui.AwaitCaller();
    switchboard.reset();
    EXPECT_TRUE(players.Player(0).WaitForConnectionCount(0, 5s));
}

}  // namespace
}  // namespace sontaro::test
