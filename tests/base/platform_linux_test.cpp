#include <gtest/gtest.h>
#include <sys/fsuid.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "base/file.h"
#include "base/folders.h"
#include "base/local_text.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

namespace fs = std::filesystem;

TEST(Language, IsTheFirstVariableThatIsNotEmpty) {
    setenv("LC_ALL", "", 1);
    setenv("LC_MESSAGES", "zh_CN.UTF-8", 1);
    setenv("LANG", "en_US.UTF-8", 1);
    EXPECT_EQ(SystemLanguage(), Language::kChinese);
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) unsetenv(name);
    EXPECT_EQ(SystemLanguage(), Language::kEnglish);
}

TEST(Files, StayAsTheyWereWhenTheDiskIsFull) {
    const TemporaryFolder folder;
    folder.Write("settings.json", "first");
    fs::create_symlink("/dev/full", folder / "settings.json.new");
    EXPECT_FALSE(WriteFileAtomically(folder / "settings.json", "second"));
    EXPECT_EQ(folder.Read("settings.json"), "first");
    EXPECT_FALSE(fs::is_symlink(folder / "settings.json.new"));
}

/// A folder that nobody may write to holds a file up as a reader does on other systems.
TEST(Files, AreReplacedAsSoonAsNobodyHoldsThem) {
    const TemporaryFolder folder;
    const fs::path file = folder.Write("settings.json", "first");
    const fs::path temporary = folder.Write("settings.json.new", "");
    fs::permissions(temporary, fs::perms::all);
    fs::permissions(folder.Path(), fs::perms{0555});
    std::atomic<bool> isOver = false;
    std::thread writer([&] {
        constexpr unsigned kNobody = 65534;
        setfsuid(kNobody);  // of this thread alone: the superuser may write everywhere
        EXPECT_TRUE(WriteFileAtomically(file, "second"));
        isOver = true;
    });
    while (!isOver && folder.Read("settings.json.new") != "second") std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    fs::permissions(folder.Path(), fs::perms::all);
    writer.join();
    EXPECT_EQ(folder.Read("settings.json"), "second");
    EXPECT_FALSE(fs::exists(temporary));
}

TEST(TempFolder, IsEmptiedWithoutFollowingLinks) {
    const TemporaryFolder folder;
    const TemporaryFolder elsewhere;
    elsewhere.Write("precious", "kept");
    fs::create_directory_symlink(elsewhere.Path(), folder / "link");
    fs::create_symlink(elsewhere / "precious", folder / "file link");
    DeleteContents(folder.Path());
    EXPECT_TRUE(fs::is_empty(folder.Path()));
    EXPECT_EQ(elsewhere.Read("precious"), "kept");
}

}  // namespace
}  // namespace sontaro::test
