// Documents on their way to players.
#pragma once

#include "cli/player_report.h"
#include "cli/surroundings.h"
#include "session/player_calls.h"
#include "venue/compare.h"

namespace sontaro::cli {

/// What is to be written to a player in place of its present document.
struct BlockWrite {
    const SettingsBlockKind& kind;
    const std::string& present;  ///< as it was read
    const std::string& text;
    Restart restart = Restart::kNo;
};

/// Keeps the present document, writes the other one, reads it back, and compares. Why it has
/// failed; none: the player holds what it was given, or restarts with it.
[[nodiscard]] std::optional<Failure> WriteWithProof(const Surroundings& surroundings,
                                                    Session& session, const DeviceRecord& player,
                                                    const BlockWrite& write);

/// Whether the player is to restart with what it is given, as the call says. Fails with a reason
/// for the user where the block knows no restart.
[[nodiscard]] Result<Restart> RestartOf(const Invocation& call, const SettingsBlockKind& kind);

/// What a row is and becomes, as an object and as cells: block, key, caption, before, after.
[[nodiscard]] Json::Value ObjectOf(const SettingsBlockKind& kind, const RowDifference& row);
[[nodiscard]] std::vector<std::string> CellsOf(const SettingsBlockKind& kind,
                                               const RowDifference& row);
/// The headings of such cells.
[[nodiscard]] std::vector<std::string> ChangeHeadings();

}  // namespace sontaro::cli
