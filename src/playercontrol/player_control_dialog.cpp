#include "playercontrol/player_control_dialog.h"

#include <fmt/printf.h>
#include <wx/filename.h>
#include <wx/listbox.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/treectrl.h>
#include <wx/wupdlock.h>

#include "widgets/filter_box.h"
#include "widgets/fonts.h"
#include "widgets/json_file_texts.h"
#include "widgets/settings_state_text.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr const char* kName = "player-control";  // in the preferences
constexpr int kPlayersCharacters = 22;
constexpr int kGridCharacters = 66;
constexpr int kVideosCharacters = 38;
constexpr int kLines = 27;

constexpr LocalText kPlayers = {"播放器", "Players"};
constexpr LocalText kSettings = {"所选播放器的设置", "Settings of the chosen player"};
constexpr LocalText kVideos = {"播放器中的视频", "Videos of the player"};
constexpr LocalText kAddPlayerText = {"添加播放器", "Add player"};
constexpr LocalText kDeletePlayerText = {"删除播放器", "Delete player"};
constexpr LocalText kAddTypeText = {"添加类别", "Add type"};
constexpr LocalText kDeleteTypeText = {"删除类别", "Delete type"};
constexpr LocalText kAddAsTypeText = {"添加为类别", "Add as type"};
constexpr LocalText kScreen = {"屏幕%d", "Screen %d"};
constexpr LocalText kNoVideos = {"（没有视频）", "(no videos)"};

constexpr JsonFileTexts kOpenTexts = {
    {"打开播放器控制协议", "Open player control protocol"},
    {"播放器控制协议(*.JSON)", "PlayerControlProtocol Flie(*.JSON)"}};
constexpr JsonFileTexts kSaveTexts = {{"保存播放器控制协议", "Save player control protocol"},
                                      {"播放器控制协议(*.JSON)", "PlayerControlProtocol(*.JSON)"},
                                      {"控制协议", "ControlProtocol"}};
constexpr const char* kFirstOfType = "/TypeName";  // rows of a type
constexpr const char* kLastOfType = "/ScreenEffectID";

/// The category that an item of the tree is, or is a video of.
class CategoryItem : public wxTreeItemData {
   public:
    explicit CategoryItem(std::string name) : name_(std::move(name)) {}
    [[nodiscard]] const std::string& Name() const { return name_; }

   private:
    const std::string name_;
};

wxString VideoText(const ListedVideo& video) {
    const auto bytes = static_cast<wxULongLong_t>(std::max<std::int64_t>(0, video.size));
    return ToWx(video.name) + "  (" +
           wxFileName::GetHumanReadableSize(wxULongLong(bytes), "0 B", 1, wxSIZE_CONV_IEC) + ")";
}

}  // namespace

CPlayerControl::CPlayerControl(wxWindow* parent, const UiServices& services,
                               const DeviceRecord& player)
    : FeatureDialog(parent, Window::kPlayerControl, services),
      run_(*this, services.Messages(), Exchange(), {player.ip, player.tcpPort, 0}) {
    LayOut(player);
    BindEvents();
    BindKeys();
    grid_->Fill(run_.Rows());
    ShowPlayers();
    StateChanged();
    CentreOnParent();
    RestorePlace(kName);
    CallAfter([this] {
        asked_ = true;
        run_.Settings().Read();
    });
}

void CPlayerControl::LayOut(const DeviceRecord& player) {
    const int gap = FromDIP(10);
    const wxSizerFlags line = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap);
    auto* column = new wxBoxSizer(wxVERTICAL);
    auto* head = new wxBoxSizer(wxHORIZONTAL);
    head->Add(MakeHeading(player, this), wxSizerFlags(1).CentreVertical().Border(wxRIGHT, gap));
    filter_ = new FilterBox(this, kPlayerControlFilter);
    head->Add(filter_->WithCaption(), wxSizerFlags().CentreVertical());
    column->Add(head, line);
    auto* parts = new wxBoxSizer(wxHORIZONTAL);
    parts->Add(MakePlayers(), wxSizerFlags().Expand().Border(wxRIGHT, gap));
    parts->Add(MakeGrid(), wxSizerFlags(3).Expand().Border(wxRIGHT, gap));
    parts->Add(MakeVideos(), wxSizerFlags(2).Expand());
    column->Add(parts, wxSizerFlags(line).Proportion(1));
    column->Add(MakeStateRow(state_), line);
    wxSizer* foot = MakeFileButtonRow(kOpenPlayerControl, kSavePlayerControl);
    const auto commit = [this] { return grid_->Commit(); };
    undo_.emplace(*this, *foot, run_.Settings(), commit);
    earlier_.emplace(*this, *foot, kOpenPlayerControl, Services(), player, run_.Settings(), commit,
                     [this] { StateChanged(); });
    column->Add(foot, wxSizerFlags().Expand().Border(wxALL, gap));
    SetSizerAndFit(column);
}

wxSizer* CPlayerControl::MakePlayers() {
    const int gap = FromDIP(6);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(new wxStaticText(this, wxID_ANY, ToWx(kPlayers)),
                wxSizerFlags().Border(wxBOTTOM, gap));
    players_ = new wxListBox(this, kControlledPlayers);
    players_->SetMinSize(wxSize(kPlayersCharacters * LetterWidth(*this), wxDefaultCoord));
    column->Add(players_, wxSizerFlags(1).Expand().Border(wxBOTTOM, gap));
    column->Add(new wxButton(this, kAddPlayer, ButtonLabel(kAddPlayerText, 'A')),
                wxSizerFlags().Expand().Border(wxBOTTOM, gap));
    column->Add(new wxButton(this, kDeletePlayer, ButtonLabel(kDeletePlayerText, 'D')),
                wxSizerFlags().Expand());
    return column;
}

wxSizer* CPlayerControl::MakeGrid() {
    const int gap = FromDIP(6);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(new wxStaticText(this, wxID_ANY, ToWx(kSettings)),
                wxSizerFlags().Border(wxBOTTOM, gap));
    grid_ = new SettingsGrid(this, kPlayerControlGrid, true, Services().Messages(),
                             [this](const SettingsEdit& edit) { return run_.Edit(edit); });
    grid_->SetMinSize(wxSize(kGridCharacters * LetterWidth(*this), kLines * GetCharHeight()));
    column->Add(grid_, wxSizerFlags(1).Expand().Border(wxBOTTOM, gap));
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    buttons->Add(new wxButton(this, kAddType, ButtonLabel(kAddTypeText, 'T')),
                 wxSizerFlags().Border(wxRIGHT, gap));
    buttons->Add(new wxButton(this, kDeleteType, ButtonLabel(kDeleteTypeText, 'y')));
    column->Add(buttons);
    return column;
}

wxSizer* CPlayerControl::MakeVideos() {
    const int gap = FromDIP(6);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(new wxStaticText(this, wxID_ANY, ToWx(kVideos)),
                wxSizerFlags().Border(wxBOTTOM, gap));
    videos_ = new wxTreeCtrl(
        this, kVideoTree, wxDefaultPosition, wxDefaultSize,
        wxTR_HAS_BUTTONS | wxTR_HIDE_ROOT | wxTR_LINES_AT_ROOT | wxTR_SINGLE | wxBORDER_THEME);
    videos_->SetMinSize(wxSize(kVideosCharacters * LetterWidth(*this), wxDefaultCoord));
    column->Add(videos_, wxSizerFlags(1).Expand().Border(wxBOTTOM, gap));
    column->Add(new wxButton(this, kAddAsType, ButtonLabel(kAddAsTypeText, 'e')),
                wxSizerFlags().Right());
    return column;
}

void CPlayerControl::BindEvents() {
    const auto onPress = [this](int id, auto action) {
        Bind(
            wxEVT_BUTTON,
            [this, action](wxCommandEvent&) {
                if (grid_->Commit()) action();
            },
            id);
    };
    onPress(wxID_OK, [this] { run_.Save(); });
    onPress(kOpenPlayerControl, [this] { AskForFile(FileQuestion::Purpose::kOpen); });
    onPress(kSavePlayerControl, [this] { AskForFile(FileQuestion::Purpose::kSave); });
    onPress(kAddPlayer, [this] { run_.AddPlayer(); });
    onPress(kDeletePlayer, [this] { run_.DeletePlayer(); });
    onPress(kAddType, [this] { AddType(""); });
    onPress(kDeleteType, [this] { DeleteType(); });
    onPress(kAddAsType, [this] { AddChosenAsType(); });
    players_->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) { ChoosePlayer(); });
    filter_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { grid_->Filter(filter_->GetValue()); });
    videos_->Bind(wxEVT_TREE_SEL_CHANGED, [this](wxTreeEvent&) { StateChanged(); });
    videos_->Bind(wxEVT_TREE_ITEM_ACTIVATED, [this](wxTreeEvent& event) {
        if (!ChosenCategory()) return event.Skip();  // a screen: it is unfolded
        if (grid_->Commit()) AddChosenAsType();
    });
}

/// Not while a text is being typed: there the keys belong to the text.
void CPlayerControl::BindKeys() {
    const auto onKeys = [this](wxWindow* window, auto add, auto remove) {
        window->Bind(wxEVT_CHAR_HOOK, [this, add, remove](wxKeyEvent& event) {
            const int key =
                event.HasAnyModifiers() || grid_->IsEditing() ? WXK_NONE : event.GetKeyCode();
            if (key == WXK_INSERT || key == WXK_NUMPAD_INSERT)
                add();
            else if (key == WXK_DELETE || key == WXK_NUMPAD_DELETE)
                remove();
            else
                event.Skip();
        });
    };
    onKeys(
        players_, [this] { run_.AddPlayer(); }, [this] { run_.DeletePlayer(); });
    onKeys(
        grid_, [this] { AddType(""); }, [this] { DeleteType(); });
}

void CPlayerControl::ReadAgain() {
    if (grid_->Commit()) run_.Settings().Read();
}

void CPlayerControl::ShowRows() {
    grid_->Fill(run_.Rows());
    if (!std::exchange(shown_, true)) grid_->Properties().SetFocus();
}

void CPlayerControl::ChooseRow(const std::string& key) {
    if (grid_->Has(key) && !grid_->ChooseKey(key)) {
        filter_->Clear();
        grid_->ChooseKey(key);
    }
    grid_->Properties().SetFocus();
}

void CPlayerControl::StateChanged() {
    const SettingsRun& settings = run_.Settings();
    const auto note = run_.Note();
    earlier_->ShowState(*state_, note ? Localized(*note) : StateTextOf(settings));
    ShowReadAgain(settings.IsConnected() || !asked_);
    FindWindow(wxID_OK)->Enable(run_.MaySend());
    FindWindow(kOpenPlayerControl)->Enable(settings.MayOpen());
    earlier_->Enable(settings.MayOpen());
    FindWindow(kSavePlayerControl)->Enable(settings.MayKeep());
    FindWindow(kAddAsType)->Enable(ChosenCategory().has_value());
    undo_->Enable();
}

void CPlayerControl::ShowPlayers() {
    const std::vector<ControlledPlayerEntry> entries = run_.Players();
    wxArrayString captions;
    int chosen = wxNOT_FOUND;
    for (const ControlledPlayerEntry& entry : entries) {
        if (entry.id == run_.ChosenPlayer()) chosen = static_cast<int>(captions.size());
        captions.Add(ToWx(entry.caption));
    }
    players_->Set(captions);
    players_->SetSelection(chosen);
}

/// Screens without videos are left out; videos are folded away, as there may be many.
void CPlayerControl::ShowVideos() {
    const wxWindowUpdateLocker lock(videos_);
    videos_->DeleteAllItems();
    const wxTreeItemId root = videos_->AddRoot("");
    const auto& screens = run_.Videos().screens;
    for (std::size_t number = 0; number < screens.size(); ++number) {
        if (screens[number].empty()) continue;
        const wxTreeItemId screen = videos_->AppendItem(
            root, ToWx(fmt::sprintf(Localized(kScreen), static_cast<int>(number) + 1)));
        for (const ListedCategory& category : screens[number]) {
            const auto data = [&] { return new CategoryItem(category.name); };
            const wxTreeItemId item =
                videos_->AppendItem(screen, ToWx(category.name), -1, -1, data());
            for (const ListedVideo& video : category.videos)
                videos_->AppendItem(item, VideoText(video), -1, -1, data());
        }
        videos_->Expand(screen);
    }
    if (!videos_->ItemHasChildren(root)) videos_->AppendItem(root, ToWx(kNoVideos));
    StateChanged();
}

/// A text that is refused is mended first, where it is.
void CPlayerControl::ChoosePlayer() {
    const std::vector<ControlledPlayerEntry> entries = run_.Players();
    const int place = players_->GetSelection();
    const bool isThere = place >= 0 && static_cast<std::size_t>(place) < entries.size();
    if (!grid_->Commit()) return ShowPlayers();
    run_.ChoosePlayer(isThere ? std::optional(entries[static_cast<std::size_t>(place)].id)
                              : std::nullopt);
}

void CPlayerControl::AddType(const std::string& name) {
    const std::optional<std::string> key = run_.AddType(name);
    if (!key) return;
    filter_->Clear();
    grid_->ChooseKey(*key + kLastOfType);  // so that all of it is seen
    grid_->ChooseKey(*key + kFirstOfType);
}

void CPlayerControl::DeleteType() {
    const SettingsGroup* group = grid_->ChosenGroup();
    run_.DeleteType(group ? std::optional(ChosenInGrid{group->key, grid_->ChosenRow() == nullptr})
                          : std::nullopt);
}

void CPlayerControl::AddChosenAsType() {
    if (const std::optional<std::string> category = ChosenCategory()) AddType(*category);
}

std::optional<std::string> CPlayerControl::ChosenCategory() const {
    const wxTreeItemId item = videos_->GetSelection();
    const auto* category =
        item.IsOk() ? dynamic_cast<CategoryItem*>(videos_->GetItemData(item)) : nullptr;
    return category ? std::optional(category->Name()) : std::nullopt;
}

void CPlayerControl::AskForFile(FileQuestion::Purpose purpose) {
    const bool saves = purpose == FileQuestion::Purpose::kSave;
    const auto path = Services().Messages().ChooseFile(
        JsonFileQuestion(purpose, saves ? kSaveTexts : kOpenTexts));
    if (!path) return;
    if (saves)
        run_.Settings().SaveFile(*path);
    else
        run_.Settings().OpenFile(*path);
}

}  // namespace sontaro
