// The page on which the videos of many players are chosen.
#pragma once

#include <wx/checkbox.h>

#include "batchsend/chunk_reader.h"
#include "batchsend/set_tables.h"
#include "batchsend/video_set_wizard.h"

class wxChoice;
class wxSizer;
class wxSplitterWindow;
class wxStaticText;

namespace sontaro {

class FilterBox;
class NumberField;
class Table;

/// Shows the players at the left, and at the right the videos of the one that is chosen there, or
/// of all. Files and folders are added by buttons, by Insert and by dropping them; Delete removes.
/// What is chosen below the table is for the ticked videos, or the chosen ones where none is
/// ticked.
class CVideoSetParam : public WizardPage, private SetPageView {
   public:
    explicit CVideoSetParam(CVideoSetWizard& wizard);
    ~CVideoSetParam() override { DestroyChildren(); }  // they show what the procedure has

    void Entered() override;
    void Left() override;
    [[nodiscard]] bool GoOn() override { return run_.GoOn(); }
    [[nodiscard]] bool MayGoOn() const override { return !run_.IsSearching() && run_.IsEntered(); }
    void HandleMessage(WindowMessage& message) override { run_.Handle(message); }

   private:
    using Action = void (CVideoSetParam::*)();

    void LayOut();
    [[nodiscard]] wxWindow* MakePlayers();
    [[nodiscard]] wxWindow* MakeVideos();
    void MakeVideosTable(wxWindow* pane);
    [[nodiscard]] wxSizer* MakeListButtons(wxWindow* pane);
    [[nodiscard]] wxSizer* MakeVideoFields(wxWindow* pane);
    [[nodiscard]] wxSizer* MakeNamesRow();
    [[nodiscard]] wxSizer* MakeStateRow();
    [[nodiscard]] wxStaticText* MakeLine(int id);
    void AddButton(wxWindow* parent, wxSizer& row, int id, const LocalText& text, char key,
                   Action action);
    void TakeDrops(wxWindow* window);
    void PlaceSash();
    void RememberSash();

    void SetChanged() override;
    void VideosChanged() override;
    void CategoriesSettled(const std::vector<SettledName>& settled) override;
    void PlayerChanged(std::size_t player) override;
    void ChooseVideo(std::uint32_t id) override;
    void ShowPlayers();
    bool ShowCategories();
    void ShowChosen();
    void ShowState();
    void EnableControls();

    // What the user does.
    void ChoosePlayer();
    void AskAgain() { run_.AskAgain(); }
    void AddFiles();
    void AddFolder();
    void GiveUpSearch() { run_.GiveUpSearch(); }
    void RemoveVideos();
    void MoveUp() { run_.MoveUp(Concerned()); }
    void MoveDown() { run_.MoveDown(Concerned()); }
    void EditNames();
    void OpenFile();
    void SaveFile();
    void TakeCode();
    [[nodiscard]] std::vector<std::size_t> ConcernedRows() const;
    [[nodiscard]] SetPageRun::Ids IdsOf(const std::vector<std::size_t>& rows) const;
    [[nodiscard]] SetPageRun::Ids Concerned() const { return IdsOf(ConcernedRows()); }
    [[nodiscard]] std::uint32_t ChosenSlot() const;

    CVideoSetWizard& wizard_;
    Prompts& prompts_;
    ChunkReader reader_;
    SetPageRun run_;
    SetPlayersTable playerRows_;
    SetVideosTable videoRows_;
    SetPageRun::Place shownPlace_;                             // that is chosen in their table
    std::size_t shownPlayers_ = 0;                             // rows of their table
    std::vector<std::string> slots_;                           // that are offered
    std::pair<SetPageRun::Place, SetPageRun::Ids> fieldsFor_;  // videos, those below the table
    bool isEntered_ = false;
    int playersWidth_ = 0;  // as remembered last, in pixels; 0 before the first time
    wxSplitterWindow* splitter_ = nullptr;
    Table* players_ = nullptr;
    FilterBox* filter_ = nullptr;
    Table* videos_ = nullptr;
    wxChoice* category_ = nullptr;
    NumberField* code_ = nullptr;
    wxCheckBox* removeNumbers_ = nullptr;
    wxCheckBox* writeNames_ = nullptr;
    wxStaticText* totals_ = nullptr;
    wxStaticText* problem_ = nullptr;
};

}  // namespace sontaro
