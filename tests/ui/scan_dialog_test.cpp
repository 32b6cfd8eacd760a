#include <wx/clipbrd.h>
#include <wx/combobox.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include "devices/remarks_dialog.h"
#include "devices/scan_dialog.h"
#include "ui/ui_support.h"

namespace sontaro::test {
namespace {

class ScanDialog : public UiTest {
   protected:
    static DeviceList* List(wxWindow* dialog) { return Find<DeviceList>(dialog, kScanList); }

    /// Presses the scan button and waits until `count` players are listed.
    void FindPlayers(wxDialog* dialog, int count) {
        Press(dialog, kScanButton);
        ASSERT_TRUE(PumpUntil([&] { return List(dialog)->GetItemCount() == count; }));
    }

    /// Sends the list an event of a row, as a click does.
    static void ActOnRow(wxDialog* dialog, wxEventType type, long row) {
        wxListEvent event(type, kScanList);
        event.SetEventObject(List(dialog));
        event.SetIndex(row);
        List(dialog)->GetEventHandler()->ProcessEvent(event);
    }

    int Open(ChoiceMode mode, ModalScript::Step step) {
        return Open(mode, Scan(), {std::move(step)});
    }
    int Open(ChoiceMode mode, const ScanSetup& setup,
             std::initializer_list<ModalScript::Step> steps) {
        const ModalScript script(steps);
        CScanForDevices dialog(nullptr, services, setup, mode);
        const int result = dialog.ShowModal();
        chosen = dialog.Chosen();
        return result;
    }

    std::vector<DeviceRecord> chosen;
};

TEST_F(ScanDialog, TheChosenPlayerIsHandedOnButOfAnotherNetworkOnlyAfterAYes) {
    StartPlayers(3);
    prompts.answers = {false, true};
    EXPECT_EQ(wxID_OK, Open(ChoiceMode::kSingle, [&](wxDialog* dialog) {
                  FindPlayers(dialog, 3);
                  Press(dialog, wxID_OK);
                  EXPECT_EQ(prompts.boxes, std::vector{Warning("Please choose a device first!")});
                  List(dialog)->Select(1);
                  Find<wxComboBox>(dialog, kScanAddress)->SetValue("192.168.1.5");
                  Press(dialog, wxID_OK);
                  EXPECT_TRUE(dialog->IsModal());
                  Press(dialog, wxID_OK);
              }));
    ASSERT_EQ(prompts.boxes.size(), 3U);
    EXPECT_EQ(prompts.boxes[1].kind, Box::Kind::kQuestion);
    ASSERT_EQ(chosen.size(), 1U);
    EXPECT_EQ(chosen[0].ip, FormatIpv4(network.Player(1)));
    EXPECT_EQ(chosen[0].tcpPort, players->Player(1).Address().port);
}

TEST_F(ScanDialog, EightTickedPlayersAreAcceptedAndNineAreNot) {
    StartPlayers(9);
    EXPECT_EQ(wxID_OK, Open(ChoiceMode::kMultiple, [&](wxDialog* dialog) {
                  FindPlayers(dialog, 9);
                  Press(dialog, wxID_OK);
                  for (long row = 0; row < 9; ++row) ActOnRow(dialog, wxEVT_LIST_ITEM_CHECKED, row);
                  Press(dialog, wxID_OK);
                  EXPECT_EQ(prompts.boxes, (std::vector{Warning("Please tick the devices!"),
                                                        Warning("Too many devices selected!")}));
                  ActOnRow(dialog, wxEVT_LIST_ITEM_UNCHECKED, 4);
                  Press(dialog, wxID_OK);
              }));
    ASSERT_EQ(chosen.size(), 8U);
    EXPECT_EQ(chosen[4].ip, FormatIpv4(network.Player(5)));
}

TEST_F(ScanDialog, ClicksEditRemarksForTheNextScanAndCopyTheIdentity) {
    StartPlayers(1);
    const auto shown = [](wxDialog* dialog) {
        return FromWx(List(dialog)->GetItemText(0, static_cast<int>(DeviceColumn::kRemarks)));
    };
    Open(ChoiceMode::kSingle, Scan(),
         {[&](wxDialog* dialog) {
              FindPlayers(dialog, 1);
              ActOnRow(dialog, wxEVT_LIST_ITEM_ACTIVATED, 0);
              EXPECT_EQ(shown(dialog), "一号厅");
              ActOnRow(dialog, wxEVT_LIST_ITEM_RIGHT_CLICK, 0);
              Press(dialog, wxID_CANCEL);
          },
          [](wxDialog* edit) {
              Find<wxTextCtrl>(edit, kRemarksText)->SetValue(wxString::FromUTF8("一号厅"));
              edit->EndModal(wxID_OK);
          }});
    DeviceRemarks reread(folder / "remarks.json");
    Open(ChoiceMode::kSingle, {reread, FormatIpv4(network.Local())}, {[&](wxDialog* dialog) {
             FindPlayers(dialog, 1);
             EXPECT_EQ(shown(dialog), "一号厅");
             Press(dialog, wxID_CANCEL);
         }});
    wxTextDataObject copied;
    ASSERT_TRUE(wxTheClipboard->Open());
    EXPECT_TRUE(wxTheClipboard->GetData(copied));
    wxTheClipboard->Close();
    EXPECT_EQ(FromWx(copied.GetText()), players->Player(0).Identity().id);
    EXPECT_EQ(prompts.boxes, std::vector{Notice("ID number has been copied to the Clipboard")});
}

TEST_F(ScanDialog, AVanishedAddressStaysAndIsExplainedWhenItIsUsed) {
    if (kOnWindows) GTEST_SKIP() << "Wine binds datagram sockets to any address";
    folder.Write("preferences.json", R"({"localAddress": "203.0.113.9"})");
    preferences.Reload();
    Open(ChoiceMode::kSingle, {remarks, ""}, {[&](wxDialog* dialog) {
             auto* address = Find<wxComboBox>(dialog, kScanAddress);
             EXPECT_EQ(address->GetValue(), "203.0.113.9");
             Press(dialog, kScanButton);
             EXPECT_EQ(prompts.boxes,
                       std::vector{Warning("This local IP cannot be used. It may no longer belong "
                                           "to this computer; please choose another one.")});
             prompts.boxes.clear();
             address->SetValue("");
             Press(dialog, kScanButton);
             EXPECT_EQ(
                 prompts.boxes,
                 std::vector{Warning("This computer has no network address to scan from. Connect a "
                                     "network cable or enable a network adapter, or type the "
                                     "address to use into \"Local IP\".")});
             address->SetValue(FormatIpv4(network.Local()));
             Press(dialog, kScanButton);
             Press(dialog, wxID_CANCEL);
         }});
    EXPECT_EQ(prompts.boxes.size(), 1U);
    JsonFile reread(folder / "preferences.json");
    EXPECT_EQ(reread.Root()["localAddress"], FormatIpv4(network.Local()));
}

TEST_F(ScanDialog, EnterAndEscapeDoNotCloseIt) {
    EXPECT_EQ(wxID_CANCEL, Open(ChoiceMode::kSingle, [&](wxDialog* dialog) {
                  dialog->Raise();
                  Find<wxComboBox>(dialog, kScanAddress)->SetFocus();
                  ASSERT_TRUE(PumpUntil([&] { return dialog->IsActive(); }));
                  wxUIActionSimulator keyboard;
                  keyboard.Char(WXK_RETURN);
                  dialog->FindWindow(kScanButton)->SetFocus();
                  keyboard.Char(WXK_RETURN);
                  keyboard.Char(WXK_ESCAPE);
                  PumpUntil([] { return false; },
                            450);  // the toolkit presses default buttons with a delay
                  EXPECT_EQ(Find<wxButton>(dialog, kScanButton)->GetLabelText(), "Scan");
                  EXPECT_TRUE(dialog->IsModal());
                  EXPECT_TRUE(prompts.boxes.empty());
                  Press(dialog, wxID_CANCEL);
              }));
}

}  // namespace
}  // namespace sontaro::test
