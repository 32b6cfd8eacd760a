#include <thread>

#include "base/file.h"
#include "cli_support.h"

namespace sontaro::cli::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* kFirstLine = "data/0/texts/0";

struct SettingsCommands : CliTest {
    /// The first line of the overlay that a player holds.
    std::string Line(std::size_t player) {
        const auto osd = ParseJson(players.Player(player).State().osd);
        return (*osd)["data"][0]["texts"][0].asString();
    }
    /// What was kept before something was written over it.
    [[nodiscard]] std::size_t Kept() const {
        std::size_t files = 0;
        std::error_code error;
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(folder / "data", error))
            if (entry.path().extension() == ".json" && entry.path().filename() != "players.json")
                ++files;
        return files;
    }
};

TEST_F(SettingsCommands, ADocumentIsGotAsThePlayerHasSentIt) {
    const std::string odd = "{ \"data\" : [ { \"osdEnable\" : 1 } ] }\n";
    players.Player(0).ChangeState([&](auto& state) { state.osd = odd; });
    EXPECT_EQ(Run({"get", "osd", "-p", Name(0)}).results, odd);
    const auto json = Run({"get", "osd", "--json", "-p", Name(0), "-p", Name(1)}).Objects();
    ASSERT_THAT(json, SizeIs(2));
    EXPECT_EQ(json[0]["document"]["data"][0]["osdEnable"], 1);
    EXPECT_EQ(json[1]["ip"], Address(1));
}

TEST_F(SettingsCommands, SeveralDocumentsNeedAFolderWhichIsTheUsersAlone) {
    EXPECT_EQ(Run({"get", "osd", "-p", Name(0), "-p", Name(1)}).code, kWrongUse);
    const std::string out = TextOfPath(folder / "out") + '/';
    EXPECT_EQ(Run({"get", "osd", "-p", Name(0), "-p", Name(1), "-o", out}).code, kAllWell);
    EXPECT_EQ(folder.Read("out/SIMPLAYER1-osd.json"), players.Player(0).State().osd);
    const auto file = folder / "out/SIMPLAYER2-osd.json";
    ASSERT_TRUE(std::filesystem::exists(file));
    using std::filesystem::perms;
    if (!sontaro::test::kOnWindows) {
        EXPECT_EQ(status(file).permissions(), perms::owner_read | perms::owner_write);
    }
}

TEST_F(SettingsCommands, OneRowIsChangedOnAllAndReadBack) {
    const std::string before = Line(0);
    const Told told = Run(
        {"set", "osd", std::string(kFirstLine) + "=欢迎", "--json", "-p", Name(0), "-p", Name(1)});
    EXPECT_EQ(told.code, kAllWell) << told.remarks;
    const auto objects = told.Objects();
    ASSERT_THAT(objects, SizeIs(2));
    EXPECT_EQ(objects[0]["before"], before);
    EXPECT_EQ(objects[0]["after"], "欢迎");
    EXPECT_EQ(Line(0) + Line(1), "欢迎欢迎");
    EXPECT_EQ(Kept(), 2U);
    EXPECT_EQ(Run({"set", "osd", std::string(kFirstLine) + "=欢迎", "-p", Name(0)}).code, kAllWell);
    EXPECT_EQ(Writes(0), 1);  // what is as it should be is not sent
}

/// A player that writes down in its own way what it was sent: before it answers that, it is asked
/// for nothing else.
TEST_F(SettingsCommands, TheSameValuesReadBackInAnotherFormAreConfirmed) {
    SetFault(0, "delay=300ms");
    players.Player(0).ChangeState([](auto& state) { state.osd = R"({"data":[{"speed":0}]})"; });
    const std::jthread player([this] {
        const auto isWrite = [](const DevicePacket& packet) {
            return packet.header.command == kCommandSettings && !packet.payload.empty();
        };
        EXPECT_TRUE(players.Player(0).WaitForPacket(isWrite, std::chrono::seconds(10)));
        players.Player(0).ChangeState([](auto& state) {
            Json::Value osd = *ParseJson(state.osd);
            osd["data"][0].removeMember("speed");
            osd["data"][0]["transparent"] = 7.0;
            state.osd = WriteJson(osd);
        });
    });
    const Told told = Run({"set", "osd", "data/0/transparent=7", "-p", Name(0)});
    EXPECT_EQ(told.code, kAllWell) << told.remarks << told.results;
}

TEST_F(SettingsCommands, WhatTheRulesRefuseIsNotSent) {
    for (const char* edit : {"data/0/transparent=101", "data/0/nothing=1"}) {
        const Told told = Run({"set", "osd", edit, "-p", Name(0), "--json"});
        EXPECT_EQ(told.code, kSomeFailed);
        EXPECT_EQ(told.Objects().at(0)["error"]["end"], "invalid");
    }
    EXPECT_EQ(Run({"set", "player-control", "Players/0/AspectRatio=99", "-p", Name(0)}).code,
              kSomeFailed);
    EXPECT_EQ(Run({"set", "osd", "nonsense", "-p", Name(0)}).code, kWrongUse);
    EXPECT_EQ(Run({"set", "osd", "a=1", "a=2", "-p", Name(0)}).code, kWrongUse);
    SetFault(0, "bad-json");
    EXPECT_THAT(Run({"set", "osd", "a=1", "-p", Name(0)}).remarks, HasSubstr(" Syntax error: "));
    SetFault(0, "");
    EXPECT_EQ(Run({"set", "osd", "a=1", "--restart", "-p", Name(0), "--yes"}).code, kWrongUse);
    EXPECT_EQ(Writes(0), 0);
}

TEST_F(SettingsCommands, AWriteThatIsNotConfirmedOrDiffersAfterwardsHasFailed) {
    SetFault(0, "no-ack");
    const Told silent = Run({"set", "osd", std::string(kFirstLine) + "=x", "-p", Name(0), "--json",
                             "--timeout", "0.5"});
    EXPECT_EQ(silent.code, kSomeFailed);
    EXPECT_EQ(silent.Objects().at(0)["error"]["end"], "timed-out");
    SetFault(1, "changed-timeline");
    const std::string path = TextOfPath(folder.Write(
        "t.json",
        R"({"cmdInfos":[{"playerID":0,)"
        R"("typeName":"a","videoName":"b.mp4","cmdList":[{"milliseconds":1,"expendCmdIndex":0,)"
        R"("ip":"","port":0,"cmd":"00"}]}]})"));
    const Told other = Run({"apply", "timeline", "-f", path, "--force", "-p", Name(1), "--json"});
    EXPECT_EQ(other.code, kSomeFailed);
    EXPECT_EQ(other.Objects().back()["error"]["end"], "differs") << other.results;
}

TEST_F(SettingsCommands, ADocumentIsAppliedOnceItFitsOrIsForced) {
    const std::string osd = players.Player(1).State().osd;
    Json::Value changed = *ParseJson(osd);
    changed["data"][0]["texts"][0] = "Applied";
    const std::string good = TextOfPath(folder.Write("good.json", WriteJson(changed)));
    const Told trial = Run({"apply", "osd", "-f", good, "-p", Name(0), "--dry-run"});
    EXPECT_EQ(trial.code, kAllWell) << trial.remarks;
    EXPECT_THAT(trial.results, HasSubstr("Applied"));
    EXPECT_EQ(Writes(0), 0);
    EXPECT_EQ(Run({"apply", "osd", "-f", good, "-p", Name(0)}).code, kAllWell);
    EXPECT_EQ(Line(0), "Applied");
    EXPECT_THAT(Run({"apply", "osd", "-f", good, "-p", Name(0), "--dry-run"}).remarks,
                HasSubstr("nothing differs"));
    changed["data"][0]["colour"] = 1;
    const std::string odd = TextOfPath(folder.Write("odd.json", WriteJson(changed)));
    const Told refused = Run({"apply", "osd", "-f", odd, "-p", Name(1)});
    EXPECT_THAT(refused.remarks, HasSubstr("--force"));
    EXPECT_THAT(refused.results, testing::IsEmpty());
    EXPECT_EQ(Writes(1), 0);
    EXPECT_EQ(Run({"apply", "osd", "-f", odd, "-p", Name(1), "--force"}).code, kAllWell);
    EXPECT_EQ(Line(1), "Applied");
}

TEST_F(SettingsCommands, WhatCannotBeTakenBackIsAskedAbout) {
    const std::string file = TextOfPath(folder.Write("osd.json", players.Player(0).State().osd));
    const std::vector<std::string> toAll = {"apply", "osd", "-f", file, "--all"};
    EXPECT_EQ(Run(toAll).code, kWrongUse);  // nobody is there to answer
    answer = false;
    EXPECT_EQ(Run(toAll).code, kSomeFailed);
    EXPECT_THAT(questions, SizeIs(2));
    EXPECT_THAT(players.Player(0).ReceivedPackets(), IsEmpty());
    EXPECT_EQ(Run({"control", "power", "off", "-p", Name(0)}).code, kSomeFailed);
    EXPECT_EQ(Run({"control", "power", "off", "-p", Name(0), "--yes"}).code, kAllWell);
    EXPECT_FALSE(players.Player(0).State().poweredOn);
}

TEST_F(SettingsCommands, TheControlProtocolRestartsThePlayerOnRequestAlone) {
    std::vector<std::string> edit = {"set", "control-protocol", "Serial/Play=A501", "-p", Name(0)};
    const auto restarts = [&] {
        return std::ranges::count_if(players.Player(0).ReceivedPackets(), [](const auto& packet) {
            return packet.header.command == kCommandSettings && packet.header.qualifier == 1;
        });
    };
    const Told plain = Run(edit);
    EXPECT_EQ(plain.code, kAllWell) << plain.remarks;
    EXPECT_EQ(restarts(), 0);
    EXPECT_THAT(players.Player(0).State().controlProtocol, HasSubstr("\"A501\""));
    edit.emplace_back("--restart");
    EXPECT_EQ(Run(edit).code, kWrongUse);  // which cannot be taken back
    edit.emplace_back("--yes");
    EXPECT_THAT(Run(edit).remarks, HasSubstr("restarts"));
    EXPECT_EQ(restarts(), 1);
}

}  // namespace
}  // namespace sontaro::cli::test
