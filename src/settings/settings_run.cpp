#include "settings/settings_run.h"

#include <fmt/printf.h>

#include <algorithm>

#include "settings/settings_files.h"

namespace sontaro {

namespace {

using Confirmation = SettingsBlockFacts::Confirmation;

constexpr LocalText kSaved = {"配置完成！", "Changes have been saved!"};
constexpr LocalText kNotThePlayers = {"这些不是播放器自己的设置。仍要全部发送吗？",
                                      "These are not the player's settings. Send them all the "
                                      "same?"};
constexpr LocalText kDiscardQuestion = {
    "有修改尚未得到播放器确认，重新读取会丢失这些修改。继续吗？",
    "The player has not confirmed all changes, and reading "
    "again discards them. Continue?"};
constexpr LocalText kOtherKeys = {
    "文件中有 %d 项设置是播放器没有的，播放器的 %d 项设置不在文件中。",
    "%d of the file's settings are unknown to the player, %d of the player's are missing in the "
    "file."};
constexpr std::uint8_t kRestart = 1;

/// How many of the first are not among the second; both are sorted.
int CountOthers(const std::vector<std::string>& keys, const std::vector<std::string>& others) {
    std::vector<std::string> different;
    std::ranges::set_difference(keys, others, std::back_inserter(different));
    return static_cast<int>(different.size());
}

/// What the player holds, after it has sent a document. That may leave rows out, which go on
/// showing what the user has changed: of those, what was known before stays.
RowValues HeldNow(const SettingsDocument& document, const SettingsHistory& history,
                  const RowValues& before, const RowValues& known) {
    RowValues held = ValuesOf(document);
    return history.IsConfirmed() ? held : WithKnown(std::move(held), before, known);
}

}  // namespace

SettingsRun::SettingsRun(SettingsBlock block, SettingsDocument& document, SettingsView& view,
                         Prompts& prompts, const ExchangeServices& exchange, Target player,
                         SettingsSteps steps)
    : facts_(FactsOf(block)),
      document_(document),
      view_(view),
      prompts_(prompts),
      steps_(std::move(steps)),
      talk_(exchange, std::move(player),
            {[this](WindowMessage& message) { TakeUnasked(message); },
             [this] { view_.StateChanged(); }}),
      history_(document) {
    if (!steps_.read)
        steps_.read = [this](const AskCall& ask, Conversation::EndedCall ended) {
            ask(ReadSettings(facts_.block), std::move(ended));
        };
    if (!steps_.prepare)
        steps_.prepare = [](std::string text) { return OutgoingSettings{std::move(text)}; };
}

/// The player may take its time, but the user is told.
Request SettingsRun::WaitOn(Request request) {
    request.atLimit = [this](std::chrono::milliseconds waited) {
        waited_ = waited;
        view_.StateChanged();
        return AtLimit::kWaitOn;
    };
    return request;
}

void SettingsRun::Read() {
    if (reading_ && talk_.IsAsking()) return talk_.Repeat();
    if (HasUnsentChanges() && !prompts_.Confirm(Localized(kDiscardQuestion))) return;
    talk_.Cancel();
    discarded_ = history_.Seal();
    reading_ = true;
    waited_ = {};
    Enter(SettingsState::kWaiting);
    const AskCall ask = [this](Request request, Conversation::EndedCall ended) {
        waited_ = {};
        talk_.Ask(WaitOn(std::move(request)), std::move(ended));
    };
    steps_.read(ask, [this](const Ended& ended) { ReadEnded(ended); });
}

void SettingsRun::ReadEnded(const Ended& ended) {
    reading_ = false;
    waited_ = {};
    if (ended.how != End::kReply) discarded_ = 0;
    code_ = ended.code;
    reason_ = ended.reason;
    switch (ended.how) {
        case End::kReply: return TakeDocument(AsText(PayloadOf(*ended.reply)));
        case End::kRefused:
            answered_ = answered_ || ended.reply != nullptr;  // else it was not the document's
            return Enter(SettingsState::kRefused);
        case End::kNotSupported: return Enter(SettingsState::kNotSupported);
        case End::kNotSent: return Enter(SettingsState::kUnreachable);
        case End::kLinkEnded: return Enter(SettingsState::kLinkLost);
        case End::kTimedOut:
        case End::kCancelled: return;
    }
}

/// A document that cannot be used changes nothing, and must not be sent for the player's.
void SettingsRun::TakeDocument(std::string_view text) {
    answered_ = true;
    held_.Learn(text);
    const RowValues before = ValuesOf(document_);
    if (!document_.TakeReply(text)) {
        playersKeys_.reset();
        opened_ = opened_ && history_.HasSince(discarded_);
        return Enter(opened_ ? SettingsState::kForeign : SettingsState::kUnreadable);
    }
    playersKeys_ = document_.Keys();
    history_.ConfirmBefore(discarded_);
    confirmed_ = HeldNow(document_, history_, before, confirmed_);
    opened_ = opened_ && !history_.IsConfirmed();
    history_.Repeat();
    view_.ShowRows();
    view_.ShowConfirmed();
    untouched_ = document_.HoldsDefaults() ? SettingsState::kNoneYet : SettingsState::kRead;
    Enter(history_.IsConfirmed() ? untouched_ : AfterChange());
    TellOtherKeys();
}

/// A document that comes by itself is one all the same; a confirmation that belongs to nothing
/// confirms nothing.
void SettingsRun::TakeUnasked(WindowMessage& message) {
    steps_.unasked(message);
    const bool isAnswer = ReadSettings(facts_.block).judge(message).kind == Verdict::Kind::kReply;
    const std::string_view text = AsText(PayloadOf(message));
    if (isAnswer && !text.empty() && !locked_) TakeDocument(text);
}

EditAnswer SettingsRun::Edit(const SettingsEdit& edit) {
    EditAnswer answer = history_.Edit(edit);
    if (answer.outcome == EditAnswer::Outcome::kAccepted) Enter(AfterChange());
    return answer;
}

void SettingsRun::Undo() {
    if (MayUndo()) ShowWalked(history_.Undo());
}

void SettingsRun::Redo() {
    if (MayRedo()) ShowWalked(history_.Redo());
}

void SettingsRun::ShowWalked(const std::string& row) {
    opened_ = history_.HasFile();
    view_.ShowRows();
    view_.ChooseRow(row);
    Enter(history_.IsConfirmed() ? Untouched() : AfterChange());
}

/// What remains to be said when everything has been undone that the player has not confirmed.
SettingsState SettingsRun::Untouched() const {
    if (awaited_ > 0) return SettingsState::kSent;
    const bool isKnown = untouched_ > SettingsState::kForeign;
    return isKnown && ValuesOf(document_) != confirmed_ ? SettingsState::kChanged : untouched_;
}

/// Where something else is shown than what the player has, that remains to be said.
SettingsState SettingsRun::AfterChange() const {
    if (IsPlayersOwn()) return SettingsState::kChanged;
    if (opened_) return SettingsState::kForeign;
    return state_ < SettingsState::kForeign ? state_ : SettingsState::kChanged;
}

bool SettingsRun::IsPlayersOwn() const { return playersKeys_ && *playersKeys_ == document_.Keys(); }

bool SettingsRun::MaySend() const {
    return !locked_ && (answered_ || opened_) && document_.HasSettings();
}

int SettingsRun::SecondsWithoutAnswer() const {
    return static_cast<int>(std::chrono::duration_cast<std::chrono::seconds>(waited_).count());
}

bool SettingsRun::Agrees() {
    if (const std::optional<LocalText> refusal = document_.RefusalToSend()) {
        prompts_.Warn(Localized(*refusal));
        return false;
    }
    return IsPlayersOwn() || prompts_.Confirm(Localized(kNotThePlayers));
}

/// Questions take their time: what is changed or arrives while one is open is not sent.
void SettingsRun::Save() {
    if (!MaySend() || !Agrees() || !MaySend()) return;
    if (reading_) talk_.Cancel();  // its answer would take away what is being sent
    SentSettings sent{history_.Seal(), "", ValuesOf(document_), document_.Keys(), false};
    std::optional<OutgoingSettings> outgoing = steps_.prepare(document_.Write());
    if (!outgoing || locked_) return;
    if (outgoing->text.size() > kLongestPayload) return prompts_.Warn(Localized(kSettingsTooLong));
    sent.text = std::move(outgoing->text);
    sent.restarts = outgoing->restarts;
    Send(std::move(sent));
}

/// One that has been waited for in vain is given up; others are sent one after another. What
/// restarts the player waits for nothing: only what has gone out ends the editing.
void SettingsRun::Send(SentSettings sent) {
    const bool restarts = sent.restarts;
    if (reading_ || SecondsWithoutAnswer() > 0 || restarts) talk_.Cancel();
    waited_ = {};
    ++awaited_;
    Enter(SettingsState::kSent);
    held_.GiveUp();
    Request write = WaitOn(WriteSettings(facts_.block, sent.text, restarts ? kRestart : 0));
    talk_.Ask(std::move(write),
              [this, sent = std::move(sent)](const Ended& ended) { SendEnded(sent, ended); });
    if (restarts && state_ != SettingsState::kNotSent) locked_ = true;
    view_.StateChanged();
}

void SettingsRun::SendEnded(const SentSettings& sent, const Ended& ended) {
    --awaited_;
    waited_ = {};
    held_.SendingEnded(ended.how, sent.text);
    code_ = ended.code;
    reason_ = ended.reason;
    switch (ended.how) {
        case End::kReply: return Confirm(sent, AsText(PayloadOf(*ended.reply)));
        case End::kRefused: return Enter(SettingsState::kRefused);
        case End::kNotSupported: return Enter(SettingsState::kNotSupported);
        case End::kNotSent: return Enter(SettingsState::kNotSent);
        case End::kLinkEnded: return Enter(SettingsState::kUnconfirmed);
        case End::kTimedOut:
        case End::kCancelled: return;
    }
}

/// What was changed since it was sent stays as it is, and is not confirmed; neither are rows that
/// have come from the player by themselves meanwhile.
void SettingsRun::Confirm(const SentSettings& sent, std::string_view answer) {
    const RowValues before = ValuesOf(document_);
    const bool hasDocument = facts_.confirmation == Confirmation::kAnyDocument && !answer.empty();
    if (hasDocument) held_.Learn(answer);
    if (hasDocument && !document_.TakeReply(answer)) return Enter(SettingsState::kUnreadable);
    answered_ = true;
    history_.ConfirmBefore(sent.mark);
    playersKeys_ = sent.keys;
    confirmed_ = hasDocument ? HeldNow(document_, history_, before, sent.values) : sent.values;
    if (hasDocument) {
        history_.Repeat();
        view_.ShowRows();
    }
    opened_ = opened_ && !history_.IsConfirmed();
    view_.ShowConfirmed();
    untouched_ = SettingsState::kSaved;
    if (sent.restarts)
        Enter(SettingsState::kRestarting);
    else if (awaited_ > 0)
        Enter(SettingsState::kSent);
    else
        Enter(ValuesOf(document_) == confirmed_ ? SettingsState::kSaved : SettingsState::kChanged);
    if (facts_.confirmation == Confirmation::kArgument) prompts_.Inform(Localized(kSaved));
}

void SettingsRun::OpenFile(const std::filesystem::path& path) {
    if (!MayOpen()) return;
    const auto take = [this](std::string_view text) { return TakeFile(text); };
    if (TakeSettingsFile(path, take, prompts_)) FileTaken();
}

void SettingsRun::OpenEarlier(const std::string& text) {
    if (!MayOpen()) return;
    if (!TakeFile(text)) return prompts_.Warn(Localized(kEarlierUnusable));
    FileTaken();
}

bool SettingsRun::TakeFile(std::string_view text) {
    return history_.TakeFile(std::string(text)).ok();
}

void SettingsRun::FileTaken() {
    opened_ = true;
    view_.ShowRows();
    view_.ShowConfirmed();
    Enter(AfterChange());
    TellOtherKeys();
}

void SettingsRun::TellOtherKeys() {
    if (!playersKeys_ || IsPlayersOwn()) return;
    const std::vector<std::string> keys = document_.Keys();
    prompts_.Inform(fmt::sprintf(Localized(kOtherKeys), CountOthers(keys, *playersKeys_),
                                 CountOthers(*playersKeys_, keys)));
}

void SettingsRun::SaveFile(const std::filesystem::path& path) {
    if (MayKeep()) KeepSettingsFile(path, document_.Write(), prompts_);
}

std::string SettingsRun::ValueOf(const std::string& key) const {
    const RowValues values = ValuesOf(document_);
    const auto value = values.find(key);
    return value == values.end() ? "" : value->second;
}

void SettingsRun::Enter(SettingsState state) {
    state_ = state;
    if (state < SettingsState::kForeign) untouched_ = state;
    view_.StateChanged();
}

}  // namespace sontaro
