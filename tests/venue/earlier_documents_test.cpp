#include "venue/earlier_documents.h"

#include <gmock/gmock.h>

#include "base/file_lock.h"
#include "support/temporary_folder.h"
#include "venue/venue_samples.h"

namespace sontaro::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono;
using testing::ElementsAre;
using testing::SizeIs;

constexpr sys_seconds kStart = sys_days(year(2026) / November / 21) + 20h;

struct KeptDocuments : testing::Test {
    Status Keep(const std::string& text, const char* block = "osd", const char* id = "A") {
        return earlier.Keep(PlayerNamed(id), Kind(block), text, now += 1min);
    }
    std::vector<EarlierDocument> List(const char* block = "osd", const char* id = "A") const {
        return earlier.List(PlayerNamed(id), Kind(block));
    }
    std::vector<std::string> Texts(const char* block = "osd", const char* id = "A") const {
        std::vector<std::string> texts;
        for (const EarlierDocument& document : List(block, id))
            texts.push_back(*EarlierDocuments::Read(document));
        return texts;
    }

    TemporaryFolder folder;
    EarlierDocuments earlier{folder / "earlier", 1000};
    system_clock::time_point now = kStart;
};

TEST_F(KeptDocuments, AreListedByPlayerAndBlockTheLatestFirst) {
    EXPECT_THAT(List(), SizeIs(0));
    ASSERT_TRUE(Keep("first") && Keep(std::string("se\0ond", 6)) && Keep("other", "cave") &&
                Keep("third", "osd", ".."));
    EXPECT_THAT(Texts(), ElementsAre(std::string("se\0ond", 6), "first"));
    EXPECT_EQ(List().back().time, kStart + 1min);
    EXPECT_THAT(Texts("cave"), ElementsAre("other"));
    EXPECT_THAT(Texts("osd", ".."), ElementsAre("third"));
}

TEST_F(KeptDocuments, AreKeptOnceWithTheTimeWhenTheyStoodThereLast) {
    ASSERT_TRUE(Keep("first") && Keep("second") && Keep("first"));
    EXPECT_THAT(Texts(), ElementsAre("first", "second"));
    EXPECT_EQ(List().front().time, kStart + 3min);
    now = kStart - 24h;  // the clock has been set back
    ASSERT_TRUE(Keep("third"));
    EXPECT_THAT(Texts(), ElementsAre("third", "first", "second"));
}

TEST_F(KeptDocuments, AreTwentyOfABlockAndNoMoreThanFitIn) {
    for (int i = 0; i < 25; ++i) ASSERT_TRUE(Keep(std::to_string(i)));
    EXPECT_THAT(Texts(), SizeIs(EarlierDocuments::kMostOfBlock));
    EXPECT_EQ(Texts().back(), "5");
    ASSERT_TRUE(Keep(std::string(970, 'x'), "osd", "B"));
    EXPECT_EQ(Texts().size(), 15U);  // of two bytes each
    ASSERT_TRUE(Keep(std::string(2000, 'y'), "osd", "B"));
    EXPECT_THAT(Texts("osd", "B"), SizeIs(1));  // what was asked for is there in any case
    EXPECT_THAT(Texts(), SizeIs(0));
}

TEST_F(KeptDocuments, TellWhatHasChangedSince) {
    const std::string osd = FactoryText("osd");
    ASSERT_TRUE(Keep(osd));
    const auto changes =
        EarlierDocuments::ChangesSince(List().front(), Kind("osd"), With(osd, "data/0/speed", 9));
    ASSERT_TRUE(changes);
    EXPECT_THAT(changes->differences, SizeIs(1));
}

TEST_F(KeptDocuments, ThatWereChangedAreNotRead) {
    ASSERT_TRUE(Keep("first"));
    std::ofstream(List().front().file) << "other";
    EXPECT_FALSE(EarlierDocuments::Read(List().front()));
}

TEST_F(KeptDocuments, AreAnErrorAndNothingElseInAFolderThatIsNoUse) {
    folder.Write("earlier", "a file");
    EXPECT_FALSE(Keep("first"));
    EXPECT_THAT(List(), SizeIs(0));
    fs::remove(folder / "earlier");
    folder.Write("earlier/A@02007F000002/osd", "a file");
    EXPECT_FALSE(Keep("first"));
    fs::remove(folder / "earlier/A@02007F000002/osd");
    ASSERT_TRUE(Keep("first"));
    const auto lock = FileLock::Take(folder / "earlier/.lock", milliseconds(0));
    EXPECT_THAT(Keep("second").reason(), testing::HasSubstr("another process"));
    EXPECT_THAT(Texts(), ElementsAre("first"));
}

TEST_F(KeptDocuments, LoseWhatAKilledProcessHasLeftAndNothingElse) {
    ASSERT_TRUE(Keep("first"));
    const fs::path block = List().front().file.parent_path();
    std::ofstream(block / "notes.new") << "mine";
    std::ofstream(block / (std::string(64, 'a') + ".new")) << "half";
    ASSERT_TRUE(Keep("second"));
    EXPECT_TRUE(fs::exists(block / "notes.new"));
    EXPECT_EQ(std::distance(fs::directory_iterator(block), fs::directory_iterator()), 3);
}

#ifndef _WIN32
TEST_F(KeptDocuments, AreTheUsersAloneAndFollowNoLinks) {
    ASSERT_TRUE(Keep("first"));
    EXPECT_EQ(fs::status(List().front().file).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(folder / "earlier").permissions(), fs::perms::owner_all);
    fs::create_directories(folder / "elsewhere");
    fs::remove_all(folder / "earlier/A@02007F000002");
    fs::create_directory_symlink(folder / "elsewhere", folder / "earlier/A@02007F000002");
    EXPECT_FALSE(Keep("second"));
    EXPECT_TRUE(fs::is_empty(folder / "elsewhere"));
}
#endif

}  // namespace
}  // namespace sontaro::test
