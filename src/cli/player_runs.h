// The same for many players, several at a time.
#pragma once

#include <functional>
#include <vector>

#include "cli/player_choice.h"
#include "cli/player_report.h"
#include "session/session.h"

namespace sontaro::cli {

/// How the sessions of a call are made, and how many there may be at once.
struct RunSettings {
    SessionOptions session;
    std::size_t parallel = 1;
};
/// Those that the options of the call say. Fails with a reason for the user.
[[nodiscard]] Result<RunSettings> RunSettingsOf(const Surroundings& surroundings);

/// Calls `work` with every player, `parallel` at a time and each on a thread of its own, until the
/// program is to end. `done` hears of each on the calling thread, in the order of the players, as
/// soon as those before it are through. Whoever has not had its turn by then is cancelled.
void ForEachPlayer(const std::vector<DeviceRecord>& players, std::size_t parallel,
                   std::stop_token stop,
                   const std::function<PlayerReport(const DeviceRecord&)>& work,
                   const std::function<void(const DeviceRecord&, PlayerReport&)>& done);

/// Opens a session with a player and has `work` use it; a report of why there is none, otherwise.
[[nodiscard]] PlayerReport WithSession(const DeviceRecord& player, const SessionOptions& options,
                                       const std::function<PlayerReport(Session&)>& work);

/// A whole command: finds the players, does `work` with each over a session, and tells all of it:
/// rows under `headings`, lines, objects, failures. How the program is to end.
[[nodiscard]] int RunForPlayers(
    const Surroundings& surroundings, Identity identity, const std::vector<std::string>& headings,
    const std::function<PlayerReport(Session&, const DeviceRecord&)>& work);

/// Tells of players that have not answered: as failures.
void TellMissing(const Surroundings& surroundings, const ChosenPlayers& chosen);
/// Tells why a command cannot begin. How the program is to end then: wrong use.
[[nodiscard]] int TellWrongUse(const Surroundings& surroundings, const std::string& why);
/// The end of a command whose players have been found; none: there are some.
[[nodiscard]] std::optional<int> EndWithoutPlayers(const Surroundings& surroundings,
                                                   const ChosenPlayers& chosen);

/// Whether what cannot be taken back may be done: it is asked for `question` on a terminal, unless
/// the call says yes. How the program is to end otherwise.
[[nodiscard]] std::optional<int> EndUnlessConfirmed(const Surroundings& surroundings,
                                                    const std::string& question);

}  // namespace sontaro::cli
