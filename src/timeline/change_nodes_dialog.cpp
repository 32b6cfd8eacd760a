#include "timeline/change_nodes_dialog.h"

#include <fmt/printf.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/textctrl.h>

#include "timeline/timeline_edits.h"
#include "timeline/timeline_texts.h"
#include "widgets/fonts.h"
#include "widgets/form_rows.h"
#include "widgets/ip_field.h"
#include "widgets/number_field.h"
#include "widgets/toolkit_quirks.h"

namespace sontaro {

namespace {

constexpr LocalText kTitle = {"更改勾选的命令", "Change in all ticked"};
constexpr LocalText kConcerned = {"将更改 %d 条勾选的命令，只更改打勾的项目。",
                                  "Commands to be changed: %d. Only what is ticked here changes."};
constexpr LocalText kTickField = {"请先勾选要更改的项目。", "Tick what is to be changed."};
constexpr LocalText kGone = {"勾选的命令已不在时间轴中，未作任何更改。",
                             "The ticked commands are no longer in the timeline. Nothing has been "
                             "changed."};

struct FieldCaption {
    TimelineColumn column;
    char key;
};
/// In the order of `CommonField`.
constexpr FieldCaption kCaptions[kCommonFields] = {
    {TimelineColumn::kPlayer, 'l'}, {TimelineColumn::kType, 'T'}, {TimelineColumn::kVideo, 'V'},
    {TimelineColumn::kPort, 'r'},   {TimelineColumn::kIp, 'I'},   {TimelineColumn::kPeerPort, 'e'},
    {TimelineColumn::kCommand, 'm'}};

class ChangeNodesDialog : public KeyedDialog {
   public:
    ChangeNodesDialog(wxWindow* parent, const TimelineDocument& document, const NodeIds& ids,
                      VideoOffer& videos, Prompts& prompts);

    void LayOut(std::size_t hidden);
    [[nodiscard]] const CommonValues& Values() const { return values_; }

   private:
    void MakeFields();
    void AddField(wxFlexGridSizer& form, CommonField field, wxWindow* control, bool grows);
    [[nodiscard]] CommonValues Entered() const;
    [[nodiscard]] bool IsTicked(CommonField field) const {
        return ticks_[static_cast<std::size_t>(field)]->IsChecked();
    }
    void Take();

    const TimelineDocument& document_;
    const NodeIds& ids_;
    Prompts& prompts_;
    CommonValues values_;
    VideoFields video_;
    std::array<wxCheckBox*, kCommonFields> ticks_{};
    wxChoice* port_ = nullptr;
    IpField* ip_ = nullptr;
    NumberField* peerPort_ = nullptr;
    wxTextCtrl* command_ = nullptr;
};

/// The window with the font that its fields take over.
wxWindow* WithFont(wxWindow& window) {
    UseLanguageFont(window);
    return &window;
}

ChangeNodesDialog::ChangeNodesDialog(wxWindow* parent, const TimelineDocument& document,
                                     const NodeIds& ids, VideoOffer& videos, Prompts& prompts)
    : KeyedDialog(parent, wxID_ANY, ToWx(kTitle), wxDefaultPosition, wxDefaultSize,
                  wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      document_(document),
      ids_(ids),
      prompts_(prompts),
      video_(WithFont(*this), kChangePlayer, videos, VideoFields::Names::kKept) {
    MakeFields();
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { Take(); }, wxID_OK);
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        const bool isEnter =
            event.GetKeyCode() == WXK_RETURN || event.GetKeyCode() == WXK_NUMPAD_ENTER;
        // A tick would take Enter for itself.
        if (isEnter && dynamic_cast<wxCheckBox*>(FindFocus()) != nullptr)
            Take();
        else
            event.Skip();
    });
}

/// They show what the first node has.
void ChangeNodesDialog::MakeFields() {
    const TimeNode first = document_.Find(ids_.front()).value_or(TimeNode());
    wxArrayString ports;
    for (const LocalText& name : kTimelinePortNames) ports.Add(ToWx(name));
    port_ = new wxChoice(this, kChangePort, wxDefaultPosition, wxDefaultSize, ports);
    IgnoreWheel(*port_);
    ip_ = new IpField(this, kChangeIp);
    peerPort_ = new NumberField(this, kChangePeerPort, kLastPeerPort, 8);
    command_ = new wxTextCtrl(this, kChangeCommand);
    video_.Show({first.player, first.typeName, first.videoName});
    port_->SetSelection(IsTimelinePort(first.port) ? first.port : 0);
    ip_->ShowAddress(first.ip);
    peerPort_->ShowNumber(first.peerPort);
    command_->ChangeValue(ToWx(first.command));
}

void ChangeNodesDialog::LayOut(std::size_t hidden) {
    const int gap = FromDIP(10);
    std::string concerned = fmt::sprintf(Localized(kConcerned), ids_.size());
    if (hidden > 0) concerned += '\n' + fmt::sprintf(Localized(kSomeHidden), hidden);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(new wxStaticText(this, wxID_ANY, ToWx(concerned)),
                wxSizerFlags().Border(wxLEFT | wxRIGHT | wxTOP, gap));
    wxFlexGridSizer* form = MakeForm(this);
    AddField(*form, CommonField::kPlayer, video_.Player(), true);
    AddField(*form, CommonField::kType, video_.Type(), true);
    AddField(*form, CommonField::kVideo, video_.Title(), true);
    AddField(*form, CommonField::kPort, port_, true);
    AddField(*form, CommonField::kIp, ip_, false);
    AddField(*form, CommonField::kPeerPort, peerPort_, false);
    AddField(*form, CommonField::kCommand, command_, true);
    video_.Listen(
        [this](VideoPart part) { ticks_[static_cast<std::size_t>(part)]->SetValue(true); });
    column->Add(form, wxSizerFlags(1).Expand().Border(wxALL, gap));
    column->Add(MakeOkCancelRow(this),
                wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, gap));
    SetSizerAndFit(column);
    CentreOnParent();
    ticks_.front()->SetFocus();
}

/// What the user enters is to be changed, and is ticked by that.
void ChangeNodesDialog::AddField(wxFlexGridSizer& form, CommonField field, wxWindow* control,
                                 bool grows) {
    const auto place = static_cast<std::size_t>(field);
    const auto& [caption, key] = kCaptions[place];
    const LocalText& text = kTimelineHeaders[static_cast<std::size_t>(caption)];
    auto* tick =
        new wxCheckBox(this, kChangeTick + static_cast<int>(place), ButtonLabel(text, key));
    tick->MoveBeforeInTabOrder(control);
    ticks_[place] = tick;
    form.Add(tick, wxSizerFlags().CentreVertical());
    form.Add(control, grows ? wxSizerFlags(1).Expand() : wxSizerFlags().CentreVertical());
    const auto onEntry = [tick](wxCommandEvent& event) {
        event.Skip();
        tick->SetValue(true);
    };
    if (field <= CommonField::kVideo) return;  // these tell more exactly
    control->Bind(wxEVT_CHOICE, onEntry);
    control->Bind(wxEVT_TEXT, onEntry);
}

CommonValues ChangeNodesDialog::Entered() const {
    CommonValues values;
    const VideoKey video = video_.Video();
    if (IsTicked(CommonField::kPlayer)) values.player = video.player;
    if (IsTicked(CommonField::kType)) values.typeName = video.typeName;
    if (IsTicked(CommonField::kVideo)) values.videoName = video.videoName;
    if (IsTicked(CommonField::kPort)) values.port = port_->GetSelection();
    if (IsTicked(CommonField::kIp)) values.ip = ip_->Address();
    if (IsTicked(CommonField::kPeerPort))
        values.peerPort = static_cast<std::int32_t>(peerPort_->Number());
    if (IsTicked(CommonField::kCommand)) values.command = FromWx(command_->GetValue());
    return values;
}

void ChangeNodesDialog::Take() {
    if (std::ranges::none_of(ticks_, &wxCheckBox::IsChecked))
        return prompts_.Warn(Localized(kTickField));
    values_ = Entered();
    if (const auto refusal = RefusalOf(values_, document_, ids_))
        return prompts_.Warn(Localized(*refusal));
    EndModal(wxID_OK);
}

}  // namespace

/// The nodes may be gone when the dialog is left, since the player may answer meanwhile.
bool AskAndChangeNodes(wxWindow* parent, TimelineDocument& document, const NodeIds& ids,
                       std::size_t hidden, VideoOffer& videos, Prompts& prompts) {
    ChangeNodesDialog dialog(parent, document, ids, videos, prompts);
    dialog.LayOut(hidden);
    if (dialog.ShowModal() != wxID_OK) return false;
    const bool isThere = !document.Existing(ids).empty();
    if (!isThere) prompts.Warn(Localized(kGone));
    ChangeNodes(document, ids, dialog.Values());
    return isThere;
}

}  // namespace sontaro
