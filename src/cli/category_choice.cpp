#include "cli/category_choice.h"

#include <fmt/printf.h>

#include <algorithm>
#include <map>

#include "batchsend/video_types.h"
#include "cli/cli_values.h"
#include "cli/exit_code.h"
#include "cli/player_runs.h"
#include "session/player_calls.h"

namespace sontaro::cli {

namespace {

constexpr LocalText kNoCategory = {"缺少 --category。", "--category is missing."};
constexpr LocalText kUnknown = {"没有类别“%s”。有：%s。",
                                "there is no category \"%s\". There are: %s."};
constexpr LocalText kDiffers = {"“%s”在各播放器上不是同一个类别（%s），请使用编号。",
                                "\"%s\" is not the same category of all players (%s): take a "
                                "number."};
constexpr LocalText kNone = {"无", "none"};
constexpr LocalText kAsTheOthers = {"%s：没有说明类别的名称，按其他播放器的编号发送。",
                                    "%s: has not told the names of its categories, and gets the "
                                    "number of the others."};

class CategoryChoice {
   public:
    CategoryChoice(const Surroundings& surroundings, const SessionOptions& options)
        : surroundings_(surroundings),
          options_(options),
          wanted_(surroundings.call.Value(OptionId::kCategory)) {}

    std::variant<std::uint32_t, int> Make(const std::vector<DeviceRecord>& players) {
        for (const DeviceRecord& player : players) {
            if (surroundings_.stop.stop_requested()) return kInterrupted;
            PlayerReport asked = WithSession(
                player, options_, [&](Session& session) { return AskOne(session, player); });
            for (Failure& failure : asked.failures) failures_.emplace_back(player, failure);
        }
        if (surroundings_.stop.stop_requested()) return kInterrupted;
        if (bearers_.empty()) return TellFailures();
        if (bearers_.size() > 1) return TellWrongUse(surroundings_, Differing());
        const std::optional<std::uint32_t> number = bearers_.begin()->first;
        if (!number)
            return TellWrongUse(surroundings_,
                                fmt::sprintf(Localized(kUnknown), wanted_, thereIs_));
        for (const auto& [player, failure] : failures_)
            surroundings_.output.Remark(fmt::sprintf(Localized(kAsTheOthers), NameOf(player)));
        return *number;
    }

   private:
    PlayerReport AskOne(Session& session, const DeviceRecord& player) {
        const SettingsBlockKind& kind = *FindSettingsBlock("control-protocol");
        const auto text = ReadBlockText(session, kind);
        if (!text) return PlayerReport::Of(FailureOf(text.HowItEnded(), kind.name));
        const auto names = ReadCategoryNames(*text);
        if (!names) return PlayerReport::Of(FailureOf("unreadable", names.reason(), kind.name));
        const auto named = std::ranges::find(*names, wanted_);
        std::optional<std::uint32_t> number;
        if (named != names->end()) number = static_cast<std::uint32_t>(named - names->begin());
        bearers_[number].push_back(player.ip);
        if (thereIs_.empty())
            for (const std::string& name : *names)
                if (!name.empty()) thereIs_ += (thereIs_.empty() ? "" : ", ") + name;
        return {};
    }

    [[nodiscard]] int TellFailures() const {
        for (const auto& [player, failure] : failures_) Tell(surroundings_.output, player, failure);
        return kSomeFailed;
    }

    [[nodiscard]] std::string Differing() const {
        std::string list;
        for (const auto& [number, ips] : bearers_) {
            list += list.empty() ? "" : "; ";
            list += (number ? std::to_string(*number) : Localized(kNone)) + ": ";
            for (const std::string& ip : ips) list += (&ip == &ips.front() ? "" : ", ") + ip;
        }
        return fmt::sprintf(Localized(kDiffers), wanted_, list);
    }

    const Surroundings& surroundings_;
    const SessionOptions& options_;
    const std::string wanted_;
    std::map<std::optional<std::uint32_t>, std::vector<std::string>> bearers_;  // addresses
    std::vector<std::pair<DeviceRecord, Failure>> failures_;
    std::string thereIs_;  // the names of the first player that has told any
};

}  // namespace

std::variant<std::uint32_t, int> ChooseCategory(const Surroundings& surroundings,
                                                const std::vector<DeviceRecord>& players,
                                                const SessionOptions& options) {
    const std::string wanted = surroundings.call.Value(OptionId::kCategory);
    constexpr int kLast = kVideoCategories - 1;
    if (wanted.empty()) return TellWrongUse(surroundings, Localized(kNoCategory));
    if (const auto number = ParseCount(wanted, 0, kLast))
        return static_cast<std::uint32_t>(*number);
    return CategoryChoice(surroundings, options).Make(players);
}

}  // namespace sontaro::cli
