#include "widgets/earlier_dialog.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "venue/earlier_table.h"
#include "widgets/fonts.h"
#include "widgets/form_rows.h"
#include "widgets/table.h"
#include "widgets/toolkit_quirks.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr LocalText kTitle = {"播放器之前的设置", "What the player held earlier"};
constexpr LocalText kOpen = {"打开", "Open"};
constexpr LocalText kLooking = {"正在读取…", "Reading…"};
constexpr LocalText kNoneYet = {
    "还没有历史设置。每次发送前，读到的播放器设置会保存在这里。",
    "There is nothing here yet. Before settings are sent to a player, those that it has held are "
    "kept here."};
constexpr LocalText kChanges = {"所选一份之后的全部更改：",
                                "All that was changed after the chosen one:"};
constexpr int kCharacters = 116;
constexpr int kLines = 11;

class EarlierDialog : public KeyedDialog {
   public:
    EarlierDialog(wxWindow* parent, const UiServices& services, const EarlierQuestion& question);
    ~EarlierDialog() override { DestroyChildren(); }  // they show the tables

    [[nodiscard]] std::string ChosenText() const;

   private:
    [[nodiscard]] Table* MakeTable(int id, TableModel& model, TableActions actions);
    void LayOut();
    void Take(std::vector<EarlierState> states);
    void ShowChosen();
    void Take();

    Prompts& prompts_;
    EarlierTable states_;
    LaterChangesTable changes_;
    Table* stateTable_ = nullptr;
    Table* changeTable_ = nullptr;
    wxStaticText* beside_ = nullptr;
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>();
};

EarlierDialog::EarlierDialog(wxWindow* parent, const UiServices& services,
                             const EarlierQuestion& question)
    : KeyedDialog(parent, wxID_ANY, ToWx(kTitle), wxDefaultPosition, wxDefaultSize,
                  wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      prompts_(services.Messages()) {
    UseLanguageFont(*this);
    LayOut();
    ShowChosen();
    CentreOnParent();
    const std::weak_ptr<const bool> alive = alive_;
    services.documents.List(OwnerOfDocuments(question.player), question.block, question.present,
                            [this, alive](std::vector<EarlierState> states) {
                                if (!alive.expired()) Take(std::move(states));
                            });
    stateTable_->Grid().GetGridWindow()->SetFocus();
}

Table* EarlierDialog::MakeTable(int id, TableModel& model, TableActions actions) {
    auto* table = new Table(this, id, model, std::move(actions), prompts_);
    table->SetMinSize(wxSize(kCharacters * LetterWidth(*this), kLines * GetCharHeight()));
    return table;
}

void EarlierDialog::LayOut() {
    const int gap = FromDIP(10);
    const wxSizerFlags line = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap);
    auto* column = new wxBoxSizer(wxVERTICAL);
    TableActions actions;
    actions.edit = [this](std::size_t) { Take(); };
    actions.choose = [this] { ShowChosen(); };
    stateTable_ = MakeTable(kEarlierGrid, states_, std::move(actions));
    stateTable_->SetEmptyText(Localized(kLooking));
    column->Add(stateTable_, wxSizerFlags(line).Proportion(2));
    column->Add(new wxStaticText(this, wxID_ANY, ToWx(kChanges)), line);
    changeTable_ = MakeTable(kLaterChangesGrid, changes_, {});
    column->Add(changeTable_, wxSizerFlags(line).Proportion(3));
    beside_ = new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                               wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
    column->Add(beside_, line);
    column->Add(MakeOkCancelRow(this), wxSizerFlags().Expand().Border(wxALL, gap));
    FindWindow(wxID_OK)->SetLabel(ButtonLabel(kOpen, 'O'));
    SetSizerAndFit(column);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { Take(); }, wxID_OK);
}

void EarlierDialog::Take(std::vector<EarlierState> states) {
    states_.Show(std::move(states));
    stateTable_->SetEmptyText(Localized(kNoneYet));
    stateTable_->RowsChanged();
    if (states_.RowCount() > 0) stateTable_->Choose(0);
    ShowChosen();
}

void EarlierDialog::ShowChosen() {
    const auto row = stateTable_->ChosenRow();
    changes_.Show(row ? states_.StateAt(*row).changes : std::nullopt);
    const std::string beside = row ? TextBesideChanges(states_.StateAt(*row)) : "";
    const bool isListed = changes_.RowCount() > 0;
    changeTable_->SetEmptyText(isListed ? "" : beside);
    beside_->SetLabelText(isListed ? ToWx(beside) : wxString());
    changeTable_->RowsChanged();
    FindWindow(wxID_OK)->Enable(row && states_.StateAt(*row).trouble.empty());
}

void EarlierDialog::Take() {
    if (FindWindow(wxID_OK)->IsEnabled()) EndModal(wxID_OK);
}

std::string EarlierDialog::ChosenText() const {
    return states_.StateAt(stateTable_->ChosenRow().value_or(0)).text;
}

}  // namespace

std::optional<std::string> ChooseEarlier(wxWindow* parent, const UiServices& services,
                                         const EarlierQuestion& question) {
    EarlierDialog dialog(parent, services, question);
    if (dialog.ShowModal() != wxID_OK) return std::nullopt;
    return dialog.ChosenText();
}

}  // namespace sontaro
