#include "batchsend/video_batch_send.h"

#include <fmt/printf.h>
#include <wx/appprogress.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/sizer.h>
#include <wx/splitter.h>
#include <wx/stattext.h>
#include <wx/utils.h>

#include <algorithm>

#include "batchsend/send_page_ids.h"
#include "batchsend/video_set_files.h"
#include "widgets/csv_file_texts.h"
#include "widgets/fonts.h"
#include "widgets/table.h"
#include "widgets/text_progress.h"
#include "widgets/wrapped_text.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr const char* kPlayersName = "batchSendPlayers";  // in the preferences
constexpr const char* kMatrixName = "batchSendVideos";
constexpr int kCharacters = 150;
constexpr int kLines = 22;
constexpr int kLeastPane = 110;
constexpr double kPlayersShare = 0.45;
constexpr int kProgressWidth = 320;
constexpr int kSummaryCharacters = 20;
constexpr std::size_t kSummaryLines = 5;
constexpr int kTaskbarRange = 1000;

constexpr LocalText kStart = {"开始", "Start"};
constexpr LocalText kFromStart = {"从头开始", "From the beginning"};
constexpr LocalText kStop = {"停止", "Stop"};
constexpr LocalText kContinue = {"继续", "Continue"};
constexpr LocalText kPlan = {"重新询问播放器", "Ask the players again"};
constexpr LocalText kSkipPresent = {"跳过播放器中已有的视频", "Skip what is there already"};
constexpr LocalText kTryAgain = {"结束时重试失败的视频", "At the end try once more what failed"};
constexpr LocalText kFailedAgain = {"重新发送失败的视频", "Send again what failed"};
constexpr LocalText kProve = {"核对", "Compare again"};
constexpr LocalText kExport = {"导出CSV...", "Export CSV..."};
constexpr LocalText kAmounts[] = {
    {"文件：%s", "File: %s"}, {"播放器：%s", "Player: %s"}, {"全部：%s", "All: %s"}};
constexpr LocalText kNoPlayers = {"没有播放器。", "There are no players."};
constexpr LocalText kNoVideos = {"没有为播放器选择视频。", "No videos have been chosen."};
constexpr LocalText kAsking = {"正在询问播放器…", "Asking the players…"};
constexpr LocalText kAwake = {"正在发送视频", "Videos are being sent"};
constexpr LocalText kExportCaption = {"导出发送记录", "Export the journal"};
constexpr LocalText kExportName = {"发送记录", "Upload"};

SendPlaces PlacesFor(const CVideoSetWizard& wizard) {
    return {wizard.Journals(), wizard.VideoTypeFile(),
            [] {
                return std::chrono::duration_cast<UploadFigures::Time>(
                    std::chrono::steady_clock::now().time_since_epoch());
            },
            std::chrono::system_clock::now};
}

void ShowText(wxStaticText& line, const wxString& text) {
    if (line.GetLabelText() == text) return;
    line.SetLabelText(text);
    line.SetToolTip(text);
}

}  // namespace

CVideoBatchSend::CVideoBatchSend(CVideoSetWizard& wizard)
    : WizardPage(wizard, Window::kBatchSend),
      wizard_(wizard),
      reader_(wizard.Services().Directory().Thread(), wizard.Services().link.threads),
      page_(reader_, *this, wizard.Services().Messages(), wizard.Exchange(), PlacesFor(wizard)),
      players_(page_) {
    LayOut();
}

CVideoBatchSend::~CVideoBatchSend() { DestroyChildren(); }  // they show the page's tables

void CVideoBatchSend::LayOut() {
    const int gap = FromDIP(10);
    const wxSizerFlags line = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(MakeRunRow(), line);
    column->Add(MakeTables(), wxSizerFlags(line).Proportion(1));
    column->Add(MakeLineRow(), line);
    column->Add(MakeAmountsRow(), line);
    column->Add(MakeEndRow(), wxSizerFlags(line).Border(wxALL, gap));
    SetSizer(column);
}

wxButton* CVideoBatchSend::AddButton(wxSizer& row, int id, const LocalText& text, char key,
                                     void (SendPage::*action)()) {
    auto* button = new wxButton(this, id, ButtonLabel(text, key));
    if (!row.IsEmpty()) row.AddSpacer(FromDIP(8));
    row.Add(button, wxSizerFlags().CentreVertical());
    button->Bind(wxEVT_BUTTON, [this, action](wxCommandEvent&) { (page_.*action)(); });
    return button;
}

wxCheckBox* CVideoBatchSend::AddTick(wxSizer& row, int id, const LocalText& text, char key,
                                     void (SendPage::*action)(bool)) {
    auto* tick = new wxCheckBox(this, id, ButtonLabel(text, key));
    row.Add(tick, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(12)));
    tick->Bind(wxEVT_CHECKBOX, [this, action](wxCommandEvent& event) {
        (page_.*action)(event.IsChecked());
        wizard_.Set().skipsPresent = page_.Set().skipsPresent;
        wizard_.Set().triesAgain = page_.Set().triesAgain;
        RememberVideoSet(wizard_.Set(), wizard_.Services().preferences);
    });
    return tick;
}

wxStaticText* CVideoBatchSend::AddLine(wxSizer& row, int id, int proportion) {
    auto* line = new wxStaticText(this, id, "", wxDefaultPosition, wxDefaultSize,
                                  wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
    line->SetMinSize(wxSize(-1, LineHeight(*this)));  // in any script
    if (!row.IsEmpty()) row.AddSpacer(FromDIP(12));
    row.Add(line, wxSizerFlags(proportion).CentreVertical());
    return line;
}

wxSizer* CVideoBatchSend::MakeRunRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    start_ = AddButton(*row, kSendStart, kStart, 'S', &SendPage::Start);
    wxSize size = start_->GetBestSize();
    start_->SetLabel(ButtonLabel(kFromStart, 'S'));
    size.IncTo(start_->GetBestSize());
    start_->SetMinSize(size);
    AddButton(*row, kSendContinue, kContinue, 'o', &SendPage::Continue);
    AddButton(*row, kSendStop, kStop, 't', &SendPage::Stop);
    skipPresent_ = AddTick(*row, kSendSkipPresent, kSkipPresent, 'k', &SendPage::SkipPresent);
    tryAgain_ = AddTick(*row, kSendTryAgain, kTryAgain, 'y', &SendPage::TryAgain);
    row->AddStretchSpacer();
    AddButton(*row, kSendPlan, kPlan, 'A', &SendPage::MakePlan);
    return row;
}

wxWindow* CVideoBatchSend::MakeTables() {
    splitter_ = new wxSplitterWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                     wxSP_LIVE_UPDATE | wxSP_3DSASH);
    splitter_->SetMinimumPaneSize(FromDIP(kLeastPane));
    splitter_->SetSashGravity(kPlayersShare);
    Prompts& prompts = wizard_.Services().Messages();
    JsonFile& preferences = wizard_.Services().preferences;
    playerTable_ = new Table(splitter_, kSendPlayers, players_, {}, prompts);
    playerTable_->SetEmptyText(Localized(kNoPlayers));
    playerTable_->KeepWidths(kPlayersName, preferences);
    splitter_->Initialize(playerTable_);
    splitter_->SetMinSize(wxSize(kCharacters * LetterWidth(*this), kLines * GetCharHeight()));
    return splitter_;
}

wxSizer* CVideoBatchSend::MakeLineRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    line_ = AddLine(*row, kSendLine, 1);
    progress_ = new TextProgress(this, kSendProgress);
    progress_->SetMinSize(FromDIP(wxSize(kProgressWidth, -1)));
    row->Add(progress_, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(12)));
    return row;
}

wxSizer* CVideoBatchSend::MakeAmountsRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    for (std::size_t i = 0; i < amounts_.size(); ++i)
        amounts_.at(i) = AddLine(*row, kSendAmounts + static_cast<int>(i), 2);
    pace_ = AddLine(*row, kSendPace, 3);
    return row;
}

wxSizer* CVideoBatchSend::MakeEndRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    summary_ = new wxStaticText(this, kSendSummary, "", wxDefaultPosition, wxDefaultSize,
                                wxST_NO_AUTORESIZE);
    summary_->SetMinSize(wxSize(kSummaryCharacters * LetterWidth(*this), LineHeight(*this)));
    row->Add(summary_, wxSizerFlags(1).CentreVertical());
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        CallAfter(&CVideoBatchSend::ShowSummary);
    });
    AddButton(*row, kSendFailedAgain, kFailedAgain, 'g', &SendPage::SendFailed);
    AddButton(*row, kSendProve, kProve, 'p', &SendPage::Prove);
    auto* button = new wxButton(this, kSendExport, ButtonLabel(kExport, 'E'));
    row->Add(button, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(8)));
    button->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Export(); });
    return row;
}

void CVideoBatchSend::Entered() {
    const VideoSet& set = wizard_.Set();
    skipPresent_->SetValue(set.skipsPresent);
    tryAgain_->SetValue(set.triesAgain);
    page_.Enter(set);
    FindWindow(kSendStart)->SetFocus();
}

void CVideoBatchSend::Left() { page_.Leave(); }

/// A table's columns stay as they are: other players get another table.
void CVideoBatchSend::ShowMatrix() {
    auto matrix = std::make_unique<BatchMatrix>(page_);
    auto* table = new Table(splitter_, kSendMatrix, *matrix, {}, wizard_.Services().Messages());
    table->KeepWidths(kMatrixName, wizard_.Services().preferences);
    if (matrixTable_) {
        splitter_->ReplaceWindow(matrixTable_, table);
        matrixTable_->Destroy();
    } else {
        splitter_->SplitHorizontally(playerTable_, table,
                                     static_cast<int>(kPlayersShare * splitter_->GetSize().y));
    }
    matrixTable_ = table;
    matrix_ = std::move(matrix);
}

void CVideoBatchSend::BatchChanged() {
    if (!playerTable_) return;
    if (!matrix_ || !matrix_->IsUpToDate()) ShowMatrix();
    playerTable_->RowsChanged();
    const bool isAsking = page_.Phase() == SendPhase::kPlanning;
    matrixTable_->SetEmptyText(Localized(isAsking ? kAsking : kNoVideos));
    matrixTable_->RowsChanged();
}

void CVideoBatchSend::PlayerChanged(std::size_t player) { playerTable_->RowChanged(player); }

void CVideoBatchSend::VideoChanged(std::size_t video) { matrixTable_->RowChanged(video); }

void CVideoBatchSend::StateChanged() {
    EnableButtons();
    ShowFigures();
    ShowOnTaskbar();
    wizard_.ButtonsChanged();
}

/// The keyboard does not stay where nothing can be pressed any more.
void CVideoBatchSend::EnableButtons() {
    const wxWindow* focused = FindFocus();
    const auto enable = [this](int id, bool may) { FindWindow(id)->Enable(may); };
    const wxString label = ButtonLabel(page_.StartsAnew() ? kFromStart : kStart, 'S');
    if (start_->GetLabel() != label) start_->SetLabel(label);
    enable(kSendStart, page_.MayStart());
    enable(kSendContinue, page_.MayContinue());
    enable(kSendStop, page_.MayStop());
    enable(kSendPlan, page_.MayPlan());
    enable(kSendSkipPresent, !page_.IsRunning());
    enable(kSendTryAgain, !page_.IsRunning());
    enable(kSendFailedAgain, page_.MaySendFailed());
    enable(kSendProve, page_.MayProve());
    enable(kSendExport, page_.MayExport());
    if (!focused || focused->GetParent() != this || focused->IsThisEnabled()) return;
    playerTable_->Grid().GetGridWindow()->SetFocus();  // a second press must not stop the run
}

void CVideoBatchSend::ShowFigures() {
    ShowText(*line_, ToWx(page_.LineText()));
    ShowSummary();
    ShowText(*pace_, ToWx(page_.PaceText()));
    progress_->SetPercent(page_.Percent());
    const UploadFigures& figures = page_.Figures();
    const UploadAmount* amounts[] = {&figures.Video(), &figures.Player(), &figures.Run()};
    for (std::size_t i = 0; i < amounts_.size(); ++i)
        ShowText(*amounts_.at(i), page_.HasRun() ? ToWx(fmt::sprintf(Localized(kAmounts[i]),
                                                                     AmountText(*amounts[i])))
                                                 : wxString());
}

/// In as many lines as it takes, so far as there is sensibly room; the tip has all of it.
void CVideoBatchSend::ShowSummary() {
    const int least = kSummaryCharacters * LetterWidth(*this);
    const int width = std::max(summary_->GetClientSize().x, least);
    const wxString whole = ToWx(page_.SummaryText());
    const wxString text =
        FirstLines(*summary_, WrappedText(*summary_, whole, width), width, kSummaryLines);
    if (summary_->GetToolTipText() != whole) summary_->SetToolTip(whole);
    if (summary_->GetLabelText() == text) return;
    summary_->SetLabelText(text);
    const int lines = 1 + static_cast<int>(text.Freq('\n'));
    summary_->SetMinSize(wxSize(least, lines * LineHeight(*this)));
    Layout();
}

void CVideoBatchSend::ShowOnTaskbar() {
    if (!page_.IsRunning()) {
        awake_.reset();
        taskbar_.reset();
        return;
    }
    if (!awake_)
        awake_ = std::make_unique<wxPowerResourceBlocker>(wxPOWER_RESOURCE_SYSTEM, ToWx(kAwake));
    if (!taskbar_)
        taskbar_ = std::make_unique<wxAppProgressIndicator>(
            wxGetTopLevelParent(wizard_.GetParent()), kTaskbarRange);
    taskbar_->SetValue(static_cast<int>(kTaskbarRange * page_.Figures().Run().Share()));
}

/// Painted before, as nothing is meanwhile.
void CVideoBatchSend::Pause(std::chrono::milliseconds time) {
    wizard_.Update();
    wxMilliSleep(static_cast<unsigned long>(time.count()));
}

void CVideoBatchSend::Export() {
    const auto path = wizard_.Services().Messages().ChooseFile(
        CsvFileQuestion(FileQuestion::Purpose::kSave, kExportCaption, kExportName));
    if (path) page_.Export(*path);
}

}  // namespace sontaro
