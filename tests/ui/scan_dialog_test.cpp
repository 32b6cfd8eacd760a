#include <wx/clipbrd.h>
#include <wx/combobox.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include "devices/remarks_dialog.h"
#include "devices/scan_dialog.h"
#include "simulator/discovery_reply.h"
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

    static wxComboBox* AddressIn(wxWindow* dialog) {
        return Find<wxComboBox>(dialog, kScanAddress);
    }
    static std::string TextOf(wxWindow* dialog, int id) {
        return FromWx(Find<wxStaticText>(dialog, id)->GetLabelText());
    }

    static int ColumnsWidth(wxWindow* dialog) {
        int width = 0;
        for (int column = 0; column < List(dialog)->GetColumnCount(); ++column)
            width += List(dialog)->GetColumnWidth(column);
        return width;
    }

    /// Really clicks into a row; with -1 below all rows.
    static void Click(wxDialog* dialog, long row, int button = wxMOUSE_BTN_LEFT) {
        DeviceList* list = List(dialog);
        wxRect place(0, list->GetClientSize().y - dialog->FromDIP(60), 200, 20);
        if (row >= 0) list->GetItemRect(row, place);
        dialog->Raise();
        wxUIActionSimulator mouse;
        mouse.MouseMove(list->ClientToScreen(place.GetPosition() + wxPoint(60, 10)));
        mouse.MouseClick(button);
    }
    static void Type(wxDialog* dialog, std::initializer_list<int> keys) {
        dialog->Raise();
        List(dialog)->SetFocus();
        ASSERT_TRUE(PumpUntil([&] { return dialog->IsActive(); }));
        for (const int key : keys) wxUIActionSimulator().Char(key);
    }

    /// A player at the first one's address announces itself.
    void Receive(const std::string& id, const std::array<std::uint8_t, 6>& mac) {
        simulator::PlayerIdentity identity;
        identity.id = id;
        identity.mac = mac;
        const Bytes reply = simulator::DiscoveryReply(identity, players->Player(0).Address());
        UdpEvent event;
        event.code = LinkCode::kReceived;
        event.bytes = reply;
        directory.Send(TitleOf(Window::kScan), {MessageId::kUdpEvent, 0, event, 0});
    }

    /// What the preferences hold from an earlier run.
    void Remember(const std::string& address) {
        folder.Write("preferences.json", R"({"localAddress": ")" + address + "\"}");
        preferences.Reload();
    }
    std::string Remembered() {
        return JsonFile(folder / "preferences.json").Root()["localAddress"].asString();
    }

    /// A scan from one of these addresses, which may change.
    ScanSetup Offering(std::vector<LocalAdapter> addresses) {
        offered = std::move(addresses);
        ScanSetup setup{remarks, ""};
        setup.addresses = [this] { return offered; };
        return setup;
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
    std::vector<LocalAdapter> offered;
    bool edited = false;
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
    Remember("203.0.113.9");
    Open(ChoiceMode::kSingle, Offering({}), {[&](wxDialog* dialog) {
             EXPECT_EQ(AddressIn(dialog)->GetValue(), "203.0.113.9");
             EXPECT_EQ(TextOf(dialog, kScanAddressState), "Not on this computer at present");
             offered = {{"eth0", FormatIpv4(network.Local())}};
             Press(dialog, kScanButton);
             ASSERT_EQ(prompts.boxes.size(), 1U);
             EXPECT_NE(prompts.boxes[0].text.find("cannot be used"), std::string::npos);
             EXPECT_EQ(AddressIn(dialog)->GetCount(), 1U);  // to choose from
             AddressIn(dialog)->SetValue(FormatIpv4(network.Local()));
             EXPECT_EQ(TextOf(dialog, kScanAddressState), "");
             Press(dialog, kScanButton);
             Press(dialog, wxID_CANCEL);
         }});
    EXPECT_EQ(prompts.boxes.size(), 1U);
    EXPECT_EQ(Remembered(), FormatIpv4(network.Local()));
}

TEST_F(ScanDialog, WithoutANetworkSaysSoAndRemembersNothing) {
    StartPlayers(1);
    Remember("127.0.0.1");
    offered.clear();
    Open(ChoiceMode::kSingle, Offering({}), {[&](wxDialog* dialog) {
             EXPECT_EQ(AddressIn(dialog)->GetValue(), "");
             Press(dialog, kScanButton);
             EXPECT_EQ(prompts.boxes.size(), 1U);
             for (const std::string& text : {TextOf(dialog, kScanState), prompts.boxes.at(0).text})
                 EXPECT_NE(text.find("no network address"), std::string::npos) << text;
             EXPECT_EQ(Remembered(), "127.0.0.1");
             offered = {{"eth0", FormatIpv4(network.Local())}};  // the cable is back
             FindPlayers(dialog, 1);
             EXPECT_EQ(Remembered(), FormatIpv4(network.Local()));
             Press(dialog, wxID_CANCEL);
         }});
}

TEST_F(ScanDialog, OffersAdaptersByNameAsTheyAreWhenTheListDropsDown) {
    const std::string first = FormatIpv4(network.Local());
    const std::string second = FormatIpv4(network.Player(50));
    Open(ChoiceMode::kSingle, Offering({{"eth0", first}}), {[&](wxDialog* dialog) {
             wxComboBox* address = AddressIn(dialog);
             EXPECT_EQ(FromWx(address->GetValue()), first + " (eth0)");
             ASSERT_TRUE(PumpUntil([&] { return TextOf(dialog, kScanState)[0] == 'N'; }));
             EXPECT_EQ(Remembered(), "");  // asked from there, and nobody answered
             int drops = 0;
             address->Bind(wxEVT_COMBOBOX_DROPDOWN, [&](wxCommandEvent& event) {
                 ++drops;
                 event.Skip();
             });
             offered.push_back({"USB 网卡", second});
             dialog->Raise();
             const wxSize size = address->GetSize();
             wxUIActionSimulator user;
             user.MouseMove(address->ClientToScreen(wxPoint(size.x - 10, size.y / 2)));
             user.MouseClick();
             EXPECT_TRUE(PumpUntil([&] { return drops == 2; }));  // closed for a while
             EXPECT_EQ(FromWx(address->GetValue()), first + " (eth0)");
             EXPECT_EQ(FromWx(address->GetString(1)), second + " (USB 网卡)");
             user.Char(WXK_DOWN);
             user.Char(WXK_RETURN);
             EXPECT_TRUE(PumpUntil([&] { return Remembered() == second; }));
             EXPECT_EQ(FromWx(address->GetValue()), second + " (USB 网卡)");
             Press(dialog, wxID_CANCEL);
         }});
}

TEST_F(ScanDialog, AnEmptyListTakesClicksAndKeys) {
    Open(ChoiceMode::kSingle, [&](wxDialog* dialog) {
        Click(dialog, -1, wxMOUSE_BTN_RIGHT);
        Click(dialog, -1);
        Type(dialog, {WXK_SPACE, WXK_RETURN, WXK_DOWN});
        EXPECT_TRUE(prompts.boxes.empty());
        Press(dialog, wxID_CANCEL);
    });
}

TEST_F(ScanDialog, AClickBelowTheRowsLeavesNoPlayerChosen) {
    StartPlayers(2);
    Open(ChoiceMode::kSingle, [&](wxDialog* dialog) {
        FindPlayers(dialog, 2);
        Click(dialog, 1);
        EXPECT_TRUE(PumpUntil([&] { return List(dialog)->IsSelected(1); }));
        Click(dialog, -1);
        EXPECT_TRUE(PumpUntil([&] { return List(dialog)->GetSelectedItemCount() == 0; }));
        Press(dialog, wxID_OK);
        EXPECT_EQ(prompts.boxes, std::vector{Warning("Please choose a device first!")});
        Press(dialog, wxID_CANCEL);
    });
}

TEST_F(ScanDialog, ADoubleClickEditsRemarksAndEnterDoesNot) {
    StartPlayers(1);
    Open(ChoiceMode::kSingle, Scan(),
         {[&](wxDialog* dialog) {
              FindPlayers(dialog, 1);
              Click(dialog, 0);
              Type(dialog, {WXK_RETURN, WXK_NUMPAD_ENTER, WXK_SPACE});
              EXPECT_FALSE(PumpUntil([&] { return !dialog->IsActive(); }, 300));
              wxUIActionSimulator().MouseDblClick();
              EXPECT_TRUE(PumpUntil([&] { return edited; }));
              Press(dialog, wxID_CANCEL);
          },
          [&](wxDialog* edit) {
              edited = true;
              edit->EndModal(wxID_CANCEL);
          }});
}

TEST_F(ScanDialog, HandsOnWhatWasShownThoughPlayersAnswerDuringTheQuestion) {
    StartPlayers(1);
    prompts.answers = {true};
    EXPECT_EQ(wxID_OK, Open(ChoiceMode::kSingle, [&](wxDialog* dialog) {
                  FindPlayers(dialog, 1);
                  List(dialog)->Select(0);
                  Find<wxComboBox>(dialog, kScanAddress)->SetValue("192.168.1.5");
                  prompts.whileShown = [&] {
                      EXPECT_TRUE(PumpUntil([&] { return AddressIn(dialog)->IsEnabled(); }));
                      Receive("impostor", {2, 0, 0, 0, 0, 1});
                  };
                  Press(dialog, wxID_OK);
              }));
    ASSERT_EQ(chosen.size(), 1U);
    EXPECT_EQ(chosen[0].id, players->Player(0).Identity().id);
}

TEST_F(ScanDialog, SaysWhenTheClipboardIsNotToBeHad) {
    StartPlayers(1);
    Open(ChoiceMode::kSingle, [&](wxDialog* dialog) {
        FindPlayers(dialog, 1);
        const wxClipboardLocker held;
        ActOnRow(dialog, wxEVT_LIST_ITEM_RIGHT_CLICK, 0);
        EXPECT_EQ(prompts.boxes,
                  std::vector{Warning("The clipboard cannot be used, nothing has been copied.")});
        Press(dialog, wxID_CANCEL);
    });
}

TEST_F(ScanDialog, ShowsTheRemarksOnASmallScreenWhateverItsColumnsWere) {
    for (const Language language : {Language::kEnglish, Language::kChinese}) {
        const InLanguage spoken(language);
        Open(ChoiceMode::kSingle, [&](wxDialog* dialog) {
            dialog->SetSize(1024, 768);
            List(dialog)->SetColumnWidth(static_cast<int>(DeviceColumn::kVersion), 2000);
            Press(dialog, wxID_CANCEL);
        });
        Open(ChoiceMode::kSingle, [&](wxDialog* dialog) {
            EXPECT_EQ(dialog->GetSize(), wxSize(1024, 768));
            EXPECT_LE(ColumnsWidth(dialog), List(dialog)->GetClientSize().x);
            dialog->SetSize(1000, 700);
            EXPECT_TRUE(
                PumpUntil([&] { return ColumnsWidth(dialog) <= List(dialog)->GetClientSize().x; }));
            Press(dialog, wxID_CANCEL);
        });
    }
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
