#include "timeline/named_command_dialog.h"

#include <fmt/printf.h>
#include <wx/button.h>
#include <wx/listctrl.h>
#include <wx/settings.h>

#include <algorithm>

#include "base/filter_text.h"
#include "timeline/timeline_texts.h"
#include "widgets/caption_button.h"
#include "widgets/common_texts.h"
#include "widgets/exchange_texts.h"
#include "widgets/filter_box.h"
#include "widgets/fonts.h"
#include "widgets/form_rows.h"
#include "widgets/json_file_texts.h"
#include "widgets/toolkit_quirks.h"

namespace sontaro {

namespace {

constexpr LocalText kTitle = {"按名称选择命令", "Commands by name"};
constexpr LocalText kFilterHint = {"名称、地址或命令", "Name, address or command"};
constexpr LocalText kOfPlayer = {"读取播放器", "Read from player"};
constexpr LocalText kOfFile = {"打开文件…", "Open file…"};
constexpr JsonFileTexts kFileTexts = {{"打开控制协议文件", "Open control protocol file"},
                                      {"控制协议文件(*.JSON)", "Control protocol file(*.JSON)"}};
constexpr int kLines = 16;

struct Column {
    LocalText caption;
    int characters;
    std::string (*text)(const NamedCommand& command);
};

std::string PeerText(const NamedCommand& command) {
    if (!command.peer) return {};
    return Localized(PortName(command.peer->port)) + ' ' + command.peer->ip + ':' +
           std::to_string(command.peer->peerPort);
}

constexpr Column kColumns[] = {
    {{"所属", "Belongs to"}, 26, [](const NamedCommand& command) { return command.group; }},
    {{"名称", "Name"}, 22, [](const NamedCommand& command) { return command.name; }},
    {{"发送到", "Goes to"}, 25, PeerText},
    {{"命令", "Command"}, 24, [](const NamedCommand& command) { return command.command; }},
};

/// In the order of `CommandNamesState`.
constexpr LocalText kStates[] = {
    {"", ""},
    {"正在读取播放器的控制协议…", "Asking the player for its control protocol…"},
    {"播放器的控制协议：%d 条命令。", "The player's control protocol: %d commands."},
    {"文件“%s”：%d 条命令。", "File \"%s\": %d commands."},
    {"未能读取播放器的控制协议：%s", "The player's control protocol has not been read: %s"},
    {"连接已断开，播放器没有应答。", "The connection has ended, the player has not answered."},
    {"播放器没有应答。请重试，或打开控制协议文件。",
     "The player does not answer. Try again, or open a control protocol file."},
    {"播放器不提供控制协议。请打开控制协议文件。",
     "The player does not give its control protocol. Open a file instead."},
    {"播放器发来的控制协议无法使用。",
     "The control protocol that the player has sent cannot be used."},
};

std::string StateText(const CommandNames& names) {
    const std::string& text = Localized(kStates[static_cast<std::size_t>(names.State())]);
    switch (names.State()) {
        case CommandNamesState::kOfPlayer: return fmt::sprintf(text, names.Commands().size());
        case CommandNamesState::kOfFile:
            return fmt::sprintf(text, names.FileName(), names.Commands().size());
        case CommandNamesState::kNotSent: return fmt::sprintf(text, TextOf(names.LastReason()));
        default: return text;
    }
}

bool Contains(const NamedCommand& command, const std::string& wanted) {
    return std::ranges::any_of(kColumns, [&](const Column& column) {
        return LowerCase(column.text(command)).find(wanted) != std::string::npos;
    });
}

/// Commands, one a row.
class CommandList : public wxListView {
   public:
    explicit CommandList(wxWindow* parent)
        : wxListView(parent, kNamedCommandList, wxDefaultPosition, wxDefaultSize,
                     wxLC_REPORT | wxLC_VIRTUAL | wxLC_SINGLE_SEL) {
        int width = wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this);
        for (const Column& column : kColumns) {
            const int own = column.characters * LetterWidth(*this);
            AppendColumn(ToWx(column.caption), wxLIST_FORMAT_LEFT, own);
            width += own;
        }
        SetMinSize(wxSize(width + FromDIP(8), kLines * LineHeight(*this)));
    }

    /// Chooses the first one of other commands than before.
    void ShowCommands(std::vector<NamedCommand> commands) {
        if (commands == commands_) return;
        commands_ = std::move(commands);
        SetItemCount(static_cast<long>(commands_.size()));
        if (!commands_.empty()) {
            Focus(0);
            Select(0);
        }
        Refresh();
    }

    [[nodiscard]] const NamedCommand* Chosen() const {
        const long row = GetFirstSelected();
        const bool isOne = row >= 0 && static_cast<std::size_t>(row) < commands_.size();
        return isOne ? &commands_[static_cast<std::size_t>(row)] : nullptr;
    }

   private:
    [[nodiscard]] wxString OnGetItemText(long row, long column) const override {
        const NamedCommand& command = commands_[static_cast<std::size_t>(row)];
        return OneLine(ToWx(kColumns[column].text(command)));
    }

    std::vector<NamedCommand> commands_;
};

class NamedCommandDialog : public KeyedDialog {
   public:
    NamedCommandDialog(wxWindow* parent, CommandNames& names, Prompts& prompts);
    ~NamedCommandDialog() override { names_.Listen({}); }

    [[nodiscard]] const std::optional<NamedCommand>& Taken() const { return taken_; }

   private:
    void LayOut();
    void BindEvents();
    void ShowNames();
    void Take();

    CommandNames& names_;
    Prompts& prompts_;
    std::optional<NamedCommand> taken_;
    FilterBox* filter_ = nullptr;
    CommandList* list_ = nullptr;
    wxStaticText* state_ = nullptr;
};

NamedCommandDialog::NamedCommandDialog(wxWindow* parent, CommandNames& names, Prompts& prompts)
    : KeyedDialog(parent, wxID_ANY, ToWx(kTitle), wxDefaultPosition, wxDefaultSize,
                  wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      names_(names),
      prompts_(prompts) {
    UseLanguageFont(*this);
    LayOut();
    BindEvents();
    ShowNames();
    CentreOnParent();
    filter_->SetFocus();
    names_.Listen([this] { ShowNames(); });
    if (names_.State() == CommandNamesState::kNone) CallAfter([this] { names_.AskPlayer(); });
}

void NamedCommandDialog::LayOut() {
    const int gap = FromDIP(10);
    const wxSizerFlags line = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap);
    auto* column = new wxBoxSizer(wxVERTICAL);
    auto* head = new wxBoxSizer(wxHORIZONTAL);
    filter_ = new FilterBox(this, kNamedCommandFilter);
    filter_->SetDescriptiveText(ToWx(kFilterHint));
    head->Add(filter_->WithCaption(), wxSizerFlags().CentreVertical());
    head->AddStretchSpacer();
    head->Add(new wxButton(this, kNamesOfPlayer, ButtonLabel(kOfPlayer, 'R')),
              wxSizerFlags().CentreVertical().Border(wxLEFT, gap));
    head->Add(new wxButton(this, kNamesOfFile, ButtonLabel(kOfFile, 'p')),
              wxSizerFlags().CentreVertical().Border(wxLEFT, gap));
    column->Add(head, line);
    list_ = new CommandList(this);
    column->Add(list_, wxSizerFlags(line).Proportion(1));
    state_ = new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                              wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
    column->Add(state_, line);
    column->Add(MakeOkCancelRow(this), wxSizerFlags().Expand().Border(wxALL, gap));
    SetSizerAndFit(column);
}

void NamedCommandDialog::BindEvents() {
    const auto onPress = [this](int id, auto action) {
        Bind(
            wxEVT_BUTTON, [action](wxCommandEvent&) { action(); }, id);
    };
    onPress(kNamesOfPlayer, [this] { names_.AskPlayer(); });
    onPress(kNamesOfFile, [this] {
        const auto question = JsonFileQuestion(FileQuestion::Purpose::kOpen, kFileTexts);
        if (const auto path = prompts_.ChooseFile(question)) names_.TakeFile(*path, prompts_);
    });
    onPress(wxID_OK, [this] { Take(); });
    filter_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { ShowNames(); });
    filter_->Bind(wxEVT_SEARCH, [this](wxCommandEvent&) { Take(); });
    filter_->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        event.Skip(event.GetKeyCode() != WXK_DOWN);
        if (!event.GetSkipped()) list_->SetFocus();
    });
    list_->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) { Take(); });
}

void NamedCommandDialog::ShowNames() {
    const std::string wanted = FilterForm(FromWx(filter_->GetValue()));
    std::vector<NamedCommand> shown = names_.Commands();
    std::erase_if(shown, [&](const NamedCommand& one) { return !Contains(one, wanted); });
    list_->ShowCommands(std::move(shown));
    const wxString state = ToWx(StateText(names_));
    state_->SetLabelText(state);
    state_->SetToolTip(TooltipText(state));
    FindWindow(wxID_OK)->Enable(list_->Chosen() != nullptr);
}

void NamedCommandDialog::Take() {
    if (list_->Chosen() == nullptr) return;
    taken_ = *list_->Chosen();
    EndModal(wxID_OK);
}

}  // namespace

std::optional<NamedCommand> AskForNamedCommand(wxWindow* parent, CommandNames& names,
                                               Prompts& prompts) {
    NamedCommandDialog dialog(parent, names, prompts);
    dialog.ShowModal();
    return dialog.Taken();
}

}  // namespace sontaro
