#include "batchsend/run_journal.h"

#include <gmock/gmock.h>

#include "batchsend/journal_writer.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using Kind = UploadEvent::Kind;
using Outcome = JournalEntry::Outcome;

const UploadVideo kA = {PathOfText("/视频/01 晚风.mp4"), "晚风.mp4", 7, 12};
const UploadVideo kB = {"b.mp4", "b, \"live\".mp4", 65'535};
const UploadVideo kC = {"c.mp4", "c.mp4", 0};

/// A journal of two players with three videos each, on a clock that is moved by hand.
struct Journals : testing::Test {
    void Begin() {
        const std::vector<UploadPlayer> players = {{{"192.168.1.21", 9000, 0}, {kA, kB, kC}},
                                                   {{"192.168.1.22", 9001, 0}, {kA, kB, kC}}};
        writer = std::make_unique<JournalWriter>(folder / "runs", players, [this] { return now; });
    }
    void Add(Kind kind, std::size_t player, std::size_t video, std::uint64_t bytes = 0,
             UploadNote note = {}) {
        writer->Add({kind, player, video, bytes, UploadStatus::kNetworkFailure, std::move(note)});
    }
    void Send(std::size_t player, std::size_t video) {
        Add(Kind::kVideoBegun, player, video, 5'000'000'000);
        now += 50s;
        Add(Kind::kVideoDone, player, video, 5'000'000'000);
    }
    static std::string Told(const std::vector<UploadPlayer>& players) {
        std::string told;
        for (const UploadPlayer& player : players) {
            told += player.target.ip.substr(10) + ':';
            for (const UploadVideo& video : player.videos)
                told += TextOfPath(video.path.filename()).substr(0, 2);
            told += ' ';
        }
        return told;
    }

    TemporaryFolder folder;
    std::chrono::system_clock::time_point now{1'795'000'000s};
    std::unique_ptr<JournalWriter> writer;
};

TEST_F(Journals, TellWhatHasBecomeOfEveryVideo) {
    Begin();
    Send(0, 0);
    Add(Kind::kLeftOut, 0, 2, 0, {UploadNote::Kind::kUnreadable, "c.mp4"});
    Add(Kind::kVideoBegun, 0, 1, 9);
    Add(Kind::kAcknowledged, 0, 1, 9);
    Add(Kind::kVideoFailed, 0, 1, 0, {UploadNote::Kind::kLinkLost});
    Add(Kind::kPlayerEnded, 0, 0);
    Add(Kind::kVideoBegun, 1, 1, 9);
    const RunJournal journal = *LatestJournalIn(folder / "runs").journal;
    EXPECT_EQ(journal.players[1], (UploadPlayer{{"192.168.1.22", 9001, 0}, {kA, kB, kC}}));
    EXPECT_EQ(journal.entries[0][0],
              (JournalEntry{Outcome::kDone, 5'000'000'000, 50, "2026-11-18T11:07:30Z", ""}));
    EXPECT_EQ(journal.entries[0][1].note, "The connection has ended");
    EXPECT_EQ(journal.entries[0][2].outcome, Outcome::kLeftOut);
    EXPECT_EQ(journal.statuses[0], UploadStatus::kNetworkFailure);
    EXPECT_EQ(journal.entries[1][1].outcome, Outcome::kInFlight);
    EXPECT_EQ(journal.Speed(), 100'000'000);
    EXPECT_FALSE(journal.hasEnded);
    EXPECT_EQ(Told(FailedIn(journal)), "22:b.01c. 21:b.c. ");
    EXPECT_EQ(writer->Journal().entries, journal.entries);
    EXPECT_EQ(FailedIn(writer->Journal()), FailedIn(journal));
}

TEST_F(Journals, KeepAPlayerThatMayLackTheNamesOfItsCategories) {
    Begin();
    for (const std::size_t player : {0U, 1U}) Send(player, 0), Send(player, 1), Send(player, 2);
    writer->Add({Kind::kPlayerEnded, 0, 0, 0, UploadStatus::kDone});
    EXPECT_EQ(Told(FailedIn(writer->Journal())), "22: ");
    Add(Kind::kPlayerEnded, 1, 0);
    EXPECT_EQ(Told(FailedIn(*LatestJournalIn(folder / "runs").journal)), "22: ");
    writer->Add({Kind::kPlayerEnded, 1, 0, 0, UploadStatus::kDone});
    EXPECT_EQ(Told(FailedIn(writer->Journal())), "");
}

TEST_F(Journals, AreReadWhereverTheyAreCut) {
    Begin();
    Send(0, 0), Send(0, 1);
    const std::string text = folder.Read("runs/" + TextOfPath(writer->Path().filename()));
    const std::size_t first = text.find('\n');
    for (std::size_t size = 0; size < first; ++size)
        EXPECT_FALSE(ReadJournal(text.substr(0, size))) << size;
    std::vector<std::string> told;
    for (std::size_t size = first; size <= text.size(); ++size) {
        const auto journal = ReadJournal(text.substr(0, size));
        ASSERT_TRUE(journal) << size;
        const std::string failed = Told(FailedIn(*journal));
        if (told.empty() || told.back() != failed) told.push_back(failed);
    }
    EXPECT_THAT(told,
                ElementsAre("21:01b.c. 22:01b.c. ", "21:b.c. 22:01b.c. ", "21:c. 22:01b.c. "));
}

TEST_F(Journals, AreFiftyAtMost) {
    Begin();
    const std::filesystem::path oldest = writer->Path();
    folder.Write("runs/" + TextOfPath(BesideJournal(oldest, "21.json").filename()), "{}");
    for (int i = 1; i < 50; ++i) now += 1ms, Begin();
    EXPECT_TRUE(exists(oldest));
    now += 1ms, Begin();
    EXPECT_FALSE(exists(oldest) || exists(BesideJournal(oldest, "21.json")));
    EXPECT_EQ(JournalsIn(folder / "runs").size(), 50U);
    EXPECT_EQ(JournalsIn(folder / "runs")[0], writer->Path());
    EXPECT_TRUE(LatestJournalIn(folder / "runs").isLatest);
    folder.Write("runs/99999999-000000-000.jsonl", "{\"event\"");
    EXPECT_TRUE(LatestJournalIn(folder / "runs").journal);
    EXPECT_FALSE(LatestJournalIn(folder / "runs").isLatest);
}

}  // namespace
}  // namespace sontaro::test
