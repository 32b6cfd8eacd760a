#include <gmock/gmock.h>

#ifndef _WIN32
#include <sys/resource.h>

#include <csignal>
#endif

#include "support/temporary_folder.h"
#include "venue/backup_store.h"
#include "venue/backup_writer.h"
#include "venue/earlier_documents.h"
#include "venue/folder_name.h"
#include "venue/venue_samples.h"

namespace sontaro::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kFirst = "20261121T203000Z";
constexpr const char* kSecond = "20261122T203000Z";

#ifndef _WIN32
/// No file gets larger than that, as on a disk that is full, until the end of the scope.
class SmallFiles {
   public:
    explicit SmallFiles(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallFiles() { setrlimit(RLIMIT_FSIZE, &before_); }
    SmallFiles(const SmallFiles&) = delete;
    SmallFiles& operator=(const SmallFiles&) = delete;

   private:
    rlimit before_{};
};
#endif

struct Backups : testing::Test {
    /// The plan of a run on that day of November.
    BackupPlan OnDay(int day) const {
        BackupPlan plan{folder.Path()};
        plan.begun = sys_days(year(2026) / November / day) + 20h + 30min;
        plan.program = "0.1.0";
        return plan;
    }
    BackupPlan Flat() const {
        BackupPlan plan = OnDay(21);
        plan.isFlat = true;
        return plan;
    }
    /// Writes a backup of players, each with these readings.
    WrittenBackup Write(BackupPlan plan, const std::vector<PlayerDocuments>& players) const {
        auto writer = BackupWriter::Begin(std::move(plan));
        EXPECT_TRUE(writer) << writer.reason();
        for (const PlayerDocuments& player : players) EXPECT_TRUE((*writer)->Add(player));
        auto written = (*writer)->Finish();
        EXPECT_TRUE(written) << written.reason();
        return *written;
    }
    PlayerDocuments One(std::string osd) const { return {PlayerNamed("A"), {ReadOf("osd", osd)}}; }
    /// The document in the backup that a folder has; why there is none.
    static std::string OsdIn(const fs::path& place) {
        const auto backup = Backup::Open(place);
        if (!backup) return backup.reason();
        const auto documents = backup->Documents(0);
        return documents ? documents->Find(Kind("osd"))->text : documents.reason();
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const ListedBackup& listed : BackupStore(folder.Path()).List())
            names.push_back(listed.name + (listed.trouble.empty() ? "" : "!"));
        return names;
    }
    /// Every file with its content, besides the lock.
    std::map<std::string, std::string> Files() const {
        std::map<std::string, std::string> files;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder.Path())) {
            std::string name = TextOfPath(entry.path().lexically_relative(folder.Path()));
            std::ranges::replace(name, '\\', '/');
            if (entry.is_regular_file() && name != ".sontaro-lock") files[name] = folder.Read(name);
        }
        return files;
    }
    void Restore(const std::map<std::string, std::string>& files) const {
        for (const fs::directory_entry& entry : fs::directory_iterator(folder.Path()))
            fs::remove_all(entry.path());
        for (const auto& [name, content] : files) folder.Write(name, content);
    }

    TemporaryFolder folder;
};

TEST_F(Backups, HoldEveryDocumentAsItWasSentAndWhatCouldNotBeRead) {
    const std::string odd("{ \"data\": [] }\0\xFF", 16);
    const WrittenBackup written = Write(
        OnDay(21),
        {{PlayerNamed("a/B"),
          {ReadOf("touch", ""), FailureOf("cave"), LackOf("subtitles"), ReadOf("osd", odd)}}});
    EXPECT_EQ(written.folder, folder / kFirst);
    EXPECT_EQ(folder.Read(std::string(kFirst) + "/a%2FB+2/osd.json"), odd);
    const auto backup = Backup::Open(folder.Path());
    ASSERT_TRUE(backup) << backup.reason();
    EXPECT_EQ(backup->Manifest().begun, "2026-11-21T20:30:00Z");
    const PlayerDocuments documents = *backup->Documents(backup->PlayersWithId("a/B").at(0));
    EXPECT_EQ(documents.player, PlayerNamed("a/B"));
    EXPECT_EQ(documents.Find(Kind("osd"))->text, odd);
    EXPECT_EQ(documents.Find(Kind("cave"))->why, "timed-out");
    EXPECT_EQ(documents.Find(Kind("subtitles"))->outcome, BlockReading::Outcome::kNotSupported);
    EXPECT_EQ(documents.Find(Kind("timeline")), nullptr);
}

#ifndef _WIN32
TEST_F(Backups, AreTheUsersAlone) {
    folder.Write("others/secret", "not to be read");
    fs::create_directory_symlink(folder / "others", folder / "link");
    Write(OnDay(21), {One("{}")});
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder / kFirst))
        EXPECT_EQ(entry.status().permissions(),
                  entry.is_directory() ? fs::perms::owner_all
                                       : fs::perms::owner_read | fs::perms::owner_write);
    BackupPlan plan = OnDay(22);
    plan.folder = folder / "link";
    EXPECT_FALSE(BackupWriter::Begin(plan));
}
#endif

#ifndef _WIN32
TEST_F(Backups, AreNoneWhenTheDiskIsFull) {
    const TemporaryFolder data;
    EarlierDocuments earlier(data / "earlier");
    const std::string large(5000, 'x');
    auto writer = BackupWriter::Begin(OnDay(21));
    {
        const SmallFiles limit(1000);
        EXPECT_FALSE((*writer)->Add(One(large)));
        EXPECT_FALSE(earlier.Keep(PlayerNamed("A"), Kind("osd"), large));
    }
    EXPECT_TRUE((*writer)->Add({PlayerNamed("B"), {ReadOf("osd", "{}")}}));
    EXPECT_THAT((*writer)->Finish().reason(), HasSubstr("cannot be written"));
    writer->reset();
    EXPECT_THAT(Files(), IsEmpty());
    EXPECT_THAT(earlier.List(PlayerNamed("A"), Kind("osd")), IsEmpty());
}
#endif

TEST_F(Backups, AreNoneBeforeTheyAreFinished) {
    auto writer = BackupWriter::Begin(OnDay(21));
    ASSERT_TRUE(writer && (*writer)->Add(One("{}")));
    EXPECT_THAT(OsdIn(folder.Path()), HasSubstr("no whole backup"));
    EXPECT_THAT(OsdIn(folder / kFirst), HasSubstr("no manifest"));
    EXPECT_THAT(BackupWriter::Begin(OnDay(22)).reason(), HasSubstr("another process"));
    EXPECT_FALSE((*writer)->Add(One("{ }")));
    writer->reset();
    EXPECT_THAT(Files(), IsEmpty());
    EXPECT_FALSE((*BackupWriter::Begin(OnDay(21)))->Finish());  // nobody was read
}

TEST_F(Backups, AreNoneWhenAFileIsNotAsTheManifestSays) {
    Write(OnDay(21), {One("{\"data\":[]}")});
    const auto whole = Files();
    const std::string osd = std::string(kFirst) + "/A/osd.json";
    for (const char* other : {"", "{\"data\":{}}", "{\"data\":[]} "}) {
        folder.Write(osd, other);
        EXPECT_THAT(OsdIn(folder / kFirst), HasSubstr("A/osd.json: the file is not as")) << other;
    }
    fs::remove(folder / osd);
    EXPECT_THAT(OsdIn(folder / kFirst), HasSubstr("osd.json"));
    EXPECT_THAT(Names(), ElementsAre(std::string(kFirst) + "!"));
    Restore(whole);
    EXPECT_THAT(Names(), ElementsAre(kFirst));
}

TEST_F(Backups, OfTwoPlayersWithOneIdAreHeldApart) {
    PlayerDocuments first = One("{}");
    PlayerDocuments second = One("{ }");
    second.player.mac = "02:00:7F:00:00:03";
    Write(Flat(), {first, second});
    const auto before = Files();
    EXPECT_TRUE(before.contains("A/osd.json") && before.contains("A@02007F000003/osd.json"));
    EXPECT_FALSE(Write(Flat(), {second, first}).isNew);
    EXPECT_EQ(Files(), before);
    const Backup backup = *Backup::Open(folder.Path());
    EXPECT_THAT(backup.PlayersWithId("A"), ElementsAre(0, 1));
    EXPECT_THAT(backup.PlayersWithId("A", "another's"), ElementsAre(0, 1));
    EXPECT_THAT(backup.PlayersWithId("A", second.player.mac), ElementsAre(1));
    second.player.mac = "02:00:7F:00:00:04";
    Write(Flat(), {second});  // who comes alone, and for the first time, gets nobody's folder
    EXPECT_EQ(folder.Read("A/osd.json"), "{}");
    EXPECT_EQ(folder.Read("A@02007F000004/osd.json"), "{ }");
}

TEST_F(Backups, RemoveOfKilledRunsOnlyWhatIsCertainlyTheirs) {
    folder.Write("20261119T000000Z/.sontaro-unfinished", "");
    folder.Write("20261119T000000Z/A/osd.json", "{");
    folder.Write("20261119T000000Z/A/notes.txt", "mine");
    folder.Write("20261118T000000Z/A/osd.json", "{}");  // nobody says that it is unfinished
    folder.Write("A/osd.json", "{}");
    fs::create_directories(folder / "20261117T000000Z");
    fs::create_directories(folder / "empty");
    Write(OnDay(21), {One("{}")});
    const auto files = Files();
    EXPECT_FALSE(files.contains("20261119T000000Z/A/osd.json"));
    for (const char* kept :
         {"20261119T000000Z/A/notes.txt", "20261118T000000Z/A/osd.json", "A/osd.json"})
        EXPECT_TRUE(files.contains(kept)) << kept;
    EXPECT_FALSE(fs::exists(folder / "20261117T000000Z"));
    EXPECT_TRUE(fs::exists(folder / "empty"));
}

TEST_F(Backups, ThatWereFinishedAtTheMomentOfTheKillStay) {
    Write(OnDay(21), {One("{}")});
    folder.Write(std::string(kFirst) + "/.sontaro-unfinished", "");
    Write(OnDay(22), {One("{ }")});
    EXPECT_THAT(Names(), ElementsAre(kSecond, kFirst));
}

TEST_F(Backups, AreKeptUpToANumberButNeverWithoutAWholeOne) {
    for (int day = 10; day < 15; ++day) Write(OnDay(day), {One("{}")});
    folder.Write("20261112T203000Z/A/osd.json", "broken");
    BackupPlan plan = OnDay(21);
    plan.keep = 2;
    EXPECT_EQ(Write(plan, {One("{}")}).removed, 3U);
    EXPECT_THAT(Names(), ElementsAre(kFirst, "20261114T203000Z", "20261112T203000Z!"));
    plan = OnDay(22);
    plan.keep = 0;
    PlayerDocuments failed = One("{}");
    failed.blocks = {FailureOf("osd")};
    Write(plan, {failed});  // the latest that has everything is not lost for it
    EXPECT_THAT(Names(), ElementsAre(kSecond, kFirst, "20261112T203000Z!"));
    plan = OnDay(23);
    plan.keep = 1;
    Write(plan, {{PlayerNamed("B"), {ReadOf("osd", "{}")}}});  // nor is what a missing player had
    EXPECT_THAT(Names(), ElementsAre("20261123T203000Z", kFirst, "20261112T203000Z!"));
}

TEST_F(Backups, AreNotMadeWhenNothingHasChanged) {
    const std::string speed = R"({"data":[{"speed":2}]})";
    BackupPlan plan = OnDay(21);
    plan.onlyChanged = true;
    EXPECT_TRUE(Write(plan, {One(speed)}).isNew);
    plan = OnDay(22);
    plan.onlyChanged = true;
    for (const std::string& same : {speed, speed + " ", With(speed, "data/0/speed", 2.0)}) {
        const WrittenBackup written = Write(plan, {One(same)});
        EXPECT_FALSE(written.isNew) << same;
        EXPECT_EQ(written.folder, folder / kFirst);
    }
    EXPECT_THAT(Names(), ElementsAre(kFirst));
    const std::string other = With(speed, "data/0/speed", 3);
    EXPECT_TRUE(Write(plan, {One(other)}).isNew);
    folder.Write(std::string(kSecond) + "/A/osd.json", "broken");
    plan = OnDay(23);
    plan.onlyChanged = true;
    EXPECT_TRUE(Write(plan, {One(other)}).isNew);  // the latest is no whole one
}

TEST_F(Backups, ThatAreFlatHaveTheSameBytesAndKeepWhatWasNotRead) {
    const PlayerDocuments other{PlayerNamed("B"), {ReadOf("osd", "b")}};
    Write(Flat(), {One("a"), other});
    const auto before = Files();
    BackupPlan later = Flat();
    later.begun += 24h;
    EXPECT_FALSE(Write(later, {other, One("a")}).isNew);
    EXPECT_EQ(Files(), before);
    PlayerDocuments failed = One("");
    failed.blocks = {FailureOf("osd")};
    Write(later, {failed});
    EXPECT_EQ(OsdIn(folder.Path()), "a");
    EXPECT_EQ(Backup::Open(folder.Path())->Manifest().players[0].blocks[0].why, "timed-out");
    EXPECT_EQ(folder.Read("B/osd.json"), "b");
    failed.blocks = {LackOf("osd")};
    fs::remove_all(folder / "B");
    Write(later, {failed});
    EXPECT_FALSE(fs::exists(folder / "A/osd.json"));
    EXPECT_THAT(Backup::Open(folder.Path())->Manifest().players, testing::SizeIs(1));
    folder.Write("manifest.json", "of somebody else");
    EXPECT_THAT(BackupWriter::Begin(later).reason(), HasSubstr("manifest.json"));
    EXPECT_EQ(folder.Read("manifest.json"), "of somebody else");
}

TEST_F(Backups, ThatAreFlatAreTheOldOrTheNewWhereverARunIsKilled) {
    const auto documents = [](const char* text) {
        return PlayerDocuments{PlayerNamed("A"), {ReadOf("osd", text), ReadOf("cave", text)}};
    };
    Write(Flat(), {documents("old")});
    const auto old = Files();
    Write(Flat(), {documents("new")});
    const auto done = Files();
    auto state = old;
    const auto expect = [&](const char* text) {
        Restore(state);
        EXPECT_EQ(OsdIn(folder.Path()), text);
        Write(Flat(), {{PlayerNamed("B"), {ReadOf("osd", "b")}}});
        EXPECT_EQ(OsdIn(folder.Path()), text);
        EXPECT_EQ(folder.Read("A/cave.json"), text);
        EXPECT_EQ(Files().size(), 4U);
    };
    state["A/.osd.json.new"] = "ne";
    expect("old");
    state["A/.osd.json.new"] = state["A/.cave.json.new"] = "new";
    expect("old");
    state[".sontaro-next.json"] = done.at("manifest.json");
    expect("new");
    state["A/osd.json"] = "new";
    state.erase("A/.osd.json.new");
    expect("new");
    state["A/cave.json"] = "new";
    state.erase("A/.cave.json.new");
    expect("new");
}

}  // namespace
}  // namespace sontaro::test
