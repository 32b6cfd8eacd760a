#include "settings/settings_run.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "support/literals.h"
#include "support/recording_prompts.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using State = SettingsRun::State;
using testing::ElementsAre;

constexpr SettingsExchange kAnnouncing = {kBlockCave, MessageId::kCave, 1, true};
constexpr SettingsExchange kAnswering = {kBlockOsd, MessageId::kOsd, 0, false};

/// A text is the whole document; "bad" is of no use.
struct TextDocument : SettingsDocument {
    explicit TextDocument(bool keeps) : keepsWhatItHas(keeps) {}
    bool TakeReply(std::string_view reply) override {
        if (reply != "bad") text = reply;
        if (reply == "bad" && !keepsWhatItHas) text = "";
        return reply != "bad";
    }
    bool TakeFile(std::string_view file) override { return file != "bad" && TakeReply(file); }
    std::string Write() const override { return text; }
    SettingsRows Rows() const override { return {}; }
    EditAnswer Edit(const SettingsEdit& edit) override {
        if (edit.text == "no") return {};
        text += edit.text;
        return {EditAnswer::Outcome::kAccepted, edit.text};
    }
    std::optional<LocalText> RefusalToSend() const override {
        if (text.starts_with("?")) return LocalText{"不", "never"};
        return std::nullopt;
    }

    std::string text;
    const bool keepsWhatItHas;
};

/// A run whose window writes down what it is asked for.
struct Procedure : testing::Test, SettingsView {
    bool Send(const DevicePacket& packet) override {
        log += fmt::format("send {}.{} {}; ", packet.header.subCommand, packet.header.argument,
                           AsText(packet.payload));
        return reachable;
    }
    void ShowRows() override { log += "rows " + Document().text + "; "; }
    void MarkSaved() override { log += "saved; "; }
    void StateChanged() override {}

    TextDocument& Document() { return run == &announcing ? custom : osd; }
    void Reply(std::string_view payload, std::uint32_t wParam = 0) {
        const MessageId id = run == &announcing ? MessageId::kCave : MessageId::kOsd;
        run->Handle({id, wParam, ReplyRecord{ToBytes(payload)}, 0, {player, {}, 1}});
    }
    void Edit(const std::string& text) { static_cast<void>(run->Edit({"row", text})); }
    void ExpectState(State state) { EXPECT_EQ(run->CurrentState(), state); }
    std::string Log() { return std::exchange(log, ""); }

    std::string log;
    bool reachable = true;
    RecordingPrompts prompts;
    TextDocument custom{false}, osd{true};
    Target player{"127.0.0.2", 9000, 5};
    SettingsRun announcing{kAnnouncing, custom, *this, prompts, player.ip};
    SettingsRun answering{kAnswering, osd, *this, prompts, player.ip};
    SettingsRun* run = &announcing;
};

TEST_F(Procedure, ReadsEditsAndSavesTheWholeDocument) {
    run->Opened();
    run->Save();
    EXPECT_EQ(Log(), "send 19.0 ; ");
    Reply("a");
    Edit("no");
    ExpectState(State::kRead);
    Edit("b");
    run->Save();
    ExpectState(State::kSent);
    Reply("", 1);
    ExpectState(State::kSaved);
    EXPECT_EQ(Log(), "rows a; send 19.1 ab; saved; ");
    const InLanguage chinese(Language::kChinese);
    Reply("", 1);
    EXPECT_THAT(prompts.boxes,
                ElementsAre(Notice("Changes have been saved!"), Notice("配置完成！")));
}

TEST_F(Procedure, NeverSendsADocumentThatIsNotThePlayers) {
    Reply("bad");
    run->Save();
    EXPECT_FALSE(run->IsUsable());
    Reply("a");
    EXPECT_TRUE(run->IsUsable());
    Reply("bad");
    ExpectState(State::kUnreadable);
    run->Save();
    EXPECT_EQ(Log(), "rows ; rows a; rows ; ");
}

TEST_F(Procedure, DoesNotCallAnEditSavedThatWasMadeAfterTheSave) {
    Reply("a");
    run->Save();
    Edit("b");
    Log();
    Reply("", 1);
    ExpectState(State::kChanged);
    EXPECT_EQ(Log(), "");
}

TEST_F(Procedure, TakesEveryAnswerWithAPayloadWhereSavesAreNotAnnounced) {
    run = &answering;
    run->Opened();
    Reply("bad");
    EXPECT_FALSE(run->IsUsable());
    Reply("a", 7);
    Reply("bad");
    Reply("");
    Edit("b");
    run->Save();
    Edit("c");
    Reply("x");
    ExpectState(State::kChanged);
    run->Save();
    Reply("");
    ExpectState(State::kSaved);
    EXPECT_EQ(Log(), "send 4.0 ; rows a; send 4.0 ab; rows xc; send 4.0 xc; saved; ");
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(Procedure, SaysWhenThePlayerIsNotReachedAndKeepsTheChanges) {
    reachable = false;
    run->Opened();
    ExpectState(State::kUnreachable);
    Reply("a");
    Edit("b");
    run->Save();
    ExpectState(State::kNotSent);
    reachable = true;
    run->Save();
    ExpectState(State::kSent);
    EXPECT_EQ(Log(), "send 19.0 ; rows a; send 19.1 ab; send 19.1 ab; ");
}

TEST_F(Procedure, HearsItsOwnPlayerAndBlockAlone) {
    player.ip = "127.0.0.3";
    Reply("a");
    run->Handle({MessageId::kOsd, 0, ReplyRecord{{'a'}}, 0, {{"127.0.0.2", 9000, 5}, {}, 1}});
    EXPECT_EQ(Log(), "");
}

TEST_F(Procedure, SendsNeitherWhatIsRefusedNorWhatIsTooLong) {
    Reply("?");
    run->Save();
    Reply(std::string(kBufferSize - kHeaderSize + 1, 'x'));
    run->Save();
    EXPECT_THAT(prompts.boxes,
                ElementsAre(Warning("never"), Warning("The settings are too long to be sent!")));
    ExpectState(State::kRead);
    Reply(std::string(kBufferSize - kHeaderSize, 'x'));
    run->Save();
    ExpectState(State::kSent);
}

TEST_F(Procedure, KeepsSettingsInFilesAndChangesNothingWhenOneIsOfNoUse) {
    const TemporaryFolder folder;
    Reply("a");
    run->SaveFile(folder / "a.JSON");
    run->OpenFile(folder.Write("bad.JSON", "bad"));
    run->OpenFile(folder / "missing.JSON");
    run->SaveFile(folder.Write("file", "") / "inside.JSON");
    ExpectState(State::kRead);
    EXPECT_EQ(custom.text, "a");
    Edit("b");
    Log();
    run->OpenFile(folder / "a.JSON");
    ExpectState(State::kChanged);
    EXPECT_EQ(Log(), "rows a; ");
    const Box unusable = Warning("The file holds no such settings. Nothing has been changed!");
    EXPECT_THAT(prompts.boxes, ElementsAre(Notice("Save OK!"), unusable, unusable,
                                           Warning("The file cannot be written!")));
}

}  // namespace
}  // namespace sontaro::test
