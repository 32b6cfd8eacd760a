#include "controlprotocol/control_protocol_run.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "base/file.h"
#include "support/literals.h"
#include "support/recording_prompts.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using State = ControlProtocolRun::State;
using Line = SerialLineState::Kind;
using testing::ElementsAre;

/// A run whose window writes down what it is asked for; packets by their header's bytes 4 to 11.
struct Editor : testing::Test, ControlProtocolView {
    bool Send(const DevicePacket& packet) override {
        log += "send";
        const Bytes bytes = packet.Serialize();
        for (std::size_t i = 4; i < 12; ++i) log += fmt::format(" {:02x}", bytes[i]);
        log += "; ";
        sent = std::string(AsText(packet.payload));
        return reachable;
    }
    void ShowModel() override { log += "model; "; }
    void ShowChange(const SettingsEdit& change) override { log += "change " + change.text + "; "; }
    void MarkSaved() override { log += "saved; "; }
    std::optional<int> ChosenCategory() const override { return chosen; }
    void KeepAliveEvery2Seconds(bool wanted) override { timer = wanted; }
    void StateChanged() override {}

    void Reply(MessageId id, std::uint8_t command, std::uint16_t argument, Bytes payload) {
        run->Handle({id, 0, ReplyRecord{std::move(payload)}, 0,
                     Origin{player, {kPacketMagic, command, 0, 0, 0, argument, 0}, 1}});
    }
    void Data(std::uint16_t part) {
        Reply(MessageId::kPlayerState, 19, part, Bytes(kPlayerDataSize, std::uint8_t(part + 1)));
    }
    void Names(const std::string& names) { Reply(MessageId::kLayoutState, 52, 0, ToBytes(names)); }
    void Protocol(const std::string& text, std::uint16_t argument = 0) {
        Reply(MessageId::kControlProtocol, 3, argument, ToBytes(text));
    }
    void Serial(const Bytes& bytes) {
        auto serial = std::make_unique<SerialData>();
        serial->count = static_cast<std::uint16_t>(bytes.size());
        std::ranges::copy(bytes, serial->bytes.begin());
        run->Handle({MessageId::kSerialData, 0, std::move(serial), 0});
    }
    void LoseLink() { Reply(MessageId::kStopKeepAlive, 0, 0, {}); }
    void ReadFrom(const std::string& text) {
        run->Opened(), Data(0), Data(32767), Names("a.mp4?"), Protocol(text);
        log.clear();
    }
    void Edit(const std::string& port) {
        EXPECT_EQ(run->Edit({"KtvDev/KTVServerPort", port}).text, port);
    }
    std::string Port() { return run->Rows()[0][0].rows[2].value; }
    std::string Log() { return std::exchange(log, ""); }

    TemporaryFolder folder;
    std::filesystem::path file = folder / "ControlProtocol.Json";
    std::string log, sent;
    bool reachable = true, timer = false;
    std::optional<int> chosen;
    RecordingPrompts prompts;
    Target player{"127.0.0.2", 9000, 5};
    ControlProtocolRun current{*this, prompts, player.ip, file};
    ControlProtocolRun older{*this, prompts, player.ip, file, ProtocolVariant::kOlder};
    ControlProtocolRun* run = &current;
};

constexpr const char* kDocument = R"({"KtvDev":{"KTVServerPort":9000}})";

TEST_F(Editor, AsksForDataNamesAndDocumentInTurn) {
    run->Opened();
    EXPECT_EQ(Log(), "send 13 00 00 00 00 00 00 00; ");
    Names("early?"), Data(32767);
    player.ip = "127.0.0.3";
    Data(0), Protocol(kDocument);
    player.ip = "127.0.0.2";
    EXPECT_EQ(Log(), "");
    Data(0);
    EXPECT_EQ(Log(), "send 13 00 00 00 00 00 ff 7f; ");
    Data(0), Data(32767);
    EXPECT_EQ(Log(), "send 34 00 00 00 00 00 00 00; ");
    EXPECT_EQ(run->PlayerData()[0][0] * 256 + run->PlayerData()[1][0], 256);
    Names("one.mp4?two.mp4?x");
    EXPECT_THAT(run->Names(), ElementsAre("one", "two"));
    EXPECT_EQ(Log(), "send 03 00 00 00 01 00 00 00; ");
    EXPECT_FALSE(run->MayUpload() || timer);
    Protocol(kDocument);
    EXPECT_TRUE(run->MayUpload() && timer);
    Names("again.mp4?");
    run->KeepAlive();
    EXPECT_EQ(Log(), "model; send 32 00 00 00 00 00 00 00; ");
    EXPECT_EQ(run->CurrentState(), State::kRead);
}

TEST_F(Editor, AsksForTheNamesOtherwiseInTheOlderForm) {
    run = &older;
    run->Opened();
    Reply(MessageId::kPlayerState, 10, 0, ToBytes("one.mp4?"));
    EXPECT_THAT(run->Names(), ElementsAre("one"));
    EXPECT_EQ(Log(), "send 0a 00 00 00 01 00 00 00; send 03 00 00 00 01 00 00 00; ");
}

TEST_F(Editor, MayUploadAfterAnyAnswerButListensOnlyAfterADocument) {
    for (const auto& [text, argument, state, listens] :
         {std::tuple("{}", 2, State::kRefused, false),
          {"", 0, State::kUnreadable, false},
          {"{", 0, State::kUnreadable, true},
          {"{}", 1, State::kUnreadable, true},
          {kDocument, 1, State::kRead, true}}) {
        ControlProtocolRun fresh{*this, prompts, player.ip, file};
        run = &fresh;
        timer = false;
        run->Opened(), Data(0), Data(32767), Names("");
        Protocol(text, static_cast<std::uint16_t>(argument));
        EXPECT_EQ(run->CurrentState(), state) << text;
        EXPECT_TRUE(run->MayUpload());
        EXPECT_EQ(timer, listens) << text;
    }
}

TEST_F(Editor, UploadsTheWorkingCopyAndStaysInTouchWithoutARestart) {
    ReadFrom(kDocument);
    Edit("9001");
    run->Upload();
    EXPECT_EQ(Log(), "send 03 00 00 00 01 00 01 00; ");
    EXPECT_EQ(sent, *ReadFile(file));
    EXPECT_THAT(sent, testing::HasSubstr("9001"));
    EXPECT_THAT(prompts.boxes,
                ElementsAre(Question("After setting the parameters, restart the device?")));
    EXPECT_EQ(run->CurrentState(), State::kSent);
    Edit("9002");
    Protocol("");
    EXPECT_EQ(run->CurrentState(), State::kChanged);
    run->Upload();
    Protocol("");
    EXPECT_EQ(run->CurrentState(), State::kSaved);
    EXPECT_TRUE(timer && run->MayUpload() && run->MayUseFiles());
    EXPECT_EQ(Log(), "send 03 00 00 00 01 00 01 00; saved; ");
}

TEST_F(Editor, SendsNothingMoreOnceARestartWasAskedFor) {
    ReadFrom(kDocument);
    prompts.answers = {true};
    run->Upload();
    EXPECT_EQ(Log(), "send 03 01 00 00 01 00 01 00; ");
    EXPECT_FALSE(timer || run->MayUpload() || run->MayUseFiles());
    EXPECT_EQ(run->CurrentState(), State::kSent);
    Protocol("", 1);
    EXPECT_EQ(run->CurrentState(), State::kRestarting);
    LoseLink();
    Protocol(kDocument);
    run->Upload();
    run->OpenFile(folder.Write("x.JSON", kDocument));
    run->SaveFile(folder / "y.JSON");
    chosen = 1;
    Serial({0xA5});
    EXPECT_EQ(run->Edit({"KtvDev/KTVServerPort", "1"}).outcome, EditAnswer::Outcome::kRefused);
    EXPECT_FALSE(timer || run->MayUpload() || std::filesystem::exists(folder / "y.JSON"));
    EXPECT_EQ(Log(), "saved; ");
}

TEST_F(Editor, KeepsWhatCouldNotBeSentAndSaysSo) {
    ReadFrom(kDocument);
    Edit("9001");
    prompts.answers = {true};
    reachable = false;
    run->Upload();
    EXPECT_EQ(run->CurrentState(), State::kNotSent);
    EXPECT_TRUE(run->MayUpload());
    reachable = true;
    std::filesystem::remove(file);
    std::filesystem::create_directories(file / "in the way");
    Log();
    run->Upload();
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(prompts.boxes.back(),
              Warning("The control protocol file cannot be written. Nothing has been sent!"));
    EXPECT_EQ(Port(), "9001");
}

TEST_F(Editor, LearnsIntoTheChosenCategory) {
    ReadFrom(kDocument);
    Serial({0x0a, 0xb1, 0x00});
    EXPECT_EQ(run->SerialLine().kind, Line::kNobodys);
    EXPECT_EQ(run->CurrentState(), State::kRead);
    chosen = 6;
    Serial({0x0a, 0xb1, 0x00});
    EXPECT_EQ(run->SerialLine().kind, Line::kLearned);
    EXPECT_EQ(run->Rows()[kCategoryGrid][0].groups[6].rows[1].value, "0AB100");
    EXPECT_EQ(run->CurrentState(), State::kChanged);
    EXPECT_EQ(Log(), "change 0AB100; ");
    prompts.whileShown = [this] { Serial({0xff}); };
    run->Upload();
    EXPECT_EQ(run->SerialLine().kind, Line::kTooLate);
    EXPECT_THAT(sent, testing::HasSubstr("0AB100"));
}

TEST_F(Editor, IsNotConnectedFromTheEndOfTheLinkToTheNextAnswer) {
    ReadFrom(kDocument);
    LoseLink();
    EXPECT_TRUE(!timer && run->SerialLine().kind == Line::kNotConnected);
    run->Upload();
    LoseLink();
    EXPECT_EQ(run->CurrentState(), State::kUnconfirmed);
    Protocol("");
    EXPECT_EQ(run->CurrentState(), State::kSaved);
    EXPECT_TRUE(timer && run->SerialLine().kind == Line::kListening);
    reachable = false;
    run->KeepAlive();
    EXPECT_TRUE(!timer && run->SerialLine().kind == Line::kNotConnected);
}

TEST_F(Editor, LosesNoEditAndNoFileToADocumentThatComesLater) {
    run->Opened();
    Edit("7");
    ReadFrom(R"({"KtvDev":{"KTVServerPort":9000,"KTVServerIP":"10.0.0.1"}})");
    EXPECT_EQ(Port() + run->Rows()[0][0].rows[1].value, "710.0.0.1");
    EXPECT_EQ(run->CurrentState(), State::kChanged);
    run->OpenFile(folder.Write("x.JSON", R"({"KtvDev":{"KTVServerPort":8}})"));
    Protocol(R"({"KtvDev":{"KTVServerPort":9000,"KTVServerIP":"10.0.0.2"}})");
    EXPECT_EQ(Port(), "8");
    run->OpenFile(folder.Write("wrong.JSON", R"({"data":[]})"));
    EXPECT_EQ(prompts.boxes.back(),
              Warning("The file holds no such settings. Nothing has been changed!"));
    run->SaveFile(folder / "y.JSON");
    EXPECT_EQ(prompts.boxes.back(), Notice("Save OK!"));
    EXPECT_EQ(folder.Read("y.JSON"), ControlProtocolText([] {
                  ControlProtocolModel model;
                  model.songSystem = {0, "10.0.0.2", 8};
                  return model;
              }()));
}

}  // namespace
}  // namespace sontaro::test
