#include <fmt/printf.h>
#include <wx/weakref.h>

#include "app/features.h"
#include "devices/scan_dialog.h"
#include "ui/ui_support.h"

namespace sontaro::test {
namespace {

class MainWindow : public UiTest {
   protected:
    ~MainWindow() override {
        if (window) window->Destroy();
        EXPECT_TRUE(PumpUntil([&] { return !window; }));
    }

    void Open() { window = OpenMainWindow(); }

    /// Opens the remote control of the first player and leaves it again.
    void Control() {
        const ModalScript script{
            [&](wxDialog* scan) {
                Press(scan, kScanButton);
                auto* list = Find<DeviceList>(scan, kScanList);
                ASSERT_TRUE(PumpUntil([&] { return list->GetItemCount() > 0; }));
                list->Select(0);
                Press(scan, wxID_OK);
            },
            [&](wxDialog* control) {
                prompts.answers.push_back(true);
                Press(control, wxID_CANCEL);
            }};
        Press(window, FeatureButton(Window::kVideoControl));
    }

    /// The MAC address that the simulated player makes from its own.
    std::string MacOf(std::size_t index) {
        const auto& octets = network.Player(index).octets;
        return fmt::sprintf("02:00:%02X:%02X:%02X:%02X", octets[0], octets[1], octets[2],
                            octets[3]);
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
    Control();
    EXPECT_TRUE(Says(window, "Current player: " + PlayerText(player)));
    const ModalScript script{[&](wxDialog* scan) {
                                 Press(scan, kScanButton);
                                 auto* list = Find<DeviceList>(scan, kScanList);
                                 EXPECT_TRUE(PumpUntil([&] { return list->GetItemCount() == 2; }));
                                 EXPECT_TRUE(list->IsSelected(0));
                                 list->Select(0);
                                 Press(scan, wxID_OK);
                             },
                             [&](wxDialog* overlay) {
                                 EXPECT_TRUE(Says(overlay, PlayerText(player)));
                                 prompts.answers.push_back(true);
                                 Press(overlay, wxID_CANCEL);
                             },
                             [&](wxDialog* scan) {
                                 edit("moved");
                                 Press(scan, wxID_CANCEL);
                             }};
    Press(window, FeatureButton(Window::kOsd));
    Press(window, FeatureButton(Window::kOsd));
    EXPECT_TRUE(Says(window, "Current player: " + PlayerText(player)));
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
