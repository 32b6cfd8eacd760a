#include "timeline/player_time_add.h"

#include <fmt/printf.h>
#include <wx/button.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "base/hex_command.h"
#include "timeline/command_text.h"
#include "timeline/named_command_dialog.h"
#include "timeline/timeline_texts.h"
#include "widgets/common_texts.h"
#include "widgets/fonts.h"
#include "widgets/form_rows.h"
#include "widgets/ip_field.h"
#include "widgets/number_field.h"
#include "widgets/toolkit_quirks.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr int kMostOfTimePart = 9999;  // more than is allowed, so that it can be told

constexpr LocalText kAddTitle = {"添加时间轴", "Add time node"};
constexpr LocalText kEditTitle = {"编辑时间轴", "Edit time node"};
constexpr LocalText kTime = {"时间", "Time"};
constexpr LocalText kTextLabel = {"按文本输入", "As text"};
constexpr LocalText kByName = {"按名称选择命令…", "Commands by name…"};
constexpr LocalText kChecksumLabel = {"校验和", "Checksum"};
constexpr LocalText kAppend = {"追加到命令", "Append"};
constexpr LocalText kForNetwork = {"（仅用于 TCP 和 UDP）", "(for TCP and UDP)"};
constexpr std::array<LocalText, 4> kTimeUnits = {
    {{"时", "h"}, {"分", "min"}, {"秒", "s"}, {"毫秒", "ms"}}};

constexpr LocalText kByteCount = {"字节数：%d", "Bytes: %d"};
constexpr LocalText kHowToType = {"十六进制字节，例如 A5 01；或在下一行按文本输入。",
                                  "Hexadecimal bytes such as A5 01, or a text in the next line."};
constexpr LocalText kNoBytes = {"尚不是完整的十六进制字节。", "No hexadecimal bytes so far."};
constexpr LocalText kBadEscape = {R"(反斜杠后只能是 r、n、t、\ 或 xNN。)",
                                  R"(A backslash goes before r, n, t, \ or xNN.)"};
constexpr LocalText kEscapes = {R"(\r 回车，\n 换行，\t 制表符，\xNN 任意字节，\\ 反斜杠)",
                                R"(\r return, \n new line, \t tab, \xNN any byte, \\ backslash)"};

LocalText Header(TimelineColumn column) {
    return kTimelineHeaders[static_cast<std::size_t>(column)];
}

}  // namespace

CPlayerTimeAdd::CPlayerTimeAdd(wxWindow* parent, Prompts& prompts, VideoOffer& videos,
                               CommandNames& names, const TimeNode* edited)
    : KeyedDialog(parent, wxID_ANY, ToWx(edited ? kEditTitle : kAddTitle), wxDefaultPosition,
                  wxDefaultSize, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      prompts_(prompts),
      names_(names),
      edited_(edited ? std::optional(*edited) : std::nullopt) {
    UseLanguageFont(*this);
    SetEscapeId(wxID_NONE);
    video_.emplace(this, kNodePlayer, videos, VideoFields::Names::kReplaced);
    LayOut();
    ShowEntry(edited_ ? EntryOf(*edited_) : NodeEntry());
    if (!edited_) video_->ChooseOffered();
    BindEvents();
    CentreOnParent();
    time_.front()->SetFocus();
    time_.front()->SelectAll();
}

void CPlayerTimeAdd::LayOut() {
    const int gap = FromDIP(10);
    auto* column = new wxBoxSizer(wxVERTICAL);
    wxFlexGridSizer* rows = MakeForm(this);
    AddVideoRows(*rows);
    AddPortRows(*rows);
    AddCommandRows(*rows);
    column->Add(rows, wxSizerFlags(1).Expand().Border(wxALL, gap));
    column->Add(MakeOkCancelRow(this),
                wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, gap));
    SetSizerAndFit(column);
}

void CPlayerTimeAdd::AddVideoRows(wxFlexGridSizer& rows) {
    AddFormRow(rows, this, Header(TimelineColumn::kPlayer), video_->Player());
    AddFormRow(rows, this, Header(TimelineColumn::kType), video_->Type());
    AddFormRow(rows, this, Header(TimelineColumn::kVideo), video_->Title());
    AddFormRow(rows, this, kTime, MakeTimeRow());
}

wxSizer* CPlayerTimeAdd::MakeTimeRow() {
    const int gap = FromDIP(4);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    for (std::size_t part = 0; part < time_.size(); ++part) {
        const bool isHours = part == 0;
        time_[part] = new NumberField(this, kNodeHours + static_cast<int>(part),
                                      isHours ? kMostHours : kMostOfTimePart, isHours ? 8 : 5);
        row->Add(time_[part], wxSizerFlags().CentreVertical().Border(wxRIGHT, gap));
        row->Add(new wxStaticText(this, wxID_ANY, ToWx(kTimeUnits[part])),
                 wxSizerFlags().CentreVertical().Border(wxRIGHT, 2 * gap));
    }
    return row;
}

void CPlayerTimeAdd::AddPortRows(wxFlexGridSizer& rows) {
    port_ = new wxChoice(this, kNodePort);
    AddFormRow(rows, this, Header(TimelineColumn::kPort), port_);
    auto* address = new wxBoxSizer(wxHORIZONTAL);
    ip_ = new IpField(this, kNodeIp);
    address->Add(ip_, wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(8)));
    address->Add(new wxStaticText(this, wxID_ANY, ToWx(kForNetwork)),
                 wxSizerFlags().CentreVertical());
    AddFormRow(rows, this, Header(TimelineColumn::kIp), address);
    auto* peerPort = new wxBoxSizer(wxHORIZONTAL);
    peerPort_ = new NumberField(this, kNodePeerPort, kLastPeerPort, 8);
    peerPort->Add(peerPort_, wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(8)));
    peerPort->Add(new wxStaticText(this, wxID_ANY, ToWx(kForNetwork)),
                  wxSizerFlags().CentreVertical());
    AddFormRow(rows, this, Header(TimelineColumn::kPeerPort), peerPort);
}

void CPlayerTimeAdd::AddCommandRows(wxFlexGridSizer& rows) {
    AddFormRow(rows, this, Header(TimelineColumn::kCommand), MakeCommandRow());
    text_ = new wxTextCtrl(this, kNodeText);
    text_->SetToolTip(ToWx(kEscapes));
    AddFormRow(rows, this, kTextLabel, text_);
    rows.AddSpacer(0);
    bytes_ = new wxStaticText(this, wxID_ANY, ToWx(kHowToType), wxDefaultPosition, wxDefaultSize,
                              wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
    rows.Add(bytes_, wxSizerFlags(1).Expand());
    AddFormRow(rows, this, kChecksumLabel, MakeChecksumRow());
}

wxSizer* CPlayerTimeAdd::MakeCommandRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    command_ = new wxTextCtrl(this, kNodeCommand);
    row->Add(command_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, FromDIP(8)));
    row->Add(new wxButton(this, kCommandByName, ButtonLabel(kByName, 'n')),
             wxSizerFlags().CentreVertical());
    return row;
}

wxSizer* CPlayerTimeAdd::MakeChecksumRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    wxArrayString names;
    for (const LocalText& name : kChecksumNames) names.Add(ToWx(name));
    checksum_ = new wxChoice(this, kNodeChecksum, wxDefaultPosition, wxDefaultSize, names);
    checksum_->SetSelection(0);
    row->Add(checksum_, wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(8)));
    append_ = new wxButton(this, kAppendChecksum, ButtonLabel(kAppend, 'A'));
    row->Add(append_, wxSizerFlags().CentreVertical());
    return row;
}

void CPlayerTimeAdd::BindEvents() {
    const std::initializer_list<wxControl*> dropDowns = {port_, checksum_};
    for (wxControl* dropDown : dropDowns) IgnoreWheel(*dropDown);
    const auto onEvent = [this](const auto& event, int id, auto action) {
        Bind(
            event,
            [action](wxCommandEvent& happened) {
                happened.Skip();
                action();
            },
            id);
    };
    onEvent(wxEVT_TEXT, kNodeCommand, [this] { CommandTyped(); });
    onEvent(wxEVT_TEXT, kNodeText, [this] { TextTyped(); });
    onEvent(wxEVT_CHOICE, kNodeChecksum, [this] { ShowBytes(kNoBytes); });
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { AppendChecksum(); }, kAppendChecksum);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { TakeCommandByName(); }, kCommandByName);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { Take(); }, wxID_OK);
    // Without an escape button the toolkit does nothing of that by itself.
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { EndModal(wxID_CANCEL); }, wxID_CANCEL);
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { EndModal(wxID_CANCEL); });
}

void CPlayerTimeAdd::ShowEntry(const NodeEntry& entry) {
    video_->Show({entry.player, entry.typeName, entry.videoName});
    const std::int64_t parts[] = {entry.time.hours, entry.time.minutes, entry.time.seconds,
                                  entry.time.milliseconds};
    for (std::size_t part = 0; part < time_.size(); ++part) time_[part]->ShowNumber(parts[part]);
    ShowPorts(entry.port);
    ip_->ShowAddress(entry.ip);
    peerPort_->ShowNumber(entry.peerPort);
    command_->ChangeValue(ToWx(entry.command));
    shownCommand_ = command_->GetValue();
    CommandTyped();
}

/// A port that there is not has an entry of its own, which goes as the first one does.
void CPlayerTimeAdd::ShowPorts(std::int32_t port) {
    wxArrayString names;
    for (std::int32_t each = 0; each < kTimelinePorts; ++each) {
        ports_.push_back(each);
        names.Add(ToWx(PortName(each)));
    }
    if (!IsTimelinePort(port)) {
        ports_.push_back(port);
        names.Add(kCautionMark + ToWx(PortName(port)) + wxString::Format(" (%d)", port));
        const TimeNode odd{0, "", "", 0, port};
        port_->SetToolTip(ToWx(CellCaution(odd, TimelineColumn::kPort).value_or("")));
    }
    port_->Set(names);
    ChoosePort(port);
}

void CPlayerTimeAdd::ChoosePort(std::int32_t port) {
    port_->SetSelection(static_cast<int>(std::ranges::find(ports_, port) - ports_.begin()));
}

/// A field may have no room for all of a very long command.
NodeEntry CPlayerTimeAdd::Entered() const {
    const wxString command = command_->GetValue();
    const VideoKey video = video_->Video();
    return {video.player,
            video.typeName,
            video.videoName,
            {time_[0]->Number(), time_[1]->Number(), time_[2]->Number(), time_[3]->Number()},
            ports_[static_cast<std::size_t>(port_->GetSelection())],
            ip_->Address(),
            static_cast<std::int32_t>(peerPort_->Number()),
            edited_ && command == shownCommand_ ? edited_->command : FromWx(command)};
}

void CPlayerTimeAdd::Take() {
    const NodeEntry entry = Entered();
    if (const auto refusal = RefusalOf(entry)) return prompts_.Warn(Localized(*refusal));
    node_ = NodeOf(entry, edited_ ? &*edited_ : nullptr);
    EndModal(wxID_OK);
}

std::optional<Bytes> CPlayerTimeAdd::CommandBytes() const {
    const auto command = NormalizedHexCommand(FromWx(command_->GetValue()));
    return command ? BytesOfHexCommand(*command) : std::nullopt;
}

void CPlayerTimeAdd::CommandTyped() {
    const auto bytes = CommandBytes();
    text_->ChangeValue(bytes ? ToWx(TypedTextOf(*bytes)) : wxString());
    ShowBytes(kNoBytes);
}

/// A text that cannot be read has no command: what was typed before is not to be taken for it.
void CPlayerTimeAdd::TextTyped() {
    const auto bytes = BytesOfTypedText(FromWx(text_->GetValue()));
    command_->ChangeValue(bytes ? ToWx(HexCommandOf(*bytes)) : wxString());
    ShowBytes(bytes ? kNoBytes : kBadEscape);
}

/// A projector's command brings the projector's address.
void CPlayerTimeAdd::TakeCommandByName() {
    const auto named = AskForNamedCommand(this, names_, prompts_);
    if (!named) return;
    command_->ChangeValue(ToWx(named->command));
    CommandTyped();
    if (!named->peer) return;
    ChoosePort(named->peer->port);
    ip_->ShowAddress(named->peer->ip);
    peerPort_->ShowNumber(named->peer->peerPort);
}

void CPlayerTimeAdd::AppendChecksum() {
    const auto bytes = CommandBytes();
    if (!bytes || bytes->empty()) return;
    const auto checksum = static_cast<Checksum>(checksum_->GetSelection());
    command_->ChangeValue(ToWx(HexCommandOf(WithChecksum(*bytes, checksum))));
    CommandTyped();
}

/// How many bytes the command has, or what is in the way of that.
void CPlayerTimeAdd::ShowBytes(const LocalText& trouble) {
    const auto bytes = CommandBytes();
    const bool hasBytes = bytes && !bytes->empty();
    const bool isEmpty = bytes && bytes->empty() && text_->IsEmpty();
    bytes_->SetLabelText(hasBytes ? ToWx(fmt::sprintf(Localized(kByteCount), bytes->size()))
                                  : ToWx(isEmpty ? kHowToType : trouble));
    append_->Enable(hasBytes && checksum_->GetSelection() > 0);
}

}  // namespace sontaro
