#include "timeline/player_time_control.h"

#include <fmt/printf.h>
#include <wx/gauge.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/tglbtn.h>

#include "exchange/player_requests.h"
#include "timeline/checks_panel.h"
#include "timeline/merge_dialog.h"
#include "timeline/time_picture_view.h"
#include "timeline/timeline_files.h"
#include "timeline/timeline_state_text.h"
#include "widgets/caption_button.h"
#include "widgets/common_texts.h"
#include "widgets/filter_box.h"
#include "widgets/fonts.h"
#include "widgets/number_field.h"
#include "widgets/table.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr const char* kName = "player-timeline";  // in the preferences
constexpr int kTableCharacters = 150;
constexpr int kLines = 10;
constexpr int kMoreLines = 6;  // at first
constexpr int kFillSteps = 1000;

constexpr LocalText kAdd = {"添加", "Add"};
constexpr LocalText kEdit = {"编辑", "Edit"};
constexpr LocalText kDuplicate = {"创建副本", "Duplicate"};
constexpr LocalText kShift = {"平移时间…", "Shift by…"};
constexpr LocalText kChange = {"更改勾选项…", "Change in all ticked…"};
constexpr LocalText kCopy = {"复制视频…", "Copy video…"};
constexpr LocalText kMerge = {"从文件合并…", "Merge from file…"};
constexpr LocalText kDelete = {"删除", "Delete"};
constexpr LocalText kTest = {"测试", "Test"};

constexpr LocalText kTestTickedText = {"依次测试", "Test ticked"};
constexpr LocalText kGap = {"间隔", "Gap"};
constexpr LocalText kMilliseconds = {"毫秒", "ms"};
constexpr LocalText kImport = {"导入CSV…", "Import CSV…"};
constexpr LocalText kExport = {"导出CSV…", "Export CSV…"};
constexpr int kUsualGap = 500;  // milliseconds
constexpr int kMostGap = 60'000;

constexpr LocalText kTestTickedTip = {"把勾选的命令按间隔依次发送到播放器",
                                      "Sends the ticked commands to the player one by one"};
constexpr LocalText kChosenTip = {"勾选的命令；未勾选时为所选的命令",
                                  "The ticked commands, or the chosen ones where none is ticked"};
constexpr LocalText kChangeTip = {"让所有勾选的命令具有相同的视频、端口、地址或命令",
                                  "Gives all ticked commands the same video, port, address or "
                                  "command"};
constexpr LocalText kCopyTip = {"把一个视频的全部命令复制到另一个视频",
                                "Copies all commands of one video to another"};
constexpr LocalText kDeleteTip = {"勾选的命令（Delete）", "The ticked commands (Delete)"};
constexpr LocalText kTestTip = {"把所选的命令单独发送到播放器（Ctrl+T）",
                                "Sends the chosen command alone to the player (Ctrl+T)"};

constexpr LocalText kFilterHint = {"任意列中的文字", "Text in any column"};
constexpr LocalText kNoNodes = {"还没有命令。按“添加”或 Insert 键添加一条，或打开一个文件。",
                                "There are no commands yet. Press Add or the Insert key for the "
                                "first one, or open a file."};
constexpr LocalText kCounts = {"%d 条命令，已勾选 %d 条", "%d commands, %d ticked"};
constexpr LocalText kFill = {"已占用 %d / %d 字节", "%d of %d bytes"};

/// Where the player's videos come from, and where they are kept.
VideoListSource SourceInto(std::optional<VideoList>& videos) {
    return {[] { return AskVideoList(VideoListFor::kTimeline); },
            [&videos](std::string_view text) {
                Result<VideoList> list = ReadVideoList(text);
                if (list) videos = std::move(*list);
                return list.ok();
            }};
}

}  // namespace

CPlayerTimeControl::CPlayerTimeControl(wxWindow* parent, const UiServices& services,
                                       const DeviceRecord& player)
    : FeatureDialog(parent, Window::kPlayerTimeControl, services),
      rows_(document_),
      run_(document_, *this, services.Messages(), Exchange(), {player.ip, player.tcpPort, 0},
           SourceInto(videos_)),
      commandNames_(Exchange(), {player.ip, player.tcpPort, 0}) {
    LayOut(player);
    BindEvents();
    StateChanged();
    CentreOnParent();
    RestorePlace(kName);
    table_->KeepWidths(kName, services.preferences);
    CallAfter([this] {
        asked_ = true;
        run_.Read();
    });
}

void CPlayerTimeControl::LayOut(const DeviceRecord& player) {
    const int gap = FromDIP(10);
    const wxSizerFlags line = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap);
    auto* column = new wxBoxSizer(wxVERTICAL);
    auto* head = new wxBoxSizer(wxHORIZONTAL);
    head->Add(MakeHeading(player, this), wxSizerFlags(1).CentreVertical().Border(wxRIGHT, gap));
    filter_ = new FilterBox(this, kTimelineFilter);
    filter_->SetDescriptiveText(ToWx(kFilterHint));
    head->Add(filter_->WithCaption(), wxSizerFlags().CentreVertical());
    column->Add(head, line);
    MakeTable();
    column->Add(table_, wxSizerFlags(line).Proportion(1));
    MakePicture();
    column->Add(picture_, line);
    MakeChecks();
    column->Add(MakeInfoRow(), line);
    column->Add(checks_, line);
    column->Add(MakeNodeButtons(), line);
    column->Add(MakeStateRow(state_), line);
    wxSizer* files = MakeFileButtonRow(kOpenTimeline, kSaveTimeline);
    std::size_t place = 3;  // behind Open, a space and Save
    for (const auto& [id, text, key] :
         {std::tuple(kMergeTimeline, kMerge, 'M'), std::tuple(kImportCsv, kImport, 'I'),
          std::tuple(kExportCsv, kExport, 'x')}) {
        auto* button = new wxButton(this, id, ButtonLabel(text, key));
        button->MoveBeforeInTabOrder(FindWindow(wxID_OK));
        files->InsertSpacer(place++, FromDIP(8));
        files->Insert(place++, button);
    }
    OfferEarlier(*files, player);
    column->Add(files, wxSizerFlags().Expand().Border(wxALL, gap));
    SetSizerAndFit(column);
    wxSize size = GetSize() + wxSize(0, kMoreLines * GetCharHeight());
    size.DecTo(wxGetClientDisplayRect().GetSize());
    SetSize(size);
}

void CPlayerTimeControl::OfferEarlier(wxSizer& foot, const DeviceRecord& player) {
    earlier_.emplace(
        *this, foot, kOpenTimeline, Services(), kBlockPlayerTimeline,
        EarlierActions{[this, player] {
                           return EarlierQuestion{player, kBlockPlayerTimeline, run_.Held()};
                       },
                       [this](const std::string& text) { run_.OpenEarlier(text); },
                       [] { return true; }, [this] { StateChanged(); }});
    run_.KeepBy([this, player](std::string text) { earlier_->Keep(player, std::move(text)); });
}

/// The table gives way to the checks, down to its least size.
void CPlayerTimeControl::MakeRoom() {
    SetMinSize(GetSizer()->ComputeFittingWindowSize(this));
    wxSize size = GetSize();
    size.IncTo(GetMinSize());
    SetSize(size);
    Layout();
}

void CPlayerTimeControl::MakeTable() {
    const TableActions actions = {[this](std::size_t row) { EditNode(row); },
                                  [this](std::size_t row, std::size_t) { TestNode(row); },
                                  [this] { AddNode(); },
                                  [this] { DeleteTicked(); },
                                  [this] { ShowChosen(); },
                                  [this] { ShowFill(); }};
    table_ = new Table(this, kTimelineGrid, rows_, actions, Services().Messages());
    table_->SetMinSize(wxSize(kTableCharacters * LetterWidth(*this), kLines * GetCharHeight()));
}

void CPlayerTimeControl::MakePicture() {
    picture_ = new TimePictureView(
        this, kTimePicture, document_,
        {[this](NodeId node) { Choose(node); }, [this](NodeId node) { Changed(node); }});
}

void CPlayerTimeControl::MakeChecks() {
    const auto goTo = [this](NodeId node) {
        Choose(node);
        table_->Grid().GetGridWindow()->SetFocus();
    };
    checks_ =
        new ChecksPanel(this, kChecks, document_, videos_, Services().timers,
                        {[this](NodeId node) { Choose(node); }, goTo, [this] { MakeRoom(); }});
}

wxSizer* CPlayerTimeControl::MakeInfoRow() {
    const int gap = FromDIP(16);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    counts_ = new wxStaticText(this, wxID_ANY, "");
    row->Add(counts_, wxSizerFlags().CentreVertical().Border(wxRIGHT, gap));
    row->Add(checks_->Button(), wxSizerFlags().CentreVertical().Border(wxRIGHT, gap));
    test_ = MakeStateLine();
    row->Add(test_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, gap));
    fillText_ = new wxStaticText(this, wxID_ANY, "");
    row->Add(fillText_, wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(8)));
    fill_ = new wxGauge(this, wxID_ANY, kFillSteps, wxDefaultPosition, FromDIP(wxSize(120, -1)));
    row->Add(fill_, wxSizerFlags().CentreVertical());
    return row;
}

wxSizer* CPlayerTimeControl::MakeNodeButtons() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    const auto add = [&](int id, const LocalText& text, char key, const wxString& tip) {
        auto* button = new wxButton(this, id, ButtonLabel(text, key));
        button->SetToolTip(tip);
        if (!row->IsEmpty()) row->AddSpacer(FromDIP(8));
        row->Add(button);
    };
    add(kAddNode, kAdd, 'A', "Insert");
    add(kEditNode, kEdit, 'E', "Enter");
    add(kDuplicateNodes, kDuplicate, 'D', ToWx(kChosenTip));
    add(kShiftNodes, kShift, 'h', ToWx(kChosenTip));
    add(kChangeNodes, kChange, 'n', ToWx(kChangeTip));
    add(kCopyVideo, kCopy, 'v', ToWx(kCopyTip));
    add(kDeleteNodes, kDelete, 'l', ToWx(kDeleteTip));
    row->AddSpacer(FromDIP(8));
    add(kTestNode, kTest, 'T', ToWx(kTestTip));
    add(kTestTicked, kTestTickedText, 'k', ToWx(kTestTickedTip));
    const wxSizerFlags middle = wxSizerFlags().CentreVertical();
    row->Add(new wxStaticText(this, wxID_ANY, ToWx(kGap)),
             wxSizerFlags(middle).Border(wxLEFT | wxRIGHT, FromDIP(6)));
    gap_ = new NumberField(this, kTestGap, kMostGap, 6);
    gap_->ShowNumber(kUsualGap);
    row->Add(gap_, middle);
    row->Add(new wxStaticText(this, wxID_ANY, ToWx(kMilliseconds)),
             wxSizerFlags(middle).Border(wxLEFT, FromDIP(6)));
    row->AddStretchSpacer();
    add(kUndoTimeline, kUndoText, 'U', "Ctrl+Z");
    add(kRedoTimeline, kRedoText, 'R', "Ctrl+Y");
    return row;
}

void CPlayerTimeControl::BindEvents() {
    const auto onPress = [this](int id, auto action) {
        Bind(
            wxEVT_BUTTON, [action](wxCommandEvent&) { action(); }, id);
    };
    const auto onChosen = [this, onPress](int id, void (CPlayerTimeControl::*action)(std::size_t)) {
        onPress(id, [this, action] {
            if (const auto row = table_->ChosenRow()) (this->*action)(*row);
        });
    };
    onPress(wxID_OK, [this] { run_.Save(); });
    onPress(kOpenTimeline, [this] {
        if (const auto path = AskForTimelineToOpen(Services().Messages())) run_.OpenFile(*path);
    });
    onPress(kSaveTimeline, [this] {
        if (const auto path = AskForTimelineToSave(Services().Messages())) run_.SaveFile(*path);
    });
    onPress(kAddNode, [this] { AddNode(); });
    onChosen(kEditNode, &CPlayerTimeControl::EditNode);
    onChosen(kTestNode, &CPlayerTimeControl::TestNode);
    onPress(kTestTicked, [this] { TestTickedOrStop(); });
    onPress(kImportCsv, [this] {
        const NodeIds added = ImportCsv(document_, Services().Messages());
        if (!added.empty()) Changed(added.front());
    });
    onPress(kExportCsv, [this] { ExportCsv(document_, Services().Messages()); });
    onPress(kDuplicateNodes, [this] { DuplicateChosen(); });
    onPress(kShiftNodes, [this] { ShiftChosen(); });
    onPress(kChangeNodes, [this] { ChangeTicked(); });
    onPress(kCopyVideo, [this] { CopyVideo(); });
    onPress(kMergeTimeline,
            [this] { Added(MergeFromFile(this, document_, videoOffer_, Services().Messages())); });
    onPress(kDeleteNodes, [this] { DeleteTicked(); });
    onPress(kUndoTimeline, [this] { UndoOrRedo(true); });
    onPress(kRedoTimeline, [this] { UndoOrRedo(false); });
    filter_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) {
        table_->Filter(filter_->GetValue());
        ShowChosen();
    });
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        const bool isShortcut = event.GetModifiers() == wxMOD_CONTROL;
        if (!isShortcut || !HandleShortcut(event.GetKeyCode())) event.Skip();
    });
}

/// With Ctrl. While a text is being typed, undoing is the text's.
bool CPlayerTimeControl::HandleShortcut(int key) {
    const bool isTyping = dynamic_cast<wxTextEntry*>(wxWindow::FindFocus()) != nullptr;
    const auto row = table_->ChosenRow();
    if (key == 'T' && row)
        TestNode(*row);
    else if ((key == 'Z' || key == 'Y') && !isTyping)
        UndoOrRedo(key == 'Z');
    else
        return false;
    return true;
}

void CPlayerTimeControl::ShowNodes() {
    table_->RowsChanged();
    checks_->CheckSoon();
    if (!std::exchange(shown_, true)) table_->Grid().GetGridWindow()->SetFocus();
}

void CPlayerTimeControl::ShowVideoList() {
    videoOffer_.Changed();
    checks_->CheckSoon();
}

void CPlayerTimeControl::StateChanged() {
    ShowState();
    ShowChosen();
    ShowFill();
}

void CPlayerTimeControl::ShowState() {
    const wxString text = ToWx(StateTextOf(run_));
    earlier_->ShowState(*state_, FromWx(text.BeforeFirst('\n')));
    state_->SetToolTip(ToWx(earlier_->WithTrouble(FromWx(text))));
    const wxString tested = ToWx(TestTextOf(run_.Tests()));
    test_->SetLabelText(tested);
    test_->SetToolTip(TooltipText(tested));
    ShowReadAgain(run_.IsConnected() || !asked_);
    const bool waits =
        run_.State() == TimelineState::kWaitingForList || run_.State() == TimelineState::kWaiting;
    table_->SetEmptyText(waits ? FromWx(text) : Localized(kNoNodes));
}

void CPlayerTimeControl::ShowChosen() {
    ShowButtons();
    const auto row = table_->ChosenRow();
    picture_->ShowVideoOf(row);
    checks_->NodeChosen(row ? document_.IdAt(*row) : 0);
}

void CPlayerTimeControl::ShowButtons() {
    const bool hasChosen = table_->ChosenRow().has_value();
    FindWindow(wxID_OK)->Enable(run_.MaySend());
    FindWindow(kEditNode)->Enable(hasChosen);
    FindWindow(kTestNode)->Enable(hasChosen);
    FindWindow(kDuplicateNodes)->Enable(document_.NodeCount() > 0);
    FindWindow(kShiftNodes)->Enable(document_.NodeCount() > 0);
    FindWindow(kChangeNodes)->Enable(document_.NodeCount() > 0);
    FindWindow(kCopyVideo)->Enable(document_.NodeCount() > 0);
    FindWindow(kExportCsv)->Enable(document_.NodeCount() > 0);
    const bool isTesting = run_.Tests().IsRunning();
    const wxString testing = ButtonLabel(isTesting ? kStopTesting : kTestTickedText, 'k');
    if (FindWindow(kTestTicked)->GetLabel() != testing) FindWindow(kTestTicked)->SetLabel(testing);
    FindWindow(kUndoTimeline)->Enable(document_.CanUndo());
    FindWindow(kRedoTimeline)->Enable(document_.CanRedo());
}

void CPlayerTimeControl::ShowFill() {
    const std::size_t bytes = document_.TextBytes();
    const std::string fill = fmt::sprintf(Localized(kFill), bytes, kLongestTimeline);
    counts_->SetLabelText(
        ToWx(fmt::sprintf(Localized(kCounts), document_.NodeCount(), rows_.Ticked().size())));
    fillText_->SetLabelText(ToWx(document_.IsTooLong() ? kCautionMark + fill : fill));
    fill_->SetValue(
        static_cast<int>(std::min(bytes, kLongestTimeline) * kFillSteps / kLongestTimeline));
    Layout();
}

}  // namespace sontaro
