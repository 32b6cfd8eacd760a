#include "videocontrol/video_control_dialog.h"

#include <wx/gauge.h>
#include <wx/notebook.h>
#include <wx/uiaction.h>

#include <algorithm>
#include <limits>
#include <set>

#include "base/json.h"
#include "support/platform.h"
#include "ui/ui_support.h"
#include "videocontrol/video_control_tab.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using simulator::Action;
using simulator::Caption;
using Captions = std::vector<Caption>;

/// The window of a player that names these buttons.
struct RemoteWindow : FeatureTest {
    void Run(const Captions& captions, const std::function<void()>& step) {
        StartPlayers(1);
        Player().ChangeState([&](simulator::PlayerState& state) {
            state.captions = captions;
            state.position = 1min;
        });
        RunDialog<CVideoControlTab>([&] {
            const auto ready = [&] { return Find<wxGauge>(dialog, kProgressBar)->GetValue() > 0; };
            EXPECT_TRUE(PumpUntil(ready));
            step();
        });
    }
    /// The player names other buttons.
    void Rename(const Captions& captions) {
        Json::Value reply;
        reply["code"] = 0;
        reply["cmdId"] = kVideoCaptions;
        for (const Caption& caption : captions) {
            Json::Value& entry = reply["data"].append(Json::objectValue);
            entry["type"] = static_cast<int>(caption.type);
            entry["playMode"] = caption.text;
        }
        Reply(reply);
    }
    void Reply(const Json::Value& reply) {
        const std::string ip = FormatIpv4(Player().Address().address);
        constexpr ConnectionNumber kNewest = std::numeric_limits<ConnectionNumber>::max();
        WindowMessage message{MessageId::kVideoReply,
                              10,
                              ReplyRecord{ToBytes(WriteJson(reply))},
                              0,
                              {{ip, 0, 0}, {}, kNewest}};
        EXPECT_TRUE(directory.Send(TitleOf(Window::kVideoControl), message));
        PumpUntil([] { return false; }, 50);
    }
    wxControl& Control(int id) { return *Find<wxControl>(dialog, id); }
    std::string Shown(int id) { return FromWx(Control(id).GetLabelText()); }
    std::string Tip(int id) { return FromWx(Control(id).GetToolTipText()); }
    /// Whether the whole text of a control has room in it.
    bool Fits(int id) {
        return Control(id).GetTextExtent(Control(id).GetLabelText()).x <= Control(id).GetSize().x;
    }
    bool ReceivesPress(const std::string& caption) {
        const auto matches = [&](const DevicePacket& packet) {
            return packet.header.command == kCommandVideo &&
                   (*ParseJson(AsText(packet.payload)))["playMode"] == caption;
        };
        return PumpUntil([&] { return Player().WaitForPacket(matches, 1ms).has_value(); }, 3000);
    }
    /// Whether controls that are shown beside each other stand apart and within their parent.
    static bool IsTidy(wxWindow& parent) {
        std::vector<wxRect> places;
        for (wxWindow* child : parent.GetChildren()) {
            if (!child->IsShown()) continue;
            const wxRect place = child->GetRect();
            const auto overlaps = [&](const wxRect& other) { return other.Intersects(place); };
            const bool isPage = dynamic_cast<wxNotebook*>(&parent) != nullptr;
            const bool isCut = !isPage && place.GetRight() > parent.GetSize().x;
            if (isCut || std::ranges::any_of(places, overlaps) || !IsTidy(*child)) return false;
            places.push_back(place);
        }
        return true;
    }

    const Captions factory = simulator::FactoryState().captions;
};

TEST_F(RemoteWindow, CutsLongCaptionsAndSendsThemWhole) {
    const std::string longOne = "Play every video of this folder in turn & begin anew...";
    Captions captions = factory;
    for (Caption& caption : captions) caption.text = longOne;
    Run(captions, [&] {
        EXPECT_LT(dialog->GetSize().x, 1000);
        EXPECT_TRUE(IsTidy(*dialog));
        EXPECT_TRUE(Shown(2104).starts_with("Play ") && Shown(2104).ends_with("…"));
        EXPECT_EQ(Tip(2104), longOne);
        Press(dialog, 2104);
        EXPECT_TRUE(ReceivesPress(longOne));
        dialog->SetSize(wxSize(1300, dialog->GetSize().y));
        EXPECT_TRUE(PumpUntil([&] { return Shown(2104).size() > 25; }));
        Rename(factory);
        EXPECT_EQ(Shown(2104) + Tip(2104), "类别循环");
    });
}

TEST_F(RemoteWindow, GrowsAndShrinksWithItsCaptionsAndKeepsWhatTheUserHasChosen) {
    const Captions few = {{Action::kPlay, "Play"}};
    Captions wide = factory;
    for (Caption& caption : wide) caption.text = std::string(55, 'w');
    Run(wide, [&] {
        const wxSize grown = dialog->GetSize();
        Rename(factory);
        const wxSize usual = dialog->GetSize();
        Rename(few);
        EXPECT_TRUE(grown.x > usual.x && usual.y > dialog->GetSize().y);
        EXPECT_FALSE(Control(2104).GetParent()->IsShown() || Control(2120).GetParent()->IsShown());
        EXPECT_TRUE(Control(2109).IsShownOnScreen() && IsTidy(*dialog));
        Rename(factory);
        EXPECT_EQ(dialog->GetSize(), usual);
        EXPECT_TRUE(Control(2120).IsShownOnScreen());
        dialog->SetSize(wxSize(1200, usual.y));
        Settle();
        Rename(few);
        EXPECT_EQ(dialog->GetSize().x, 1200);
        EXPECT_LT(dialog->GetSize().y, usual.y);
    });
}

TEST_F(RemoteWindow, ShowsAnyCaptionOnOneLine) {
    // clang-format off
    const std::pair<const char*, std::string> cases[] = {
        {"R&B _x", "R&B _x"}, {"two lines", "two\nlines"}, {"a tab", "a\ttab"}, {"", ""}, {"\u200Fא", "\u200Fא"},
        {"🎉", "🎉"}};
    // clang-format on
    wxSize usual;
    Run(factory, [&] {
        usual = dialog->GetSize();
        for (const auto& [shown, text] : cases) {
            Rename({{Action::kPlay, text}});
            EXPECT_EQ(Shown(2109), shown);
            Press(dialog, 2109);
            EXPECT_TRUE(ReceivesPress(text)) << shown;
        }
        Captions huge = factory;
        for (Caption& caption : huge) caption.text = std::string(5000, 'x');
        Rename(huge);
        EXPECT_LT(Tip(2109).size(), 400U);
        EXPECT_TRUE(IsTidy(*dialog));
        EXPECT_GT(dialog->GetSize().x, usual.x);
    });
    EXPECT_EQ(preferences.Root()["windows"]["videoControl"]["place"][2], usual.x);
}

TEST_F(RemoteWindow, TellsThatItsLinkHasEndedAndConnectsAgainByButtonAndByEveryPress) {
    Run(factory, [&] {
        const auto isReady = [&] { return Says(dialog, "Ready"); };
        EXPECT_TRUE(PumpUntil(isReady));
        dialog->Raise();
        for (const int id : {kReadAgainButton, 2109}) {
            Player().DropConnections();
            EXPECT_TRUE(PumpUntil([&] { return Says(dialog, "Not connected to the player."); }));
            EXPECT_EQ(Control(kReadAgainButton).GetLabel(), "Connect a&gain");
            Click(&Control(id));
            EXPECT_TRUE(PumpUntil(isReady));
            EXPECT_EQ(Control(kReadAgainButton).GetLabel(), "Read a&gain");
        }
        Player().Stop();
        EXPECT_TRUE(PumpUntil([&] { return Says(dialog, "Not connected to the player."); }));
        const wxStopWatch watch;
        Click(&Control(kReadAgainButton));
        EXPECT_TRUE(PumpUntil([&] { return Says(dialog, "The player cannot be reached."); }));
        EXPECT_LT(watch.Time(), 4000);
        EXPECT_TRUE(Player().Start());
        wxUIActionSimulator().Char('R', wxMOD_CONTROL);
        EXPECT_TRUE(PumpUntil(isReady));
    });
}

TEST_F(RemoteWindow, HasRoomForPositionsOfManyHours) {
    Run(factory, [&] {
        Json::Value reply;
        reply["code"] = 0;
        reply["cmdId"] = kVideoPosition;
        reply["data"]["currentPosition"] = 360000;
        for (const int duration : {360000, 2147483647}) {
            reply["data"]["totalDuration"] = duration;
            Reply(reply);
            EXPECT_TRUE(Shown(kPositionText).starts_with("100:00:00/"));
            EXPECT_TRUE(Fits(kPositionText) && IsTidy(*dialog)) << duration;
        }
    });
}

TEST_F(RemoteWindow, AsksBeforeItSwitchesAPlayerOff) {
    Run({{Action::kPowerOff, "Standby"}}, [&] {
        Player().ForgetPackets();
        Press(dialog, 2121);
        const std::string ip = FormatIpv4(Player().Address().address);
        EXPECT_EQ(prompts.boxes,
                  std::vector{Question("Do you really want to switch off player " + ip + "?")});
        Settle();
        EXPECT_TRUE(Player().State().poweredOn);
        prompts.answers = {true};
        prompts.whileShown = [&] { Rename({{Action::kPowerOff, "another"}}); };
        Press(dialog, 2121);
        prompts.whileShown = [] {};
        EXPECT_TRUE(ReceivesPress("Standby"));
        EXPECT_FALSE(Player().State().poweredOn);
    });
}

TEST_F(RemoteWindow, GivesEverySwitchAMnemonicOfItsOwn) {
    Run(factory, [&] {
        std::set<wxString> labels;
        for (const int id : {kFolderChoice, kLayoutChoice, kVideoChoice}) {
            wxWindow* button = Control(id).GetNextSibling();
            EXPECT_EQ(wxControl::GetLabelText(button->GetLabel()), "Switch");
            labels.insert(button->GetLabel());
        }
        EXPECT_EQ(labels.size(), 3U);
    });
}

TEST_F(RemoteWindow, KeepsWhatIsTypedWhenAListComesAndTheNamesWhileTheyAreLookedAt) {
    Run(factory, [&] {
        auto& names = *Find<wxComboBox>(dialog, kFolderChoice);
        const auto offers = [&](const char* name) { return names.FindString(name) >= 0; };
        const auto readAgainWith = [&](const char* name) {
            Player().ChangeState([&](auto& state) { state.folders.push_back({name, {}}); });
            Press(dialog, kReadAgainButton);
        };
        const auto& videos = *Find<wxComboBox>(dialog, kVideoChoice);
        EXPECT_TRUE(PumpUntil([&] { return names.GetCount() > 1; }));
        names.SetValue(names.GetString(0));
        const wxArrayString ofFolder = videos.GetStrings();
        readAgainWith("newest");
        EXPECT_TRUE(PumpUntil([&] { return offers("newest"); }));
        EXPECT_EQ(videos.GetStrings(), ofFolder);
        names.SetValue("typed");
        EXPECT_GT(videos.GetCount(), ofFolder.size());
        readAgainWith("new");
        EXPECT_TRUE(PumpUntil([&] { return offers("new"); }));
        EXPECT_EQ(names.GetValue(), "typed");
        names.Popup();
        readAgainWith("newer");
        EXPECT_FALSE(PumpUntil([&] { return offers("newer"); }, 1500));
        names.Dismiss();
        EXPECT_TRUE(PumpUntil([&] { return offers("newer"); }));
        EXPECT_EQ(names.GetValue(), "typed");
    });
}

TEST_F(RemoteWindow, ChoosesNothingByTheMouseWheel) {
    if (kOnWindows) GTEST_SKIP() << "nothing turns a wheel there";
    Run(factory, [&] {
        dialog->Raise();
        EXPECT_TRUE(PumpUntil([&] { return Find<wxComboBox>(dialog, kUsbVideo)->GetCount() > 1; }));
        for (const int id : {kLayoutChoice, kUsbVideo}) {
            auto& names = *Find<wxComboBox>(dialog, id);
            names.SetSelection(0);
            for (const int x : {20, names.GetSize().x - 15}) {
                TurnWheel(names, wxPoint(x, 12));
                EXPECT_EQ(names.GetSelection(), 0) << id;
            }
        }
    });
}

}  // namespace
}  // namespace sontaro::test
