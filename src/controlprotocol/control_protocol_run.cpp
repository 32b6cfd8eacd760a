#include "controlprotocol/control_protocol_run.h"

#include <utility>

namespace sontaro {

namespace {

constexpr LocalText kTooLate = {"播放器正在重启，不能再修改。请关闭本窗口。",
                                "The player restarts, nothing can be changed any more. Close this "
                                "window."};

}  // namespace

ControlProtocolRun::ControlProtocolRun(ControlProtocolView& view, Prompts& prompts,
                                       const ExchangeServices& exchange, Target player,
                                       std::filesystem::path workingCopy, ProtocolVariant variant)
    : view_(view),
      chain_(variant),
      workingCopy_(std::move(workingCopy), prompts),
      settings_(kBlockControlProtocol, document_, *this, prompts, exchange, std::move(player),
                Steps()),
      keepAlive_(exchange.timers,
                 [this] { settings_.Talk().Post(KeepAlivePacket(), Boxes::kMuted); }),
      leaving_(exchange.timers) {}

SettingsSteps ControlProtocolRun::Steps() {
    SettingsSteps steps;
    steps.read = [this](AskCall ask, Conversation::EndedCall ended) {
        chain_.Start(std::move(ask), std::move(ended));
    };
    steps.prepare = [this](const std::string& text) { return workingCopy_.Prepare(text); };
    steps.unasked = [this](WindowMessage& message) { TakeUnasked(message); };
    return steps;
}

/// What was learned may have been undone, or be another document's.
void ControlProtocolRun::ShowRows() {
    if (line_.kind == SerialLineState::Kind::kLearned ||
        line_.kind == SerialLineState::Kind::kReplaced)
        line_ = {SerialLineState::Kind::kListening};
    view_.ShowRows();
}

/// The link is kept alive from the player's first document on, until it restarts.
void ControlProtocolRun::StateChanged() {
    const bool heard = settings_.IsAnswered() && settings_.State() > SettingsState::kRefused;
    listens_ = settings_.IsConnected() && (listens_ || heard);
    keepAlive_.Want(listens_ && !settings_.IsLocked() && !leaving_.IsRunning());
    if (listens_ && line_.kind == SerialLineState::Kind::kNothing)
        line_ = {SerialLineState::Kind::kListening};
    view_.StateChanged();
}

void ControlProtocolRun::Leave(std::function<void()> left) {
    keepAlive_.Want(false);
    leaving_.Start(kLeavingTime, std::move(left));
}

EditAnswer ControlProtocolRun::Edit(const SettingsEdit& edit) {
    if (settings_.IsLocked()) return {EditAnswer::Outcome::kRefused, Localized(kTooLate)};
    return settings_.Edit(edit);
}

void ControlProtocolRun::Learn(bool wanted) { learner_.Enable(wanted); }

void ControlProtocolRun::TakeUnasked(WindowMessage& message) {
    if (const auto* serial = std::get_if<std::unique_ptr<SerialData>>(&message.record))
        TakeSerialBytes(**serial);
}

void ControlProtocolRun::TakeSerialBytes(const SerialData& serial) {
    const bool tooLate = settings_.IsLocked() || workingCopy_.IsAsking();
    line_ = learner_.Hear(serial, {tooLate, view_.IsEditingCategory(), view_.ChosenCategory()});
    if (line_.kind == SerialLineState::Kind::kLearned) {
        const SettingsEdit change = SwitchCommandEdit(line_.category, line_.command);
        line_.replaced = settings_.ValueOf(change.key);
        if (!line_.replaced.empty() && line_.replaced != line_.command)
            line_.kind = SerialLineState::Kind::kReplaced;
        static_cast<void>(settings_.Edit(change));
        view_.ShowChange(change);
    }
    view_.StateChanged();
}

}  // namespace sontaro
