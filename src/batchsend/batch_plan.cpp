#include "batchsend/batch_plan.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

#include "base/local_text.h"
#include "base/path_text.h"
#include "batchsend/set_problems.h"

namespace sontaro {

namespace {

using Fate = PlannedFate;

/// In the order of `PlannedFate`.
constexpr LocalText kFates[] = {
    {"", ""},
    {"将发送", "will be sent"},
    {"已有，仍将发送", "there already, will be sent"},
    {"尚未询问", "not asked yet"},
    {"已有，跳过", "there already, skipped"},
    {"空间不足", "does not fit"},
    {"无法连接", "cannot be reached"},
    {"文件不可用", "file unusable"},
};
static_assert(std::size(kFates) == static_cast<std::size_t>(Fate::kUnreadable) + 1);
/// In the order of `ProofKind`.
constexpr LocalText kProofs[] = {
    {"已确认", "confirmed"},         {"不同：缺少该视频", "differs: it is missing"},
    {"不同：大小", "differs: size"}, {"不同：类别", "differs: category"},
    {"无法判断", "cannot be told"},
};

/// Calls `look` with each category and each video of that name in it.
template <class Look>
void ForEachNamed(const VideoList& list, const std::string& name, const Look& look) {
    for (const auto& screen : list.screens)
        for (const ListedCategory& category : screen)
            for (const ListedVideo& video : category.videos)
                if (video.name == name) look(category, video);
}

/// Names and sizes of what a player has.
using Present = std::set<std::pair<std::string_view, std::int64_t>>;

Present PresentIn(const PlayerFacts& facts) {
    Present present;
    if (!facts.videos) return present;
    for (const auto& screen : facts.videos->screens)
        for (const ListedCategory& category : screen)
            for (const ListedVideo& video : category.videos)
                present.emplace(video.name, video.size);
    return present;
}

std::uint64_t BytesOf(const SetVideo& video) {
    return static_cast<std::uint64_t>(std::max<std::int64_t>(video.size, 0));
}

bool IsSent(Fate fate) {
    return fate == Fate::kToSend || fate == Fate::kSendAnyway || fate == Fate::kNotAsked;
}

/// By itself, without regard to the others.
Fate FateOf(const SetVideo& video, const PlayerFacts& facts, const Present& present,
            bool skipsPresent) {
    if (ProblemOf(video)) return Fate::kUnreadable;
    if (!facts.isAsked) return Fate::kNotAsked;
    if (!facts.isReached) return Fate::kUnreachable;
    if (!present.contains({video.Name(), video.size})) return Fate::kToSend;
    return skipsPresent ? Fate::kSkipped : Fate::kSendAnyway;
}

}  // namespace

UploadVideo AsSent(const SetVideo& video) {
    return {PathOfText(video.path), video.Name(), static_cast<std::uint16_t>(video.code),
            video.category};
}

BatchPlan::BatchPlan(const VideoSet& set, std::span<const PlayerFacts> facts) {
    for (std::size_t i = 0; i < set.players.size(); ++i) {
        const SetPlayer& player = set.players[i];
        const std::vector<const SetVideo*> videos = VideosFor(set, i);
        const Present present = PresentIn(facts[i]);
        std::vector<Fate> fates;
        std::uint64_t bytes = 0;
        for (const SetVideo* video : videos) {
            fates.push_back(FateOf(*video, facts[i], present, set.skipsPresent));
            if (IsSent(fates.back())) bytes += BytesOf(*video);
        }
        const auto sent = static_cast<std::size_t>(std::ranges::count_if(fates, IsSent));
        const bool fits = !facts[i].free || *facts[i].free > bytes;
        players_.push_back({{player.ip, static_cast<std::uint16_t>(player.port), 0}, {}});
        for (std::size_t place = 0; place < videos.size(); ++place)
            if (fates[place] != Fate::kSkipped)
                players_.back().videos.push_back(AsSent(*videos[place]));
        if (fits && sent > 0) {
            totals_.videos += sent;
            ++totals_.players;
            totals_.bytes += bytes;
        } else {
            std::ranges::replace_if(fates, IsSent, Fate::kDoesNotFit);
        }
        fates_.push_back(std::move(fates));
    }
}

std::optional<double> BatchPlan::Estimate(double speed) const {
    if (speed <= 0) return std::nullopt;
    return static_cast<double>(totals_.bytes) / speed;
}

ProofKind ProofOf(const std::optional<VideoList>& list, const std::string& name, std::uint64_t size,
                  const std::string& category) {
    if (!list) return ProofKind::kCannotTell;
    bool isConfirmed = false;
    bool isInPlace = false;
    bool isElsewhere = false;
    bool isNamed = false;
    ForEachNamed(*list, name, [&](const ListedCategory& found, const ListedVideo& video) {
        const bool isWhole = video.size >= 0 && static_cast<std::uint64_t>(video.size) == size;
        const bool isThere = !category.empty() && found.name == category;
        isNamed = true;
        isInPlace |= isThere;
        isElsewhere |= isWhole;
        isConfirmed |= isWhole && isThere;
    });
    if (isConfirmed) return ProofKind::kConfirmed;
    if (isInPlace) return ProofKind::kOtherSize;
    if (isElsewhere) return category.empty() ? ProofKind::kCannotTell : ProofKind::kOtherCategory;
    return isNamed ? ProofKind::kOtherSize : ProofKind::kMissing;
}

std::string TextOf(PlannedFate fate) { return Localized(kFates[static_cast<std::size_t>(fate)]); }

std::string TextOf(ProofKind proof) { return Localized(kProofs[static_cast<std::size_t>(proof)]); }

}  // namespace sontaro
