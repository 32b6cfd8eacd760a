#include "tour/tour_protocol.h"

#include <fmt/core.h>
#include <wx/propgrid/propgrid.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "app/feature_buttons.h"
#include "controlprotocol/control_protocol_dialog.h"
#include "widgets/wx_text.h"

namespace sontaro {

/// A row by its places in the grid, and what it is given.
struct ProtocolEdit {
    std::size_t tab;
    std::size_t group, subGroup;  ///< the latter in the grid of categories alone
    std::size_t row;
    const char* value;

    [[nodiscard]] bool HasSubGroup() const { return tab == kCategoryGrid; }
    [[nodiscard]] wxString RowName() const {
        return HasSubGroup() ? wxString::Format("%zu.%zu.%zu", group, subGroup, row)
                             : wxString::Format("%zu.%zu", group, row);
    }
};

namespace {

/// A row of every kind.
constexpr ProtocolEdit kEdits[] = {
    {0, 0, 0, 0, "雷石"}, {0, 0, 0, 1, "192.168.84.7"}, {0, 0, 0, 2, "9001"},
    {1, 0, 0, 0, "9600"}, {1, 1, 0, 0, "A501FF"},       {2, 0, 0, 0, "华尔兹"},
};
constexpr ProtocolEdit kLearned = {2, 0, 2, 1, "A50110"};

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
    wxPGProperty* row = grid->GetPropertyByName(edit.RowName());
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
    return grid ? FromWx(grid->GetPropertyValueAsString(edit.RowName())) : "";
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
    OpenFeature(kControlProtocolButton, Window::kControlProtocol);
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
        Step([tab] { ShowTab(tab); }, [] { return true; }, fmt::format("looked at tab {}", tab + 1),
             fmt::format("protocol-{}", tab + 1));
}

void TourProtocol::Edit(const ProtocolEdit& edit) {
    const auto act = [&edit] {
        ShowTab(edit.tab);
        Enter(edit);
    };
    Step(
        act, [&edit] { return Shown(edit) == edit.value; },
        fmt::format("changed row {} on tab {} to {}", FromWx(edit.RowName()), edit.tab + 1,
                    edit.value));
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
        grid->EnsureVisible(kLearned.RowName());
        grid->SelectProperty(kLearned.RowName());
        Players().Player(0).AddSerialBytes({0xA5, 0x01, 0x10});
    };
    Step(
        act, [] { return Shown(kLearned) == kLearned.value; },
        fmt::format("the serial port of player {} received A5 01 10: learned", Address()),
        "protocol-learned");
}

void TourProtocol::KeepInFile() {
    Step(Pressing(kSaveProtocol), MessageInFront, "saved the document to a file");
    Step(Pressing(wxID_OK), InFront(Window::kControlProtocol), "dismissed the message");
    const auto spoil = [] {
        ShowTab(0);
        Enter({0, 0, 0, 2, "1"});
        Tour::Press(kOpenProtocol);
    };
    Step(
        spoil, [] { return Shown(kEdits[2]) == kEdits[2].value; },
        "changed a row and opened the file: the row is as it was saved");
}

bool TourProtocol::PlayerHolds(const ProtocolEdit& edit) {
    ControlProtocolModel model;
    if (!ReadControlProtocol(State().controlProtocol, model)) return false;
    const SettingsRows rows = std::move(ControlProtocolRows(model)[edit.tab]);
    const SettingsGroup& group = rows.at(edit.group);
    const SettingsGroup& holder = edit.HasSubGroup() ? group.groups.at(edit.subGroup) : group;
    return holder.rows.at(edit.row).value == edit.value;
}

void TourProtocol::Upload() {
    Step(Pressing(wxID_OK), MessageInFront, "pressed OK: asks whether to restart the player",
         "protocol-restart-question");
    Step(Pressing(wxID_NO), MessageInFront, "answered No: the player has confirmed");
    const auto held = [this] {
        return std::ranges::all_of(kEdits,
                                   [this](const auto& edit) { return PlayerHolds(edit); }) &&
               PlayerHolds(kLearned) && MayUpload();
    };
    Step(Pressing(wxID_OK), held, fmt::format("player {} holds every change", Address()),
         "protocol-uploaded");
}

void TourProtocol::Restart() {
    Step(Pressing(wxID_OK), MessageInFront, "pressed OK again");
    Step(Pressing(wxID_YES), MessageInFront, "answered Yes: the player has confirmed");
    const auto away = [] { return !MayUpload() && !Text(kProtocolLine).empty(); };
    Step(Pressing(wxID_OK), away, "the player restarts: nothing more can be sent",
         "protocol-restarting");
}

}  // namespace sontaro
