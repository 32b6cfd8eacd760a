#include <wx/gauge.h>
#include <wx/weakref.h>

#include "app/feature_buttons.h"
#include "base/json.h"
#include "devices/scan_dialog.h"
#include "ui/ui_support.h"
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
        Press(window, kVideoControlButton);
    }

    static std::string TextOf(wxWindow* dialog, int id) {
        return FromWx(Find<wxControl>(dialog, id)->GetLabelText());
    }

    /// Whether the first player receives the remote control command `document` in time.
    bool PlayerReceives(int command, const std::string& key, const std::string& value) {
        const auto matches = [&](const DevicePacket& packet) {
            if (packet.header.command != kCommandVideo) return false;
            const auto document = ParseJson(AsText(packet.payload));
            return document && (*document)["cmdId"] == command && (*document)[key] == value;
        };
        return PumpUntil([&] {
            return players->Player(0).WaitForPacket(matches, std::chrono::milliseconds(1));
        });
    }

    static bool IsReady(wxDialog* control) {
        return PumpUntil([&] { return Find<wxGauge>(control, kProgressBar)->GetValue() > 0; });
    }

    wxWeakRef<CSontaroDlg> window;
};

TEST_F(MainWindow, PressingPlayReachesThePlayerAndThePositionComesBack) {
    StartPlayers(1);
    players->Player(0).ChangeState([](simulator::PlayerState& state) {
        state.captions = {{simulator::Action::kPause, "暂停"},
                          {simulator::Action::kPlay, "R&B 开始"}};
    });
    Open();
    Control([&](wxDialog* control) {
        ASSERT_TRUE(IsReady(control));
        EXPECT_EQ(TextOf(control, kTitleText).find("->"), 6U);
        for (const VideoButton& button : kVideoButtons)
            EXPECT_EQ(control->FindWindow(button.id)->IsShown(),
                      button.id == 2109 || button.id == 2110);
        EXPECT_EQ(TextOf(control, 2109), "R&B 开始");
        Press(control, 2110);
        EXPECT_TRUE(PlayerReceives(kVideoPlayMode, "playMode", "暂停"));
        EXPECT_FALSE(players->Player(0).State().playing);
        Press(control, 2109);
        EXPECT_TRUE(PlayerReceives(kVideoPlayMode, "playMode", "R&B 开始"));
        EXPECT_TRUE(players->Player(0).State().playing);
    });
    EXPECT_TRUE(players->Player(0).WaitForConnectionCount(0, std::chrono::seconds(5)));
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
