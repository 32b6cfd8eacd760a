#include "controlprotocol/control_protocol_run.h"

#include <algorithm>

#include "base/file.h"
#include "base/hex_command.h"
#include "base/name_list.h"
#include "settings/settings_files.h"

namespace sontaro {

namespace {

constexpr std::uint16_t kFirstPart = 0;
constexpr std::uint16_t kSecondPart = 32767;
constexpr std::uint32_t kOlderForm = 1;
constexpr std::uint32_t kUpload = 1;

constexpr LocalText kRestartQuestion = {"设置参数后,重启设备吗?",
                                        "After setting the parameters, restart the device?"};
constexpr LocalText kNotWritten = {"无法写入控制协议文件，未发送！",
                                   "The control protocol file cannot be written. Nothing has been "
                                   "sent!"};
constexpr LocalText kTooLate = {"播放器正在重启，不能再修改。请关闭本窗口。",
                                "The player restarts, nothing can be changed any more. Close this "
                                "window."};

using Line = SerialLineState::Kind;

}  // namespace

void ControlProtocolRun::Opened() {
    if (variant_ == ProtocolVariant::kOlder)
        Ask(kCommandPlayerState, kOlderForm, State::kAskingNames);
    else
        Ask(kCommandPlayerData, kFirstPart, State::kAskingData);
}

void ControlProtocolRun::Ask(std::uint32_t command, std::uint32_t selector, State next) {
    const bool asked = view_.Send(DevicePacket::Request(command, selector));
    Enter(asked ? next : State::kUnreachable);
}

void ControlProtocolRun::Handle(const WindowMessage& message) {
    if (const auto* serial = std::get_if<std::unique_ptr<SerialData>>(&message.record))
        return TakeSerialBytes(**serial);
    const PacketHeader& header = message.origin.header;
    if (message.origin.sender.ip != playerIp_) return;
    if (message.id == MessageId::kStopKeepAlive) return LinkEnded();
    const auto* reply = std::get_if<ReplyRecord>(&message.record);
    if (!reply) return;
    if (message.id == MessageId::kControlProtocol)
        TakeProtocol(header.argument, *reply);
    else if (message.id == MessageId::kPlayerState && header.command == kCommandPlayerData)
        TakePart(header.argument, *reply);
    else if (message.id == MessageId::kLayoutState || message.id == MessageId::kPlayerState)
        TakeNames(AsText(reply->payload));
}

void ControlProtocolRun::TakePart(std::uint16_t part, const ReplyRecord& reply) {
    if (state_ == State::kAskingData && part == kFirstPart) {
        playerData_[0] = reply.payload;
        Ask(kCommandPlayerData, std::uint32_t{kSecondPart} << 16, State::kAskingSecondPart);
    } else if (state_ == State::kAskingSecondPart && part == kSecondPart) {
        playerData_[1] = reply.payload;
        Ask(kCommandLayoutState, 0, State::kAskingNames);
    }
}

/// Names that nobody has asked for must not lead to another document: it would replace the edits.
void ControlProtocolRun::TakeNames(std::string_view text) {
    if (state_ != State::kAskingNames) return;
    names_ = ParseNameList(text);
    Ask(kCommandSettings, kBlockControlProtocol, State::kAskingProtocol);
}

/// A document's argument is its result unless it only repeats the request's.
void ControlProtocolRun::TakeProtocol(std::uint16_t argument, const ReplyRecord& reply) {
    constexpr std::uint16_t kWell = 1;
    answered_ = true;
    result_ = argument > kUpload ? argument : kWell;
    if (result_ != kWell) {
        awaitsAnswer_ = false;
        Enter(State::kRefused);
    } else if (reply.payload.empty() || restartWanted_) {
        TakeAcknowledgement();
    } else {
        TakeDocument(AsText(reply.payload));
    }
    view_.StateChanged();
}

void ControlProtocolRun::TakeDocument(std::string_view text) {
    const bool isRead = ReadControlProtocol(text, model_);
    if (isRead) {
        for (const Change& change : changes_) Repeat(change);
        view_.ShowModel();
    }
    Listen();
    if (!HoldsControlProtocol(text))
        Enter(State::kUnreadable);
    else
        Enter(changes_.empty() ? State::kRead : State::kChanged);
}

/// It has fitted once.
void ControlProtocolRun::Repeat(const Change& change) {
    if (const auto* edit = std::get_if<SettingsEdit>(&change))
        static_cast<void>(EditControlProtocol(model_, *edit));
    else
        static_cast<void>(ReadControlProtocol(std::get<std::string>(change), model_));
}

void ControlProtocolRun::Listen() {
    view_.KeepAliveEvery2Seconds(true);
    if (serialLine_.kind == Line::kNothing || serialLine_.kind == Line::kNotConnected)
        Tell({Line::kListening});
}

void ControlProtocolRun::TakeAcknowledgement() {
    if (state_ <= State::kUnreachable) return Enter(State::kUnreadable);
    const bool isAnswer = std::exchange(awaitsAnswer_, false);
    if (isAnswer && (state_ == State::kSent || state_ == State::kUnconfirmed)) {
        view_.MarkSaved();
        Enter(restartWanted_ ? State::kRestarting : State::kSaved);
    }
    if (!restartWanted_) Listen();
}

void ControlProtocolRun::TakeSerialBytes(const SerialData& serial) {
    const std::size_t count = std::min<std::size_t>(serial.count, serial.bytes.size());
    std::string command = HexCommandOf(ByteView(serial.bytes).first(count));
    if (restartWanted_ || asksToRestart_) return Tell({Line::kTooLate, std::move(command)});
    const std::optional<int> category = view_.ChosenCategory();
    if (!category) return Tell({Line::kNobodys, std::move(command)});
    const SettingsEdit change = SwitchCommandEdit(*category, command);
    static_cast<void>(Edit(change));
    view_.ShowChange(change);
    Tell({Line::kLearned, std::move(command), *category});
}

void ControlProtocolRun::LinkEnded() {
    view_.KeepAliveEvery2Seconds(false);
    Tell({Line::kNotConnected});
    if (state_ < State::kUnreachable)
        Enter(State::kUnreachable);
    else if (state_ == State::kSent)
        Enter(State::kUnconfirmed);
}

void ControlProtocolRun::KeepAlive() {
    if (!view_.Send(DevicePacket::Request(kCommandSerialData, 0))) LinkEnded();
}

EditAnswer ControlProtocolRun::Edit(const SettingsEdit& edit) {
    if (restartWanted_) return {EditAnswer::Outcome::kRefused, Localized(kTooLate)};
    EditAnswer answer = EditControlProtocol(model_, edit);
    if (answer.outcome != EditAnswer::Outcome::kAccepted) return answer;
    changes_.emplace_back(edit);
    EnterChanged();
    return answer;
}

void ControlProtocolRun::Upload() {
    if (!MayUpload()) return;
    const Result<std::string> text = WriteWorkingCopy();
    if (!text) return prompts_.Warn(Localized(kNotWritten));
    if (text->size() > kLongestPayload) return prompts_.Warn(Localized(kSettingsTooLong));
    SendDocument(*text, AskToRestart());
}

/// What the file holds afterwards.
Result<std::string> ControlProtocolRun::WriteWorkingCopy() const {
    if (const Status written = WriteControlProtocol(model_, workingCopy_); !written)
        return Error{written.reason()};
    return ReadFile(workingCopy_);
}

bool ControlProtocolRun::AskToRestart() {
    asksToRestart_ = true;
    const bool restart = prompts_.Confirm(Localized(kRestartQuestion));
    asksToRestart_ = false;
    return restart;
}

void ControlProtocolRun::SendDocument(std::string_view text, bool restart) {
    const std::uint32_t command = kCommandSettings | (restart ? 0x100U : 0U);
    const std::uint32_t selector = kBlockControlProtocol | kUpload << 16;
    if (!view_.Send(DevicePacket::Request(command, selector, text))) return Enter(State::kNotSent);
    changes_.clear();
    awaitsAnswer_ = true;
    restartWanted_ = restart;
    if (restart) view_.KeepAliveEvery2Seconds(false);
    Enter(State::kSent);
    view_.StateChanged();
}

void ControlProtocolRun::OpenFile(const std::filesystem::path& path) {
    const auto take = [this](std::string_view text) {
        const bool taken = HoldsControlProtocol(text) && ReadControlProtocol(text, model_);
        if (taken) changes_.emplace_back(std::string(text));
        return taken;
    };
    if (!MayUseFiles() || !TakeSettingsFile(path, take, prompts_)) return;
    view_.ShowModel();
    EnterChanged();
}

/// Where the defaults are shown for want of a document, that remains to be said.
void ControlProtocolRun::EnterChanged() {
    if (answered_ && state_ != State::kRefused && state_ != State::kUnreadable)
        Enter(State::kChanged);
}

void ControlProtocolRun::SaveFile(const std::filesystem::path& path) {
    if (MayUseFiles()) KeepSettingsFile(path, ControlProtocolText(model_), prompts_);
}

void ControlProtocolRun::Enter(State state) {
    if (state == state_) return;
    state_ = state;
    view_.StateChanged();
}

void ControlProtocolRun::Tell(SerialLineState line) {
    serialLine_ = std::move(line);
    view_.StateChanged();
}

}  // namespace sontaro
