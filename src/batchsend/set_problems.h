// What keeps videos of the parameter page from being sent.
#pragma once

#include "batchsend/video_set.h"

namespace sontaro {

struct SetProblem {
    enum class Kind : std::uint8_t {
        kUnreadable,   ///< `text`: why
        kTooLong,      ///< more bytes than the numbers of chunks can count
        kNameTooLong,  ///< more than 255 bytes
        kSameName,     ///< another video of the category or code has the name, `text`, too
        kDoesNotFit,   ///< of a player: `needed` is not less than what is free
    };
    Kind kind{};
    std::optional<std::size_t> player = {};  ///< its place; none: it is a video for every player
    std::uint32_t video = 0;                 ///< its number there; 0 of a player's own problem
    std::string text = {};
    std::uint64_t needed = 0, free = 0;  ///< bytes

    /// In the language of the user.
    [[nodiscard]] std::string Told() const;
    /// Whether that video cannot be sent at all.
    [[nodiscard]] bool IsOfFile() const { return kind <= Kind::kNameTooLong; }

    bool operator==(const SetProblem&) const = default;
};

/// What is wrong with a video by itself; none when it can be sent.
[[nodiscard]] std::optional<SetProblem::Kind> ProblemOf(const SetVideo& video);

/// All problems: those of the videos for everyone first, then player by player. `free` is the
/// space on each player's disk in bytes, none where it is not known. A video of a player's own that
/// has the name of one for everyone is the one that is told.
[[nodiscard]] std::vector<SetProblem> ProblemsOf(
    const VideoSet& set, std::span<const std::optional<std::uint64_t>> free);

/// Bytes for the user: "1.50 GB".
[[nodiscard]] std::string BytesText(std::uint64_t bytes);

}  // namespace sontaro
