#include "base/file.h"
#include "batchsend/journal_writer.h"
#include "cli_support.h"
#include "venue/backup_writer.h"
#include "venue/venue_samples.h"

namespace sontaro::cli::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

struct VenueCommands : CliTest {
    /// The folder of a new backup of these players.
    std::string Backup(std::vector<std::string> options = {}) {
        options.insert(options.begin(), {"backup", TextOfPath(folder / "backups"), "--json"});
        last = Run(std::move(options));
        const auto objects = last.Objects();
        return objects.empty() ? "" : objects.back()["backup"].asString();
    }
    /// Without the players that are not named.
    std::vector<std::string> Both(std::vector<std::string> call) {
        call.insert(call.end(), {"-p", Name(0), "-p", Name(1)});
        return call;
    }
    /// A backup of one player, whose remark is "Hall".
    void WriteBackup(const std::string& mac, const std::string& osd) {
        auto writer = BackupWriter::Begin({folder / "backups"});
        ASSERT_TRUE((*writer)->Add(
            {sontaro::test::PlayerNamed("SIMPLAYER1", mac), {sontaro::test::ReadOf("osd", osd)}}));
        ASSERT_TRUE((*writer)->Finish());
    }
    void ChangeLine(std::size_t player, const std::string& text) {
        players.Player(player).ChangeState([&](simulator::PlayerState& state) {
            Json::Value osd = *ParseJson(state.osd);
            osd["data"][0]["texts"][0] = text;
            state.osd = WriteJson(osd);
        });
    }

    Told last;
};

TEST_F(VenueCommands, ABackupIsTheVenueUntilSomethingChangesAndBringsItBack) {
    const std::string osd = players.Player(0).State().osd;
    const std::string backup = Backup({"-p", Name(0), "-p", Name(1)});
    ASSERT_EQ(last.code, kAllWell) << last.remarks << last.results;
    EXPECT_EQ(Run(Both({"compare", backup})).code, kAllWell);
    ChangeLine(0, "Changed");
    const Told differs = Run(Both({"compare", backup, "--json"}));
    EXPECT_EQ(differs.code, kSomeFailed);
    ASSERT_THAT(differs.Objects(), SizeIs(1)) << differs.results;
    EXPECT_EQ(differs.Objects()[0]["key"], "data/0/texts/0");
    EXPECT_EQ(differs.Objects()[0]["after"], "Changed");
    EXPECT_EQ(differs.Objects()[0]["ip"], Address(0));

    const auto restore = Both({"restore", backup});
    auto trial = restore;
    trial.emplace_back("--dry-run");
    EXPECT_THAT(Run(trial).results, HasSubstr("Changed"));
    EXPECT_EQ(Run(restore).code, kWrongUse);  // nobody is there to be asked
    EXPECT_EQ(Writes(0) + Writes(1), 0);
    answer = true;
    EXPECT_EQ(Run(restore).code, kAllWell);
    EXPECT_EQ(*ParseJson(players.Player(0).State().osd), *ParseJson(osd));
    EXPECT_EQ(Writes(0), 1);
    EXPECT_EQ(Writes(1), 0);
    EXPECT_EQ(Run(Both({"compare", backup})).code, kAllWell);
}

TEST_F(VenueCommands, WhatAPlayerDoesNotSupportIsNoFailureAndWhatItDoesNotAnswerIs) {
    SetFault(0, "unsupported=19");
    const std::string backup = Backup({"-p", Name(0)});
    EXPECT_EQ(last.code, kAllWell) << last.results;
    EXPECT_THAT(last.Objects().at(0)["notSupported"], SizeIs(1));
    SetFault(0, "unread=16");
    Backup({"-p", Name(0), "--timeout", "0.4"});
    EXPECT_EQ(last.code, kSomeFailed);
    const Told same = Run({"compare", TextOfPath(folder / "backups"),
                           last.Objects().back()["backup"].asString(), "--json"});
    EXPECT_EQ(same.code, kTrouble);
    EXPECT_EQ(same.Objects().at(0)["only"], "neither");
    SetFault(0, "bad-json");
    EXPECT_EQ(Backup({"-p", Name(0)}), "");
    EXPECT_EQ(last.code, kSomeFailed);
    EXPECT_EQ(last.Objects().at(0)["error"]["end"], "unreadable");
    SetFault(0, "silent");
    EXPECT_EQ(Backup({"-p", Name(0), "--timeout", "0.3"}), "");
    EXPECT_EQ(last.code, kSomeFailed);
    EXPECT_EQ(Run({"compare", TextOfPath(folder / "backups"), backup}).code, kSomeFailed);
}

TEST_F(VenueCommands, APlayerTakesThePlaceOfAnotherOne) {
    ChangeLine(0, "Stage");
    folder.Write("config/remarks.json", "{}");
    const std::string backup = Backup({"-p", Name(0)});
    const std::vector<std::string> call = {"restore", backup, "-p", Name(1), "--yes"};
    EXPECT_EQ(Run(call).code, kSomeFailed);  // the backup has no such player
    auto replace = call;
    replace.insert(replace.end(), {"--as", "SIMPLAYER1", "--only", "osd"});
    EXPECT_EQ(Run(replace).code, kAllWell);
    EXPECT_THAT(players.Player(1).State().osd, HasSubstr("Stage"));
    EXPECT_EQ(Writes(1), 1);
    replace[replace.size() - 3] = "NOBODY";
    EXPECT_EQ(Run(replace).code, kWrongUse);
}

TEST_F(VenueCommands, TheRemarkOfAReplacedPlayerIsPlannedAndGivenOnce) {
    WriteBackup("02:00:7F:00:00:99", players.Player(1).State().osd);
    const auto replace = [&](std::size_t player) {
        return Run({"restore", TextOfPath(folder / "backups"), "--as", "SIMPLAYER1", "-p",
                    Name(player), "--yes", "--json", "--timeout", "0.4"});
    };
    SetFault(0, "silent");
    EXPECT_THAT(replace(0).results, Not(HasSubstr("Hall")));  // nobody is there to be called so
    const auto objects = replace(1).Objects();
    ASSERT_THAT(objects, SizeIs(2));
    EXPECT_EQ(objects[0]["after"], "Hall");
    EXPECT_TRUE(objects[1]["restored"].asBool());
    EXPECT_THAT(replace(1).remarks, HasSubstr("nothing differs"));
}

TEST_F(VenueCommands, APlayerThatIsInABackupTwiceIsRefusedWithBothListed) {
    const std::string first = "02:00:00:00:00:01", second = "02:00:00:00:00:02";
    auto writer = BackupWriter::Begin({folder / "backups"});
    for (const std::string& mac : {first, second})
        ASSERT_TRUE((*writer)->Add({sontaro::test::PlayerNamed("SIMPLAYER1", mac), {}}));
    ASSERT_TRUE((*writer)->Finish());
    const std::vector<std::string> restore = {"restore", TextOfPath(folder / "backups"), "--yes"};
    for (const auto& [more, code] :
         {std::pair(std::vector<std::string>{"-p", Name(0)}, kSomeFailed),
          {std::vector<std::string>{"-p", Name(1), "--as", "SIMPLAYER1"}, kWrongUse}}) {
        auto call = restore;
        call.insert(call.end(), more.begin(), more.end());
        const Told told = Run(call);
        EXPECT_EQ(told.code, code);
        EXPECT_THAT(told.remarks, AllOf(HasSubstr(first), HasSubstr(second)));
    }
}

TEST_F(VenueCommands, ABackupOfAnotherDeviceWithThatIdIsRemarkedOn) {
    const std::string other = "02:00:00:00:00:01";
    auto writer = BackupWriter::Begin({folder / "backups"});
    ASSERT_TRUE((*writer)->Add({sontaro::test::PlayerNamed("SIMPLAYER1", other), {}}));
    ASSERT_TRUE((*writer)->Finish());
    const Told told = Run({"restore", TextOfPath(folder / "backups"), "-p", Name(0), "--dry-run"});
    EXPECT_EQ(told.code, kAllWell);
    EXPECT_THAT(told.remarks, HasSubstr("another device with this ID (" + other + ")"));
}

TEST_F(VenueCommands, CompareRemarksOnTheSameValuesInAnotherForm) {
    const std::string backup = Backup({"-p", Name(0)});
    players.Player(0).ChangeState([](simulator::PlayerState& state) {
        Json::Value osd = *ParseJson(state.osd);
        osd["data"][0]["speed"] = osd["data"][0]["speed"].asDouble();
        state.osd = WriteJson(osd);
    });
    const Told told = Run({"compare", backup, "-p", Name(0), "--json"});
    EXPECT_EQ(told.code, kAllWell);
    EXPECT_THAT(told.Objects(), IsEmpty());
    EXPECT_THAT(told.remarks, HasSubstr("SIMPLAYER1 osd: the same values in another form"));
}

TEST_F(VenueCommands, CompareSaysWhenItCannotTell) {
    EXPECT_EQ(Run({"compare", TextOfPath(folder / "nowhere")}).code, kTrouble);
    const std::string backup = Backup({"-p", Name(0)});
    SetFault(0, "refuse");
    EXPECT_EQ(Run({"compare", backup, "-p", Name(0), "--timeout", "0.5"}).code, kTrouble);
    EXPECT_EQ(Run({"compare", backup, backup}).code, kAllWell);
    EXPECT_EQ(Run({"compare", backup, backup, "-p", Name(0)}).code, kWrongUse);
}

TEST_F(VenueCommands, AFileIsSoundFaultyOrNoneThatIsKnown) {
    const std::string osd = players.Player(0).State().osd;
    const std::string sound = TextOfPath(folder.Write("sound.json", osd));
    EXPECT_EQ(Call({"check", sound}).code, kAllWell);
    EXPECT_EQ(Call({"check", sound, "--block", "timeline"}).code, kSomeFailed);
    const std::string empty = TextOfPath(folder.Write("timeline.json", R"({"cmdInfos":[]})"));
    EXPECT_THAT(Call({"check", empty}).results, HasSubstr(": a timeline, sound"));
    const std::string faulty = TextOfPath(folder.Write("faulty.json", "{\n  \"data\": [,]\n}"));
    const Told told = Call({"check", faulty, "--block", "osd"});
    EXPECT_EQ(told.code, kSomeFailed);
    EXPECT_THAT(told.results, HasSubstr("faulty.json:2:"));
    EXPECT_EQ(Call({"check", TextOfPath(folder / "nowhere")}).code, kTrouble);
}

TEST_F(VenueCommands, ACategoryIsNamedAsAllPlayersNameIt) {
    const auto upload = [&](std::vector<std::string> named) {
        const std::string video = TextOfPath(folder.Write("1.mp4", "a"));
        named.insert(named.begin(), {"upload", video, "--dry-run", "--timeout", "0.4"});
        return Run(std::move(named));
    };
    const auto name = [&](std::size_t player, Json::ArrayIndex slot, const char* text) {
        players.Player(player).ChangeState([&](simulator::PlayerState& state) {
            Json::Value protocol = *ParseJson(state.controlProtocol);
            protocol["VideoType"][slot]["TypeName"] = text;
            state.controlProtocol = WriteJson(protocol);
        });
    };
    name(0, 40, "Opening");
    const Told unknown = upload(Both({"-c", "Opening"}));
    EXPECT_EQ(unknown.code, kWrongUse);
    EXPECT_THAT(unknown.remarks, HasSubstr("none: " + Address(1) + "; 40: " + Address(0)));
    name(1, 40, "Opening");
    EXPECT_EQ(upload(Both({"-c", "Opening"})).code, kAllWell);
    SetFault(1, "silent");
    EXPECT_THAT(upload(Both({"-c", "Opening"})).remarks, HasSubstr("the number of the others"));
    EXPECT_THAT(upload({"-c", "Closing", "-p", Name(0)}).remarks, HasSubstr("Opening"));
    const Told dead = upload({"-c", "Opening", "-p", Name(1), "--json"});
    EXPECT_EQ(dead.code, kSomeFailed);
    EXPECT_EQ(dead.Objects().back()["error"]["end"], "timed-out");
}

TEST_F(VenueCommands, VideosAreSentProvedAndSentAgain) {
    if (sontaro::test::kOnWindows) GTEST_SKIP() << "Wine has no room for a chunk";
    folder.Write("videos/1.mp4", std::string(1000, 'a'));
    folder.Write("videos/2.mp4", std::string(2000, 'b'));
    const std::vector<std::string> call = {
        "upload", TextOfPath(folder / "videos"), "--category", "3", "-p", Name(0), "-p", Name(1)};
    auto trial = call;
    trial.emplace_back("--dry-run");
    EXPECT_EQ(Run(trial).code, kAllWell);
    EXPECT_THAT(players.Player(0).State().stored, IsEmpty());
    SetFault(1, "not-supported");
    const Told told = Run(call);
    EXPECT_EQ(told.code, kSomeFailed) << told.results;
    EXPECT_THAT(players.Player(0).State().stored, SizeIs(2));
    SetFault(1, "");
    EXPECT_EQ(Call({"upload", "--again"}).code, kAllWell);
    EXPECT_THAT(players.Player(1).State().stored, SizeIs(2));
    EXPECT_THAT(Call({"upload", "--again"}).remarks, HasSubstr("nothing is left"));
}

}  // namespace
}  // namespace sontaro::cli::test
