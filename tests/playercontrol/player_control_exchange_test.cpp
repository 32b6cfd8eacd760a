// The procedure over real links, against a simulated player.
#include <gmock/gmock.h>

#include "base/window_titles.h"
#include "exchange/plain_loop.h"
#include "exchange/switchboard.h"
#include "playercontrol/player_control_run.h"
#include "simulator/simulated_player.h"
#include "support/literals.h"
#include "support/recording_prompts.h"
#include "support/test_network.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using State = SettingsState;

constexpr const char* kMainWindow = "main window";

struct PlayerControlExchange : testing::Test, PlayerControlView {
    PlayerControlExchange() {
        options.address = network.Player(0);
        Start();
    }
    void Start() {
        player.emplace(options);
        EXPECT_TRUE(player->Start().ok());
        run.emplace(*this, prompts, ExchangeServices{channel, hub, loop},
                    Target{FormatIpv4(options.address), player->Address().port, 0});
    }
    ~PlayerControlExchange() override { directory.ShutDown(); }
    void ShowRows() override {}
    void ShowConfirmed() override {}
    void StateChanged() override {}
    void ShowPlayers() override {}
    void ShowVideos() override {}

    void Suffer(const char* faults) { player->SetFaults(*simulator::ParseFaultScript(faults)); }
    void Await(State state) {
        EXPECT_TRUE(loop.RunUntil([&] { return run->Settings().State() == state; }, 5s))
            << static_cast<int>(run->Settings().State());
    }
    void Read(State state = State::kRead) { run->Settings().Read(), Await(state); }

    TestNetwork network;
    simulator::PlayerOptions options;
    std::optional<simulator::SimulatedPlayer> player;
    PlainLoop loop;
    WindowDirectory directory{loop};
    RecordingPrompts prompts;
    ThreadGroup threads;
    ExchangeHub hub;
    Switchboard switchboard{kMainWindow, {directory, threads, prompts}, hub};
    MainWindowChannel channel{directory, kMainWindow};
    std::optional<PlayerControlRun> run;
    WindowDirectory::Registration mainWindow = directory.Register(
        kMainWindow, [this](WindowMessage& message) { switchboard.Handle(message); });
    WindowDirectory::Registration dialog =
        directory.Register(TitleOf(Window::kPlayerControl),
                           [this](WindowMessage& message) { run->Settings().Handle(message); });
};

TEST_F(PlayerControlExchange, WhatIsAddedFromAListedCategoryIsKeptByThePlayer) {
    Read();
    const std::string category = run->Videos().screens[1][0].name;
    const std::string group = run->AddType(category).value();
    EXPECT_TRUE(run->Edit({group + "/SendCmd", "A5 FF"}).outcome == EditAnswer::Outcome::kAccepted);
    run->Save();
    Await(State::kSaved);
    EXPECT_THAT(prompts.boxes, testing::ElementsAre(Notice("Changes have been saved!")));
    PlayerControlModel kept;
    EXPECT_TRUE(ReadPlayerControl(player->State().playerControl, kept).ok());
    EXPECT_EQ(kept.players[0].types[2].name + kept.players[0].types[2].sendCommand, "霓虹之夜a5ff");
    EXPECT_THAT(player->State().playerControl, testing::HasSubstr("amber"));
}

TEST_F(PlayerControlExchange, NamesInsteadOfVideosAreNoList) {
    options.olderNames = true;
    Start(), Read(State::kRefused);
    EXPECT_TRUE(player->ReceivedPackets().size() == 1 && run->Note());
}

TEST_F(PlayerControlExchange, IsToldWhatThePlayerDoesNotDo) {
    Suffer("bad-list");
    Read(State::kRefused);
    Suffer("bad-json");
    Read(State::kUnreadable);
    Suffer("");
    Read();
    run->AddPlayer();
    Suffer("refuse-saves");
    const std::string before = player->State().playerControl;
    run->Save();
    Await(State::kNotSupported);
    EXPECT_EQ(player->State().playerControl, before);
    EXPECT_TRUE(run->Settings().HasUnsentChanges());
}

}  // namespace
}  // namespace sontaro::test
