#include <fmt/printf.h>
#include <wx/gauge.h>
#include <wx/stattext.h>
#include <wx/weakref.h>

#include "app/features.h"
#include "base/json.h"
#include "devices/scan_dialog.h"
#include "ui/ui_support.h"
#include "videocontrol/video_control_buttons.h"
#include "videocontrol/video_control_dialog.h"

namespace sontaro::test {
namespace {

class MainWindow : public UiTest {
   protected:
    ~MainWindow() override {
        if (window) window->Destroy();
        EXPECT_TRUE(PumpUntil([&] { return !window; }));
    }

    void Open() { window = OpenMainWindow(); }

    /// Opens the remote control of the first player and takes `step` there.
    void Control(ModalScript::Step step) {
        const ModalScript script{
            [&](wxDialog* scan) {
                Press(scan, kScanButton);
                auto* list = Find<DeviceList>(scan, kScanList);
                ASSERT_TRUE(PumpUntil([&] { return list->GetItemCount() > 0; }));
                list->Select(0);
                Press(scan, wxID_OK);
            },
            [&](wxDialog* control) {
                step(control);
                prompts.answers.push_back(true);
                Press(control, wxID_CANCEL);
            }};
        Press(window, FeatureButton(Window::kVideoControl));
    }

    static std::string TextOf(wxWindow* dialog, int id) {
        return FromWx(Find<wxControl>(dialog, id)->GetLabelText());
    }

    /// Whether a text stands in a window, whole.
    static bool ShowsIn(wxWindow* where, const std::string& text) {
        return std::ranges::any_of(where->GetChildren(), [&](const wxWindow* child) {
            const auto* label = dynamic_cast<const wxStaticText*>(child);
            return label && FromWx(label->GetLabelText()) == text;
        });
    }
    bool Shows(const std::string& text) { return ShowsIn(window, text); }

    /// The MAC address that the simulated player makes from its own.
    std::string MacOf(std::size_t index) {
        const auto& octets = network.Player(index).octets;
        return fmt::sprintf("02:00:%02X:%02X:%02X:%02X", octets[0], octets[1], octets[2],
                            octets[3]);
    }

    static bool IsReady(wxDialog* control) {
        return PumpUntil([&] { return Find<wxGauge>(control, kProgressBar)->GetValue() > 0; });
    }

    wxWeakRef<CSontaroDlg> window;
};

TEST_F(MainWindow, NamesTheCurrentPlayerWithItsRemarksAndChoosesItAgain) {
    StartPlayers(2);
    DeviceRecord player;
    player.ip = FormatIpv4(network.Player(0));
    player.id = players->Player(0).Identity().id;
    const auto edit = [&](const std::string& text) {
        player.remarks = text;
        ASSERT_TRUE(remarks.SetRemarks(MacOf(0), text));
    };
    edit("R&B 厅");
    Open();
    Control([](wxDialog*) {});
    EXPECT_TRUE(Shows("Current player: " + PlayerText(player)));
    const ModalScript script{[&](wxDialog* scan) {
                                 Press(scan, kScanButton);
                                 auto* list = Find<DeviceList>(scan, kScanList);
                                 EXPECT_TRUE(PumpUntil([&] { return list->GetItemCount() == 2; }));
                                 EXPECT_TRUE(list->IsSelected(0));
                                 list->Select(0);
                                 Press(scan, wxID_OK);
                             },
                             [&](wxDialog* overlay) {
                                 EXPECT_TRUE(ShowsIn(overlay, PlayerText(player)));
                                 prompts.answers.push_back(true);
                                 Press(overlay, wxID_CANCEL);
                             },
                             [&](wxDialog* scan) {
                                 edit("moved");
                                 Press(scan, wxID_CANCEL);
                             }};
    Press(window, FeatureButton(Window::kOsd));
    Press(window, FeatureButton(Window::kOsd));
    EXPECT_TRUE(Shows("Current player: " + PlayerText(player)));
}

TEST_F(MainWindow, ShowsEachOfThePlayersButtonsWhereItBelongs) {
    const std::pair<int, int> places[] = {
        {2, 2104}, {3, 2105},  {4, 2106},  {5, 2107},  {6, 2108},  {7, 2109},   {8, 2110},
        {9, 2113}, {10, 2114}, {11, 2120}, {12, 2121}, {13, 2126}, {200, 2124}, {201, 2123}};
    StartPlayers(1);
    players->Player(0).ChangeState([&](simulator::PlayerState& state) {
        state.captions.clear();
        for (const auto& [type, id] : places)
            state.captions.push_back({static_cast<simulator::Action>(type), std::to_string(type)});
    });
    Open();
    Control([&](wxDialog* control) {
        ASSERT_TRUE(IsReady(control));
        for (const auto& [type, id] : places) EXPECT_EQ(TextOf(control, id), std::to_string(type));
    });
}

TEST_F(MainWindow, CarriesFiveOfElevenFeaturesInEnglish) {
    const auto buttons = [this] {
        std::vector<int> shown;
        for (int id = 1001; id <= 1011; ++id)
            if (window->FindWindow(id)) shown.push_back(id);
        return shown;
    };
    Open();
    EXPECT_EQ(buttons(), (std::vector{1001, 1002, 1003, 1004, 1010}));
    window->Destroy();
    SetLanguage(Language::kChinese);
    Open();
    EXPECT_EQ(buttons().size(), 11U);
}

TEST_F(MainWindow, LeavesOnlyAfterAYesAndEmptiesItsWorkingFolder) {
    folder.Write("Temp/left/over.bin", "x");
    Open();
    Press(window, wxID_OK);
    Press(window, wxID_CANCEL);
    EXPECT_EQ(prompts.boxes, std::vector{Question("Do you really want to exit?")});
    EXPECT_FALSE(PumpUntil([&] { return !window; }, 200));
    EXPECT_TRUE(std::filesystem::exists(folder / "Temp/left/over.bin"));
    prompts.answers = {true};
    Press(window, wxID_CANCEL);
    EXPECT_TRUE(PumpUntil([&] { return !window; }));
    EXPECT_TRUE(std::filesystem::is_empty(folder / "Temp"));
}

}  // namespace
}  // namespace sontaro::test
