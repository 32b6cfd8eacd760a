// The way of the player control protocol from a player into a dialog and back, without the dialog.
#pragma once

#include "playercontrol/player_control_changes.h"
#include "settings/settings_run.h"
#include "videolist/video_list.h"

namespace sontaro {

/// What the procedure asks of its window. `ShowRows` are those of the chosen player.
class PlayerControlView : public SettingsView {
   public:
    /// The list of players, or which one is chosen, has changed.
    virtual void ShowPlayers() = 0;
    /// The player's list of videos has changed.
    virtual void ShowVideos() = 0;
};

/// A player of the document in a list.
struct ControlledPlayerEntry {
    ElementId id = 0;
    std::string caption;

    bool operator==(const ControlledPlayerEntry&) const = default;
};

/// Settings that are asked for once the player's list of videos has come. User-interface thread.
class PlayerControlRun : private SettingsView {
   public:
    /// `view` and `prompts` outlive the run.
    PlayerControlRun(PlayerControlView& view, Prompts& prompts, const ExchangeServices& exchange,
                     Target player);

    /// What the settings dialogs have in common; `Edit`, `Save` and `MaySend` are those of here.
    [[nodiscard]] SettingsRun& Settings() { return settings_; }
    [[nodiscard]] const SettingsRun& Settings() const { return settings_; }

    /// Whether OK may be pressed: once the player has sent its videos, the user need not wait.
    [[nodiscard]] bool MaySend() const;
    /// The user has pressed OK. What has not come is waited for no more, unless the user thinks
    /// better of it.
    void Save();
    /// What is to be told in the place of the state; none: the state.
    [[nodiscard]] std::optional<LocalText> Note() const;

    [[nodiscard]] const VideoList& Videos() const { return videos_; }
    [[nodiscard]] std::vector<ControlledPlayerEntry> Players() const;
    [[nodiscard]] std::optional<ElementId> ChosenPlayer() const { return chosen_; }
    /// The user has chosen another player, or none.
    void ChoosePlayer(std::optional<ElementId> player);

    /// The rows of the chosen player, or of an empty one.
    [[nodiscard]] SettingsRows Rows() const { return document_.RowsOf(chosen_); }
    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit);

    // What the user adds is chosen. Refusals are told, and deletions asked about.

    void AddPlayer();
    /// Adds a type to the chosen player, named as a category or without a name. The key of its
    /// group; none when it was not added.
    [[nodiscard]] std::optional<std::string> AddType(std::string_view name = {});
    void DeletePlayer();
    void DeleteType(const std::optional<ChosenInGrid>& chosen);

   private:
    enum class Step { kVideos, kVideosUnreadable, kSettings, kSettingsGivenUp };

    void ShowRows() override;
    void ChooseRow(const std::string& key) override;
    void ShowConfirmed() override;
    void StateChanged() override;

    [[nodiscard]] SettingsSteps Steps();
    void TakeVideos(Ended& ended);
    void TakeSettings(Ended& ended);
    [[nodiscard]] bool Do(const PlayerControlChange& change);
    [[nodiscard]] std::size_t PlaceOfChosen() const;

    PlayerControlView& view_;
    Prompts& prompts_;
    PlayerControlSettings document_;
    VideoList videos_;
    Step step_ = Step::kVideos;
    AskCall ask_;
    Conversation::EndedCall ended_;
    std::optional<ElementId> chosen_;
    SettingsRun settings_;
};

}  // namespace sontaro
