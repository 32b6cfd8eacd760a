// The main window: the panel of feature buttons.
#pragma once

#include <wx/dialog.h>
#include <wx/stattext.h>
#include <wx/timer.h>

#include <filesystem>
#include <optional>
#include <string>

#include "devices/scan_dialog.h"
#include "exchange/switchboard.h"
#include "widgets/fade_out.h"
#include "widgets/modal_dialogs.h"
#include "widgets/ui_services.h"

namespace sontaro {

struct Feature;

/// Control number of the About button.
inline constexpr int kAboutButton = 16;

/// What the main window is started with.
struct MainWindowSetup {
    std::filesystem::path temporaryFolder;  ///< emptied at exit
    ScanSetup scan;
    int demoPlayers = 0;  ///< more than 0 marks the window as a demonstration
};

/// Opens every feature, owns the links to the players, and is the only place where packets leave
/// for them. Feature dialogs reach it by the application's title.
class CSontaroDlg : public wxDialog {
   public:
    CSontaroDlg(const UiServices& services, const MainWindowSetup& setup);
    ~CSontaroDlg() override;

    /// Brings the window, and the dialog that is open over it, to the front.
    void BringForward();

    /// Ends the program without a question, as at the end of the desktop session. What is to be
    /// kept has been written when this returns; the dialogs that are open, and then the window,
    /// leave from the event loop.
    void EndByForce();

   private:
    [[nodiscard]] wxSizer* MakeHeader();
    [[nodiscard]] wxSizer* MakeGroups();
    [[nodiscard]] wxSizer* MakeFooter();
    void BindEvents();

    void OpenFeature(const Feature& feature);
    [[nodiscard]] bool ChooseDevice();
    void ShowCurrentDevice();
    void ShowAbout();
    void AskToExit();

    UiServices services_;
    MainWindowSetup setup_;
    Switchboard switchboard_;
    WindowDirectory::Registration registration_;
    wxTimer iconTimer_;
    FadeOut fadeOut_{*this};
    std::optional<DeviceRecord> current_;
    ModalDialogs modalDialogs_;
    wxFont headingFont_;  // one for all: each that differs is looked for and loaded at the start
    wxStaticText* currentDevice_ = nullptr;
};

}  // namespace sontaro
