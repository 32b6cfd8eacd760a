#include "timeline/merge_dialog.h"

#include <fmt/printf.h>
#include <wx/choice.h>

#include "base/file.h"
#include "base/path_text.h"
#include "settings/own_file.h"
#include "settings/settings_files.h"
#include "timeline/merge_table.h"
#include "timeline/timeline_files.h"
#include "timeline/timeline_texts.h"
#include "widgets/fonts.h"
#include "widgets/form_rows.h"
#include "widgets/table.h"
#include "widgets/toolkit_quirks.h"

namespace sontaro {

namespace {

constexpr LocalText kTitle = {"从“%s”合并", "Merge from \"%s\""};
constexpr LocalText kHint = {"所选各行的命令合并到：", "The commands of the chosen rows go to:"};
constexpr LocalText kCounts = {"将从 %d 个视频添加 %d 条命令。",
                               "Commands to be added: %2$d (videos: %1$d)."};
constexpr LocalText kTickVideos = {"请先勾选要合并的视频。", "Tick the videos to be merged first."};
constexpr LocalText kNothingThere = {"其中没有命令。", "it has no commands."};
constexpr int kTableCharacters = 112;
constexpr int kLines = 14;

class MergeDialog : public KeyedDialog {
   public:
    MergeDialog(wxWindow* parent, const std::string& fileName, MergeTable& rows, VideoOffer& videos,
                Prompts& prompts);

   private:
    void LayOut();
    void BindEvents();
    void ShowChosen();
    void ShowCounts();
    void Map(VideoPart part);
    void Take();

    MergeTable& rows_;
    Prompts& prompts_;
    Table* table_ = nullptr;
    std::optional<VideoFields> here_;  // behind the table, in the order of the keyboard
    wxStaticText* counts_ = nullptr;
};

MergeDialog::MergeDialog(wxWindow* parent, const std::string& fileName, MergeTable& rows,
                         VideoOffer& videos, Prompts& prompts)
    : KeyedDialog(parent, wxID_ANY, ToWx(fmt::sprintf(Localized(kTitle), fileName)),
                  wxDefaultPosition, wxDefaultSize, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      rows_(rows),
      prompts_(prompts) {
    UseLanguageFont(*this);
    TableActions actions;
    actions.edit = [this](std::size_t) { here_->Player()->SetFocus(); };
    actions.choose = [this] { ShowChosen(); };
    actions.tick = [this] { ShowCounts(); };
    table_ = new Table(this, kMergeGrid, rows_, actions, prompts_);
    table_->SetMinSize(wxSize(kTableCharacters * LetterWidth(*this), kLines * GetCharHeight()));
    here_.emplace(this, kMergePlayer, videos, VideoFields::Names::kKept);
    LayOut();
    BindEvents();
    ShowChosen();
    ShowCounts();
    CentreOnParent();
    table_->Grid().GetGridWindow()->SetFocus();
}

void MergeDialog::LayOut() {
    const int gap = FromDIP(10);
    const wxSizerFlags line = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(table_, wxSizerFlags(line).Proportion(1));
    column->Add(new wxStaticText(this, wxID_ANY, ToWx(kHint)), line);
    wxFlexGridSizer* form = MakeForm(this);
    AddFormRow(*form, this, kTimelineHeaders[0], here_->Player());
    AddFormRow(*form, this, kTimelineHeaders[1], here_->Type());
    AddFormRow(*form, this, kTimelineHeaders[2], here_->Title());
    column->Add(form, line);
    counts_ =
        new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE);
    column->Add(counts_, line);
    column->Add(MakeOkCancelRow(this), wxSizerFlags().Expand().Border(wxALL, gap));
    SetSizerAndFit(column);
}

void MergeDialog::BindEvents() {
    here_->Listen([this](VideoPart part) { Map(part); });
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { Take(); }, wxID_OK);
}

void MergeDialog::ShowChosen() {
    if (const auto row = table_->ChosenRow()) here_->Show(rows_.VideoFor(*row));
}

/// Gives all chosen rows what has been entered in one field.
void MergeDialog::Map(VideoPart part) {
    const VideoKey entered = here_->Video();
    for (const std::size_t row : table_->ChosenRows()) {
        VideoKey& video = rows_.VideoFor(row);
        if (part == VideoPart::kPlayer) video.player = entered.player;
        if (part == VideoPart::kType) video.typeName = entered.typeName;
        if (part == VideoPart::kVideo) video.videoName = entered.videoName;
        table_->RowChanged(row);
    }
}

void MergeDialog::ShowCounts() {
    std::size_t nodes = 0;
    const std::vector<MergedGroup> ticked = rows_.Ticked();
    for (const MergedGroup& merged : ticked) nodes += merged.group->nodes.size();
    counts_->SetLabelText(ToWx(fmt::sprintf(Localized(kCounts), ticked.size(), nodes)));
}

void MergeDialog::Take() {
    if (rows_.Ticked().empty()) return prompts_.Warn(Localized(kTickVideos));
    EndModal(wxID_OK);
}

}  // namespace

NodeIds MergeFromFile(wxWindow* parent, TimelineDocument& document, VideoOffer& videos,
                      Prompts& prompts) {
    const auto path = AskForTimelineToOpen(prompts);
    if (!path) return {};
    const auto refuse = [&](const std::string& why) {
        TellFileRefused(*path, why, prompts);
        return NodeIds();
    };
    const Result<std::string> text = ReadFile(*path);
    if (!text) return refuse(Localized(kFileUnreadable));
    const Result<TimelineContent> content = document.Read(*text, TimelineSource::kFile);
    if (!content) return refuse(content.reason());
    if (content->order.empty()) return refuse(Localized(kNothingThere));
    MergeTable rows(content->order);
    MergeDialog dialog(parent, TextOfPath(path->filename()), rows, videos, prompts);
    if (dialog.ShowModal() != wxID_OK) return {};
    return MergeGroups(document, rows.Ticked());
}

}  // namespace sontaro
