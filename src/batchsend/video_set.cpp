#include "batchsend/video_set.h"

#include <algorithm>
#include <utility>

#include "base/path_text.h"
#include "settings/record_table.h"

namespace sontaro {

namespace {

constexpr std::uint32_t kMostCode = 65'535;
constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kBehindNumbers = " ._-";

// clang-format off
constexpr auto kVideo = Rows<SetVideo>({
    {"path", kAt<&SetVideo::path>},
    {"size", kAt<&SetVideo::size>, {}, {"", ""}, {nullptr, nullptr}, SetVideo::kUnknownSize},
    {"category", kAt<&SetVideo::category>},
    {"code", kAt<&SetVideo::code>},
    {"removeNumbers", kAt<&SetVideo::removesNumbers>},
});
constexpr auto kPlayer = Rows<SetPlayer>({
    {"ip", kAt<&SetPlayer::ip>},
    {"port", kAt<&SetPlayer::port>},
    {"id", kAt<&SetPlayer::id>},
    {"videos", kRecordAt<&SetPlayer::videos, kVideo>},
});
constexpr auto kAlias = Rows<CategoryAlias>({
    {"name", kAt<&CategoryAlias::name>},
    {"provisional", kAt<&CategoryAlias::isProvisional>},
});
constexpr auto kSet = Rows<VideoSet>({
    {"videos", kRecordAt<&VideoSet::videos, kVideo>},
    {"players", kRecordAt<&VideoSet::players, kPlayer>},
    {"absent", kRecordAt<&VideoSet::absent, kPlayer>},
    {"categories", kRecordAt<&VideoSet::aliases, kAlias>},
    {"writeNames", kAt<&VideoSet::writesNames>},
    {"skipPresent", kAt<&VideoSet::skipsPresent>},
    {"tryAgain", kAt<&VideoSet::triesAgain>},
});
// clang-format on

void MakeValid(Elements<SetVideo>& videos) {
    const std::size_t count = videos.size();
    for (std::size_t i = 0; i < count; ++i) {
        SetVideo& video = videos[i];
        if (video.category >= kVideoCategories) video.category = 0;
        if (video.code > kMostCode) video.code = 0;
        video.size = std::max(video.size, SetVideo::kUnknownSize);
    }
}

void MakeValid(Elements<SetPlayer>& players) {
    const std::size_t count = players.size();
    for (std::size_t i = 0; i < count; ++i) MakeValid(players[i].videos);
}

bool IsSame(const SetPlayer& kept, const DeviceRecord& player) {
    return kept.id.empty() || player.id.empty() ? kept.ip == player.ip : kept.id == player.id;
}
/// Several players may have one ID.
bool IsJustAsBefore(const SetPlayer& kept, const DeviceRecord& player) {
    return kept.ip == player.ip && kept.id == player.id;
}

/// Numbers of videos, among which many are looked for.
class IdSet {
   public:
    explicit IdSet(std::span<const std::uint32_t> ids) : ids_(ids.begin(), ids.end()) {
        std::ranges::sort(ids_);
    }
    [[nodiscard]] bool Has(std::uint32_t id) const { return std::ranges::binary_search(ids_, id); }

   private:
    std::vector<std::uint32_t> ids_;
};

/// Exchanges neighbours, each of which takes its number along.
class Exchange {
   public:
    explicit Exchange(Elements<SetVideo>& videos) : videos_(videos) {
        for (std::size_t i = 0; i < videos.size(); ++i) ids_.push_back(videos.IdAt(i));
    }
    ~Exchange() { videos_.Renumber(std::move(ids_)); }
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    [[nodiscard]] std::uint32_t IdAt(std::size_t place) const { return ids_[place]; }
    void WithNext(std::size_t place) {
        std::swap(ids_[place], ids_[place + 1]);
        std::swap(videos_[place], videos_[place + 1]);
    }

   private:
    Elements<SetVideo>& videos_;
    std::vector<std::uint32_t> ids_;
};

/// Has `change` see every video, those of absent players, too.
void ForEachVideo(VideoSet& set, const std::function<void(SetVideo&)>& change) {
    const auto see = [&](Elements<SetVideo>& videos) {
        for (SetVideo& video : videos) change(video);
    };
    see(set.videos);
    for (auto* const players : {&set.players, &set.absent})
        for (SetPlayer& player : *players) see(player.videos);
}

using Slots = std::array<bool, kVideoCategories>;

Slots UsedSlots(VideoSet& set) {
    Slots used{};
    ForEachVideo(set, [&](const SetVideo& video) { used.at(video.category) = true; });
    return used;
}

std::optional<std::uint32_t> SlotWithName(std::string_view name, const CategoryNames& names) {
    const auto slot = std::ranges::find(names, name);
    if (slot == names.end()) return std::nullopt;
    return static_cast<std::uint32_t>(slot - names.begin());
}

/// Whether the user or any player has a name for it.
bool IsNamed(std::uint32_t slot, const ToldNames& players, const VideoSet& set) {
    const auto names = [slot](const CategoryNames* told) { return !told->at(slot).empty(); };
    return !set.aliases.at(slot).name.empty() || std::ranges::any_of(players, names);
}

/// The first slot that has neither a name nor a video.
std::optional<std::uint32_t> FreeSlot(const ToldNames& players, const VideoSet& set,
                                      const Slots& used) {
    for (std::uint32_t slot = 0; slot < kVideoCategories; ++slot)
        if (!IsNamed(slot, players, set) && !used.at(slot)) return slot;
    return std::nullopt;
}

}  // namespace

std::string SentName(std::string_view fileName, bool removesNumbers) {
    const std::string ending = TextOfPath(PathOfText(fileName).extension());
    const std::string_view stem = fileName.substr(0, fileName.size() - ending.size());
    const std::size_t numbers = std::min(stem.find_first_not_of(kDigits), stem.size());
    const std::size_t rest = stem.find_first_not_of(kBehindNumbers, numbers);
    const bool hasThem = numbers > 0 && rest != std::string_view::npos && rest > numbers;
    return std::string(removesNumbers && hasThem ? fileName.substr(rest) : fileName);
}

std::string SetVideo::Name() const {
    return SentName(TextOfPath(PathOfText(path).filename()), removesNumbers);
}

void TakePlayers(VideoSet& set, std::span<const DeviceRecord> players) {
    std::vector<SetPlayer> kept(set.players.begin(), set.players.end());
    kept.insert(kept.end(), set.absent.begin(), set.absent.end());
    std::vector<std::optional<Elements<SetVideo>>> own(players.size());
    for (const auto fits : {IsJustAsBefore, IsSame}) {
        for (std::size_t i = 0; i < players.size(); ++i) {
            const auto one = std::ranges::find_if(
                kept, [&](const SetPlayer& other) { return fits(other, players[i]); });
            if (own[i] || one == kept.end()) continue;
            own[i] = std::move(one->videos);
            kept.erase(one);
        }
    }
    set.players = {};
    for (std::size_t i = 0; i < players.size(); ++i) {
        const DeviceRecord& player = players[i];
        set.players.Insert(i, {player.ip, player.tcpPort, player.id,
                               std::move(own[i]).value_or(Elements<SetVideo>())});
    }
    set.absent = {};
    for (SetPlayer& player : kept)
        if (player.videos.size() > 0) set.absent.Insert(set.absent.size(), std::move(player));
}

std::vector<const SetVideo*> VideosFor(const VideoSet& set, std::size_t player) {
    std::vector<const SetVideo*> videos;
    for (const SetVideo& video : set.videos) videos.push_back(&video);
    for (const SetVideo& video : set.players[player].videos) videos.push_back(&video);
    return videos;
}

CategoryNames NamesIn(const VideoSet& set, const CategoryNames& players) {
    CategoryNames names = players;
    for (std::size_t slot = 0; slot < names.size(); ++slot)
        if (!set.aliases[slot].name.empty()) names[slot] = set.aliases[slot].name;
    return names;
}

void AddVideos(Elements<SetVideo>& videos, std::span<const std::string> paths, std::uint32_t slot) {
    for (const std::string& path : paths) {
        SetVideo video;
        video.path = path;
        video.category = video.code = slot;
        videos.Insert(videos.size(), std::move(video));
    }
}

void ChangeVideos(Elements<SetVideo>& videos, std::span<const std::uint32_t> ids,
                  const std::function<void(SetVideo&)>& change) {
    const IdSet changed(ids);
    for (std::size_t i = 0; i < videos.size(); ++i)
        if (changed.Has(videos.IdAt(i))) change(videos[i]);
}

void SetCategory(Elements<SetVideo>& videos, std::span<const std::uint32_t> ids,
                 std::uint32_t slot) {
    ChangeVideos(videos, ids, [slot](SetVideo& video) { video.category = video.code = slot; });
}

void MoveVideosUp(Elements<SetVideo>& videos, std::span<const std::uint32_t> ids) {
    const IdSet moved(ids);
    Exchange exchange(videos);
    for (std::size_t i = 0; i + 1 < videos.size(); ++i)
        if (moved.Has(exchange.IdAt(i + 1)) && !moved.Has(exchange.IdAt(i))) exchange.WithNext(i);
}

void MoveVideosDown(Elements<SetVideo>& videos, std::span<const std::uint32_t> ids) {
    const IdSet moved(ids);
    Exchange exchange(videos);
    for (std::size_t i = videos.size(); i-- > 1;)
        if (moved.Has(exchange.IdAt(i - 1)) && !moved.Has(exchange.IdAt(i)))
            exchange.WithNext(i - 1);
}

std::optional<std::uint32_t> SlotNamed(std::string_view name, const ToldNames& players,
                                       VideoSet& set) {
    const CategoryNames names = NamesIn(set, players.empty() ? CategoryNames() : *players.front());
    if (const auto slot = SlotWithName(name, names)) return slot;
    const bool isProvisional =
        players.empty() || std::ranges::any_of(set.aliases, &CategoryAlias::isProvisional);
    const auto slot = FreeSlot(players, set, UsedSlots(set));
    if (slot) set.aliases.at(*slot) = {std::string(name), isProvisional};
    return slot;
}

/// A slot stays with its videos where it can. All videos move at once: one slot's new place may be
/// the old one of another.
std::vector<SettledName> SettleNames(VideoSet& set, const ToldNames& players) {
    std::vector<SettledName> settled;
    for (std::uint32_t slot = 0; slot < kVideoCategories; ++slot)
        if (set.aliases.at(slot).isProvisional)
            settled.push_back({std::exchange(set.aliases.at(slot), {}).name, slot, std::nullopt});
    Slots used = UsedSlots(set);
    for (SettledName& one : settled) {
        one.to = SlotWithName(one.name, NamesIn(set, *players.front()));
        if (one.to) continue;
        one.to = IsNamed(one.from, players, set) ? FreeSlot(players, set, used) : one.from;
        if (!one.to) continue;
        set.aliases.at(*one.to).name = one.name;
        used.at(*one.to) = true;
    }
    ForEachVideo(set, [&](SetVideo& video) {
        const auto found = std::ranges::find(settled, video.category, &SettledName::from);
        if (found == settled.end() || !found->to) return;
        if (video.code == video.category) video.code = *found->to;
        video.category = *found->to;
    });
    return settled;
}

Json::Value VideoSetToJson(const VideoSet& set) { return kSchemaOf<kSet>.ToJson(set); }

std::optional<VideoSet> VideoSetFromJson(const Json::Value& json) {
    if (!json.isObject() || !json["videos"].isArray()) return std::nullopt;
    VideoSet set;
    kSchemaOf<kSet>.Reset(set);
    kSchemaOf<kSet>.Read(Json::Value(json), Source::kFile, set);
    MakeValid(set.videos);
    MakeValid(set.players);
    MakeValid(set.absent);
    return set;
}

}  // namespace sontaro
