#include "timeline/copy_video_dialog.h"

#include <fmt/printf.h>
#include <wx/choice.h>
#include <wx/odcombo.h>

#include "timeline/timeline_edits.h"
#include "timeline/timeline_texts.h"
#include "widgets/caption_button.h"
#include "widgets/fonts.h"
#include "widgets/form_rows.h"
#include "widgets/toolkit_quirks.h"

namespace sontaro {

namespace {

constexpr LocalText kTitle = {"复制视频的命令", "Copy a video's commands"};
constexpr LocalText kFrom = {"从", "From"};
constexpr LocalText kToPlayer = {"到播放器", "To player"};
constexpr LocalText kToType = {"到类别", "To type"};
constexpr LocalText kToVideo = {"到视频", "To video"};
constexpr LocalText kCopies = {"将复制 %d 条命令。", "Commands to be copied: %d."};
constexpr LocalText kStay = {"目标视频已有 %d 条命令，会保留。",
                             "The other video has %d already, which stay."};
constexpr LocalText kSameVideo = {"这些命令已属于该视频，请选择另一个视频。",
                                  "The commands are this video's already. Choose another one."};
constexpr LocalText kGone = {"该视频的命令已不在时间轴中，请选择另一个视频。",
                             "The commands of this video are no longer in the timeline. Choose "
                             "another one."};

/// The toolkit's own drop-downs take half a second for 2000 names, and the square of that for more;
/// this one measures only those that it shows.
class SourceChoice : public wxOwnerDrawnComboBox {
   public:
    SourceChoice(wxWindow* parent, int id, const wxArrayString& names)
        : wxOwnerDrawnComboBox(parent, id, "", wxDefaultPosition, wxDefaultSize, names,
                               wxCB_READONLY) {
        // As wide as there is room, however long the names are. The wheel chooses nothing.
        SetMinSize(wxSize(FromDIP(100), GetBestSize().y));
        Bind(wxEVT_MOUSEWHEEL, [](wxMouseEvent&) {});
    }

   private:
    [[nodiscard]] wxCoord OnMeasureItemWidth(std::size_t) const override { return FromDIP(100); }
};

class CopyVideoDialog : public KeyedDialog {
   public:
    CopyVideoDialog(wxWindow* parent, TimelineDocument& document, const VideoKey& source,
                    VideoOffer& videos, Prompts& prompts);

    [[nodiscard]] const NodeIds& Copies() const { return copies_; }

   private:
    void OfferSources(const VideoKey& source);
    void LayOut();
    void BindEvents();
    [[nodiscard]] const VideoKey& Source() const {
        return sources_[static_cast<std::size_t>(source_->GetSelection())];
    }
    void SourceChosen();
    void ShowCounts();
    void Copy();

    TimelineDocument& document_;
    Prompts& prompts_;
    std::vector<VideoKey> sources_;  // as they are offered
    VideoKey shownSource_;
    NodeIds copies_;
    SourceChoice* source_ = nullptr;
    std::optional<VideoFields> target_;  // behind the source, in the order of the keyboard
    wxStaticText* counts_ = nullptr;
};

CopyVideoDialog::CopyVideoDialog(wxWindow* parent, TimelineDocument& document,
                                 const VideoKey& source, VideoOffer& videos, Prompts& prompts)
    : KeyedDialog(parent, wxID_ANY, ToWx(kTitle), wxDefaultPosition, wxDefaultSize,
                  wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      document_(document),
      prompts_(prompts),
      shownSource_(source) {
    UseLanguageFont(*this);
    OfferSources(source);
    target_.emplace(this, kCopyPlayer, videos, VideoFields::Names::kKept);
    target_->Show(source);
    LayOut();
    BindEvents();
    ShowCounts();
    CentreOnParent();
    target_->Player()->SetFocus();
}

void CopyVideoDialog::OfferSources(const VideoKey& source) {
    wxArrayString names;
    int chosen = 0;
    for (const SharedGroup& group : document_.Order()) {
        sources_.push_back(VideoOf(*group));
        if (sources_.back() == source) chosen = static_cast<int>(names.size());
        names.Add(OneLine(ToWx(VideoName(sources_.back()))));
    }
    source_ = new SourceChoice(this, kCopySource, names);
    source_->SetSelection(chosen);
}

void CopyVideoDialog::LayOut() {
    const int gap = FromDIP(10);
    auto* column = new wxBoxSizer(wxVERTICAL);
    wxFlexGridSizer* form = MakeForm(this);
    AddFormRow(*form, this, kFrom, source_);
    AddFormRow(*form, this, kToPlayer, target_->Player());
    AddFormRow(*form, this, kToType, target_->Type());
    AddFormRow(*form, this, kToVideo, target_->Title());
    column->Add(form, wxSizerFlags(1).Expand().Border(wxALL, gap));
    counts_ = new wxStaticText(this, wxID_ANY, "\n", wxDefaultPosition, wxDefaultSize,
                               wxST_NO_AUTORESIZE);
    column->Add(counts_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, gap));
    column->Add(MakeOkCancelRow(this), wxSizerFlags().Expand().Border(wxALL, gap));
    SetSizerAndFit(column);
}

void CopyVideoDialog::BindEvents() {
    source_->Bind(wxEVT_COMBOBOX, [this](wxCommandEvent&) { SourceChosen(); });
    target_->Listen([this](VideoPart) { ShowCounts(); });
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { Copy(); }, wxID_OK);
}

/// A target that nobody has entered yet goes along.
void CopyVideoDialog::SourceChosen() {
    if (target_->Video() == shownSource_) target_->Show(Source());
    shownSource_ = Source();
    ShowCounts();
}

void CopyVideoDialog::ShowCounts() {
    const VideoKey target = target_->Video();
    const auto count = [this](const VideoKey& video) {
        const NodeGroup* group = FindGroup(document_.Order(), video);
        return group ? group->nodes.size() : 0;
    };
    std::string told = fmt::sprintf(Localized(kCopies), count(Source()));
    const std::size_t there = target == Source() ? 0 : count(target);
    if (there > 0) told += '\n' + fmt::sprintf(Localized(kStay), there);
    counts_->SetLabelText(ToWx(told));
}

/// The source may be gone by now, since the player may answer while the dialog is open.
void CopyVideoDialog::Copy() {
    const VideoKey target = target_->Video();
    if (target == Source()) return prompts_.Warn(Localized(kSameVideo));
    copies_ = CopyVideo(document_, Source(), target);
    if (copies_.empty()) return prompts_.Warn(Localized(kGone));
    EndModal(wxID_OK);
}

}  // namespace

NodeIds AskAndCopyVideo(wxWindow* parent, TimelineDocument& document, const VideoKey& source,
                        VideoOffer& videos, Prompts& prompts) {
    CopyVideoDialog dialog(parent, document, source, videos, prompts);
    dialog.ShowModal();
    return dialog.Copies();
}

}  // namespace sontaro
