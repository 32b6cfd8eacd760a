// What has become of every video of a run, read from its journal.
#pragma once

#include <json/forwards.h>

#include <optional>
#include <span>
#include <string_view>

#include "base/result.h"
#include "batchsend/upload_status.h"

namespace sontaro {

/// What has become of a video on its way to a player.
struct JournalEntry {
    enum class Outcome : std::uint8_t {
        kNotBegun,
        kInFlight,  ///< it was announced last; the program has ended since
        kDone,
        kFailed,
        kLeftOut,  ///< it could not be read at the start
    };
    Outcome outcome = Outcome::kNotBegun;
    std::uint64_t bytes = 0;  ///< as announced
    double seconds = 0;       ///< from its announcement until it was done
    std::string time;         ///< of what is told last; UTC
    std::string note;         ///< in the language of the user then

    bool operator==(const JournalEntry&) const = default;
};

struct RunJournal {
    std::string time;  ///< of the start, UTC
    std::vector<UploadPlayer> players;
    std::vector<std::vector<JournalEntry>> entries;  ///< by player and video
    std::vector<UploadStatus> statuses;              ///< by player
    bool hasEnded = false;                           ///< by itself, not stopped or cut off
    /// The video that was begun last and is not done.
    struct Place {
        std::size_t player = 0, video = 0;

        bool operator==(const Place&) const = default;
    };
    std::optional<Place> inFlight;

    /// Begins with the line that says what the run is to do; false: the line is no such one.
    [[nodiscard]] bool Begin(const Json::Value& line);
    /// Takes one of the lines behind it. What makes no sense is passed over.
    void Take(const Json::Value& line);

    /// Bytes a second of what is done; 0: nothing is.
    [[nodiscard]] double Speed() const;
};

/// The journal in a text of JSON lines. Lines that make no sense are passed over: the last one may
/// be cut. Fails without a first line that says what the run was to do.
[[nodiscard]] Result<RunJournal> ReadJournal(std::string_view text);

/// Exactly what did not end well, for another run: the player and video that were in flight come
/// first. A player that has all its videos is there without any when its turn did not end well: it
/// may lack the names of the categories.
[[nodiscard]] std::vector<UploadPlayer> FailedIn(const RunJournal& journal);

/// A table for spreadsheets, with a row for each player and video.
[[nodiscard]] std::string JournalCsv(const RunJournal& journal);

/// Keys of a line, for those who write it.
namespace journal_key {
inline constexpr const char* kEvent = "event";
inline constexpr const char* kRun = "run";
inline constexpr const char* kFormat = "format";
inline constexpr const char* kFormatName = "sontaro-upload-journal";
inline constexpr const char* kVersion = "version";
inline constexpr int kThisVersion = 1;
inline constexpr const char* kTime = "time";
inline constexpr const char* kPlayers = "players";
inline constexpr const char* kIp = "ip";
inline constexpr const char* kPort = "port";
inline constexpr const char* kVideos = "videos";
inline constexpr const char* kPath = "path";
inline constexpr const char* kName = "name";
inline constexpr const char* kCode = "code";
inline constexpr const char* kCategory = "category";  ///< absent where it is not known
inline constexpr const char* kPlayer = "player";
inline constexpr const char* kVideo = "video";
inline constexpr const char* kBytes = "bytes";
inline constexpr const char* kSeconds = "seconds";
inline constexpr const char* kStatus = "status";
inline constexpr const char* kNote = "note";
/// What an event is called; none when journals do not tell it.
[[nodiscard]] const char* NameOf(UploadEvent::Kind kind);
}  // namespace journal_key

}  // namespace sontaro
