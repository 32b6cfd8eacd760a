// The page on which the screens of several players become one wall.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>

#include "screensplit/screen_split_set_wizard.h"
#include "screensplit/split_page_ids.h"
#include "screensplit/split_run.h"
#include "widgets/earlier_settings.h"
#include "widgets/undo_buttons.h"

class wxGauge;
class wxRadioButton;
class wxSplitterWindow;
class wxStaticText;

namespace sontaro {

class NumberField;
class TabbedGrids;
class WallView;

/// Fetches from the players what they are and have when it is entered, shows their wall in four
/// grids and a picture, and sends it to all of them on Finish. The wizard stays open then. Ctrl+Z
/// and Ctrl+Y undo and do again what was changed in the grids and in the picture.
class CScreenSplitWizardSetParam : public WizardPage, private SplitView {
   public:
    explicit CScreenSplitWizardSetParam(CScreenSplitSetWizard& wizard);
    ~CScreenSplitWizardSetParam() override { DestroyChildren(); }  // they show the document

    void Entered() override;
    void Left() override;
    [[nodiscard]] bool GoOn() override;
    [[nodiscard]] bool MayGoOn() const override { return run_.MayFinish(); }
    [[nodiscard]] bool MayGoBack() const override { return run_.Task() != SplitTask::kSend; }
    [[nodiscard]] bool HasUnsentChanges() const override;
    void HandleMessage(WindowMessage& message) override { run_.Handle(message); }

   private:
    using Action = void (CScreenSplitWizardSetParam::*)();
    using Grids = std::array<SettingsRows, 4>;
    using FlatGrids = std::array<std::vector<SettingsRow>, 4>;
    static constexpr std::size_t kAdvancedTab = 3;

    void LayOut();
    [[nodiscard]] wxWindow* MakeWall();
    [[nodiscard]] wxSizer* MakeOrderRow();
    [[nodiscard]] wxSizer* MakeSourceRow();
    [[nodiscard]] wxSizer* MakeStateRow();
    [[nodiscard]] wxSizer* MakeFileRow();
    void OfferEarlier(wxSizer& foot);
    void AddButton(wxSizer& row, int id, const LocalText& text, char key, Action action);
    void PlaceSash();
    [[nodiscard]] int GridsWidth() const;
    void RememberSash();

    void ShowWall() override;
    void StateChanged() override;
    void ShowState();
    void ShowAdvanced(bool shown);
    [[nodiscard]] bool HasAdvancedTab() const;
    void EnableControls();
    void TakeStock();
    void ShowHeld(const SplitDocument& held);
    [[nodiscard]] static Grids RowsOf(const SplitDocument& document);
    [[nodiscard]] std::optional<SettingsRows> NewRows(std::size_t grid);

    // What the user does.
    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit);
    void ChooseDirection(SplitDirection direction);
    void ApplyOrder();
    void ToggleAdvanced();
    void UseSameOverlap();
    void TakeOver() { Changed(document_.TakeOverWall()); }
    void PutBackFetched();
    void UseLastWall() { Changed(document_.UseWall(*lastWall_)); }
    void Retry() { run_.Retry(); }
    void Changed(const SplitDocument::Refusal& refusal = {});
    void Walk(bool (SplitDocument::*step)());
    void OpenFile();
    void SaveFile();
    void ShowHelp();
    /// While it is busy, only the grids take changes: none that is being typed is lost.
    [[nodiscard]] bool MayChange() const { return !run_.IsBusy() && !document_.Names().empty(); }

    CScreenSplitSetWizard& wizard_;
    Prompts& prompts_;
    SplitDocument document_;
    SplitRun run_;
    FlatGrids shown_;  // in the grids
    std::shared_ptr<const CustomEntries> shownAdvanced_;
    std::map<std::string, std::string> held_;  // by the players, by the keys of the rows
    std::optional<SplitWall> lastWall_;        // of just these players
    bool isEntered_ = false;
    int gridsWidth_ = 0;         // as remembered last, in pixels; 0 before the first time
    bool isStockTaken_ = false;  // of what the players hold
    bool isApplying_ = false;
    wxSplitterWindow* splitter_ = nullptr;
    WallView* view_ = nullptr;
    TabbedGrids* grids_ = nullptr;
    std::array<wxRadioButton*, 2> directions_ = {};  // as `SplitDirection` counts
    NumberField* overlap_ = nullptr;
    wxGauge* progress_ = nullptr;
    wxStaticText* line_ = nullptr;
    std::optional<UndoButtons> undo_;
    std::optional<EarlierSettings> earlier_;
};

/// Runs the wizard, modally.
void OpenScreenSplit(wxWindow* parent, const UiServices& services, const ScanSetup& setup);

}  // namespace sontaro
