// The control protocol of one player.
#pragma once

#include <wx/notebook.h>
#include <wx/srchctrl.h>
#include <wx/stattext.h>
#include <wx/timer.h>

#include <array>
#include <optional>

#include "controlprotocol/control_protocol_run.h"
#include "widgets/feature_dialog.h"
#include "widgets/settings_grid.h"

namespace sontaro {

/// Control numbers of the dialog, besides OK and Cancel; the grids' follow one another.
inline constexpr int kProtocolGrid = 2600;
inline constexpr int kOpenProtocol = 2606;
inline constexpr int kSaveProtocol = 2607;
inline constexpr int kProtocolTabs = 2610;
inline constexpr int kProtocolFilter = 2611;
inline constexpr int kProtocolState = 2612;
inline constexpr int kProtocolLine = 2613;

/// Reads the control protocol of a player into five grids on tabs, and uploads it on OK. Learns
/// commands from the player's serial line. Closes only through Cancel or its close box.
class CControlProtocol : public FeatureDialog, private ControlProtocolView {
   public:
    CControlProtocol(wxWindow* parent, const UiServices& services, const DeviceRecord& player,
                     ProtocolVariant variant = ProtocolVariant::kCurrent);
    ~CControlProtocol() override;

   private:
    void LayOut(const DeviceRecord& player);
    [[nodiscard]] wxSizer* MakeFilterRow();
    [[nodiscard]] wxBookCtrlBase* MakeTabs();
    void BindEvents();

    void HandleMessage(WindowMessage& message) override { run_.Handle(message); }
    [[nodiscard]] bool MayClose() override;
    void Leave() override;
    [[nodiscard]] bool Send(const DevicePacket& packet) override;
    void ShowModel() override;
    void ShowChange(const SettingsEdit& change) override;
    void MarkSaved() override;
    [[nodiscard]] std::optional<int> ChosenCategory() const override;
    void KeepAliveEvery2Seconds(bool wanted) override;
    void StateChanged() override;

    void OnKey(wxKeyEvent& event);
    void FocusGrid();
    [[nodiscard]] bool CommitAll();
    void Filter();
    void AskForFile(FileQuestion::Purpose purpose);
    [[nodiscard]] wxString StateText() const;
    [[nodiscard]] wxString LineText() const;

    const Target player_;
    ControlProtocolRun run_;
    wxTimer keepAlive_;
    wxTimer leaving_;
    std::array<SettingsGrid*, kControlProtocolGrids> grids_{};
    wxNotebook* tabs_ = nullptr;
    wxSearchCtrl* filter_ = nullptr;
    wxStaticText* state_ = nullptr;
    wxStaticText* line_ = nullptr;
};

}  // namespace sontaro
