#include "timeline/command_names.h"

#include "base/path_text.h"
#include "exchange/player_requests.h"
#include "settings/settings_files.h"

namespace sontaro {

CommandNames::CommandNames(const ExchangeServices& exchange, Target player)
    : talk_(exchange, std::move(player), {}) {}

/// What becomes of the question is told where the names are shown: it has no boxes of its own. The
/// player may take its time.
void CommandNames::AskPlayer() {
    Enter(CommandNamesState::kAsking);
    if (talk_.IsAsking()) return talk_.Repeat();
    Request request = ReadSettings(kBlockControlProtocol);
    request.boxes = Boxes::kMuted;
    request.atLimit = [this](auto) {
        if (state_ == CommandNamesState::kAsking) Enter(CommandNamesState::kNoAnswer);
        return AtLimit::kWaitOn;
    };
    talk_.Ask(std::move(request), [this](const Ended& ended) { Answered(ended); });
}

void CommandNames::TakeFile(const std::filesystem::path& path, Prompts& prompts) {
    const auto take = [this](std::string_view text) {
        auto read = ReadNamedCommands(text);
        if (read) commands_ = std::move(*read);
        return read.ok();
    };
    if (!TakeSettingsFile(path, take, prompts)) return;
    fileName_ = TextOfPath(path.filename());
    Enter(CommandNamesState::kOfFile);
}

bool CommandNames::Handle(WindowMessage& message) {
    return message.id == MessageId::kControlProtocol && talk_.Take(message);
}

/// Who has opened a file meanwhile does not wait for the player any more.
void CommandNames::Answered(const Ended& ended) {
    if (state_ != CommandNamesState::kOfFile) Enter(StateAfter(ended));
}

CommandNamesState CommandNames::StateAfter(const Ended& ended) {
    reason_ = ended.reason;
    switch (ended.how) {
        case End::kReply: break;
        case End::kNotSent: return CommandNamesState::kNotSent;
        case End::kLinkEnded: return CommandNamesState::kLinkLost;
        default: return CommandNamesState::kRefused;
    }
    const std::string_view text = AsText(PayloadOf(*ended.reply));
    auto read = text.empty() ? std::vector<NamedCommand>() : ReadNamedCommands(text);
    if (!read) return CommandNamesState::kUnreadable;
    commands_ = std::move(*read);
    return CommandNamesState::kOfPlayer;
}

void CommandNames::Enter(CommandNamesState state) {
    state_ = state;
    if (changed_) changed_();
}

}  // namespace sontaro
