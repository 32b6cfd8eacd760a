#include "tour/tour_settings.h"

#include <fmt/core.h>
#include <wx/grid.h>
#include <wx/propgrid/propgrid.h>
#include <wx/textctrl.h>

#include "osd/osd_document.h"
#include "settings/custom_settings_document.h"
#include "widgets/settings_dialog.h"

namespace sontaro {

using simulator::PlayerState;

/// A dialog, and the row whose value is changed there.
struct SettingsStation {
    Window window;
    const char* picture;
    const char* row;  ///< its key
    const char* value;
    std::string PlayerState::*document;  ///< where the player keeps the settings
};

namespace {

// clang-format off
constexpr SettingsStation kStations[] = {
    {Window::kOsd, "osd", "data/0/transparent", "35", &PlayerState::osd},
    {Window::kExtendedSerialPort, "serial-port", "serialGroup/serialTimeout", "1200", &PlayerState::serialPort},
    {Window::kSubtitles, "subtitles", "subtitleGroup/subtitleSize", "72", &PlayerState::subtitles},
    {Window::kTouchAction, "touch", "serialGroup/touchHold", "2.5000", &PlayerState::touchAction},
    {Window::kCave, "cave", "screenGroup/brightness", "65", &PlayerState::cave},
};
// clang-format on

/// The station's row as a player's document has it.
SettingsRow RowIn(const SettingsStation& station, const std::string& document) {
    OsdSettings osd;
    CustomSettings custom;
    SettingsDocument& settings = station.window == Window::kOsd
                                     ? static_cast<SettingsDocument&>(osd)
                                     : static_cast<SettingsDocument&>(custom);
    if (!settings.TakeReply(document)) return {};
    for (const SettingsGroup& group : settings.Rows())
        for (const SettingsRow& row : group.rows)
            if (row.key == station.row) return row;
    return {};
}

bool Shows(const wxPropertyGrid* grid, const SettingsStation& station, const std::string& value) {
    return grid != nullptr && grid->GetPropertyValueAsString(station.row) == value;
}

}  // namespace

void TourSettings::Write() {
    for (const SettingsStation& station : kStations) {
        OpenFeature(station.window);
        Read(station);
        Undo(station);
        Change(station);
        if (&station == kStations) LookBack(station);
        LeaveFeature();
    }
}

void TourSettings::Read(const SettingsStation& station) {
    const auto shown = [&station] {
        auto* grid = Find<wxPropertyGrid>(kSettingsGrid);
        return InFront(station.window)() && grid != nullptr && grid->IsShown();
    };
    Step(Pressing(wxID_OK), shown, TitleOf(station.window) + " shows what the player has sent",
         station.picture);
}

void TourSettings::Undo(const SettingsStation& station) {
    const auto shows = [&station](const std::string& value) {
        return Shows(Find<wxPropertyGrid>(kSettingsGrid), station, value);
    };
    const auto type = [&station] {
        auto* grid = Find<wxPropertyGrid>(kSettingsGrid);
        grid->EnsureVisible(station.row);
        grid->SelectProperty(station.row, true);
        grid->GetEditorTextCtrl()->SetValue(station.value);
        grid->CommitChangesFromEditor();
    };
    const SettingsRow row = RowIn(station, State().*station.document);
    Step(
        type, [=] { return shows(station.value); },
        fmt::format("changed {} to {}", row.name, station.value));
    Step(
        Pressing(kUndoButton), [=] { return shows(row.value); },
        fmt::format("pressed Undo: it is {} again", row.value),
        std::string(station.picture) + "-undone");
}

/// Leaves the edit open in its cell: OK has to take it over.
void TourSettings::Change(const SettingsStation& station) {
    const auto type = [&station] {
        auto* grid = Find<wxPropertyGrid>(kSettingsGrid);
        grid->EnsureVisible(station.row);  // the toolkit complains of scrolling with an editor
        grid->SelectProperty(station.row, true);
        grid->GetEditorTextCtrl()->SetValue(station.value);
        Tour::Press(wxID_OK);
    };
    const bool announced = station.window != Window::kOsd;
    const auto held = [this, &station, announced] {
        return RowIn(station, State().*station.document).value == station.value &&
               NoticeInFront() == announced;
    };
    const SettingsRow row = RowIn(station, State().*station.document);
    Step(type, held,
         fmt::format("changed {} from {} to {} and pressed OK: player {} holds {}", row.name,
                     row.value, station.value, Address(), station.value),
         announced ? std::string(station.picture) + "-saved" : "");
    if (announced) Step(Pressing(wxID_OK), InFront(station.window), "dismissed the message");
}

void TourSettings::LookBack(const SettingsStation& station) {
    const auto shows = [&station](const std::string& value) {
        return Shows(Find<wxPropertyGrid>(kSettingsGrid), station, value);
    };
    const SettingsRow row = RowIn(station, State().*station.document);
    const auto listed = [] {
        auto* grid = Find<wxGrid>(kLaterChangesGrid);
        return grid != nullptr && grid->GetNumberRows() > 0;
    };
    Step(Pressing(kEarlierButton), listed, "pressed Earlier: what the player has held before",
         "earlier");
    Step(
        Pressing(wxID_OK), [=] { return shows(row.value); },
        fmt::format("opened it: {} is {} again", row.name, row.value), "earlier-opened");
    Step(
        Pressing(kUndoButton), [=] { return shows(station.value); },
        fmt::format("pressed Undo: it is {}", station.value));
}

}  // namespace sontaro
