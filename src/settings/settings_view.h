// What a procedure for settings tells its window.
#pragma once

#include <string>

namespace sontaro {

/// What is to be told of the settings.
enum class SettingsState {
    kWaiting,       ///< for the player's settings
    kUnreachable,   ///< the player could not be asked: `LastReason`
    kLinkLost,      ///< the link has ended before the player answered
    kNotSupported,  ///< the player does not know such settings
    kRefused,       ///< the player has answered that something is wrong: `LastCode`
    kUnreadable,    ///< the player's settings cannot be used
    kForeign,       ///< settings from a file that are not the player's
    kNoneYet,       ///< the player has no settings: the defaults
    kRead,          ///< as the player has sent them
    kChanged,       ///< something has not been sent yet
    kNotSent,       ///< it could not be sent: `LastReason`
    kSent,          ///< all of it, but the player has not answered yet
    kUnconfirmed,   ///< all of it, but the link has ended without an answer
    kSaved,         ///< the player has confirmed all that is shown
    kRestarting,    ///< and starts again with it
};

/// What the procedure asks of its window.
class SettingsView {
   public:
    virtual ~SettingsView() = default;
    /// The document's rows have changed: shows them anew.
    virtual void ShowRows() = 0;
    /// Shows and chooses the row with that key, if there is one: it has just been changed.
    virtual void ChooseRow(const std::string& key) = 0;
    /// `SettingsRun::Confirmed` has changed.
    virtual void ShowConfirmed() = 0;
    /// What is to be told, or what may be pressed, has changed.
    virtual void StateChanged() = 0;
};

}  // namespace sontaro
