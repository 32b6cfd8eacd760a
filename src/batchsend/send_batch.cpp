#include "batchsend/send_batch.h"

#include <fmt/printf.h>

#include <algorithm>
#include <utility>

#include "base/local_text.h"
#include "base/path_text.h"
#include "batchsend/video_types.h"

namespace sontaro {

namespace {

/// In the order of `SendOutcome`.
constexpr LocalText kOutcomes[] = {
    {"", ""},
    {"正在发送", "being sent"},
    {"已发送", "sent"},
    {"失败", "failed"},
    {"未发送，文件不可用", "left out, file unusable"},
    {"未发送", "not sent"},
};
constexpr LocalText kColon = {"：", ": "};
constexpr LocalText kBetween = {"；", "; "};
constexpr LocalText kConfirmed = {"已确认 %d 个视频", "%d confirmed"};
constexpr LocalText kOdd = {"%d 个有问题：", "%d not: "};
constexpr LocalText kSettings = {"除类别名称外，设置也已改变：",
                                 "settings have changed besides the names of categories: "};
constexpr LocalText kUnknownSettings = {"发送前的设置未知",
                                        "the settings before the run are not known"};
constexpr LocalText kNotCompared = {"设置无法比较", "the settings cannot be compared"};
constexpr LocalText kNothingThere = {"没有可核对的视频", "nothing to compare"};
constexpr LocalText kNoAnswer = {"播放器没有应答，无法核对", "no answer: cannot be told"};

std::string Joined(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : Localized(kBetween)) + text;
    return joined;
}

/// The names that the player has for its categories by now; empty ones where it does not say.
CategoryNames NamesOf(const PlayerFacts& facts) {
    if (!facts.controlProtocol) return {};
    const Result<CategoryNames> names = ReadCategoryNames(*facts.controlProtocol);
    return names ? *names : CategoryNames();
}

auto KeyOf(const UploadVideo& video) { return std::tuple(video.path, video.name, video.code); }

}  // namespace

bool SendPair::IsTrouble() const {
    if (proof) return *proof != ProofKind::kConfirmed;
    if (outcome != SendOutcome::kNone) return outcome >= SendOutcome::kFailed;
    return fate >= PlannedFate::kDoesNotFit;
}

std::string SendPair::Text() const {
    if (proof) return TextOf(*proof);
    if (outcome == SendOutcome::kNone) return TextOf(fate);
    const std::string text = Localized(kOutcomes[static_cast<std::size_t>(outcome)]);
    return note.empty() ? text : text + Localized(kColon) + note;
}

std::string PlayerProof::Text() const {
    if (!isAnswered) return Localized(kNoAnswer);
    std::string text = confirmed + odd.size() == 0 ? Localized(kNothingThere)
                                                   : fmt::sprintf(Localized(kConfirmed), confirmed);
    if (!odd.empty())
        text += Localized(kBetween) + fmt::sprintf(Localized(kOdd), odd.size()) + Joined(odd);
    if (!knowsSettingsBefore) return text + Localized(kBetween) + Localized(kUnknownSettings);
    if (!changedSettings) return text + Localized(kBetween) + Localized(kNotCompared);
    if (!changedSettings->empty())
        text += Localized(kBetween) + Localized(kSettings) + Joined(*changedSettings);
    return text;
}

SendBatch::SendBatch(const VideoSet& set, const BatchPlan& plan) {
    for (const UploadPlayer& player : plan.Players()) players_.push_back(player.target);
    pairs_.resize(players_.size());
    for (std::size_t player = 0; player < players_.size(); ++player) {
        const std::vector<const SetVideo*> videos = VideosFor(set, player);
        for (std::size_t i = 0; i < videos.size(); ++i) {
            const SetVideo& video = *videos[i];
            const auto size = static_cast<std::uint64_t>(std::max<std::int64_t>(video.size, 0));
            pairs_[player][Add({AsSent(video), size})].fate = plan.Fates()[player][i];
        }
    }
}

SendBatch::SendBatch(const std::vector<UploadPlayer>& players) {
    for (const UploadPlayer& player : players) players_.push_back(player.target);
    pairs_.resize(players_.size());
    for (std::size_t player = 0; player < players_.size(); ++player)
        for (const UploadVideo& video : players[player].videos)
            pairs_[player][Add({video})].fate = PlannedFate::kToSend;
}

std::size_t SendBatch::Add(BatchVideo video) {
    const auto [entry, isNew] = places_.emplace(KeyOf(video.video), videos_.size());
    if (isNew) {
        videos_.push_back(std::move(video));
        for (auto& row : pairs_) row.resize(videos_.size());
    }
    return entry->second;
}

std::optional<std::size_t> SendBatch::PlayerOf(const Target& target) const {
    const auto found = std::ranges::find(players_, target);
    if (found == players_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - players_.begin());
}

std::optional<std::size_t> SendBatch::PlaceOf(const UploadVideo& video) const {
    const auto found = places_.find(KeyOf(video));
    return found == places_.end() ? std::nullopt : std::optional(found->second);
}

bool SendBatch::Has(const std::vector<UploadPlayer>& run) const {
    return std::ranges::all_of(run, [this](const UploadPlayer& player) {
        const auto at = PlayerOf(player.target);
        return at && std::ranges::all_of(player.videos, [&](const UploadVideo& video) {
                   const auto place = PlaceOf(video);
                   return place && pairs_[*at][*place].fate != PlannedFate::kNotMeant;
               });
    });
}

void SendBatch::Begin(const std::vector<UploadPlayer>& run) {
    run_.clear();
    for (const UploadPlayer& player : run) {
        run_.push_back({*PlayerOf(player.target), {}});
        for (const UploadVideo& video : player.videos) {
            run_.back().videos.push_back(*PlaceOf(video));
            SendPair& pair = pairs_[run_.back().player][run_.back().videos.back()];
            pair = {pair.fate};
        }
    }
}

void SendBatch::Resume(std::span<const UploadRow> rows) {
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (!IsFinal(rows[i].status)) Turn(i, i + 1, SendOutcome::kNotSent, SendOutcome::kNone);
}

void SendBatch::Learn(const VideoSet& set, const BatchPlan& plan) {
    for (std::size_t i = 0; i < plan.Players().size(); ++i) {
        const std::vector<const SetVideo*> videos = VideosFor(set, i);
        const auto player = PlayerOf(plan.Players()[i].target);
        for (std::size_t k = 0; player && k < videos.size(); ++k)
            if (const auto place = PlaceOf(AsSent(*videos[k])))
                if (SendPair& pair = pairs_[*player][*place]; pair.fate == PlannedFate::kNotAsked)
                    pair.fate = plan.Fates()[i][k];
    }
}

std::vector<std::size_t> SendBatch::Take(const UploadEvent& event) {
    using Kind = UploadEvent::Kind;
    using enum SendOutcome;
    const std::size_t player = event.player;
    switch (event.kind) {
        case Kind::kAcknowledged: return {};
        // Whatever its turn before has come to.
        case Kind::kPlayerBegun: return Turn(player, player + 1, kNotSent, kNone);
        // Nothing is going to be sent any more of what has not been begun, whatever the plan was.
        case Kind::kPlayerEnded: return Turn(player, player + 1, kNone, kNotSent);
        case Kind::kRunEnded: return Turn(0, run_.size(), kNone, kNotSent);
        default: return {TakeVideo(event)};
    }
}

std::size_t SendBatch::TakeVideo(const UploadEvent& event) {
    using Kind = UploadEvent::Kind;
    const RunPlayer& player = run_[event.player];
    const std::size_t place = player.videos[event.video];
    SendPair& pair = pairs_[player.player][place];
    pair.note.clear();
    pair.proof.reset();
    switch (event.kind) {
        case Kind::kVideoBegun:
            pair.outcome = SendOutcome::kUnderWay;
            videos_[place].size = event.bytes;
            break;
        case Kind::kVideoDone: pair.outcome = SendOutcome::kDone; break;
        case Kind::kLeftOut: pair.outcome = SendOutcome::kLeftOut; break;
        default: pair.outcome = SendOutcome::kFailed; pair.note = NoteText(event.note);
    }
    return place;
}

/// Some of the players' videos turn from one outcome to the other.
std::vector<std::size_t> SendBatch::Turn(std::size_t first, std::size_t end, SendOutcome before,
                                         SendOutcome after) {
    std::vector<std::size_t> changed;
    for (std::size_t i = first; i < end; ++i)
        for (const std::size_t video : run_[i].videos) {
            SendPair& pair = pairs_[run_[i].player][video];
            if (pair.outcome != before) continue;
            pair.outcome = after;
            changed.push_back(video);
        }
    return changed;
}

PlayerProof SendBatch::Prove(std::size_t player, const PlayerFacts& facts,
                             const std::optional<std::string>& before) {
    PlayerProof proof;
    proof.isAnswered = facts.isReached;
    const CategoryNames names = NamesOf(facts);
    for (std::size_t place = 0; place < videos_.size(); ++place) {
        SendPair& pair = pairs_[player][place];
        if (!pair.IsThere()) continue;
        const BatchVideo& video = videos_[place];
        const std::size_t slot = video.video.category.value_or(names.size());
        const std::string category = slot < names.size() ? names[slot] : "";
        pair.proof = ProofOf(facts.videos, video.video.name, video.size, category);
        if (*pair.proof == ProofKind::kConfirmed)
            ++proof.confirmed;
        else
            proof.odd.push_back(video.video.name + Localized(kColon) + TextOf(*pair.proof));
    }
    proof.knowsSettingsBefore = before.has_value();
    if (before && facts.controlProtocol)
        if (auto changed = DifferencesBesidesNames(*before, *facts.controlProtocol))
            proof.changedSettings = std::move(*changed);
    return proof;
}

}  // namespace sontaro
