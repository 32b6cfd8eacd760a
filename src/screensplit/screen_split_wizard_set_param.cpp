#include "screensplit/screen_split_wizard_set_param.h"

#include <wx/button.h>
#include <wx/gauge.h>
#include <wx/radiobut.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/splitter.h>
#include <wx/stattext.h>
#include <wx/weakref.h>

#include <utility>

#include "screensplit/split_memory.h"
#include "screensplit/split_rows.h"
#include "screensplit/split_state_text.h"
#include "screensplit/wall_view.h"
#include "widgets/fonts.h"
#include "widgets/number_field.h"
#include "widgets/tabbed_grids.h"
#include "widgets/window_memory.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr const char* kGridsName = "screenSplitGrids";  // in the preferences
constexpr int kPictureCharacters = 72;
constexpr int kGridsCharacters = 90;  // for the titles of four tabs
constexpr int kGridLines = 20;
constexpr int kLeastPane = 300;
constexpr std::int64_t kMostTyped = 65535;  // a player's outputs are no wider

constexpr LocalText kTabs[] = {kSortTitle, kSplitTitle, kZoomTitle, kAdvancedTitle};
constexpr LocalText kApplyFirst = {"请先按“应用排序”。", "Press \"Apply order\" first."};
/// What is told where there are screens, but no rows.
constexpr LocalText kEmptyGrids[] = {
    InBoth(""),
    kApplyFirst,
    kApplyFirst,
    {"播放器没有高级参数。", "The players have no advanced settings."},
};

constexpr LocalText kDirection = {"排列方向", "Direction"};
constexpr LocalText kHorizontal = {"水平", "Horizontal"};
constexpr LocalText kVertical = {"垂直", "Vertical"};
constexpr LocalText kApply = {"应用排序", "Apply order"};
constexpr LocalText kAdvanced = {"高级参数", "Advanced"};
constexpr LocalText kOverlapCaption = {"重叠", "Overlap"};
constexpr LocalText kPixels = {"像素", "pixels"};
constexpr LocalText kSameOverlap = {"所有接缝使用相同重叠", "Same overlap for all seams"};
constexpr LocalText kFetchedText = {"恢复为读取的配置", "As fetched"};
constexpr LocalText kTakeOver = {"采用播放器中的大屏", "Take over the players' wall"};
constexpr LocalText kLastWall = {"采用上次的大屏", "Wall used last"};
constexpr LocalText kRetry = {"重试", "Retry"};
constexpr LocalText kOpen = {"打开", "Open"};
constexpr LocalText kSave = {"保存", "Save"};
constexpr LocalText kHelpText = {"帮助", "Help"};

constexpr LocalText kZoomNote = {"缩放从0开始：如不采用，发送后播放器中现有的缩放将丢失。",
                                 "Zoom starts at 0: unless you take it over, the players' own is "
                                 "lost when you send."};
constexpr LocalText kLastWallTip = {"这组播放器上次使用的排序、方向、重叠和缩放",
                                    "Order, direction, overlaps and zoom that this set of players "
                                    "had last"};
constexpr LocalText kFetchedTip = {"完整恢复从播放器读取的配置",
                                   "Puts the document back whole that has been fetched"};
}  // namespace

CScreenSplitWizardSetParam::CScreenSplitWizardSetParam(CScreenSplitSetWizard& wizard)
    : WizardPage(wizard, Window::kSetParam),
      wizard_(wizard),
      prompts_(wizard.Services().Messages()),
      run_(document_, *this, prompts_, wizard.Services().preferences, wizard.Exchange()) {
    LayOut();
    ShowWall();
    ShowState();
    EnableControls();
}

void CScreenSplitWizardSetParam::LayOut() {
    const int gap = FromDIP(10);
    const wxSizerFlags line = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(MakeWall(), wxSizerFlags(line).Proportion(1));
    column->Add(MakeOrderRow(), line);
    column->Add(MakeSourceRow(), line);
    column->Add(MakeStateRow(), line);
    column->Add(MakeFileRow(), wxSizerFlags(line).Border(wxALL, gap));
    SetSizer(column);
}

wxWindow* CScreenSplitWizardSetParam::MakeWall() {
    splitter_ = new wxSplitterWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                     wxSP_LIVE_UPDATE | wxSP_3DSASH);
    splitter_->SetMinimumPaneSize(FromDIP(kLeastPane));
    splitter_->SetSashGravity(1);
    view_ = new WallView(splitter_, document_, [this] { run_.Changed(); });
    auto* pane = new wxPanel(splitter_);
    grids_ = new TabbedGrids(pane, {kSplitTabs, kSplitFilter, kSplitGrid}, kTabs, prompts_,
                             [this](const SettingsEdit& edit) { return Edit(edit); });
    auto* beside = new wxBoxSizer(wxHORIZONTAL);
    beside->Add(grids_, wxSizerFlags(1).Expand().Border(wxLEFT, FromDIP(10)));
    pane->SetSizer(beside);
    const int letter = LetterWidth(*this);
    const wxSize least(kPictureCharacters * letter, kGridLines * GetCharHeight());
    grids_->ShowTabs(kAdvancedTab);
    for (std::size_t i = 0; i < grids_->Count(); ++i) grids_->Grid(i).SetMinSize(least);
    splitter_->SplitVertically(view_, pane);
    splitter_->SetMinSize(
        wxSize((kPictureCharacters + kGridsCharacters) * letter, grids_->GetBestSize().y));
    return splitter_;
}

void CScreenSplitWizardSetParam::AddButton(wxSizer& row, int id, const LocalText& text, char key,
                                           Action action) {
    auto* button = new wxButton(this, id, ButtonLabel(text, key));
    if (!row.IsEmpty()) row.AddSpacer(FromDIP(8));
    row.Add(button, wxSizerFlags().CentreVertical());
    button->Bind(wxEVT_BUTTON, [this, action](wxCommandEvent&) {
        if (grids_->Commit()) (this->*action)();
    });
}

wxSizer* CScreenSplitWizardSetParam::MakeOrderRow() {
    const wxSizerFlags middle = wxSizerFlags().CentreVertical();
    const int gap = FromDIP(8);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(new wxStaticText(this, wxID_ANY, ToWx(kDirection)), middle);
    const auto addRadio = [&](int id, const LocalText& text, char key, SplitDirection direction) {
        const long group = direction == SplitDirection::kHorizontal ? wxRB_GROUP : 0;
        auto* radio = new wxRadioButton(this, id, ButtonLabel(text, key), wxDefaultPosition,
                                        wxDefaultSize, group);
        row->Add(radio, wxSizerFlags(middle).Border(wxLEFT, gap));
        directions_.at(static_cast<std::size_t>(direction)) = radio;
        radio->Bind(wxEVT_RADIOBUTTON,
                    [this, direction](wxCommandEvent&) { ChooseDirection(direction); });
    };
    addRadio(kSplitHorizontal, kHorizontal, 'H', SplitDirection::kHorizontal);
    addRadio(kSplitVertical, kVertical, 'V', SplitDirection::kVertical);
    row->AddSpacer(gap);
    AddButton(*row, kSplitApply, kApply, 'A', &CScreenSplitWizardSetParam::ApplyOrder);
    AddButton(*row, kSplitAdvanced, kAdvanced, 'd', &CScreenSplitWizardSetParam::ToggleAdvanced);
    row->AddStretchSpacer();
    row->Add(new wxStaticText(this, wxID_ANY, ButtonLabel(kOverlapCaption, 'O')), middle);
    overlap_ = new NumberField(this, kSplitOverlap, kMostTyped, 6);
    row->Add(overlap_, wxSizerFlags(middle).Border(wxLEFT | wxRIGHT, gap));
    row->Add(new wxStaticText(this, wxID_ANY, ToWx(kPixels)), middle);
    AddButton(*row, kSplitSameOverlap, kSameOverlap, 'm',
              &CScreenSplitWizardSetParam::UseSameOverlap);
    return row;
}

wxSizer* CScreenSplitWizardSetParam::MakeSourceRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    AddButton(*row, kSplitTakeOver, kTakeOver, 'T', &CScreenSplitWizardSetParam::TakeOver);
    auto* note = new wxStaticText(this, wxID_ANY, ToWx(kZoomNote), wxDefaultPosition, wxDefaultSize,
                                  wxST_ELLIPSIZE_END);
    note->SetToolTip(ToWx(kZoomNote));
    note->SetForegroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT));
    row->Add(note, wxSizerFlags(1).CentreVertical().Border(wxLEFT, FromDIP(8)));
    AddButton(*row, kSplitAsFetched, kFetchedText, 'e',
              &CScreenSplitWizardSetParam::PutBackFetched);
    AddButton(*row, kSplitLastWall, kLastWall, 'W', &CScreenSplitWizardSetParam::UseLastWall);
    FindWindow(kSplitAsFetched)->SetToolTip(ToWx(kFetchedTip));
    FindWindow(kSplitLastWall)->SetToolTip(ToWx(kLastWallTip));
    return row;
}

wxSizer* CScreenSplitWizardSetParam::MakeStateRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    line_ = new wxStaticText(this, kSplitState, "", wxDefaultPosition, wxDefaultSize,
                             wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
    row->Add(line_, wxSizerFlags(1).CentreVertical());
    progress_ = new wxGauge(this, kSplitProgress, 1, wxDefaultPosition, FromDIP(wxSize(220, -1)));
    row->Add(progress_, wxSizerFlags().CentreVertical().ReserveSpaceEvenIfHidden());
    AddButton(*row, kSplitRetry, kRetry, 'y', &CScreenSplitWizardSetParam::Retry);
    return row;
}

wxSizer* CScreenSplitWizardSetParam::MakeFileRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    AddButton(*row, kSplitOpen, kOpen, 'p', &CScreenSplitWizardSetParam::OpenFile);
    AddButton(*row, kSplitSave, kSave, 'S', &CScreenSplitWizardSetParam::SaveFile);
    const UndoActions actions = {[this] { return MayChange() && document_.CanUndo(); },
                                 [this] { return MayChange() && document_.CanRedo(); },
                                 [this] { Walk(&SplitDocument::Undo); },
                                 [this] { Walk(&SplitDocument::Redo); }};
    undo_.emplace(*this, *row, actions, [this] { return grids_->Commit(); });
    OfferEarlier(*row);
    row->AddStretchSpacer();
    AddButton(*row, kSplitHelp, kHelpText, 'l', &CScreenSplitWizardSetParam::ShowHelp);
    return row;
}

/// Once the page has its size for the first time. The grids keep their width whatever size the
/// window has.
void CScreenSplitWizardSetParam::PlaceSash() {
    if (gridsWidth_ > 0) return;
    const std::vector<int> remembered =
        RememberedWidths(*this, 1, kGridsName, wizard_.Services().preferences);
    const int width = remembered.empty() ? kGridsCharacters * LetterWidth(*this) : remembered[0];
    splitter_->SetSashPosition(splitter_->GetClientSize().x - width);
    gridsWidth_ = GridsWidth();
}

int CScreenSplitWizardSetParam::GridsWidth() const {
    return splitter_->GetClientSize().x - splitter_->GetSashPosition();
}

/// Not while the sash is moved: every change of the window's size moves it as well.
void CScreenSplitWizardSetParam::RememberSash() {
    if (gridsWidth_ == 0 || gridsWidth_ == GridsWidth()) return;
    gridsWidth_ = GridsWidth();
    RememberWidths(*this, {gridsWidth_}, kGridsName, wizard_.Services().preferences);
}

/// The page is painted before links are made, which may take their time.
void CScreenSplitWizardSetParam::Entered() {
    isEntered_ = true;
    PlaceSash();
    grids_->FocusRows();
    CallAfter([this] {
        if (!isEntered_) return;
        run_.Enter(wizard_.Players());
    });
}

void CScreenSplitWizardSetParam::Left() {
    isEntered_ = false;
    RememberSash();
    run_.Leave();
}

bool CScreenSplitWizardSetParam::GoOn() {
    if (grids_->Commit()) run_.Finish();
    if (run_.IsBusy()) grids_->FocusRows();  // the button is disabled
    return false;
}

/// Order, overlaps and zoom stay when the page is entered again, though not what can be undone.
bool CScreenSplitWizardSetParam::HasUnsentChanges() const {
    using Kind = SplitStatus::Kind;
    const SplitStatus status = run_.Status();
    if (status.kind == Kind::kAsFetched) return false;
    if (status.kind == Kind::kSent) return !status.unconfirmed.empty();
    const SplitWall plain = PlainWall(document_.Names().size());
    return document_.CanUndo() || document_.Shown() != plain.arrangement ||
           document_.Wall() != plain;
}

CScreenSplitWizardSetParam::Grids CScreenSplitWizardSetParam::RowsOf(
    const SplitDocument& document) {
    return {SortRows(document), SplitRows(document), ZoomRows(document), AdvancedRows(document)};
}

/// The rows of a grid when they are others than those shown. The advanced ones may be thousands:
/// they are not made anew as long as the settings are the same.
std::optional<SettingsRows> CScreenSplitWizardSetParam::NewRows(std::size_t grid) {
    constexpr SettingsRows (*kRowsOf[])(const SplitDocument&) = {SortRows, SplitRows, ZoomRows,
                                                                 AdvancedRows};
    if (grid == kAdvancedTab) {
        auto advanced = document_.SharedAdvanced();
        if (advanced == shownAdvanced_) return std::nullopt;
        shownAdvanced_ = std::move(advanced);
    }
    SettingsRows rows = kRowsOf[grid](document_);
    std::vector<SettingsRow> flat;  // each heading ahead of its rows
    for (const SettingsGroup& group : rows) {
        flat.push_back({group.key, RowKind::kReadOnly, group.name, ""});
        flat.insert(flat.end(), group.rows.begin(), group.rows.end());
    }
    if (flat == shown_[grid]) return std::nullopt;
    shown_[grid] = std::move(flat);
    return rows;
}

/// A grid whose rows are the same keeps what is being done in it.
void CScreenSplitWizardSetParam::ShowWall() {
    for (std::size_t i = 0; i < shown_.size(); ++i) {
        std::optional<SettingsRows> rows = NewRows(i);
        if (rows && i < grids_->Count()) grids_->Fill(i, std::move(*rows));
    }
    directions_.at(static_cast<std::size_t>(document_.Shown().direction))->SetValue(true);
    view_->ShowWall();
}

void CScreenSplitWizardSetParam::StateChanged() {
    TakeStock();
    ShowState();
    EnableControls();
    wizard_.ButtonsChanged();
}

void CScreenSplitWizardSetParam::ShowState() {
    const wxString text = ToWx(StateTextOf(run_));
    earlier_->ShowState(*line_, StateTextOf(run_));
    const bool hasScreens = !document_.Names().empty();
    for (std::size_t i = 0; i < grids_->Count(); ++i)
        grids_->Grid(i).SetEmptyText(hasScreens ? ToWx(kEmptyGrids[i]) : text);
    const std::optional<SplitProgress>& progress = run_.Progress();
    progress_->Show(progress.has_value());
    if (!progress) return;
    progress_->SetRange(static_cast<int>(progress->range));
    progress_->SetValue(static_cast<int>(progress->position));
}

/// The keyboard does not stay where nothing can be pressed any more, or where nothing is left.
void CScreenSplitWizardSetParam::EnableControls() {
    const wxWeakRef<wxWindow> focused = FindFocus();
    const bool hadFocus = focused.get() != nullptr && IsDescendant(focused);
    const bool may = MayChange();
    const bool isKnown = document_.HasConfiguration();
    const bool hasSeams = document_.IsLaidOut() && document_.WallLength() > 1;
    const bool isLast = lastWall_ && document_.IsApplied() && document_.Wall() == *lastWall_;
    const bool isAsFetched = document_.IsAsFetched();
    const auto enable = [this](int id, bool enabled) { FindWindow(id)->Enable(enabled); };
    enable(kSplitHorizontal, may);
    enable(kSplitVertical, may);
    enable(kSplitApply, may && !isApplying_);
    enable(kSplitAdvanced, isKnown);
    enable(kSplitOverlap, may && hasSeams);
    enable(kSplitSameOverlap, may && hasSeams);
    enable(kSplitTakeOver, may && isKnown);
    enable(kSplitAsFetched, may && isKnown && !isAsFetched);
    enable(kSplitLastWall, may && lastWall_ && !isLast);
    enable(kSplitRetry, run_.MayRetry());
    enable(kSplitOpen, may && isKnown);
    earlier_->Enable(may && isKnown);
    enable(kSplitSave, may && (document_.IsLaidOut() || !isAsFetched));
    undo_->Enable();
    view_->SetEditable(may);
    if (!isKnown) ShowAdvanced(false);
    if (hadFocus && (focused.get() == nullptr || !focused->IsThisEnabled())) grids_->FocusRows();
}

bool CScreenSplitWizardSetParam::HasAdvancedTab() const { return grids_->Count() > kAdvancedTab; }

void CScreenSplitWizardSetParam::ShowAdvanced(bool shown) {
    if (shown == HasAdvancedTab()) return;
    grids_->ShowTabs(kAdvancedTab + (shown ? 1 : 0));
    if (!shown) return;
    SettingsGrid& grid = grids_->Grid(kAdvancedTab);
    grid.SetMinSize(grids_->Grid(0).GetMinSize());
    grid.SetEmptyText(ToWx(kEmptyGrids[kAdvancedTab]));
    grid.ShowConfirmed(held_);
    grids_->Fill(kAdvancedTab, AdvancedRows(document_));
}

/// What differs from what the players hold is bold: from what was fetched, or sent since then.
/// While that is not known, nothing is, and other players may be on their way: no wall is offered.
void CScreenSplitWizardSetParam::TakeStock() {
    const SplitStatus status = run_.Status();
    const bool isKnown = document_.HasConfiguration();
    const bool wasKnown = std::exchange(isStockTaken_, isKnown);
    if (!isKnown && wasKnown) {
        lastWall_.reset();
        held_.clear();
        grids_->ShowConfirmed(held_);
    }
    if (status.kind == SplitStatus::Kind::kSent && status.unconfirmed.empty())
        return ShowHeld(document_);
    if (!isKnown || wasKnown) return;
    SplitDocument held = document_;
    held.PutBackFetched();
    ShowHeld(held);
}

void CScreenSplitWizardSetParam::ShowHeld(const SplitDocument& held) {
    held_.clear();
    for (const SettingsRows& rows : RowsOf(held))
        VisitRows(rows, [this](const SettingsRow& row) { held_[row.key] = row.value; });
    grids_->ShowConfirmed(held_);
    lastWall_ = RememberedWall(document_, wizard_.Services().preferences);
}

void OpenScreenSplit(wxWindow* parent, const UiServices& services, const ScanSetup& setup) {
    CScreenSplitSetWizard(parent, services, setup, [](CScreenSplitSetWizard& wizard) {
        return new CScreenSplitWizardSetParam(wizard);
    }).ShowModal();
}

}  // namespace sontaro
