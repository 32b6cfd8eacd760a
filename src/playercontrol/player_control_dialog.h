// The player control protocol of one player.
#pragma once

#include <optional>

#include "playercontrol/player_control_run.h"
#include "widgets/earlier_settings.h"
#include "widgets/feature_dialog.h"
#include "widgets/settings_grid.h"
#include "widgets/undo_buttons.h"

class wxListBox;
class wxTreeCtrl;
class wxTreeItemId;

namespace sontaro {

class FilterBox;

/// Control numbers of the dialog, besides OK and Cancel.
inline constexpr int kControlledPlayers = 2701;
inline constexpr int kPlayerControlGrid = 2702;
inline constexpr int kPlayerControlFilter = 2703;
inline constexpr int kVideoTree = 2704;
inline constexpr int kAddPlayer = 2705;
inline constexpr int kDeletePlayer = 2706;
inline constexpr int kAddType = 2707;
inline constexpr int kDeleteType = 2708;
inline constexpr int kAddAsType = 2709;
inline constexpr int kOpenPlayerControl = 2710;
inline constexpr int kSavePlayerControl = 2711;

/// Shows the players at the left, the settings of the chosen one in the middle and the videos that
/// the player has at the right. Insert and Delete add and delete what has the keyboard. Closes only
/// through Cancel or its close box.
class CPlayerControl : public FeatureDialog, private PlayerControlView {
   public:
    CPlayerControl(wxWindow* parent, const UiServices& services, const DeviceRecord& player);

   private:
    void LayOut(const DeviceRecord& player);
    [[nodiscard]] wxSizer* MakePlayers();
    [[nodiscard]] wxSizer* MakeGrid();
    [[nodiscard]] wxSizer* MakeVideos();
    void BindEvents();
    void BindKeys();

    void HandleMessage(WindowMessage& message) override { run_.Settings().Handle(message); }
    void ReadAgain() override;
    [[nodiscard]] bool HasUnsentChanges() const override {
        return run_.Settings().HasUnsentChanges();
    }
    void ShowRows() override;
    void ChooseRow(const std::string& key) override;
    void ShowConfirmed() override { grid_->ShowConfirmed(run_.Settings().Confirmed()); }
    void StateChanged() override;
    void ShowPlayers() override;
    void ShowVideos() override;

    void ChoosePlayer();
    void AddType(const std::string& name);
    void DeleteType();
    void AddChosenAsType();
    [[nodiscard]] std::optional<std::string> ChosenCategory() const;
    void AskForFile(FileQuestion::Purpose purpose);

    PlayerControlRun run_;
    wxListBox* players_ = nullptr;
    SettingsGrid* grid_ = nullptr;
    FilterBox* filter_ = nullptr;
    wxTreeCtrl* videos_ = nullptr;
    wxStaticText* state_ = nullptr;
    std::optional<UndoButtons> undo_;
    std::optional<EarlierSettings> earlier_;
    bool asked_ = false;  // the player; before, there is nothing to connect again
    bool shown_ = false;  // rows have been
};

}  // namespace sontaro
