#include "timeline/checks_panel.h"

#include <wx/choice.h>
#include <wx/listctrl.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/tglbtn.h>

#include <algorithm>
#include <array>
#include <set>
#include <tuple>
#include <utility>

#include "base/count_text.h"
#include "widgets/caption_button.h"
#include "widgets/common_texts.h"
#include "widgets/fonts.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr LocalText kNothing = {"未发现问题", "Nothing found"};
constexpr CountText kFindings = {"发现 %d 个问题", "%d finding", "%d findings"};
constexpr LocalText kTip = {"演出检查：列出可能出错的命令",
                            "Checks of the show: what may go wrong"};
constexpr LocalText kBaudRate = {"串口波特率", "Baud rate"};
constexpr LocalText kBaudRateTip = {
    "用于判断串口命令之间的间隔是否足够",
    "By it, the checks know how long commands take on serial ports"};
constexpr std::array kBaudRates = {1200, 2400, 4800, 9600, 19'200, 38'400, 57'600, 115'200};
constexpr std::chrono::milliseconds kRest{400};  // before anything is looked for
constexpr int kRows = 4;
constexpr int kMostCounted = 9999;

/// The videos of a list, found by their names.
class VideoIndex {
   public:
    explicit VideoIndex(const VideoList& list) {
        for (std::size_t screen = 0; screen < list.screens.size(); ++screen)
            for (const ListedCategory& type : list.screens[screen]) Add(screen, type);
    }
    [[nodiscard]] KnownVideos Known() const {
        return {[this](std::int64_t player, const std::string& type) {
                    return types_.contains({player, type});
                },
                [this](std::int64_t player, const std::string& type, const std::string& video) {
                    return videos_.contains({player, type, video});
                }};
    }

   private:
    void Add(std::size_t screen, const ListedCategory& type) {
        const auto player = static_cast<std::int64_t>(screen);
        types_.emplace(player, type.name);
        for (const ListedVideo& video : type.videos) videos_.emplace(player, type.name, video.name);
    }

    std::set<std::tuple<std::int64_t, std::string>> types_;
    std::set<std::tuple<std::int64_t, std::string, std::string>> videos_;
};

wxString TextOf(std::size_t count) {
    if (count == 0) return ToWx(kNothing);
    return ToWx(kCautionMark + Counted(kFindings, count));
}

}  // namespace

class ChecksPanel::List : public wxListView {
   public:
    List(wxWindow* parent, int id, const std::vector<ShowFinding>& findings,
         const TimelineDocument& document)
        : wxListView(parent, id, wxDefaultPosition, wxDefaultSize,
                     wxLC_REPORT | wxLC_VIRTUAL | wxLC_NO_HEADER | wxLC_SINGLE_SEL),
          findings_(findings),
          document_(document) {
        AppendColumn("");
        Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
            event.Skip();
            SetColumnWidth(0, GetClientSize().x - FromDIP(2));
        });
    }

   private:
    [[nodiscard]] wxString OnGetItemText(long row, long) const override {
        const auto place = static_cast<std::size_t>(row);
        return place < findings_.size() ? OneLine(ToWx(Told(findings_[place], document_))) : "";
    }

    const std::vector<ShowFinding>& findings_;
    const TimelineDocument& document_;
};

ChecksPanel::ChecksPanel(wxWindow* parent, int firstId, const TimelineDocument& document,
                         const std::optional<VideoList>& videos, Timers& timers, Actions actions)
    : wxPanel(parent),
      document_(document),
      videos_(videos),
      actions_(std::move(actions)),
      timer_(timers) {
    button_ = new wxToggleButton(parent, firstId, TextOf(kMostCounted));
    button_->MoveBeforeInTabOrder(this);
    button_->SetMinSize(button_->GetBestSize());
    button_->SetToolTip(ToWx(kTip));
    button_->Bind(wxEVT_TOGGLEBUTTON, [this](wxCommandEvent& event) { Open(event.IsChecked()); });
    list_ = new List(this, firstId + 1, findings_, document_);
    list_->SetMinSize(wxSize(30 * LetterWidth(*this), kRows * (LineHeight(*this) + FromDIP(6))));
    list_->Bind(wxEVT_LIST_ITEM_SELECTED, [this](wxListEvent&) {
        if (const ShowFinding* finding = Chosen()) actions_.choose(finding->node);
    });
    list_->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) {
        if (const ShowFinding* finding = Chosen()) actions_.goTo(finding->node);
    });
    auto* caption = new wxStaticText(this, wxID_ANY, ToWx(kBaudRate));
    baudRate_ = new wxChoice(this, firstId + 2);
    for (const int rate : kBaudRates) baudRate_->Append(std::to_string(rate));
    baudRate_->SetStringSelection(std::to_string(kUsualBaudRate));
    baudRate_->SetToolTip(ToWx(kBaudRateTip));
    baudRate_->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { Check(); });
    auto* speed = new wxBoxSizer(wxVERTICAL);
    speed->Add(caption, wxSizerFlags().Border(wxBOTTOM, FromDIP(4)));
    speed->Add(baudRate_, wxSizerFlags().Expand());
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(list_, wxSizerFlags(1).Expand().Border(wxRIGHT, FromDIP(10)));
    row->Add(speed);
    SetSizer(row);
    Hide();
    ShowCount();
}

void ChecksPanel::CheckSoon() {
    timer_.Start(kRest, [this] { Check(); });
}

/// What was chosen stays so as long as its node is the same.
void ChecksPanel::Check() {
    timer_.Stop();
    const ShowFinding* chosen = Chosen();
    const NodeId node = chosen != nullptr ? chosen->node : 0;
    const int baudRate = kBaudRates[static_cast<std::size_t>(baudRate_->GetSelection())];
    if (videos_) {
        const VideoIndex index(*videos_);
        const KnownVideos known = index.Known();
        findings_ = CheckShow(document_.Order(), baudRate, &known);
    } else {
        findings_ = CheckShow(document_.Order(), baudRate);
    }
    list_->SetItemCount(static_cast<long>(findings_.size()));
    NodeChosen(node);
    list_->Refresh();
    ShowCount();
}

void ChecksPanel::ShowCount() {
    const wxString text = TextOf(findings_.size());
    if (button_->GetLabelText() != text) button_->SetLabelText(text);
}

void ChecksPanel::Open(bool open) {
    Show(open);
    actions_.opened();
}

const ShowFinding* ChecksPanel::Chosen() const {
    const long row = list_->GetFirstSelected();
    const bool isThere = row >= 0 && static_cast<std::size_t>(row) < findings_.size();
    return isThere ? &findings_[static_cast<std::size_t>(row)] : nullptr;
}

/// A finding that is chosen no longer is chosen again by a click.
void ChecksPanel::NodeChosen(NodeId node) {
    const long row = list_->GetFirstSelected();
    if (row < 0) return;
    const ShowFinding* chosen = Chosen();
    if (chosen == nullptr || chosen->node != node) list_->Select(row, false);
}

}  // namespace sontaro
