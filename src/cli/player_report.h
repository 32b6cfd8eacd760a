// What has come of a command for one player.
#pragma once

#include <json/value.h>

#include <optional>
#include <string>
#include <vector>

#include "cli/output.h"
#include "devices/device_record.h"
#include "session/session_end.h"

namespace sontaro::cli {

/// Why a command has failed for a player.
struct Failure {
    std::string word;       ///< for programs, the same in every language
    std::string text;       ///< for the user
    std::string link;       ///< what is wrong with the connection, for programs; empty: nothing
    int code = 0;           ///< of a refusal
    std::string part = {};  ///< of what was asked: a block, a key; empty: all of it

    bool operator==(const Failure&) const = default;
};

/// How a request has ended that has brought nothing.
[[nodiscard]] Failure FailureOf(const SessionEnd& end, const std::string& part = {});
/// Something that the player has nothing to do with.
[[nodiscard]] Failure FailureOf(const char* word, const std::string& text,
                                const std::string& part = {});

/// What is told of one player: objects where JSON is wanted, else rows of the command's table or
/// lines; and what has failed.
struct PlayerReport {
    std::vector<Json::Value> objects = {};  ///< without the player, which is added
    std::vector<std::vector<std::string>> rows = {};
    std::vector<std::string> lines = {};
    std::vector<Failure> failures = {};
    std::vector<std::string> remarks = {};  ///< what is to be known besides; no failure

    [[nodiscard]] static PlayerReport Of(Failure failure) {
        return {{}, {}, {}, {std::move(failure)}};
    }
};

/// How a player is named in lines: its address, its ID and the user's note.
[[nodiscard]] std::string NameOf(const DeviceRecord& player);
/// The player as every object has it: "ip", "port", and what is known of "id", "mac" and "remark".
[[nodiscard]] Json::Value ObjectOf(const DeviceRecord& player);
/// That object with "error".
[[nodiscard]] Json::Value ObjectOf(const DeviceRecord& player, const Failure& failure);

/// Gives an object what every object of a player has.
void AddPlayer(Json::Value& object, const DeviceRecord& player);

/// Tells of a failure.
void Tell(Output& output, const DeviceRecord& player, const Failure& failure);

/// Tells reports, one player after another; the rows of all of them together, at the end. One
/// thread.
class ReportTeller {
   public:
    /// The columns of the address and the ID come before `headings`.
    ReportTeller(Output& output, std::vector<std::string> headings);
    void Take(const DeviceRecord& player, PlayerReport& report);
    void End();
    /// Whether nothing has failed so far.
    [[nodiscard]] bool IsWhole() const { return isWhole_; }

   private:
    Output& output_;
    CellTable table_;
    bool isWhole_ = true;
};

}  // namespace sontaro::cli
