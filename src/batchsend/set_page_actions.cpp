// What the parameter page of the video set shows, and what the user does there.
#include <fmt/printf.h>
#include <wx/choice.h>
#include <wx/stattext.h>
#include <wx/weakref.h>

#include <algorithm>
#include <utility>

#include "batchsend/categories_dialog.h"
#include "batchsend/set_page_ids.h"
#include "batchsend/set_page_text.h"
#include "batchsend/video_set_param.h"
#include "widgets/caption_button.h"
#include "widgets/json_file_texts.h"
#include "widgets/number_field.h"
#include "widgets/table.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr LocalText kRemoveQuestion = {"要从列表中移除 %d 个视频吗？",
                                       "Remove %d videos from the list?"};

constexpr LocalText kFilesCaption = {"选择视频文件", "Choose video files"};
constexpr LocalText kFilesFilter = {"所有文件(*.*)|*", "All files (*.*)|*"};
constexpr LocalText kFolderCaption = {"选择视频文件夹", "Choose a folder of videos"};
constexpr JsonFileTexts kOpenTexts = {{"打开视频配置文件", "Open video set file"},
                                      {"视频配置文件(*.JSON)", "Video set file(*.JSON)"}};
constexpr JsonFileTexts kSaveTexts = {
    {"保存视频配置文件", "Save video set file"}, kOpenTexts.filter, {"视频配置", "VideoSet"}};

void Say(wxStaticText& line, const std::string& text) {
    const wxString label = ToWx(text);
    if (line.GetLabelText() == label) return;
    line.SetLabelText(label);
    line.SetToolTip(TooltipText(label));
}

}  // namespace

void CVideoSetParam::SetChanged() {
    videos_->RowsChanged();
    VideosChanged();
}

/// A row stays although a filter would hide it now: a code is typed figure by figure.
void CVideoSetParam::VideosChanged() {
    ShowPlayers();
    ShowCategories();
    videos_->Grid().Refresh();
    ShowChosen();
    writeNames_->SetValue(run_.Set().writesNames);
    ShowState();
    wizard_.ButtonsChanged();
}

void CVideoSetParam::CategoriesSettled(const std::vector<SettledName>& settled) {
    const auto chosen = std::ranges::find(settled, ChosenSlot(), &SettledName::from);
    if (chosen != settled.end() && chosen->to)
        category_->SetSelection(static_cast<int>(*chosen->to));
}

void CVideoSetParam::PlayerChanged(std::size_t player) {
    players_->RowChanged(SetPlayersTable::RowOfPlace(player));
    if (ShowCategories()) videos_->Grid().Refresh();
    EnableControls();
}

/// The table tells a little later what the user has chosen in it: until then, that stays.
void CVideoSetParam::ShowPlayers() {
    if (shownPlayers_ != playerRows_.RowCount()) {
        shownPlayers_ = playerRows_.RowCount();
        players_->RowsChanged();
    } else {
        for (std::size_t row = 0; row < shownPlayers_; ++row) players_->RowChanged(row);
    }
    if (std::exchange(shownPlace_, run_.Shown()) != run_.Shown())
        players_->Choose(SetPlayersTable::RowOfPlace(shownPlace_));
}

/// Whether other names are offered than before.
bool CVideoSetParam::ShowCategories() {
    std::vector<std::string> slots;
    for (std::size_t slot = 0; slot < kVideoCategories; ++slot)
        slots.push_back(SlotText(run_, slot));
    if (slots == slots_) return false;
    slots_ = std::move(slots);
    const int chosen = static_cast<int>(ChosenSlot());
    wxArrayString offered;
    for (const std::string& slot : slots_) offered.Add(ToWx(slot));
    category_->Set(offered);
    category_->SetSelection(chosen);
    return true;
}

/// A number that is being typed stays as it is.
void CVideoSetParam::ShowChosen() {
    const std::vector<std::size_t> rows = ConcernedRows();
    const Elements<SetVideo>& videos = run_.Videos();
    const auto concerned = std::pair(run_.Shown(), IdsOf(rows));
    if (!rows.empty()) {
        const SetVideo& first = videos[rows.front()];
        category_->SetSelection(static_cast<int>(first.category));
        if (concerned != fieldsFor_ || !code_->HasFocus()) code_->ShowNumber(first.code);
        const auto removes = [&](std::size_t row) { return videos[row].removesNumbers; };
        const bool isOnAll = std::ranges::all_of(rows, removes);
        const bool isMixed = !isOnAll && std::ranges::any_of(rows, removes);
        removeNumbers_->SetValue(isOnAll);
        if (isMixed) removeNumbers_->Set3StateValue(wxCHK_UNDETERMINED);
    }
    fieldsFor_ = concerned;
    EnableControls();
}

void CVideoSetParam::ShowState() {
    const std::string problem = FirstProblemText(run_);
    Say(*totals_, TotalsText(run_));
    Say(*problem_, problem.empty() ? "" : kCautionMark + problem);
}

/// The keyboard does not stay where nothing can be pressed any more.
void CVideoSetParam::EnableControls() {
    const wxWeakRef<wxWindow> focused = FindFocus();
    const bool hadFocus = focused != nullptr && IsDescendant(focused);
    const bool hasConcerned = !fieldsFor_.second.empty();
    const auto enable = [this](int id, bool may) { FindWindow(id)->Enable(may); };
    enable(kSetAskAgain, run_.MayAskAgain());
    for (const int id : {kSetRemove, kSetUp, kSetDown, kSetCode, kSetRemoveNumbers})
        enable(id, hasConcerned);
    FindWindow(kSetGiveUp)->Show(run_.IsSearching());
    const bool isGone = focused == nullptr || !focused->IsThisEnabled() || !focused->IsShown();
    if (hadFocus && isGone) videos_->Grid().GetGridWindow()->SetFocus();
}

void CVideoSetParam::ChooseVideo(std::uint32_t id) {
    const Elements<SetVideo>& videos = run_.Videos();
    for (std::size_t row = 0; row < videos.size(); ++row)
        if (videos.IdAt(row) == id) videos_->Choose(row);
    videos_->Grid().GetGridWindow()->SetFocus();
    ShowChosen();
}

void CVideoSetParam::ChoosePlayer() {
    const auto row = players_->ChosenRow();
    if (row && SetPlayersTable::PlaceOfRow(*row) != run_.Shown())
        run_.Show(SetPlayersTable::PlaceOfRow(*row));
}

/// Nothing is done to a row that the user does not see.
std::vector<std::size_t> CVideoSetParam::ConcernedRows() const {
    std::vector<std::size_t> rows = videoRows_.TickedRows();
    std::erase_if(rows, [this](std::size_t row) { return !videos_->IsListed(row); });
    return rows.empty() ? videos_->ChosenRows() : rows;
}

SetPageRun::Ids CVideoSetParam::IdsOf(const std::vector<std::size_t>& rows) const {
    SetPageRun::Ids ids;
    for (const std::size_t row : rows) ids.push_back(run_.Videos().IdAt(row));
    return ids;
}

std::uint32_t CVideoSetParam::ChosenSlot() const {
    return static_cast<std::uint32_t>(std::max(category_->GetSelection(), 0));
}

/// The slot is the one that is chosen when the box opens.
void CVideoSetParam::AddFiles() {
    run_.WhileNamesStay([this, slot = ChosenSlot()] {
        run_.Add(prompts_.ChooseFiles({FileQuestion::Purpose::kOpen, Localized(kFilesCaption),
                                       Localized(kFilesFilter), "", ""}),
                 slot);
    });
}

void CVideoSetParam::AddFolder() {
    run_.WhileNamesStay([this, slot = ChosenSlot()] {
        if (const auto folder = prompts_.ChooseFolder(Localized(kFolderCaption)))
            run_.Add({*folder}, slot);
    });
}

void CVideoSetParam::RemoveVideos() {
    const SetPageRun::Ids ids = Concerned();
    const bool isCertain =
        ids.size() == 1 ||
        (!ids.empty() && prompts_.Confirm(fmt::sprintf(Localized(kRemoveQuestion), ids.size())));
    if (isCertain) run_.Remove(ids);
}

void CVideoSetParam::TakeCode() {
    if (!code_->IsEmpty()) run_.SetCode(static_cast<std::uint32_t>(code_->Number()), Concerned());
}

void CVideoSetParam::EditNames() { EditCategories(&wizard_, run_, prompts_); }

void CVideoSetParam::OpenFile() {
    const auto path =
        prompts_.ChooseFile(JsonFileQuestion(FileQuestion::Purpose::kOpen, kOpenTexts));
    if (!path) return;
    videoRows_.TickNone();
    run_.Open(*path);
}

void CVideoSetParam::SaveFile() {
    const auto path =
        prompts_.ChooseFile(JsonFileQuestion(FileQuestion::Purpose::kSave, kSaveTexts));
    if (path) run_.Save(*path);
}

}  // namespace sontaro
