// The control protocol of one player.
#pragma once

#include <wx/checkbox.h>
#include <wx/stattext.h>

#include <optional>

#include "controlprotocol/control_protocol_run.h"
#include "widgets/earlier_settings.h"
#include "widgets/feature_dialog.h"
#include "widgets/tabbed_grids.h"
#include "widgets/undo_buttons.h"

namespace sontaro {

/// Control numbers of the dialog, besides OK and Cancel; the grids' follow one another.
inline constexpr int kProtocolGrid = 2600;
inline constexpr int kOpenProtocol = 2606;
inline constexpr int kSaveProtocol = 2607;
inline constexpr int kProtocolTabs = 2610;
inline constexpr int kProtocolFilter = 2611;
inline constexpr int kProtocolState = 2612;
inline constexpr int kProtocolLine = 2613;
inline constexpr int kProtocolLearn = 2614;

/// Reads the control protocol of a player into five grids on tabs, and uploads it on OK. Learns
/// commands from the player's serial line. Closes only through Cancel or its close box.
class CControlProtocol : public FeatureDialog, private ControlProtocolView {
   public:
    CControlProtocol(wxWindow* parent, const UiServices& services, const DeviceRecord& player,
                     ProtocolVariant variant = ProtocolVariant::kCurrent);

   private:
    void LayOut(const DeviceRecord& player);
    [[nodiscard]] wxSizer* MakeLearningRow();
    void BindEvents();

    void HandleMessage(WindowMessage& message) override { run_.Settings().Handle(message); }
    [[nodiscard]] bool MayClose() override;
    void Leave() override;
    void EndUnderNoBox();
    void ReadAgain() override;
    [[nodiscard]] bool HasUnsentChanges() const override {
        return run_.Settings().HasUnsentChanges();
    }
    void ShowRows() override { grids_->Fill(run_.Rows()); }
    void ChooseRow(const std::string& key) override { grids_->ChooseKey(key); }
    void ShowConfirmed() override { grids_->ShowConfirmed(run_.Settings().Confirmed()); }
    void ShowChange(const SettingsEdit& change) override {
        grids_->Change(change.key, change.text);
    }
    [[nodiscard]] std::optional<int> ChosenCategory() const override;
    [[nodiscard]] bool IsEditingCategory() const override;
    void StateChanged() override;

    void AskForFile(FileQuestion::Purpose purpose);
    [[nodiscard]] std::string StateText() const;
    [[nodiscard]] wxString LineText() const;

    ControlProtocolRun run_;
    TabbedGrids* grids_ = nullptr;
    wxStaticText* state_ = nullptr;
    wxStaticText* line_ = nullptr;
    wxCheckBox* learns_ = nullptr;
    std::optional<UndoButtons> undo_;
    std::optional<EarlierSettings> earlier_;
    bool asked_ = false;  // the player; before, there is nothing to connect again
    bool leaving_ = false;
};

}  // namespace sontaro
