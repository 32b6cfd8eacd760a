#include "controlprotocol/control_protocol_dialog.h"

#include <wx/propgrid/propgrid.h>
#include <wx/srchctrl.h>
#include <wx/textctrl.h>

#include "base/file.h"
#include "ui/ui_support.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;

struct ProtocolDialog : FeatureTest {
    void Run(const std::function<void()>& step) {
        RunDialog<CControlProtocol>([&] {
            const bool isRead = PumpUntil([&] { return Enabled(wxID_OK); });
            EXPECT_TRUE(isRead) << Text(kProtocolState);
            if (isRead) step();
        });
    }
    bool Enabled(int id) { return dialog->FindWindow(id)->IsEnabled(); }
    wxPropertyGrid& Grid(int tab) { return *Find<wxPropertyGrid>(dialog, kProtocolGrid + tab); }
    std::string Value(int tab, const char* row) {
        return FromWx(Grid(tab).GetPropertyValueAsString(row));
    }
    std::string Text(int id) { return FromWx(Find<wxStaticText>(dialog, id)->GetLabelText()); }
    std::string Tab(std::size_t page) {
        return FromWx(Find<wxNotebook>(dialog, kProtocolTabs)->GetPageText(page));
    }
    void Type(int tab, const char* row, const char* text) {
        Find<wxNotebook>(dialog, kProtocolTabs)->SetSelection(static_cast<std::size_t>(tab - 1));
        Grid(tab).SelectProperty(row, true);
        Grid(tab).GetEditorTextCtrl()->SetValue(text);
    }
    std::string Held() { return Player().State().controlProtocol; }

    std::filesystem::path file = ControlProtocolPath(folder.Path());
};

TEST_F(ProtocolDialog, UploadsAnEditThatIsStillOpenAndWhatWasLearned) {
    Run([&] {
        Find<wxNotebook>(dialog, kProtocolTabs)->SetSelection(kCategoryGrid);
        Grid(3).SelectProperty("VideoType/4/TypeName");
        Player().AddSerialBytes({0xa5, 0x0b});
        EXPECT_TRUE(PumpUntil([&] { return Value(3, "VideoType/4/SendCmd") == "A50B"; }));
        EXPECT_TRUE(Grid(3).GetPropertyByName("VideoType/4/SendCmd")->HasFlag(wxPG_PROP_MODIFIED));
        EXPECT_EQ(Text(kProtocolLine), "Learned A50B for Video Type5, in place of A5020503.");
        Type(2, "Serial/NextType", "a5 0");
        Press(dialog, wxID_OK);
        EXPECT_TRUE(PumpUntil([&] { return !prompts.boxes.empty(); }));
        EXPECT_EQ(prompts.boxes, std::vector{Warning("input error!")});
        Type(2, "Serial/NextType", " a5 0c");
        Press(dialog, wxID_OK);
        EXPECT_TRUE(PumpUntil([&] { return Held() == *ReadFile(file); }));
        EXPECT_TRUE(PumpUntil([&] { return Text(kProtocolState) == "The player has confirmed."; }));
        ControlProtocolModel model;
        EXPECT_TRUE(ReadControlProtocol(Held(), model).ok());
        EXPECT_EQ(model.videoTypes[4].sendCommand + model.serial.nextType, "A50BA50C");
        EXPECT_TRUE(Enabled(wxID_OK));
    });
}

TEST_F(ProtocolDialog, OpensWhatWasThereBeforeTheUpload) {
    Run([&] {
        const std::string before = Value(2, "Serial/NextType");
        Type(2, "Serial/NextType", "a5 0c");
        Press(dialog, wxID_OK);
        EXPECT_TRUE(PumpUntil([&] { return Text(kProtocolState) == "The player has confirmed."; }));
        OpenEarlier();
        EXPECT_EQ(Value(2, "Serial/NextType"), before);
        Press(dialog, kUndoButton);
        EXPECT_EQ(Value(2, "Serial/NextType"), "A50C");
    });
}

TEST_F(ProtocolDialog, LearnsOnlyWhatTheUserWantsAndSees) {
    Run([&] {
        const auto hears = [&](std::uint8_t byte, const std::string& said) {
            Player().AddSerialBytes({byte});
            EXPECT_TRUE(PumpUntil([&] { return Text(kProtocolLine) == said; }))
                << Text(kProtocolLine);
        };
        auto* tabs = Find<wxNotebook>(dialog, kProtocolTabs);
        dialog->Raise();
        tabs->SetSelection(kCategoryGrid);
        Grid(3).SelectProperty("VideoType/4/TypeName");
        const std::string held = Value(3, "VideoType/4/SendCmd");
        Click(dialog->FindWindow(kProtocolLearn));
        EXPECT_TRUE(
            PumpUntil([&] { return !Find<wxCheckBox>(dialog, kProtocolLearn)->GetValue(); }));
        hears(0x01, "Received 01, which was not learned.");
        Click(dialog->FindWindow(kProtocolLearn));
        EXPECT_TRUE(
            PumpUntil([&] { return Find<wxCheckBox>(dialog, kProtocolLearn)->GetValue(); }));
        Type(3, "VideoType/4/SendCmd", "half");
        hears(0x02, "Received 02. Not learned: a cell is being edited.");
        EXPECT_EQ(Grid(3).GetEditorTextCtrl()->GetValue(), "half");
        Grid(3).GetEditorTextCtrl()->SetValue(held);
        tabs->SetSelection(0);
        tabs->SetSelection(kCategoryGrid);
        hears(0x03, "Received 03. To learn it, choose a row of a video type.");
        tabs->SetFocus();
        for (std::size_t i = 0; i < tabs->GetPageCount(); ++i)
            wxUIActionSimulator().Char(WXK_TAB, wxMOD_CONTROL);
        EXPECT_TRUE(PumpUntil([&] { return Grid(3).GetSelection() != nullptr; }));
        hears(0x04, "Received 04. To learn it, choose a row of a video type.");
        EXPECT_EQ(Value(3, "VideoType/4/SendCmd"), held);
    });
}

TEST_F(ProtocolDialog, TellsThatItsLinkHasEndedAndConnectsAgain) {
    Run([&] {
        const auto label = [&] { return FromWx(dialog->FindWindow(kReadAgainButton)->GetLabel()); };
        const auto isConnected = [&] { return Text(kProtocolLine).starts_with("Connected"); };
        dialog->Raise();
        for (const bool byKey : {false, true}) {
            Player().DropConnections();
            EXPECT_TRUE(
                PumpUntil([&] { return Text(kProtocolLine) == "Not connected to the player."; }));
            EXPECT_EQ(label(), "Connect a&gain");
            if (byKey)
                wxUIActionSimulator().Char('R', wxMOD_CONTROL);
            else
                Click(dialog->FindWindow(kReadAgainButton));
            EXPECT_TRUE(PumpUntil(isConnected));
            EXPECT_EQ(label(), "Read a&gain");
        }
        EXPECT_TRUE(
            PumpUntil([&] { return Text(kProtocolState) == "As the player has sent them."; }));
        Player().DropConnections();
        EXPECT_TRUE(PumpUntil([&] { return !isConnected(); }));
        Player().ForgetPackets();
        Press(dialog, wxID_OK);
        EXPECT_TRUE(PumpUntil([&] { return Text(kProtocolState) == "The player has confirmed."; }));
    });
}

TEST_F(ProtocolDialog, UndoesByKeysWhereverTheRowIsButNotWhileATextIsTyped) {
    Run([&] {
        auto* tabs = Find<wxNotebook>(dialog, kProtocolTabs);
        const std::string held = Value(2, "Serial/NextType");
        const auto press = [](char key) { wxUIActionSimulator().Char(key, wxMOD_CONTROL); };
        Type(2, "Serial/NextType", "A501");
        dialog->Raise();
        Grid(2).GetEditorTextCtrl()->SetFocus();
        ASSERT_TRUE(PumpUntil([&] { return dialog->IsActive(); }));
        press('Z');
        wxUIActionSimulator().Char(WXK_RETURN);
        ASSERT_TRUE(PumpUntil([&] { return Value(2, "Serial/NextType") == "A501"; }));
        tabs->SetSelection(0);
        Find<wxSearchCtrl>(dialog, kProtocolFilter)->SetValue("KTV");
        Grid(1).SetFocus();
        press('Z');
        EXPECT_TRUE(PumpUntil([&] { return Value(2, "Serial/NextType") == held; }));
        EXPECT_EQ(tabs->GetSelection(), 1);
        EXPECT_EQ(Grid(2).GetSelection(), Grid(2).GetPropertyByName("Serial/NextType"));
        EXPECT_FALSE(Grid(2).IsPropertyModified("Serial/NextType") || Enabled(kUndoButton));
        press('Y');
        EXPECT_TRUE(PumpUntil([&] { return Grid(2).IsPropertyModified("Serial/NextType"); }));
        Click(dialog->FindWindow(kUndoButton));
        EXPECT_TRUE(PumpUntil([&] { return Value(2, "Serial/NextType") == held; }));
    });
}

TEST_F(ProtocolDialog, IsDoneOnceThePlayerRestarts) {
    Run([&] {
        prompts.answers = {true};
        Player().ForgetPackets();
        Press(dialog, wxID_OK);
        EXPECT_TRUE(
            PumpUntil([&] { return Text(kProtocolLine) == "Not connected to the player."; }));
        EXPECT_TRUE(Player().WaitForPacket(
            [](const DevicePacket& packet) { return packet.header.command == kCommandCloseLinks; },
            5s));
        EXPECT_TRUE(Player().WaitForConnectionCount(0, 5s));
        EXPECT_FALSE(Enabled(wxID_OK) || Enabled(kOpenProtocol) || Enabled(kSaveProtocol));
        EXPECT_NE(Text(kProtocolState).find("restarts"), std::string::npos);
    });
}

TEST_F(ProtocolDialog, SaysOnWhichTabsTheFilterFindsSomething) {
    Run([&] {
        Grid(3).Collapse("VideoType/1");
        Find<wxSearchCtrl>(dialog, kProtocolFilter)->SetValue("PORT");
        EXPECT_EQ(Tab(0) + "|" + Tab(1) + "|" + Tab(4), "KTV (1)|Serial (0)|Projectors (30)");
        prompts.file = folder.Write("x.JSON", R"({"KtvDev":{"KTVServerPort":8}})");
        Press(dialog, kOpenProtocol);
        EXPECT_EQ(Value(1, "KtvDev/KTVServerPort"), "8");
        EXPECT_EQ(Tab(0), "KTV (1)");
        Find<wxSearchCtrl>(dialog, kProtocolFilter)->Clear();
        EXPECT_EQ(Tab(0), "KTV");
        EXPECT_FALSE(Grid(3).IsPropertyExpanded("VideoType/1"));
        prompts.answers = {false};
        Press(dialog, wxID_CANCEL);
        EXPECT_TRUE(dialog->IsEnabled());
    });
}

/// The texts of a language; "Flie" is what the product has always said.
struct FileTexts : NamedCase {
    Language language;
    std::string open, save, filter, suggested, exit;
};

struct ProtocolFiles : ProtocolDialog, testing::WithParamInterface<FileTexts> {};

TEST_P(ProtocolFiles, AreAskedForInTheLanguageOfTheProcess) {
    const FileTexts& texts = GetParam();
    const InLanguage language(texts.language);
    Run([&] {
        Press(dialog, kOpenProtocol);
        Press(dialog, kSaveProtocol);
    });
    const std::string filter = texts.filter + "|*.JSON;*.json;*.Json";
    EXPECT_EQ(prompts.boxes, (std::vector{ToOpen(texts.open, filter, "JSON"),
                                          ToSave(texts.save, filter, texts.suggested, "JSON"),
                                          Question(texts.exit)}));
}

// clang-format off
const FileTexts kFileTexts[] = {
    {"English", Language::kEnglish, "Open ControlProtocol file", "Save ControlProtocol file",
     "ControlProtocol Flie(*.JSON)", "ControlProtocol", "Do you really want to exit?"},
    {"Chinese", Language::kChinese, "打开控制协议文件", "保存控制协议文件",
     "控制协议文件(*.JSON)", "控制协议", "【真的要退出程序吗?】"},
};
// clang-format on
INSTANTIATE_TEST_SUITE_P(Of, ProtocolFiles, testing::ValuesIn(kFileTexts), kCaseName);

}  // namespace
}  // namespace sontaro::test
