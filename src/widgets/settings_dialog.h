// What the dialogs that show a player's settings in one grid share.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "settings/settings_run.h"
#include "widgets/earlier_settings.h"
#include "widgets/feature_dialog.h"
#include "widgets/settings_grid.h"
#include "widgets/undo_buttons.h"

namespace sontaro {

/// Control numbers of the settings dialogs, besides OK and Cancel.
inline constexpr int kSettingsGrid = 2801;
inline constexpr int kOpenSettings = 2811;
inline constexpr int kSaveSettings = 2812;

/// What tells one settings dialog from another.
struct SettingsDialogDesign {
    Window window{};
    const char* name = "";  ///< in the preferences
    SettingsBlock block{};
    bool withTitles = false;  ///< whether the grid's columns have titles
    FeatureDialog::Addressing addressing = FeatureDialog::Addressing::kCurrentDevice;
};

/// Reads the settings of one player into a grid when it opens, and sends them back on OK. They can
/// be kept in files. Closes only through Cancel or its close box.
class SettingsDialog : public FeatureDialog, private SettingsView {
   public:
    SettingsDialog(wxWindow* parent, const UiServices& services, const SettingsDialogDesign& design,
                   const DeviceRecord& player, std::unique_ptr<SettingsDocument> document);

   private:
    void LayOut(const DeviceRecord& player);
    void BindEvents();

    void HandleMessage(WindowMessage& message) override { run_.Handle(message); }
    void ReadAgain() override;
    [[nodiscard]] bool HasUnsentChanges() const override { return run_.HasUnsentChanges(); }
    void ShowRows() override;
    void ChooseRow(const std::string& key) override;
    void ShowConfirmed() override { grid_->ShowConfirmed(run_.Confirmed()); }
    void StateChanged() override;

    void OpenFile();
    void SaveFile();
    [[nodiscard]] FileQuestion Question(FileQuestion::Purpose purpose) const;

    const SettingsDialogDesign design_;
    std::unique_ptr<SettingsDocument> document_;
    SettingsRun run_;
    SettingsGrid* grid_ = nullptr;
    wxStaticText* state_ = nullptr;
    std::optional<UndoButtons> undo_;
    std::optional<EarlierSettings> earlier_;
    bool asked_ = false;  // the player; before, there is nothing to connect again
};

}  // namespace sontaro
