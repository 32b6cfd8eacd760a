#include "batchsend/categories_dialog.h"

#include <fmt/printf.h>
#include <wx/propgrid/propgrid.h>

#include "batchsend/set_page_ids.h"
#include "batchsend/set_page_text.h"
#include "widgets/common_texts.h"
#include "widgets/filter_box.h"
#include "widgets/fonts.h"
#include "widgets/form_rows.h"
#include "widgets/settings_grid.h"
#include "widgets/toolkit_quirks.h"

namespace sontaro {

namespace {

constexpr int kCharacters = 70;
constexpr int kLines = 24;

constexpr LocalText kTitle = {"视频类别", "Categories"};
constexpr LocalText kHint = {"编号或名称", "Number or name"};
constexpr LocalText kHeading = {"类别：播放器中的名称，以及替换它的名称",
                                "Category: the name that players have, and the one in its place"};
constexpr LocalText kExplanation = {"留空则保留播放器中的名称。",
                                    "Left empty, players keep the name that they have."};
constexpr LocalText kNobody = {"还没有播放器告知其类别名称。",
                               "No player has told the names of its categories yet."};
constexpr LocalText kDiffer = {"各播放器的名称不同：", "Players call it differently: "};
constexpr LocalText kOfPlayers = {"播放器：", "Players: "};
constexpr LocalText kReplaced = {"留空时，一旦写入类别名称，所有播放器都采用 %s 的名称。",
                                 "Left empty, all players get the name of %s as soon as names are "
                                 "written."};
constexpr LocalText kProvisional = {
    "得知播放器的类别名称后，其视频会归入同名的类别，没有同名类别时归入空闲的类别。",
    "Once players have told their names, its videos go to the category of this name, or else to "
    "one without a name."};

class CategoriesDialog : public KeyedDialog {
   public:
    CategoriesDialog(wxWindow* parent, SetPageRun& run, Prompts& prompts);

   private:
    void LayOut();
    [[nodiscard]] SettingsRows Rows() const;
    [[nodiscard]] std::string HelpFor(std::size_t slot) const;
    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit);
    void Take();

    SetPageRun& run_;
    const std::array<CategoryAlias, kVideoCategories> before_;
    std::array<CategoryAlias, kVideoCategories> aliases_ = before_;
    SettingsGrid* grid_ = nullptr;
    FilterBox* filter_ = nullptr;
};

CategoriesDialog::CategoriesDialog(wxWindow* parent, SetPageRun& run, Prompts& prompts)
    : KeyedDialog(parent, wxID_ANY, ToWx(kTitle), wxDefaultPosition, wxDefaultSize,
                  wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      run_(run),
      before_(run.Set().aliases) {
    UseLanguageFont(*this);
    filter_ = new FilterBox(this, kSetAliasesFilter);
    filter_->SetDescriptiveText(ToWx(kHint));
    grid_ = new SettingsGrid(this, kSetAliases, false, prompts,
                             [this](const SettingsEdit& edit) { return Edit(edit); });
    LayOut();
    grid_->Fill(Rows());
    filter_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { grid_->Filter(filter_->GetValue()); });
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { Take(); }, wxID_OK);
    CentreOnParent();
    grid_->Properties().SetFocus();
}

void CategoriesDialog::LayOut() {
    const int gap = FromDIP(10);
    const wxSizerFlags line = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(filter_->WithCaption(), line);
    grid_->SetMinSize(wxSize(kCharacters * LetterWidth(*this), kLines * GetCharHeight()));
    column->Add(grid_, wxSizerFlags(line).Proportion(1));
    column->Add(MakeOkCancelRow(this), wxSizerFlags().Expand().Border(wxALL, gap));
    SetSizerAndFit(column);
}

SettingsRows CategoriesDialog::Rows() const {
    const CategoryNames* const names = run_.Heard().Of(run_.Shown());
    SettingsGroup group{"Categories", Localized(kHeading), {}};
    for (std::size_t slot = 0; slot < kVideoCategories; ++slot) {
        const std::string name = names ? names->at(slot) : "";
        const bool differs = run_.Heard().Differ(slot);
        const std::string number = std::to_string(slot + 1);
        std::string caption = (differs ? kCautionMark : "") + number;
        if (!name.empty()) caption.append("  ").append(name);
        group.rows.push_back(
            {"Category/" + number, RowKind::kText, caption, aliases_.at(slot).name, HelpFor(slot)});
    }
    SettingsRows rows;
    rows.push_back(std::move(group));
    return rows;
}

std::string CategoriesDialog::HelpFor(std::size_t slot) const {
    const HeardNames& heard = run_.Heard();
    const std::string told = heard.Told(slot);
    const bool isOpen = aliases_.at(slot).isProvisional;
    if (told.empty())
        return Localized(kNobody) + '\n' + Localized(isOpen ? kProvisional : kExplanation);
    if (!heard.Differ(slot)) return Localized(kOfPlayers) + told + '\n' + Localized(kExplanation);
    return Localized(kDiffer) + told + '\n' +
           fmt::sprintf(Localized(kReplaced), heard.SourceOf(run_.Shown()));
}

EditAnswer CategoriesDialog::Edit(const SettingsEdit& edit) {
    const std::size_t slot = std::stoul(edit.key.substr(edit.key.find('/') + 1)) - 1;
    CategoryAlias& alias = aliases_.at(slot);
    alias = {edit.text, alias.isProvisional && !edit.text.empty()};
    return {EditAnswer::Outcome::kAccepted, edit.text};
}

/// Folders that are found meanwhile give names to other ones.
void CategoriesDialog::Take() {
    if (!grid_->Commit()) return;
    auto aliases = run_.Set().aliases;
    for (std::size_t slot = 0; slot < kVideoCategories; ++slot)
        if (aliases_.at(slot) != before_.at(slot)) aliases.at(slot) = aliases_.at(slot);
    run_.SetAliases(aliases);
    EndModal(wxID_OK);
}

}  // namespace

void EditCategories(wxWindow* parent, SetPageRun& run, Prompts& prompts) {
    run.WhileNamesStay([&] { CategoriesDialog(parent, run, prompts).ShowModal(); });
}

}  // namespace sontaro
