#include "settings/settings_run.h"

#include "settings/settings_files.h"

namespace sontaro {

namespace {

constexpr LocalText kSaved = {"配置完成！", "Changes have been saved!"};

}  // namespace

void SettingsRun::Opened() {
    const bool asked = view_.Send(DevicePacket::Request(kCommandSettings, exchange_.block));
    if (!asked) Enter(State::kUnreachable);
}

void SettingsRun::Handle(const WindowMessage& message) {
    constexpr std::uint32_t kDocument = 0;
    constexpr std::uint32_t kSaveIsDone = 1;
    const auto* reply = std::get_if<ReplyRecord>(&message.record);
    if (message.id != exchange_.reply || !reply || message.origin.sender.ip != playerIp_) return;
    if (!exchange_.announcesSaves) {
        TakeAnswer(AsText(reply->payload));
    } else if (message.wParam == kSaveIsDone) {
        Confirm();
        prompts_.Inform(Localized(kSaved));
    } else if (message.wParam == kDocument) {
        TakeDocument(AsText(reply->payload));
    }
}

/// A document that cannot be used must not be sent: it would take the player's settings away.
void SettingsRun::TakeDocument(std::string_view text) {
    const bool usable = document_.TakeReply(text);
    newer_.clear();
    awaitsAnswer_ = false;
    view_.ShowRows();
    Enter(usable ? State::kRead : State::kUnreadable);
}

/// What the player answers to a read, and to a save. Edits made since the save outlive its answer.
void SettingsRun::TakeAnswer(std::string_view text) {
    const bool usable = !text.empty() && document_.TakeReply(text);
    if (usable) {
        if (!awaitsAnswer_) newer_.clear();
        for (const SettingsEdit& edit : newer_) static_cast<void>(document_.Edit(edit));
        view_.ShowRows();
    }
    if (awaitsAnswer_ && (usable || text.empty()))
        Confirm();
    else if (usable)
        Enter(State::kRead);
    else if (!text.empty() && !IsUsable())
        Enter(State::kUnreadable);
}

void SettingsRun::Confirm() {
    awaitsAnswer_ = false;
    if (state_ != State::kSent) return;
    view_.MarkSaved();
    Enter(State::kSaved);
}

EditAnswer SettingsRun::Edit(const SettingsEdit& edit) {
    EditAnswer answer = document_.Edit(edit);
    if (answer.outcome != EditAnswer::Outcome::kAccepted) return answer;
    newer_.push_back(edit);
    Enter(State::kChanged);
    return answer;
}

void SettingsRun::Save() {
    if (!IsUsable()) return;
    if (const std::optional<LocalText> refusal = document_.RefusalToSend())
        return prompts_.Warn(Localized(*refusal));
    const std::string text = document_.Write();
    if (text.size() > kLongestPayload) return prompts_.Warn(Localized(kSettingsTooLong));
    const std::uint32_t selector = exchange_.block | std::uint32_t{exchange_.saveArgument} << 16;
    if (!view_.Send(DevicePacket::Request(kCommandSettings, selector, text)))
        return Enter(State::kNotSent);
    newer_.clear();
    awaitsAnswer_ = true;
    Enter(State::kSent);
}

void SettingsRun::OpenFile(const std::filesystem::path& path) {
    const auto take = [this](std::string_view text) { return document_.TakeFile(text); };
    if (!TakeSettingsFile(path, take, prompts_)) return;
    newer_.clear();
    view_.ShowRows();
    Enter(State::kChanged);
}

void SettingsRun::SaveFile(const std::filesystem::path& path) {
    KeepSettingsFile(path, document_.Write(), prompts_);
}

void SettingsRun::Enter(State state) {
    if (state == state_) return;
    state_ = state;
    view_.StateChanged();
}

}  // namespace sontaro
