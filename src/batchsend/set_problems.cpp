#include "batchsend/set_problems.h"

#include <fmt/printf.h>

#include <algorithm>
#include <unordered_set>

#include "base/local_text.h"
#include "batchsend/upload_packets.h"

namespace sontaro {

namespace {

using Kind = SetProblem::Kind;

constexpr LocalText kUnreadable = {"无法读取文件：%s", "The file cannot be read: %s"};
constexpr LocalText kTooLong = {"文件过大，超过 %s，无法发送",
                                "The file is too large to be sent: it has more than %s"};
constexpr LocalText kNameTooLong = {"文件名过长，超过 %d 字节", "The name is longer than %d bytes"};
constexpr LocalText kSameName = {"同一类别中还有另一个“%s”",
                                 "Another video in this category is called \"%s\", too"};
constexpr LocalText kDoesNotFit = {"播放器空间不足：需要 %s，剩余 %s",
                                   "Too little space on the player: %s needed, %s free"};

/// The names that one player has by then, by category and, apart from those, by code.
class Names {
   public:
    /// `forAll`: the names of what every player has, if there is anything; outlives these.
    explicit Names(const Names* forAll = nullptr) : forAll_(forAll) {}

    /// False when another video has the name already.
    bool Add(const SetVideo& video, const std::string& name) {
        const bool isNew = Add(video.category, name);
        return Add(kVideoCategories + video.code, name) && isNew;
    }

   private:
    bool Add(std::size_t slot, const std::string& name) {
        const std::string key = std::to_string(slot) + '/' + name;
        return (forAll_ == nullptr || !forAll_->names_.contains(key)) && names_.insert(key).second;
    }

    const Names* const forAll_;
    std::unordered_set<std::string> names_;
};

std::optional<Kind> ProblemOf(const SetVideo& video, const std::string& name) {
    if (!video.trouble.empty()) return Kind::kUnreadable;
    if (video.size > static_cast<std::int64_t>(kLongestVideo)) return Kind::kTooLong;
    if (name.size() > kLongestVideoName) return Kind::kNameTooLong;
    return std::nullopt;
}

/// Returns the bytes of those that can be sent.
std::uint64_t Check(const Elements<SetVideo>& videos, std::optional<std::size_t> player,
                    Names& names, std::vector<SetProblem>& problems) {
    std::uint64_t bytes = 0;
    for (std::size_t i = 0; i < videos.size(); ++i) {
        const SetVideo& video = videos[i];
        const std::string name = video.Name();
        if (const auto kind = ProblemOf(video, name))
            problems.push_back({*kind, player, videos.IdAt(i), video.trouble});
        else
            bytes += static_cast<std::uint64_t>(std::max<std::int64_t>(video.size, 0));
        if (!names.Add(video, name))
            problems.push_back({Kind::kSameName, player, videos.IdAt(i), name});
    }
    return bytes;
}

}  // namespace

std::string SetProblem::Told() const {
    switch (kind) {
        case Kind::kUnreadable: return fmt::sprintf(Localized(kUnreadable), text);
        case Kind::kTooLong: return fmt::sprintf(Localized(kTooLong), BytesText(kLongestVideo));
        case Kind::kNameTooLong: return fmt::sprintf(Localized(kNameTooLong), kLongestVideoName);
        case Kind::kSameName: return fmt::sprintf(Localized(kSameName), text);
        case Kind::kDoesNotFit:
            return fmt::sprintf(Localized(kDoesNotFit), BytesText(needed), BytesText(free));
    }
    return "";
}

std::optional<Kind> ProblemOf(const SetVideo& video) { return ProblemOf(video, video.Name()); }

std::vector<SetProblem> ProblemsOf(const VideoSet& set,
                                   std::span<const std::optional<std::uint64_t>> free) {
    std::vector<SetProblem> problems;
    Names forAll;
    const std::uint64_t bytes = Check(set.videos, std::nullopt, forAll, problems);
    for (std::size_t player = 0; player < set.players.size(); ++player) {
        Names names(&forAll);
        const std::uint64_t needed =
            bytes + Check(set.players[player].videos, player, names, problems);
        const bool hasVideos = set.videos.size() + set.players[player].videos.size() > 0;
        if (hasVideos && player < free.size() && free[player] && *free[player] <= needed)
            problems.push_back({Kind::kDoesNotFit, player, 0, "", needed, *free[player]});
    }
    return problems;
}

std::string BytesText(std::uint64_t bytes) {
    constexpr const char* kUnits[] = {"kB", "MB", "GB", "TB"};
    double number = static_cast<double>(bytes) / 1000;
    std::size_t unit = 0;
    for (; number >= 999.995 && unit + 1 < std::size(kUnits); ++unit) number /= 1000;
    return bytes < 1000 ? fmt::sprintf("%d B", bytes)
                        : fmt::sprintf("%.2f %s", number, kUnits[unit]);
}

}  // namespace sontaro
