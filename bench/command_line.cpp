#include <fcntl.h>
#include <fmt/core.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <thread>

#include "base/path_text.h"
#include "bench/bare_backup.h"
#include "bench/figures.h"
#include "bench/program.h"
#include "bench/stopwatch.h"
#include "cli/exit_code.h"
#include "cli/program.h"

namespace sontaro::bench {

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr std::size_t kPlayers = 100;
constexpr std::size_t kParallel = 4;  // as sontaro-cli has by itself
constexpr std::uint16_t kPort = 9000;

/// Milliseconds from the start of a program to its end, its output lost.
double MillisecondsOf(const char* path, const char* argument) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    char* const arguments[] = {const_cast<char*>(path), const_cast<char*>(argument), nullptr};
    const Stopwatch stopwatch;
    pid_t process = 0;
    if (posix_spawn(&process, path, &actions, nullptr, arguments, environ) != 0)
        throw std::runtime_error(fmt::format("cannot start {}", path));
    int status = 0;
    waitpid(process, &status, 0);
    const double milliseconds = stopwatch.Seconds() * 1e3;
    posix_spawn_file_actions_destroy(&actions);
    if (status != 0) throw std::runtime_error(fmt::format("{} has failed", path));
    return milliseconds;
}

/// Simulated players in a process of their own, at addresses of this process alone.
class Venue {
   public:
    Venue() {
        for (std::size_t i = 0; i < kPlayers; ++i) {
            endpoints.push_back(At(static_cast<std::uint8_t>(2 + i)));
            DeviceRecord player;
            player.ip = FormatIpv4(endpoints.back().address);
            player.tcpPort = kPort;
            player.id = fmt::format("HALL{}", i + 1);
            player.mac = fmt::format("02:00:00:00:00:{:02X}", i);
            players.push_back(player);
        }
        for (const Stopwatch stopwatch; !Socket::Tcp().Connect(endpoints.back(), 1s);) {
            constexpr double kPatienceSeconds = 10;
            if (stopwatch.Seconds() > kPatienceSeconds)
                throw std::runtime_error("the simulated players do not start");
            std::this_thread::sleep_for(5ms);
        }
    }

    std::vector<Endpoint> endpoints;
    std::vector<DeviceRecord> players;

   private:
    static Endpoint At(std::uint8_t number) {
        const auto process = static_cast<unsigned>(getpid());
        return {{{127, static_cast<std::uint8_t>(1 + process / 256 % 254),
                  static_cast<std::uint8_t>(process % 256), number}},
                kPort};
    }

    const Program program_{{PLAYER_PROGRAM, "--count", std::to_string(kPlayers), "--base-address",
                            FormatIpv4(At(2).address), "--port", std::to_string(kPort), "--spacing",
                            "0"}};
};

/// A new folder each time, which goes with the object.
class Backups {
   public:
    Backups() {
        std::string folder = fs::temp_directory_path() / "sontaro-bench-XXXXXX";
        if (!mkdtemp(folder.data())) throw std::runtime_error("no folder for backups");
        folder_ = folder;
    }
    ~Backups() {
        std::error_code leftBehind;
        fs::remove_all(folder_, leftBehind);
    }
    Backups(const Backups&) = delete;
    Backups& operator=(const Backups&) = delete;

    [[nodiscard]] fs::path Next() { return folder_ / std::to_string(number_++); }

   private:
    fs::path folder_;
    int number_ = 0;
};

class NoText : public cli::TextSink {
   public:
    void Write(std::string_view) override {}
};

/// Whom there is to be found is known: how long a search takes is the network's affair.
double SecondsOfBackup(const Venue& venue, const fs::path& folder) {
    NoText nowhere;
    cli::ProgramWays ways{nowhere, nowhere};
    ways.config = folder / "config";
    ways.find = [&](const FindPlan&) -> Result<std::vector<DeviceRecord>> { return venue.players; };
    const Stopwatch stopwatch;
    const int code = cli::RunProgram({"backup", TextOfPath(folder / "backups"), "--all", "--data",
                                      TextOfPath(folder / "data"), "--json"},
                                     ways);
    if (code != cli::kAllWell) throw std::runtime_error("the backup has failed");
    return stopwatch.Seconds();
}

}  // namespace

std::vector<Figure> CommandLine() {
    const Comparison help = CompareInTurn(
        101, [] { return MillisecondsOf(CLI_PROGRAM, "--help"); },
        [] { return MillisecondsOf(PRINTED_HELP_PROGRAM, "--help"); });
    const Venue venue;
    Backups folders;
    const Comparison backup = CompareInTurn(
        5, [&] { return SecondsOfBackup(venue, folders.Next()); },
        [&] { return SecondsOfBareBackup(venue.endpoints, folders.Next(), kParallel); });
    return {
        {"command_line_help", help.ratio, Goal::kAtMost, 1.5,
         fmt::format("sontaro-cli {:.2f} ms, the same text {:.2f} ms", help.ours, help.baseline)},
        {"venue_backup", backup.ratio, Goal::kAtMost, 1.5,
         fmt::format("{} players: {:.0f} ms, bare {:.0f} ms", kPlayers, backup.ours * 1e3,
                     backup.baseline * 1e3)}};
}

}  // namespace sontaro::bench
