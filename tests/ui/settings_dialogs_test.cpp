#include <fmt/format.h>
#include <gmock/gmock.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include "osd/osd_dialog.h"
#include "settings/custom_settings_dialogs.h"
#include "support/fake_window.h"
#include "ui/ui_support.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

constexpr const char* kSchema = R"({"Version": 3, "CustomSettings": [[
    {"inputType": "GroupName", "select": "Serial", "valueRange": [""]},
    {"keyVal": "rate", "lableName": "波特率", "inputType": "Int", "select": 9600,
     "valueRange": [], "remarks": "of the port"},
    {"keyVal": "ports", "lableName": "Ports", "inputType": "IntMultiple", "select": [2],
     "valueRange": [1, 2]}]]})";

constexpr const char* kOverlay = R"({"data": [{"osdEnable": true, "transparent": 20,
    "left": 0.5, "texts": ["one", "two"]}]})";

/// A dialog of one player, and a main window that keeps what it is to send.
struct SettingsWindows : UiTest {
    template <class Dialog>
    void Run(const std::function<void(SettingsDialog*)>& step) {
        const ModalScript script{[&](wxDialog* dialog) {
            step(dynamic_cast<SettingsDialog*>(dialog));
            prompts.answers = {true};
            Press(dialog, wxID_CANCEL);
        }};
        DeviceRecord player;
        player.ip = "127.0.0.2";
        player.tcpPort = 9000;
        Dialog(nullptr, services, player).ShowModal();
    }
    /// The packets sent since the last call, with the number of players that each names.
    std::vector<std::string> Sent() {
        std::vector<std::string> packets;
        for (const WindowMessage& message : main.messages) {
            const auto& request = std::get<SendRequest>(message.record);
            const PacketHeader header = DecodeHeader(*request.bytes);
            EXPECT_EQ(header.payloadLength + kHeaderSize, request.bytes->size());
            packets.push_back(fmt::format("{} {}.{} to {}: {}", header.command, header.subCommand,
                                          header.argument, request.targets.size(),
                                          Compact(ByteView(*request.bytes).subspan(kHeaderSize))));
        }
        main.Forget();
        return packets;
    }
    void Reply(Window window, MessageId id, std::string_view payload, std::uint32_t wParam = 0) {
        const std::uint32_t block =
            id == MessageId::kOsd ? 4 : static_cast<std::uint32_t>(id) - 0x610;
        const Origin origin{{"127.0.0.2", 9000, 0},
                            DevicePacket::Request(kCommandSettings, block | wParam << 16).header,
                            1};
        EXPECT_TRUE(directory.Send(TitleOf(window),
                                   {id, wParam, ReplyRecord{ToBytes(payload)}, 0, origin}));
    }
    static wxPropertyGrid& Grid(wxWindow* dialog) {
        return *Find<wxPropertyGrid>(dialog, kSettingsGrid);
    }
    static bool Enabled(wxWindow* dialog, int id) { return dialog->FindWindow(id)->IsEnabled(); }

    FakeWindow main{directory, ApplicationTitle(), [](WindowMessage& message) {
                        std::get<SendRequest>(message.record).outcomes = {Sending::Over(1)};
                    }};
};

struct Block {
    Window window;
    MessageId reply;
    int number;
    std::function<void(SettingsWindows&, const std::function<void(SettingsDialog*)>&)> run;
};

template <class Dialog>
Block BlockOf(Window window, MessageId reply, int number) {
    return {window, reply, number,
            [](SettingsWindows& test, const auto& step) { test.Run<Dialog>(step); }};
}

const Block kBlocks[] = {
    BlockOf<CExtendedSerialPort>(Window::kExtendedSerialPort, MessageId{0x61F}, 15),
    BlockOf<CVODSubtitles>(Window::kSubtitles, MessageId{0x620}, 16),
    BlockOf<CTouchAction>(Window::kTouchAction, MessageId{0x622}, 18),
    BlockOf<CCave>(Window::kCave, MessageId{0x623}, 19)};

TEST_F(SettingsWindows, OfFourBlocksAskForTheirOwnAndSendItBackWhole) {
    for (const Block& block : kBlocks) {
        block.run(*this, [&](SettingsDialog* dialog) {
            EXPECT_THAT(Sent(), ElementsAre(fmt::format("3 {}.0 to 0: ", block.number)));
            EXPECT_FALSE(Enabled(dialog, wxID_OK) || Enabled(dialog, kSaveSettings));
            Reply(block.window, block.reply, "no document");
            Reply(block.window, MessageId::kOsd, kSchema);
            EXPECT_FALSE(Enabled(dialog, wxID_OK));
            Reply(block.window, block.reply, kSchema);
            EXPECT_TRUE(Grid(dialog).ChangePropertyValue("Serial/rate", "19200"));
            EXPECT_TRUE(Grid(dialog).ChangePropertyValue("Serial/ports/1", true));
            Press(dialog, wxID_OK);
            const std::string text = Sent().at(0);
            EXPECT_THAT(text, testing::StartsWith(fmt::format("3 {}.1 to 0: {{", block.number)));
            EXPECT_THAT(text, testing::HasSubstr(R"("select":19200,"valueRange":[19200])"));
            EXPECT_THAT(text, testing::HasSubstr(R"("select":[1,2],"valueRange":[1,2])"));
            EXPECT_TRUE(Grid(dialog).IsPropertyModified("Serial/rate"));
            Reply(block.window, block.reply, "", 1);
            EXPECT_FALSE(Grid(dialog).IsPropertyModified("Serial/rate"));
            prompts.boxes.clear();
            Press(dialog, wxID_CANCEL);
            EXPECT_TRUE(dialog->IsShown());
        });
        const Box exit = Question("Do you really want to exit?");
        EXPECT_THAT(prompts.boxes, ElementsAre(exit, exit));
    }
}

TEST_F(SettingsWindows, CloseNeitherOnEnterNorOnEscape) {
    Run<CCave>([&](SettingsDialog* dialog) {
        Reply(Window::kCave, MessageId::kCave, kSchema);
        Sent();
        TypeInCell(Grid(dialog), "Serial/rate", "57600");
        for (const int key : {WXK_RETURN, WXK_ESCAPE, WXK_ESCAPE, WXK_RETURN})
            wxUIActionSimulator().Char(key);
        PumpUntil([] { return false; }, 400);  // a default button would be pressed by then
        EXPECT_TRUE(dialog->IsModal());
        EXPECT_THAT(Sent(), ElementsAre());
        EXPECT_TRUE(prompts.boxes.empty());
        EXPECT_EQ(Grid(dialog).GetPropertyValueAsString("Serial/rate"), "57600");
    });
}

TEST_F(SettingsWindows, OfASchemaIgnoreATextWithAHintAndSendTheRest) {
    Run<CCave>([&](SettingsDialog* dialog) {
        Reply(Window::kCave, MessageId::kCave, kSchema);
        const auto type = [&] {
            TypeInCell(Grid(dialog), "Serial/rate", "1x");
            Sent();
        };
        const auto isSent = [&] { return !main.messages.empty(); };
        type();
        Click(dialog->FindWindow(wxID_OK));
        EXPECT_TRUE(PumpUntil(isSent));
        Reply(Window::kCave, MessageId::kCave, "", 1);
        type();
        wxUIActionSimulator().Char('O', wxMOD_ALT);
        EXPECT_TRUE(PumpUntil(isSent));
        EXPECT_EQ(Grid(dialog).GetPropertyValueAsString("Serial/rate"), "9600");
        type();
        Click(dialog->FindWindow(wxID_CANCEL));
        EXPECT_TRUE(PumpUntil([&] { return prompts.boxes.size() == 2; }));
    });
    const Box exit = Question("Do you really want to exit?");
    EXPECT_THAT(prompts.boxes, ElementsAre(Notice("Changes have been saved!"), exit, exit));
}

TEST_F(SettingsWindows, OfAnOverlayRefuseWhatItCannotHave) {
    const InLanguage chinese(Language::kChinese);
    Run<COSD>([&](SettingsDialog* dialog) {
        EXPECT_THAT(Sent(), ElementsAre("3 4.0 to 1: "));
        Reply(Window::kOsd, MessageId::kOsd, kOverlay);
        EXPECT_FALSE(Grid(dialog).ChangePropertyValue("data/0/transparent", "x"));
        EXPECT_FALSE(Grid(dialog).ChangePropertyValue("data/0/showTime", "10001"));
        EXPECT_TRUE(PumpUntil([&] { return prompts.boxes.size() == 2; }));
        Grid(dialog).SelectProperty("data/0/texts/1", true);
        const auto saveLine = [&](std::size_t characters) {
            const wxString line(L'\x64AD', characters);
            Grid(dialog).GetEditorTextCtrl()->SetValue(line);
            Press(dialog, wxID_OK);  // with the edit still open in its cell
        };
        saveLine(71);
        EXPECT_THAT(Sent(), ElementsAre());
        saveLine(70);
        EXPECT_THAT(Sent(), ElementsAre(testing::StartsWith(R"(3 4.0 to 1: {"data":[{)")));
    });
    EXPECT_THAT(prompts.boxes,
                ElementsAre(Warning("透明度输入错误!"), Warning("显示时间输入错误!"),
                            Warning("显示字符不能超过70个汉字!"),
                            Question("【真的要退出程序吗?】\n有修改尚未得到播放器确认，"
                                     "退出后将丢失。")));
}

TEST_F(SettingsWindows, OfAPlayerWithoutSettingsShowTheDefaultsAndSendThem) {
    for (const char* none : {"{}", R"({"data": []})", ""}) {
        Run<COSD>([&](SettingsDialog* dialog) {
            Sent();
            Reply(Window::kOsd, MessageId::kOsd, none);
            EXPECT_TRUE(Says(dialog,
                             "The player has no such settings yet. These are the "
                             "defaults."));
            EXPECT_TRUE(Grid(dialog).IsShown());
            Click(dialog->FindWindow(wxID_OK));
            EXPECT_TRUE(PumpUntil([&] { return !main.messages.empty(); })) << none;
        });
    }
}

/// The dialog of TouchAction and a file of a Cave.
TEST_F(SettingsWindows, SendSettingsThatAreNotThePlayersOnlyWhenTheUserInsists) {
    std::string cave = R"({"Version": 3, "CustomSettings": [[)";
    for (const char* key : {"rate", "a", "b"})
        cave += fmt::format(R"({{"keyVal": "{}", "lableName": "x", "inputType": "Int", "select": 1,
                                "valueRange": []}},)",
                            key);
    cave.back() = ']';
    prompts.file = folder.Write("cave.JSON", cave + "]}");
    const InLanguage chinese(Language::kChinese);
    Run<CTouchAction>([&](SettingsDialog* dialog) {
        Reply(Window::kTouchAction, MessageId{0x622}, kSchema);
        prompts.boxes.clear();
        Press(dialog, kOpenSettings);
        EXPECT_EQ(prompts.boxes.back(),
                  Notice("文件中有 2 项设置是播放器没有的，播放器的 1 项设置不在文件中。"));
        EXPECT_TRUE(Says(dialog, "所示内容不是播放器自己的设置。"));
        Sent();
        for (const bool insists : {false, true}) {
            prompts.answers = {insists};
            Press(dialog, wxID_OK);
            EXPECT_EQ(prompts.boxes.back(), Question("这些不是播放器自己的设置。仍要全部发送吗？"));
            EXPECT_EQ(Sent().size(), insists ? 1U : 0U);
        }
    });
}

TEST_F(SettingsWindows, ShowInBoldWhatThePlayerHasNotConfirmed) {
    const auto overlay = [](int transparency, const char* line) {
        return fmt::format(R"({{"data": [{{"transparent": {}, "texts": ["{}"]}}]}})", transparency,
                           line);
    };
    Run<COSD>([&](SettingsDialog* dialog) {
        const auto bold = [&] {
            std::string rows;
            for (const char* row : {"data/0/transparent", "data/0/texts/0", "data/0/left"})
                rows += Grid(dialog).IsPropertyModified(row) ? '1' : '0';
            return rows;
        };
        const auto answer = [&](int transparency, const char* line) {
            Reply(Window::kOsd, MessageId::kOsd, overlay(transparency, line));
        };
        answer(20, "one");
        EXPECT_TRUE(Grid(dialog).ChangePropertyValue("data/0/left", "0.5"));
        EXPECT_EQ(bold(), "001");
        prompts.file = folder.Write("osd.JSON", overlay(20, "two"));
        Press(dialog, kOpenSettings);
        EXPECT_EQ(bold(), "011");
        answer(30, "one");  // by itself: the file is opened again
        EXPECT_EQ(bold(), "111");
        Press(dialog, wxID_OK), Press(dialog, wxID_OK);
        EXPECT_TRUE(Grid(dialog).ChangePropertyValue("data/0/left", "0.75"));
        answer(20, "two");
        EXPECT_EQ(bold(), "001");
        Reply(Window::kOsd, MessageId::kOsd, "");
        EXPECT_EQ(bold(), "001");
        EXPECT_TRUE(Says(dialog, "There are changes that have not been sent to the player."));
        EXPECT_EQ(Grid(dialog).GetPropertyValueAsString("data/0/left"), "0.75");
    });
}

TEST_F(SettingsWindows, ReadAgainByButtonAndByKeyOnceTheUserAgreesToLoseTheChanges) {
    Run<CCave>([&](SettingsDialog* dialog) {
        Reply(Window::kCave, MessageId::kCave, kSchema);
        Sent();
        dialog->Raise();
        Click(dialog->FindWindow(kReadAgainButton));
        EXPECT_TRUE(PumpUntil([&] { return !main.messages.empty(); }));
        Reply(Window::kCave, MessageId::kCave, kSchema);
        EXPECT_TRUE(Grid(dialog).ChangePropertyValue("Serial/rate", "1"));
        Sent();
        Grid(dialog).SetFocus();
        for (const bool agrees : {false, true}) {
            const std::size_t asked = prompts.boxes.size();
            prompts.answers = {agrees};
            wxUIActionSimulator().Char('R', wxMOD_CONTROL);
            EXPECT_TRUE(PumpUntil([&] { return prompts.boxes.size() > asked; }));
            EXPECT_EQ(Sent().size(), agrees ? 1U : 0U);
        }
        Reply(Window::kCave, MessageId::kCave, kSchema);
        EXPECT_EQ(Grid(dialog).GetPropertyValueAsString("Serial/rate"), "9600");
    });
}

TEST_F(SettingsWindows, AskForFilesByTheirOwnName) {
    prompts.file = folder / "kept.JSON";
    for (const Block& block : kBlocks) {
        block.run(*this, [&](SettingsDialog* dialog) {
            Reply(block.window, block.reply, kSchema);
            Press(dialog, kSaveSettings);
            EXPECT_TRUE(Grid(dialog).ChangePropertyValue("Serial/rate", "1"));
            Press(dialog, kOpenSettings);
            EXPECT_EQ(Grid(dialog).GetPropertyValueAsString("Serial/rate"), "9600");
        });
        const std::string title = TitleOf(block.window);
        const std::string filter = title + " File(*.JSON)|*.JSON;*.json;*.Json";
        EXPECT_THAT(
            prompts.boxes,
            ElementsAre(ToSave("Save " + title + " file", filter, title + ".JSON", "JSON"),
                        Notice("Save OK!"), ToOpen("Open " + title + " file", filter, "JSON"),
                        Question("Do you really want to exit?\nThere are changes that the player "
                                 "has not confirmed. They will be lost.")));
        prompts.boxes.clear();
    }
}

TEST_F(SettingsWindows, OfAnOverlayAskForFilesInTheLanguageOfTheProcess) {
    const InLanguage chinese(Language::kChinese);
    Run<COSD>([&](SettingsDialog* dialog) {
        Reply(Window::kOsd, MessageId::kOsd, kOverlay);
        Press(dialog, kSaveSettings);
        Press(dialog, kOpenSettings);
    });
    const std::string title = "OSD", filter = "OSD文件(*.JSON)|*.JSON;*.json;*.Json";
    EXPECT_THAT(prompts.boxes, ElementsAre(ToSave("保存OSD文件", filter, "OSD.JSON", "JSON"),
                                           ToOpen("打开OSD文件", filter, "JSON"),
                                           Question("【真的要退出程序吗?】")));
}

}  // namespace
}  // namespace sontaro::test
