#include "base/file.h"

#include <gmock/gmock.h>

#include "base/folders.h"
#include "base/json_file.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

namespace fs = std::filesystem;

struct Files : testing::Test {
    std::size_t Count() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()));
    }

    TemporaryFolder folder;
};

TEST_F(Files, AreReplacedWholeAndFoldersMade) {
    const fs::path file = folder / "new/settings.json";
    ASSERT_TRUE(WriteFileAtomically(file, std::string("a\0b", 3)));
    ASSERT_TRUE(WriteFileAtomically(file, "second"));
    EXPECT_EQ(folder.Read("new/settings.json"), "second");
    EXPECT_EQ(*ReadFile(file, 3), "sec");
    EXPECT_FALSE(ReadFile(folder / "missing"));
    EXPECT_FALSE(ReadFile(folder.Path()));
}

TEST_F(Files, StayAsTheyWereWhenTheDiskIsFull) {
    const fs::path file = folder.Write("settings.json", "first");
    fs::create_symlink("/dev/full", folder / "settings.json.new");
    EXPECT_FALSE(WriteFileAtomically(file, "second"));
    EXPECT_EQ(folder.Read("settings.json"), "first");
    EXPECT_EQ(Count(), 1U);
}

TEST_F(Files, LeaveNothingBehindWhenTheyCannotTakeTheirName) {
    folder.Write("settings.json/inside", "kept");
    EXPECT_FALSE(WriteFileAtomically(folder / "settings.json", "second"));
    EXPECT_EQ(folder.Read("settings.json/inside"), "kept");
    EXPECT_EQ(Count(), 1U);
}

TEST_F(Files, OfJsonThatAreDamagedAreKeptAside) {
    for (const char* damaged : {"{\"a\": 1", "[1, 2]", "7"}) {
        JsonFile file(folder.Write("notes.json", damaged));
        EXPECT_TRUE(file.Root().empty());
        file.Root()["b"] = 2;
        EXPECT_TRUE(file.Save());
        EXPECT_TRUE(file.Save());
        EXPECT_EQ(folder.Read("notes.json.damaged"), damaged);
        EXPECT_EQ(JsonFile(folder / "notes.json").Root()["b"].asInt(), 2);
    }
}

TEST_F(Files, BeneathTheTempFolderAreDeletedAndLinksNotFollowed) {
    const TemporaryFolder elsewhere;
    elsewhere.Write("precious", "kept");
    const auto temp = EnsureTempFolder(folder.Path());
    ASSERT_TRUE(temp);
    folder.Write("Temp/a/b/c", "x");
    folder.Write("Temp/d", "x");
    fs::create_directory_symlink(elsewhere.Path(), *temp / "link");
    fs::create_symlink(elsewhere / "precious", *temp / "file link");
    DeleteContents(*temp);
    EXPECT_TRUE(fs::is_empty(*temp));
    EXPECT_EQ(elsewhere.Read("precious"), "kept");
}

TEST_F(Files, InPlaceOfTheTempFolderAreReported) {
    folder.Write("Temp", "a file");
    EXPECT_FALSE(EnsureTempFolder(folder.Path()));
}

}  // namespace
}  // namespace sontaro::test
