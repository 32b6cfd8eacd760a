#include "playercontrol/player_control_run.h"

#include <fmt/printf.h>

#include <algorithm>

namespace sontaro {

namespace {

constexpr LocalText kReadingVideos = {"正在读取播放器的视频列表…",
                                      "Reading the player's list of videos…"};
constexpr LocalText kReadingSettings = {"正在读取播放器控制协议…",
                                        "Reading the player control protocol…"};
constexpr LocalText kVideosUnreadable = {
    "播放器的视频列表无法识别，未读取其设置。可重新读取。",
    "The player's list of videos cannot be read, and its settings were not asked for. Read again."};
constexpr LocalText kNotYetRead = {"播放器尚未发来它的设置。",
                                   "The player has not sent its settings yet."};
constexpr LocalText kDropped = {"播放器的设置已满，有 %d 项新增内容未能保留。",
                                "The player's settings are full: %d of your additions are lost."};
constexpr std::string_view kNumberKey = "/PlayerID";

}  // namespace

PlayerControlRun::PlayerControlRun(PlayerControlView& view, Prompts& prompts,
                                   const ExchangeServices& exchange, Target player)
    : view_(view),
      prompts_(prompts),
      settings_(kBlockPlayerControl, document_, *this, prompts, exchange, std::move(player),
                Steps()) {}

SettingsSteps PlayerControlRun::Steps() {
    SettingsSteps steps;
    steps.read = [this](AskCall ask, Conversation::EndedCall ended) {
        ask_ = std::move(ask);
        ended_ = std::move(ended);
        step_ = Step::kVideos;
        ask_(AskVideoList(VideoListFor::kPlayerControl), [this](Ended& end) { TakeVideos(end); });
    };
    return steps;
}

/// A list that cannot be read leaves none, and ends the reading.
void PlayerControlRun::TakeVideos(Ended& ended) {
    if (ended.how != End::kReply) return ended_(ended);
    Result<VideoList> list = ReadVideoList(AsText(PayloadOf(*ended.reply)));
    const bool isReadable = list.ok();
    videos_ = isReadable ? std::move(*list) : VideoList();
    step_ = isReadable ? Step::kSettings : Step::kVideosUnreadable;
    view_.ShowVideos();
    if (!isReadable) {
        ended.how = End::kRefused;
        return ended_(ended);
    }
    ask_(ReadSettings(kBlockPlayerControl), [this](Ended& end) { TakeSettings(end); });
}

/// Who gives up waiting for the settings has heard of the player all the same.
void PlayerControlRun::TakeSettings(Ended& ended) {
    WindowMessage list;
    if (step_ == Step::kSettingsGivenUp && ended.how == End::kCancelled)
        ended = {End::kRefused, 0, {}, &list};
    ended_(ended);
}

bool PlayerControlRun::MaySend() const {
    const bool waits = settings_.State() == SettingsState::kWaiting && step_ == Step::kSettings;
    return settings_.MaySend() || waits;
}

/// When the user would rather wait, the settings are asked for once more: the answer to the first
/// question no longer counts.
void PlayerControlRun::Save() {
    if (settings_.MaySend() || !MaySend()) return settings_.Save();
    step_ = Step::kSettingsGivenUp;
    settings_.Talk().Cancel();
    settings_.Save();
    if (settings_.State() == SettingsState::kRefused)
        settings_.Talk().Post(ReadSettings(kBlockPlayerControl).packet);
}

std::optional<LocalText> PlayerControlRun::Note() const {
    const SettingsState state = settings_.State();
    const bool isInTime = settings_.SecondsWithoutAnswer() == 0;
    if (state == SettingsState::kWaiting && isInTime)
        return step_ == Step::kVideos ? kReadingVideos : kReadingSettings;
    if (state != SettingsState::kRefused) return std::nullopt;
    if (step_ == Step::kVideosUnreadable) return kVideosUnreadable;
    return step_ == Step::kSettingsGivenUp ? std::optional(kNotYetRead) : std::nullopt;
}

std::vector<ControlledPlayerEntry> PlayerControlRun::Players() const {
    const Elements<ControlledPlayer>& players = document_.Model().players;
    std::vector<ControlledPlayerEntry> entries;
    for (std::size_t place = 0; place < players.size(); ++place)
        entries.push_back({players.IdAt(place), ControlledPlayerCaption(players[place].number)});
    return entries;
}

void PlayerControlRun::ChoosePlayer(std::optional<ElementId> player) {
    chosen_ = player;
    view_.ShowRows();
}

EditAnswer PlayerControlRun::Edit(const SettingsEdit& edit) {
    EditAnswer answer = settings_.Edit(edit);
    const bool isNumber = edit.key.ends_with(kNumberKey);
    if (isNumber && answer.outcome == EditAnswer::Outcome::kAccepted) view_.ShowPlayers();
    return answer;
}

bool PlayerControlRun::Do(const PlayerControlChange& change) {
    if (change.refusal) {
        const std::string text = Localized(*change.refusal);
        change.isLimit ? prompts_.WarnOfLimit(text) : prompts_.Warn(text);
        return false;
    }
    if (change.question && !prompts_.Confirm(Localized(*change.question))) return false;
    return settings_.Edit(change.edit).outcome == EditAnswer::Outcome::kAccepted;
}

void PlayerControlRun::AddPlayer() {
    const PlayerControlChange change = PlayerAddition(document_);
    if (!Do(change)) return;
    chosen_ = ElementOf(change.edit.key)->player;
    ShowRows();
}

std::optional<std::string> PlayerControlRun::AddType(std::string_view name) {
    const PlayerControlChange change = TypeAddition(document_, chosen_, name);
    if (!Do(change)) return std::nullopt;
    ShowRows();
    return change.edit.key;
}

std::size_t PlayerControlRun::PlaceOfChosen() const {
    const std::vector<ControlledPlayerEntry> players = Players();
    const auto chosen = std::ranges::find(players, chosen_, &ControlledPlayerEntry::id);
    return static_cast<std::size_t>(chosen - players.begin());
}

/// The one that follows is chosen then, or the last.
void PlayerControlRun::DeletePlayer() {
    const std::size_t place = PlaceOfChosen();
    if (!Do(PlayerDeletion(document_, chosen_))) return;
    const std::vector<ControlledPlayerEntry> left = Players();
    chosen_.reset();
    if (!left.empty()) chosen_ = left[std::min(place, left.size() - 1)].id;
    ShowRows();
}

void PlayerControlRun::DeleteType(const std::optional<ChosenInGrid>& chosen) {
    if (Do(TypeDeletion(document_, chosen_, chosen))) ShowRows();
}

/// Without the chosen player the first one is.
void PlayerControlRun::ShowRows() {
    const std::vector<ControlledPlayerEntry> players = Players();
    if (PlaceOfChosen() == players.size())
        chosen_ = players.empty() ? std::nullopt : std::optional(players.front().id);
    view_.ShowPlayers();
    view_.ShowRows();
}

/// It may be another player's.
void PlayerControlRun::ChooseRow(const std::string& key) {
    const std::optional<ControlElement> element = ElementOf(key);
    if (element && chosen_ != element->player) {
        chosen_ = element->player;
        ShowRows();
    }
    view_.ChooseRow(key);
}

void PlayerControlRun::ShowConfirmed() {
    document_.ShowHeld(settings_.Confirmed());
    view_.ShowConfirmed();
}

void PlayerControlRun::StateChanged() {
    view_.StateChanged();
    if (const int dropped = document_.TakeDropped())
        prompts_.Warn(fmt::sprintf(Localized(kDropped), dropped));
}

}  // namespace sontaro
