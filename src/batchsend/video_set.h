// What goes to which players: the videos of the parameter page.
#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "devices/device_record.h"
#include "settings/record_schema.h"

namespace sontaro {

/// Categories that a player keeps videos in.
inline constexpr std::size_t kVideoCategories = 64;
/// Their names, UTF-8; an empty one where a slot has none.
using CategoryNames = std::array<std::string, kVideoCategories>;
/// Those of each player that has told its own; the first ones are those that are shown.
using ToldNames = std::vector<const CategoryNames*>;

/// The name of a video on players: its file's, from which numbers that only sort it can be removed,
/// with the blanks, dots, underscores and hyphens behind them. They stay where nothing would remain
/// before the ending.
[[nodiscard]] std::string SentName(std::string_view fileName, bool removesNumbers);

/// A video of the page. Texts are UTF-8.
struct SetVideo {
    static constexpr std::int64_t kUnknownSize = -1;

    std::string path;
    std::int64_t size = kUnknownSize;  ///< bytes, when it was looked at last
    std::uint32_t category = 0;        ///< a slot, below `kVideoCategories`
    std::uint32_t code = 0;            ///< at most 65535; the slot unless the user has another one
    bool removesNumbers = false;
    std::string trouble = {};  ///< why the file cannot be read; empty: it can. Not kept

    [[nodiscard]] std::string Name() const;

    bool operator==(const SetVideo&) const = default;
};

struct SetPlayer {
    std::string ip;
    std::uint32_t port = 0;
    std::string id;
    Elements<SetVideo> videos;  ///< for this player alone

    bool operator==(const SetPlayer&) const = default;
};

/// The name that a slot is given in place of the one that players have; empty: none.
struct CategoryAlias {
    std::string name;
    /// Taken for a folder before those of players were in place: it may belong to another slot.
    bool isProvisional = false;

    bool operator==(const CategoryAlias&) const = default;
};

struct VideoSet {
    Elements<SetVideo> videos;  ///< for every player
    Elements<SetPlayer> players;
    Elements<SetPlayer> absent;  ///< players that are not ticked now: kept with their videos alone
    std::array<CategoryAlias, kVideoCategories> aliases;
    bool writesNames = false;   ///< players get the names of categories in any case
    bool skipsPresent = false;  ///< what a player has already is not sent
    bool triesAgain = false;    ///< what failed is sent once more at the end

    bool operator==(const VideoSet&) const = default;
};

/// Makes just these the set's players, in this order. Each finds what it had before: by its ID, and
/// where that is not known by its address. What the others have for themselves alone is put aside.
void TakePlayers(VideoSet& set, std::span<const DeviceRecord> players);

/// What the player at that place gets, in the order of sending: what everyone gets comes first.
[[nodiscard]] std::vector<const SetVideo*> VideosFor(const VideoSet& set, std::size_t player);

/// The names of the slots: the user's, or those that the players have.
[[nodiscard]] CategoryNames NamesIn(const VideoSet& set, const CategoryNames& players);

/// Adds videos of a category behind the others.
void AddVideos(Elements<SetVideo>& videos, std::span<const std::string> paths, std::uint32_t slot);
/// Has `change` see the videos with these numbers.
void ChangeVideos(Elements<SetVideo>& videos, std::span<const std::uint32_t> ids,
                  const std::function<void(SetVideo&)>& change);
/// Puts the videos with these numbers into a category, whose code becomes theirs.
void SetCategory(Elements<SetVideo>& videos, std::span<const std::uint32_t> ids,
                 std::uint32_t slot);
/// Moves them by one place; they stay one behind the other where there is no room.
void MoveVideosUp(Elements<SetVideo>& videos, std::span<const std::uint32_t> ids);
void MoveVideosDown(Elements<SetVideo>& videos, std::span<const std::uint32_t> ids);
/// The slot that is shown with that name; else the first one without a video that nobody has a name
/// for, which gets it: provisionally where no player has told its names, or while others, which
/// hide those of players, are provisional. None when there is no such slot.
[[nodiscard]] std::optional<std::uint32_t> SlotNamed(std::string_view name,
                                                     const ToldNames& players, VideoSet& set);

/// What has become of a provisional name.
struct SettledName {
    std::string name;
    std::uint32_t from = 0;
    std::optional<std::uint32_t> to;  ///< the slot in which its videos are now; none: it is dropped

    bool operator==(const SettledName&) const = default;
};
/// Brings the provisional names to what players, at least one, have: each to the slot of that name,
/// else to one that nobody has a name for. Its videos go along, with codes that are their slot.
[[nodiscard]] std::vector<SettledName> SettleNames(VideoSet& set, const ToldNames& players);

/// The page as it is kept, and back; none when `json` is no such page. Slots and codes that there
/// cannot be become 0.
[[nodiscard]] Json::Value VideoSetToJson(const VideoSet& set);
[[nodiscard]] std::optional<VideoSet> VideoSetFromJson(const Json::Value& json);

}  // namespace sontaro
