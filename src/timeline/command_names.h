// The named commands that are at hand while a timeline is edited.
#pragma once

#include <filesystem>
#include <functional>

#include "base/prompts.h"
#include "exchange/conversation.h"
#include "timeline/named_commands.h"

namespace sontaro {

/// What is to be told of them.
enum class CommandNamesState {
    kNone,        ///< nobody has been asked
    kAsking,      ///< the player has not answered yet
    kOfPlayer,    ///< these are the player's
    kOfFile,      ///< these are a file's: `FileName`
    kNotSent,     ///< the player could not be asked: `LastReason`
    kLinkLost,    ///< the link has ended before the player answered
    kNoAnswer,    ///< the player has not answered in time
    kRefused,     ///< the player will not, or does not know what it was asked
    kUnreadable,  ///< what the player has sent cannot be used
};

/// The commands of the player's control protocol, or of a file's. What is there stays as long as
/// nothing else has come. User-interface thread.
class CommandNames {
   public:
    /// The services outlive it.
    CommandNames(const ExchangeServices& exchange, Target player);

    /// Asks the player; again, when it is being asked.
    void AskPlayer();
    /// Takes the commands of a file, or tells by `prompts` that it has none and changes nothing.
    void TakeFile(const std::filesystem::path& path, Prompts& prompts);
    /// Takes a message of the main window's. False when it has nothing to do with this.
    bool Handle(WindowMessage& message);

    [[nodiscard]] const std::vector<NamedCommand>& Commands() const { return commands_; }
    [[nodiscard]] CommandNamesState State() const { return state_; }
    [[nodiscard]] NotSent LastReason() const { return reason_; }
    [[nodiscard]] const std::string& FileName() const { return fileName_; }

    /// Is called whenever any of that has changed; empty: nobody listens.
    void Listen(std::function<void()> changed) { changed_ = std::move(changed); }

   private:
    void Answered(const Ended& ended);
    [[nodiscard]] CommandNamesState StateAfter(const Ended& ended);
    void Enter(CommandNamesState state);

    Conversation talk_;
    std::vector<NamedCommand> commands_;
    CommandNamesState state_ = CommandNamesState::kNone;
    NotSent reason_{};
    std::string fileName_;
    std::function<void()> changed_;
};

}  // namespace sontaro
