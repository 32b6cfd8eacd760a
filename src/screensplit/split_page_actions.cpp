// What the user does on the page of the wall.
#include <algorithm>
#include <map>
#include <string>

#include "screensplit/number_checks.h"
#include "screensplit/screen_split_wizard_set_param.h"
#include "screensplit/split_memory.h"
#include "screensplit/split_rows.h"
#include "screensplit/wall_view.h"
#include "widgets/json_file_texts.h"
#include "widgets/number_field.h"
#include "widgets/tabbed_grids.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr LocalText kHelp = {
    "1. 在“设备分幕排序”中为每个位置选择分幕；“无效”表示该位置不使用。\n"
    "2. 选择方向，然后按“应用排序”。\n"
    "3. "
    "在表格中设置重叠和缩放。排序和重叠也可以在图中设置：将分幕拖到别的位置或“未使用”，或者拖动接缝"
    "。\n"
    "4. 按“完成”，将同一配置发送到所有播放器。\n\n"
    "图中的按键：方向键选择分幕或接缝，Alt+方向键移动分幕，Delete键将其移到“未使用”；+和-"
    "使接缝的重叠"
    "增减1像素，Page Up和Page "
    "Down（或Shift加数字键盘的+和-）增减10像素；Esc键取消正在进行的拖动。\n\n"
    "分幕只能排成一行（水平）或一列（垂直）。多行多列的大屏无法在这里设置。",
    "1. Choose the screen for each place under \"Device screen sort\"; \"Invalid\" leaves a place "
    "out.\n"
    "2. Choose the direction and press \"Apply order\".\n"
    "3. Set overlaps and zoom in the grids; order and overlaps also in the picture: drag a screen "
    "to "
    "another place or to \"not used\", or drag a seam.\n"
    "4. Press \"Finish\" to send one configuration to all players.\n\n"
    "Keys in the picture: arrows choose a screen or a seam, Alt with arrows moves the screen, "
    "Delete "
    "puts it to \"not used\"; + and - change the overlap of the seam by 1 pixel, Page Up and Page "
    "Down (or Shift with + and - of the number pad) by 10; Escape takes back a drag.\n\n"
    "Screens stand in one row (horizontal) or in one column (vertical). Walls of rows and columns "
    "cannot be made here."};

constexpr JsonFileTexts kOpenTexts = {{"打开屏幕分割文件", "Open screen split file"},
                                      {"屏幕分割文件(*.JSON)", "Screen split file(*.JSON)"}};
constexpr JsonFileTexts kSaveTexts = {
    {"保存屏幕分割文件", "Save screen split file"}, kOpenTexts.filter, {"屏幕分割", "ScreenSplit"}};

/// The key of the first row that tells something else; empty when none does.
std::string FirstChange(const std::vector<SettingsRow>& before,
                        const std::vector<SettingsRow>& after) {
    std::map<std::string, std::string> values;
    for (const SettingsRow& row : before) values[row.key] = row.value;
    const auto changed = std::ranges::find_if(after, [&](const SettingsRow& row) {
        const auto old = values.find(row.key);
        return old == values.end() || old->second != row.value;
    });
    return changed == after.end() ? "" : changed->key;
}

}  // namespace

/// The grid shows what it has taken by itself, and cannot be filled meanwhile.
EditAnswer CScreenSplitWizardSetParam::Edit(const SettingsEdit& edit) {
    EditAnswer answer = EditSplitRow(document_, edit);
    if (answer.outcome != EditAnswer::Outcome::kAccepted) return answer;
    for (std::size_t i = 0; i < shown_.size(); ++i) static_cast<void>(NewRows(i));
    run_.Changed();
    return answer;
}

void CScreenSplitWizardSetParam::ChooseDirection(SplitDirection direction) {
    if (grids_->Commit()) document_.SetDirection(direction);
    Changed();
}

/// Its button is back where the keyboard was, whatever came of it.
void CScreenSplitWizardSetParam::ApplyOrder() {
    wxWindow* const button = FindWindow(kSplitApply);
    const bool hadFocus = button->HasFocus();
    isApplying_ = true;
    EnableControls();
    run_.ApplyOrder();
    isApplying_ = false;
    EnableControls();
    if (hadFocus) button->SetFocus();
}

void CScreenSplitWizardSetParam::ToggleAdvanced() {
    ShowAdvanced(!HasAdvancedTab());
    grids_->FocusRows();
}

void CScreenSplitWizardSetParam::UseSameOverlap() {
    const std::int32_t most =
        MostOverlap(document_.Direction(), document_.Size().value_or(SplitSize()));
    const auto refusal =
        RefusalOfNumber(FromWx(overlap_->GetValue()), NumberForm::kWhole, 0, most, true);
    if (!refusal) document_.SetAllOverlaps(static_cast<std::int32_t>(overlap_->Number()));
    Changed(refusal);
}

void CScreenSplitWizardSetParam::PutBackFetched() {
    document_.PutBackFetched();
    Changed();
}

void CScreenSplitWizardSetParam::Changed(const SplitDocument::Refusal& refusal) {
    run_.Changed();
    if (refusal) prompts_.Warn(Localized(*refusal));
}

/// Shows the row that has become another one, if the user is not at work in the picture.
void CScreenSplitWizardSetParam::Walk(bool (SplitDocument::*step)()) {
    const FlatGrids before = shown_;
    (document_.*step)();
    run_.Changed();
    if (view_->IsDescendant(FindFocus())) return;
    const std::size_t page = grids_->Page();
    for (std::size_t i = page; i < page + shown_.size(); ++i) {
        const std::size_t grid = i % shown_.size();
        const std::string key = FirstChange(before[grid], shown_[grid]);
        if (key.empty()) continue;
        if (grid == kAdvancedTab) ShowAdvanced(true);
        return grids_->ChooseKey(key);
    }
    grids_->FocusRows();  // those that had the keyboard may be gone
}

void CScreenSplitWizardSetParam::OpenFile() {
    const auto path =
        prompts_.ChooseFile(JsonFileQuestion(FileQuestion::Purpose::kOpen, kOpenTexts));
    if (path && OpenWallFile(document_, *path, prompts_)) Changed();
}

void CScreenSplitWizardSetParam::SaveFile() {
    const auto path =
        prompts_.ChooseFile(JsonFileQuestion(FileQuestion::Purpose::kSave, kSaveTexts));
    if (path) SaveWallFile(document_, *path, prompts_);
}

/// Those of the player whose document is shown; what the others hold is kept all the same.
void CScreenSplitWizardSetParam::OfferEarlier(wxSizer& foot) {
    const auto open = [this](const std::string& text) {
        if (MayChange() && OpenEarlierWall(document_, text, prompts_)) Changed();
    };
    earlier_.emplace(
        *this, foot, kSplitOpen, wizard_.Services(), kBlockScreenSplitRead,
        EarlierActions{
            [this] {
                return EarlierQuestion{run_.LastPlayer(), kBlockScreenSplitRead, run_.HeldByLast()};
            },
            open, [this] { return grids_->Commit(); }, [this] { StateChanged(); }});
    run_.KeepBy([this](const DeviceRecord& player, std::string text) {
        earlier_->Keep(player, std::move(text));
    });
}

void CScreenSplitWizardSetParam::ShowHelp() { prompts_.Inform(Localized(kHelp)); }

}  // namespace sontaro
