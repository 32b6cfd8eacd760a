#include "batchsend/video_set_param.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/dnd.h>
#include <wx/sizer.h>
#include <wx/splitter.h>
#include <wx/stattext.h>

#include "batchsend/set_page_ids.h"
#include "widgets/filter_box.h"
#include "widgets/fonts.h"
#include "widgets/number_field.h"
#include "widgets/table.h"
#include "widgets/window_memory.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr const char* kPlayersName = "videoSetPlayers";  // in the preferences
constexpr const char* kVideosName = "videoSetVideos";
constexpr const char* kSashName = "videoSetSash";
constexpr int kPlayersCharacters = 72;
constexpr int kVideosCharacters = 86;
constexpr int kCategoryCharacters = 24;
constexpr int kLines = 20;
constexpr int kLeastPane = 260;
constexpr int kMostCode = 65'535;

constexpr LocalText kAskAgain = {"重新查询", "Ask again"};
constexpr LocalText kAddFiles = {"添加文件…", "Add files…"};
constexpr LocalText kAddFolder = {"添加文件夹…", "Add folder…"};
constexpr LocalText kRemove = {"移除", "Remove"};
constexpr LocalText kUp = {"上移", "Up"};
constexpr LocalText kDown = {"下移", "Down"};
constexpr LocalText kGiveUp = {"停止查找", "Stop looking"};
constexpr LocalText kCategory = {"类别", "Category"};
constexpr LocalText kCode = {"代码", "Code"};
constexpr LocalText kRemoveNumbers = {"去掉名称前面的序号", "Remove leading numbers from names"};
constexpr LocalText kCategories = {"类别名称…", "Category names…"};
constexpr LocalText kWriteNames = {"总是把类别名称写入播放器",
                                   "Write the names of categories to the players in any case"};
constexpr LocalText kOpen = {"打开", "Open"};
constexpr LocalText kSave = {"保存", "Save"};

constexpr LocalText kConcernedTip = {"用于勾选的视频；未勾选时用于所选的视频",
                                     "For the ticked videos, or the chosen ones where none is "
                                     "ticked"};
constexpr LocalText kCategoryTip = {"用于勾选的视频（未勾选时用于所选的视频），以及新添加的文件",
                                    "For the ticked videos, or the chosen ones where none is "
                                    "ticked, and for files that are added"};
constexpr LocalText kFolderTip = {"子文件夹的名称作为类别",
                                  "Its sub-folders become categories by name"};
constexpr LocalText kFilterHint = {"任意列中的文字", "Text in any column"};
constexpr LocalText kNoVideos = {
    "还没有视频。按“添加文件”或“添加文件夹”，或从文件管理器拖到这里。",
    R"(There are no videos yet. Press "Add files" or "Add folder", or drag some here.)"};
/// Takes files and folders of the system's file manager.
class DropTarget : public wxFileDropTarget {
   public:
    explicit DropTarget(std::function<void(SetPageRun::Paths)> take) : take_(std::move(take)) {}

   private:
    bool OnDropFiles(wxCoord /*x*/, wxCoord /*y*/, const wxArrayString& names) override {
        SetPageRun::Paths paths;
        for (const wxString& name : names) paths.push_back(PathFromWx(name));
        take_(std::move(paths));
        return true;
    }

    const std::function<void(SetPageRun::Paths)> take_;
};

}  // namespace

CVideoSetParam::CVideoSetParam(CVideoSetWizard& wizard)
    : WizardPage(wizard, Window::kSetParam),
      wizard_(wizard),
      prompts_(wizard.Services().Messages()),
      reader_(wizard.Services().Directory().Thread(), wizard.Services().link.threads),
      run_(wizard.Set(), *this,
           {reader_, wizard.Services().Directory().Thread(), wizard.Services().link.threads,
            prompts_, wizard.Services().preferences, wizard.Exchange(), wizard.VideoTypeFile()}),
      playerRows_(run_),
      videoRows_(run_) {
    LayOut();
    SetChanged();
}

void CVideoSetParam::LayOut() {
    const int gap = FromDIP(10);
    const wxSizerFlags line = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap);
    splitter_ = new wxSplitterWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                     wxSP_LIVE_UPDATE | wxSP_3DSASH);
    splitter_->SetMinimumPaneSize(FromDIP(kLeastPane));
    wxWindow* const players = MakePlayers();
    wxWindow* const videos = MakeVideos();
    splitter_->SplitVertically(players, videos);
    splitter_->SetMinSize(wxSize((kPlayersCharacters + kVideosCharacters) * LetterWidth(*this),
                                 videos->GetBestSize().y));
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(splitter_, wxSizerFlags(line).Proportion(1));
    column->Add(MakeNamesRow(), line);
    column->Add(MakeStateRow(), line);
    problem_ = MakeLine(kSetProblem);
    column->Add(problem_, wxSizerFlags(line).Border(wxALL, gap));
    SetSizer(column);
    TakeDrops(this);
}

wxWindow* CVideoSetParam::MakePlayers() {
    auto* pane = new wxPanel(splitter_);
    TableActions actions;
    actions.choose = [this] { ChoosePlayer(); };
    players_ = new Table(pane, kSetPlayers, playerRows_, actions, prompts_);
    players_->KeepWidths(kPlayersName, wizard_.Services().preferences);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    AddButton(pane, *row, kSetAskAgain, kAskAgain, 'A', &CVideoSetParam::AskAgain);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(players_, wxSizerFlags(1).Expand().Border(wxRIGHT, FromDIP(5)));
    column->Add(row, wxSizerFlags().Border(wxTOP, FromDIP(8)));
    pane->SetSizer(column);
    return pane;
}

wxWindow* CVideoSetParam::MakeVideos() {
    auto* pane = new wxPanel(splitter_);
    filter_ = new FilterBox(pane, kSetFilter);
    filter_->SetDescriptiveText(ToWx(kFilterHint));
    filter_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) {
        videos_->Filter(filter_->GetValue());
        ShowChosen();
    });
    const wxSizerFlags below = wxSizerFlags().Expand().Border(wxLEFT | wxTOP, FromDIP(8));
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(filter_->WithCaption(), wxSizerFlags().Expand().Border(wxLEFT, FromDIP(8)));
    MakeVideosTable(pane);
    column->Add(videos_, wxSizerFlags(below).Proportion(1));
    column->Add(MakeListButtons(pane), below);
    column->Add(MakeVideoFields(pane), below);
    pane->SetSizer(column);
    return pane;
}

void CVideoSetParam::MakeVideosTable(wxWindow* pane) {
    TableActions actions;
    actions.insert = [this] { AddFiles(); };
    actions.remove = [this] { RemoveVideos(); };
    actions.choose = actions.tick = [this] { ShowChosen(); };
    videos_ = new Table(pane, kSetVideos, videoRows_, actions, prompts_);
    videos_->SetMinSize(wxSize(wxDefaultCoord, kLines * GetCharHeight()));
    videos_->SetEmptyText(Localized(kNoVideos));
    videos_->KeepWidths(kVideosName, wizard_.Services().preferences);
    TakeDrops(videos_->Grid().GetGridWindow());
}

void CVideoSetParam::AddButton(wxWindow* parent, wxSizer& row, int id, const LocalText& text,
                               char key, Action action) {
    auto* button = new wxButton(parent, id, ButtonLabel(text, key));
    if (!row.IsEmpty()) row.AddSpacer(FromDIP(8));
    row.Add(button, wxSizerFlags().CentreVertical());
    button->Bind(wxEVT_BUTTON, [this, action](wxCommandEvent&) { (this->*action)(); });
}

wxSizer* CVideoSetParam::MakeListButtons(wxWindow* pane) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    AddButton(pane, *row, kSetAddFiles, kAddFiles, 'l', &CVideoSetParam::AddFiles);
    AddButton(pane, *row, kSetAddFolder, kAddFolder, 'd', &CVideoSetParam::AddFolder);
    AddButton(pane, *row, kSetRemove, kRemove, 'R', &CVideoSetParam::RemoveVideos);
    AddButton(pane, *row, kSetUp, kUp, 'U', &CVideoSetParam::MoveUp);
    AddButton(pane, *row, kSetDown, kDown, 'w', &CVideoSetParam::MoveDown);
    pane->FindWindow(kSetAddFiles)->SetToolTip("Insert");
    pane->FindWindow(kSetAddFolder)->SetToolTip(ToWx(kFolderTip));
    pane->FindWindow(kSetRemove)->SetToolTip("Delete");
    return row;
}

wxSizer* CVideoSetParam::MakeVideoFields(wxWindow* pane) {
    const wxSizerFlags middle = wxSizerFlags().CentreVertical();
    const wxSizerFlags field = wxSizerFlags(middle).Border(wxLEFT | wxRIGHT, FromDIP(8));
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(new wxStaticText(pane, wxID_ANY, ButtonLabel(kCategory, 'y')), middle);
    category_ = new wxChoice(pane, kSetCategory);
    IgnoreWheel(*category_);
    category_->SetMinSize(wxSize(kCategoryCharacters * LetterWidth(*this), wxDefaultCoord));
    category_->Bind(wxEVT_CHOICE,
                    [this](wxCommandEvent&) { run_.PutInto(ChosenSlot(), Concerned()); });
    row->Add(category_, field);
    row->Add(new wxStaticText(pane, wxID_ANY, ButtonLabel(kCode, 'e')), middle);
    code_ = new NumberField(pane, kSetCode, kMostCode, 6);
    pane->Bind(  // behind the field's own handler, which may put another number there
        wxEVT_TEXT, [this](wxCommandEvent&) { TakeCode(); }, kSetCode);
    row->Add(code_, field);
    removeNumbers_ = new wxCheckBox(pane, kSetRemoveNumbers, ButtonLabel(kRemoveNumbers, 'm'),
                                    wxDefaultPosition, wxDefaultSize, wxCHK_3STATE);
    removeNumbers_->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) {
        run_.RemoveNumbers(event.IsChecked(), Concerned());
    });
    row->Add(removeNumbers_, middle);
    category_->SetToolTip(ToWx(kCategoryTip));
    code_->SetToolTip(ToWx(kConcernedTip));
    removeNumbers_->SetToolTip(ToWx(kConcernedTip));
    return row;
}

wxSizer* CVideoSetParam::MakeNamesRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    AddButton(this, *row, kSetOpen, kOpen, 'p', &CVideoSetParam::OpenFile);
    AddButton(this, *row, kSetSave, kSave, 'S', &CVideoSetParam::SaveFile);
    row->AddStretchSpacer();
    writeNames_ = new wxCheckBox(this, kSetWriteNames, ButtonLabel(kWriteNames, 'h'));
    writeNames_->Bind(wxEVT_CHECKBOX,
                      [this](wxCommandEvent& event) { run_.WriteNames(event.IsChecked()); });
    row->Add(writeNames_, wxSizerFlags().CentreVertical());
    AddButton(this, *row, kSetCategories, kCategories, 't', &CVideoSetParam::EditNames);
    return row;
}

wxSizer* CVideoSetParam::MakeStateRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    totals_ = MakeLine(kSetTotals);
    row->Add(totals_, wxSizerFlags(1).CentreVertical());
    AddButton(this, *row, kSetGiveUp, kGiveUp, 'k', &CVideoSetParam::GiveUpSearch);
    row->GetItem(row->GetItemCount() - 1)
        ->SetFlag(wxALIGN_CENTRE_VERTICAL | wxRESERVE_SPACE_EVEN_IF_HIDDEN);
    return row;
}

wxStaticText* CVideoSetParam::MakeLine(int id) {
    return new wxStaticText(this, id, "", wxDefaultPosition, wxDefaultSize,
                            wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
}

void CVideoSetParam::TakeDrops(wxWindow* window) {
    window->SetDropTarget(new DropTarget(
        [this](SetPageRun::Paths paths) { run_.Add(std::move(paths), ChosenSlot()); }));
}

/// Once the page has its size for the first time.
void CVideoSetParam::PlaceSash() {
    if (playersWidth_ > 0) return;
    const std::vector<int> remembered =
        RememberedWidths(*this, 1, kSashName, wizard_.Services().preferences);
    splitter_->SetSashPosition(remembered.empty() ? kPlayersCharacters * LetterWidth(*this)
                                                  : remembered[0]);
    playersWidth_ = splitter_->GetSashPosition();
}

void CVideoSetParam::RememberSash() {
    if (playersWidth_ == 0 || playersWidth_ == splitter_->GetSashPosition()) return;
    playersWidth_ = splitter_->GetSashPosition();
    RememberWidths(*this, {playersWidth_}, kSashName, wizard_.Services().preferences);
}

/// The page is painted before links are made, which may take their time.
void CVideoSetParam::Entered() {
    isEntered_ = true;
    PlaceSash();
    players_->Grid().GetGridWindow()->SetFocus();
    CallAfter([this] {
        if (!isEntered_) return;
        videoRows_.TickNone();
        run_.Enter(wizard_.Players());
    });
}

void CVideoSetParam::Left() {
    isEntered_ = false;
    RememberSash();
    run_.Leave();
}

}  // namespace sontaro
