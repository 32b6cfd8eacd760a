// What becomes of the players of a batch, and of their videos.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "batchsend/upload_note.h"

namespace sontaro {

struct UploadVideo {
    std::filesystem::path path;
    std::string name;  ///< as sent, UTF-8
    std::uint16_t code = 0;
    std::optional<std::uint32_t> category = {};  ///< its slot, which players are not told

    bool operator==(const UploadVideo&) const = default;
};

struct UploadPlayer {
    Target target;
    std::vector<UploadVideo> videos;

    bool operator==(const UploadPlayer&) const = default;
};

/// A video that goes to a player in this run.
struct PlannedVideo {
    std::size_t place = 0;   ///< among the player's videos
    std::uint64_t size = 0;  ///< bytes, as of the start
};

/// A player in the list of the page.
struct UploadRow {
    UploadPlayer player;
    std::vector<PlannedVideo> plan;
    std::vector<std::size_t> leftOut;  ///< places of videos that could not be read at the start
    std::size_t sent = 0;              ///< videos that have gone out whole
    std::size_t confirmed = 0;         ///< those of them that the player has acknowledged whole
    UploadStatus status = UploadStatus::kNotChosen;
    UploadNote note = {};
    /// Whether acknowledgements say which packet they are of; none: that is not known yet.
    std::optional<bool> echoes = {};

    /// Whether the player has all that it was to get.
    [[nodiscard]] bool IsWhole() const { return status == UploadStatus::kDone && leftOut.empty(); }
    /// Bytes that are still to go out.
    [[nodiscard]] std::uint64_t BytesLeft() const;
    [[nodiscard]] const UploadVideo& VideoAt(std::size_t position) const {
        return player.videos[plan[position].place];
    }
};

/// What the list says of a player in its column "Update Video".
[[nodiscard]] std::string StatusText(const UploadRow& row);

/// Something that has happened in a run. `video` is a place among the player's videos.
struct UploadEvent {
    enum class Kind : std::uint8_t {
        kLeftOut,       ///< a file that cannot be read at the start: `note`
        kPlayerBegun,   ///< `bytes` are to go to the player
        kVideoBegun,    ///< `bytes` have been announced; maybe not for the first time
        kAcknowledged,  ///< `bytes` of the video, all in all
        kVideoDone,
        kVideoFailed,  ///< `note`
        kPlayerEnded,  ///< `status`, `note`
        kRunEnded,     ///< `note`: stopped, or not
    };
    Kind kind{};
    std::size_t player = 0, video = 0;
    std::uint64_t bytes = 0;
    UploadStatus status{};
    UploadNote note = {};
};

/// What the status line says.
struct UploadLine {
    enum class Kind : std::uint8_t { kNone, kSending, kResending, kFinished };
    Kind kind = Kind::kNone;
    std::string name = {};  ///< of the video
};

[[nodiscard]] std::string LineText(const UploadLine& line);

}  // namespace sontaro
