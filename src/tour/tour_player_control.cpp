#include "tour/tour_player_control.h"

#include <wx/listbox.h>
#include <wx/propgrid/propgrid.h>
#include <wx/textctrl.h>
#include <wx/treectrl.h>

#include "playercontrol/player_control_dialog.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr const char* kTyped = "A5 02 0F";
constexpr const char* kTaken = "a5020f";  // as commands of this document are written

template <class Control = wxWindow>
Control* InDialog(int id) {
    wxWindow* dialog = Tour::FrontTitled(TitleOf(Window::kPlayerControl));
    return dialog ? dynamic_cast<Control*>(dialog->FindWindow(id)) : nullptr;
}

bool MayUpload() {
    const wxWindow* ok = InDialog(wxID_OK);
    const auto* grid = InDialog<wxPropertyGrid>(kPlayerControlGrid);
    return ok != nullptr && ok->IsEnabled() && grid != nullptr &&
           grid->GetPropertyByName("Players/0/VideoType/0") != nullptr;
}

bool HasPlayers(unsigned count) {
    const auto* players = InDialog<wxListBox>(kControlledPlayers);
    return players != nullptr && players->GetCount() == count;
}

/// The first category of the first screen.
void ChooseCategory() {
    auto* videos = InDialog<wxTreeCtrl>(kVideoTree);
    wxTreeItemIdValue cookie{};
    const wxTreeItemId screen = videos->GetFirstChild(videos->GetRootItem(), cookie);
    const wxTreeItemId category = videos->GetFirstChild(screen, cookie);
    videos->Expand(category);
    videos->SelectItem(category);
}

/// In the chosen type, which has been added last.
wxPGProperty* CommandOfNewType() {
    auto* grid = InDialog<wxPropertyGrid>(kPlayerControlGrid);
    const wxPGProperty* chosen = grid ? grid->GetSelection() : nullptr;
    return chosen ? grid->GetPropertyByName(chosen->GetParent()->GetName() + "/SendCmd") : nullptr;
}

void TypeCommand() {
    auto* grid = InDialog<wxPropertyGrid>(kPlayerControlGrid);
    wxPGProperty* row = CommandOfNewType();
    grid->EnsureVisible(row);  // the toolkit complains of scrolling with an editor
    grid->SelectProperty(row, true);
    grid->GetEditorTextCtrl()->SetValue(kTyped);
    grid->CommitChangesFromEditor();
}

}  // namespace

void TourPlayerControl::Write() {
    OpenFeature(Window::kPlayerControl);
    Read();
    AddType();
    AddAndDeletePlayer();
    KeepInFile();
    Upload();
    LeaveFeature();
}

void TourPlayerControl::Read() {
    Step(Pressing(wxID_OK), MayUpload, "the player control protocol has been read",
         "player-control");
}

void TourPlayerControl::AddType() {
    const auto add = [] {
        ChooseCategory();
        Tour::Press(kAddAsType);
    };
    Step(
        add, [] { return CommandOfNewType() != nullptr; },
        "made a type of a category of the player's videos", "player-control-type");
    const auto isTaken = [] {
        const auto* grid = InDialog<wxPropertyGrid>(kPlayerControlGrid);
        const wxPGProperty* row = grid ? grid->GetSelection() : nullptr;
        return row != nullptr && row->GetValueAsString() == kTaken;
    };
    Step(TypeCommand, isTaken, "typed a command: it is taken as bytes");
}

void TourPlayerControl::AddAndDeletePlayer() {
    Step(
        Pressing(kAddPlayer), [] { return HasPlayers(2); }, "added a second player",
        "player-control-second");
    Step(Pressing(kAddPlayer), NoticeInFront, "pressed Add once more: there is no room",
         "player-control-limit");
    Step(Pressing(wxID_OK), InFront(Window::kPlayerControl), "dismissed the message");
    Step(Pressing(kDeletePlayer), QuestionInFront, "pressed Delete: asks first");
    Step(
        Pressing(wxID_YES), [] { return HasPlayers(1); }, "answered Yes: it is gone");
}

void TourPlayerControl::KeepInFile() {
    Step(Pressing(kSavePlayerControl), NoticeInFront, "saved the document to a file");
    Step(Pressing(wxID_OK), InFront(Window::kPlayerControl), "dismissed the message");
    Step(
        Pressing(kOpenPlayerControl), [] { return HasPlayers(1); }, "opened the file again");
}

void TourPlayerControl::Upload() {
    const auto holds = [this] { return State().playerControl.find(kTaken) != std::string::npos; };
    Step(
        Pressing(wxID_OK), [=] { return NoticeInFront() && holds(); },
        "pressed OK: player " + Address() + " holds the new type and has confirmed");
    Step(Pressing(wxID_OK), MayUpload, "dismissed the message", "player-control-uploaded");
}

}  // namespace sontaro
