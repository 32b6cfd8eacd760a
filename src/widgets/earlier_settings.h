// What stood on the players of a window before it was written over.
#pragma once

#include <wx/stattext.h>

#include <functional>
#include <optional>
#include <string>

#include "settings/settings_run.h"
#include "widgets/earlier_dialog.h"

class wxSizer;

namespace sontaro {

/// Control number of the button.
inline constexpr int kEarlierButton = 2823;

/// Whose documents a window offers, and what it does with the one that is chosen.
struct EarlierActions {
    std::function<EarlierQuestion()> question;
    std::function<void(const std::string& text)> open;
    /// Ends an edit that is open; false when it is refused.
    std::function<bool()> commit;
    /// There is other trouble than before.
    std::function<void()> changed;
};

/// Keeps the documents that a window's players hold before others are sent to them. The button
/// "Earlier...", or Ctrl+H anywhere in the window, offers those that were kept, to be opened as
/// files are. User-interface thread.
class EarlierSettings {
   public:
    /// Puts the button behind the first one of `foot`, which is Open and has the control number
    /// `openId`. `owner` is a dialog, or a page of one: the key is its own while it is shown. What
    /// is given outlives this object's use.
    EarlierSettings(wxWindow& owner, wxSizer& foot, int openId, const UiServices& services,
                    SettingsBlock block, EarlierActions actions);
    /// For the settings of one player.
    EarlierSettings(wxWindow& owner, wxSizer& foot, int openId, const UiServices& services,
                    const DeviceRecord& player, SettingsRun& run, std::function<bool()> commit,
                    std::function<void()> changed);

    void Keep(const DeviceRecord& player, std::string text) {
        keeping_.Keep(player, std::move(text));
    }
    /// Whether anything can be opened at present.
    void Enable(bool enabled);
    /// Adds a sentence to a text when something could not be kept.
    [[nodiscard]] std::string WithTrouble(std::string text) const;
    /// Shows a text with that in a line, whole in its tooltip.
    void ShowState(wxStaticText& line, const std::string& text) const;

   private:
    void Choose();

    wxWindow& owner_;
    const UiServices& services_;
    const EarlierActions actions_;
    BlockKeeping keeping_;
};

}  // namespace sontaro
