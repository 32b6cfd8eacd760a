#include "tour/tour_protocol.h"

#include <fmt/core.h>
#include <wx/propgrid/propgrid.h>
#include <wx/srchctrl.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "controlprotocol/control_protocol_dialog.h"
#include "widgets/wx_text.h"

namespace sontaro {

/// A row, and what it is given.
struct ProtocolEdit {
    std::size_t tab;
    const char* row;  ///< its key
    const char* value;
};

namespace {

/// A row of every kind.
constexpr ProtocolEdit kEdits[] = {
    {0, "KtvDev/KTVName", "雷石"},       {0, "KtvDev/KTVServerIP", "192.168.84.7"},
    {0, "KtvDev/KTVServerPort", "9001"}, {1, "Serial/BaudRate", "9600"},
    {1, "Serial/Play", "A501FF"},        {2, "VideoType/0/TypeName", "华尔兹"},
};
constexpr ProtocolEdit kLearned = {2, "VideoType/2/SendCmd", "A50110"};

/// Whether the row stands in one of the groups with the value.
// NOLINTNEXTLINE(misc-no-recursion): groups stand within groups
bool Hold(const SettingsRows& groups, const ProtocolEdit& edit) {
    for (const SettingsGroup& group : groups) {
        const auto row = std::ranges::find(group.rows, edit.row, &SettingsRow::key);
        if (row != group.rows.end()) return row->value == edit.value;
        if (Hold(group.groups, edit)) return true;
    }
    return false;
}

template <class Control = wxWindow>
Control* InDialog(int id) {
    wxWindow* dialog = Tour::FrontTitled(TitleOf(Window::kControlProtocol));
    return dialog ? dynamic_cast<Control*>(dialog->FindWindow(id)) : nullptr;
}

wxPropertyGrid* GridOn(std::size_t tab) {
    return InDialog<wxPropertyGrid>(kProtocolGrid + 1 + static_cast<int>(tab));
}

void Enter(const ProtocolEdit& edit) {
    wxPropertyGrid* grid = GridOn(edit.tab);
    wxPGProperty* row = grid->GetPropertyByName(edit.row);
    grid->EnsureVisible(row);  // the toolkit complains of scrolling with an editor
    if (const wxPGChoices& choices = row->GetChoices(); choices.IsOk()) {
        grid->ChangePropertyValue(row, choices.Index(ToWx(std::string(edit.value))));
    } else {
        grid->SelectProperty(row, true);
        grid->GetEditorTextCtrl()->SetValue(ToWx(std::string(edit.value)));
        grid->CommitChangesFromEditor();
    }
}

std::string Shown(const ProtocolEdit& edit) {
    const wxPropertyGrid* grid = GridOn(edit.tab);
    return grid ? FromWx(grid->GetPropertyValueAsString(edit.row)) : "";
}

bool MayUpload() {
    const wxWindow* ok = InDialog(wxID_OK);
    return ok != nullptr && ok->IsEnabled();
}

void ShowTab(std::size_t tab) { InDialog<wxNotebook>(kProtocolTabs)->SetSelection(tab); }

std::string Text(int id) {
    const auto* text = InDialog<wxStaticText>(id);
    return text ? FromWx(text->GetLabelText()) : "";
}

}  // namespace

void TourProtocol::Write() {
    OpenFeature(Window::kControlProtocol);
    Read();
    for (const ProtocolEdit& edit : kEdits) Edit(edit);
    Narrow();
    Learn();
    KeepInFile();
    Upload();
    Restart();
    LeaveFeature();
}

void TourProtocol::Read() {
    Step(Pressing(wxID_OK), MayUpload, "the control protocol of the player has been read");
    for (std::size_t tab = 0; tab < kControlProtocolGrids; ++tab)
        Step([tab] { ShowTab(tab); }, [tab] { return GridOn(tab)->IsShownOnScreen(); },
             fmt::format("looked at tab {}", tab + 1), fmt::format("protocol-{}", tab + 1));
}

void TourProtocol::Edit(const ProtocolEdit& edit) {
    const auto act = [&edit] {
        ShowTab(edit.tab);
        Enter(edit);
    };
    Step(
        act, [&edit] { return Shown(edit) == edit.value; },
        fmt::format("changed row {} on tab {} to {}", edit.row, edit.tab + 1, edit.value));
}

void TourProtocol::Narrow() {
    const auto filter = [](const char* text) {
        return [text] { InDialog<wxSearchCtrl>(kProtocolFilter)->SetValue(text); };
    };
    const auto label = [] { return InDialog<wxNotebook>(kProtocolTabs)->GetPageText(1); };
    Step(
        filter("a501"), [label] { return label().Contains("("); },
        "typed a501 into the filter: the tabs say where it is found", "protocol-filter");
    Step(
        filter(""), [label] { return !label().Contains("("); }, "cleared the filter");
}

void TourProtocol::Learn() {
    const auto act = [this] {
        wxPropertyGrid* grid = GridOn(kLearned.tab);
        ShowTab(kLearned.tab);
        grid->EnsureVisible(kLearned.row);
        grid->SelectProperty(kLearned.row);
        Players().Player(0).AddSerialBytes({0xA5, 0x01, 0x10});
    };
    Step(
        act, [] { return Shown(kLearned) == kLearned.value; },
        fmt::format("the serial port of player {} received A5 01 10: learned", Address()),
        "protocol-learned");
    Step(
        Pressing(kUndoButton), [] { return Shown(kLearned) != kLearned.value; },
        "pressed Undo: what was learned is gone", "protocol-undone");
    Step(
        Pressing(kRedoButton), [] { return Shown(kLearned) == kLearned.value; },
        "pressed Redo: it is back");
}

void TourProtocol::KeepInFile() {
    Step(Pressing(kSaveProtocol), NoticeInFront, "saved the document to a file");
    Step(Pressing(wxID_OK), InFront(Window::kControlProtocol), "dismissed the message");
    const auto spoil = [] {
        ShowTab(0);
        Enter({0, kEdits[2].row, "1"});
        Tour::Press(kOpenProtocol);
    };
    Step(
        spoil, [] { return Shown(kEdits[2]) == kEdits[2].value; },
        "changed a row and opened the file: the row is as it was saved");
}

bool TourProtocol::PlayerHolds(const ProtocolEdit& edit) {
    ControlProtocolModel model;
    if (!ReadControlProtocol(State().controlProtocol, model)) return false;
    return Hold(ControlProtocolRows(model)[edit.tab], edit);
}

void TourProtocol::Upload() {
    const auto held = [this] {
        const auto holds = [this](const auto& edit) { return PlayerHolds(edit); };
        return std::ranges::all_of(kEdits, holds) && PlayerHolds(kLearned);
    };
    Step(
        Pressing(wxID_OK), [=] { return QuestionInFront() && !held(); },
        "pressed OK: asks whether to restart the player", "protocol-restart-question");
    Step(
        Pressing(wxID_NO), [=] { return NoticeInFront() && held(); },
        fmt::format("answered No: player {} holds every change and has confirmed", Address()));
    Step(Pressing(wxID_OK), MayUpload, "dismissed the message", "protocol-uploaded");
}

void TourProtocol::Restart() {
    Step(Pressing(wxID_OK), QuestionInFront, "pressed OK again");
    Step(Pressing(wxID_YES), NoticeInFront, "answered Yes: the player has confirmed");
    const auto away = [this] {
        return Players().Player(0).ConnectionCount() == 0 && !MayUpload() &&
               !Text(kProtocolLine).empty();
    };
    Step(Pressing(wxID_OK), away, "the player restarts: nothing more can be sent",
         "protocol-restarting");
}

}  // namespace sontaro
