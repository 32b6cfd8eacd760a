#include <fmt/format.h>

#include <atomic>
#include <csignal>
#include <fstream>
#include <iostream>
#include <mutex>

#include "base/path_text.h"
#include "base/program_arguments.h"
#include "simulator/player_arguments.h"
#include "simulator/terminal.h"

namespace sontaro::simulator {

namespace {

enum ExitCode : int { kEnded = 0, kFailed = 1, kBadArguments = 2 };

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): set by a signal
std::atomic_flag stopWanted = ATOMIC_FLAG_INIT;

extern "C" void OnStopSignal(int) {
    stopWanted.test_and_set();
    stopWanted.notify_all();
}

void Complain(const std::string& reason) { std::cerr << "sontaro-player: " << reason << '\n'; }

int Fail(ExitCode code, const std::string& reason) {
    Complain(reason);
    return code;
}

/// What the players send to their ports, line by line.
class PrintedCommands {
   public:
    void AddTo(PlayerOptions& player) {
        player.printed = [this, name = FormatIpv4(player.address)](std::string_view command) {
            const std::lock_guard lock(mutex_);
            std::cout << fmt::format("{} {}\n", name, command) << std::flush;
        };
    }

   private:
    std::mutex mutex_;
};

void SayReady(PlayerGroup& players) {
    for (std::size_t i = 0; i < players.Size(); ++i) {
        const SimulatedPlayer& player = players.Player(i);
        const Endpoint address = player.Address();
        std::cout << fmt::format("{}:{} {} ready, player {} of timelines\n",
                                 FormatIpv4(address.address), address.port, player.Identity().id,
                                 i + 1)
                  << std::flush;
    }
}

void TakeLine(PlayerGroup& players, std::string_view text) {
    if (text.find_first_not_of(" \t\r") == std::string_view::npos) return;
    auto line = ParseSerialLine(text, players.Size());
    if (!line)
        Complain(
            "not understood; type bytes such as A5 01 02, or 2: A5 01 02 for the second player");
    else if (!players.Player(line->player).AddSerialBytes(std::move(line->bytes)))
        Complain("dropped: too much is waiting to be fetched");
}

int RunPlayers(const std::vector<PlayerOptions>& options) {
    PlayerGroup players(options);
    if (const Status started = players.Start(); !started) return Fail(kFailed, started.reason());
    SayReady(players);
    const Terminal terminal([&](std::string_view line) { TakeLine(players, line); });
    stopWanted.wait(false);
    players.Stop();
    return kEnded;
}

int Run(const PlayerArguments& arguments) {
    auto players = LineUp(arguments.lineUp);
    if (!players) return Fail(kBadArguments, players.reason());
    std::ofstream file;
    if (!arguments.log.empty()) file.open(arguments.log);
    if (!file) return Fail(kFailed, "cannot write " + TextOfPath(arguments.log));
    EventLog log(file);
    PrintedCommands printed;
    for (PlayerOptions& player : *players) {
        player.log = file.is_open() ? &log : nullptr;
        player.remembersRequests = false;
        printed.AddTo(player);
    }
    return RunPlayers(*players);
}

}  // namespace

int Main(const std::vector<std::string>& texts) {
    EnsureInput();
    const Result<PlayerArguments> arguments = ParsePlayerArguments({texts.begin(), texts.end()});
    if (!arguments) return Fail(kBadArguments, arguments.reason() + " (see --help)");
    if (arguments->help) {
        std::cout << PlayerHelp();
        return kEnded;
    }
    std::signal(SIGINT, OnStopSignal);
    std::signal(SIGTERM, OnStopSignal);
    return Run(*arguments);
}

}  // namespace sontaro::simulator

int main(int argc, char** argv) try {
    return sontaro::simulator::Main(sontaro::ProgramArguments(argc, argv));
} catch (const std::exception& error) {
    return sontaro::simulator::Fail(sontaro::simulator::kFailed, error.what());
}
