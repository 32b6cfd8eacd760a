#include "batchsend/folder_walk.h"

#include <gmock/gmock.h>

#include "support/manual_ui_thread.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

/// Looks for files and serves the thread that they are told on.
struct FolderWalks : testing::Test {
    ~FolderWalks() override {
        walk.reset();
        ui.Close();  // a thread may wait for it
    }
    FoundFiles Find(std::vector<std::filesystem::path> chosen) {
        std::optional<FoundFiles> found;
        walk->Begin(std::move(chosen), [&](FoundFiles files) { found = std::move(files); });
        EXPECT_TRUE(walk->IsLooking());
        EXPECT_TRUE(ui.PumpUntil([&] { return found.has_value(); }));
        return *found;
    }
    static std::vector<std::string> Names(const FoundFiles& found) {
        std::vector<std::string> names;
        for (const FoundFile& file : found.files)
            names.push_back(file.category + ":" + TextOfPath(file.path.filename()));
        return names;
    }

    TemporaryFolder folder;
    ManualUiThread ui;
    ThreadGroup threads;
    std::unique_ptr<FolderWalk> walk = std::make_unique<FolderWalk>(ui, threads);
};

TEST_F(FolderWalks, FindWhatIsNotHiddenInTheOrderOfPeople) {
    for (const char* name :
         {"v/10 b.mp4", "v/2 a.mp4", "v/B.mp4", "v/a.mp4", "v/.x.mp4", "v/舞曲/02.mp4",
          "v/舞曲/1/9.mp4", "v/舞曲/100000000000000000000.mp4", "v/舞曲/3.mp4", "v/.git/y.mp4",
          "v/Live 10/z.mp4", "v/Live 9/z.mp4", "alone.mp4"})
        folder.Write(name, "");
#ifdef __linux__
    std::filesystem::create_directory_symlink(folder / "v", folder / "v/Live 9/loop");
    std::filesystem::create_symlink(folder / "alone.mp4", folder / "v/Live 9/link.mp4");
#else
    folder.Write("v/Live 9/link.mp4", "");
#endif
    const FoundFiles found = Find({folder / "v", folder / "alone.mp4", folder / "none"});
    EXPECT_THAT(Names(found),
                ElementsAre(":2 a.mp4", ":10 b.mp4", ":a.mp4", ":B.mp4", "Live 9:link.mp4",
                            "Live 9:z.mp4", "Live 10:z.mp4", "舞曲:02.mp4", "舞曲:3.mp4",
                            "舞曲:100000000000000000000.mp4", "舞曲:9.mp4", ":alone.mp4"));
    EXPECT_THAT(found.unreadable, ElementsAre(TextOfPath(folder / "none")));
    EXPECT_TRUE(found.isWhole && !walk->IsLooking());
}

TEST_F(FolderWalks, TellNothingThatHasBeenGivenUp) {
    const std::filesystem::path file = folder.Write("v/a.mp4", "");
    const auto fail = [](const auto&) { FAIL(); };
    walk->Begin({folder.Path()}, fail);
    ui.AwaitCaller();
    walk->GiveUp();
    EXPECT_FALSE(walk->IsLooking());
    EXPECT_THAT(Names(Find({file})), ElementsAre(":a.mp4"));
    walk->Begin({folder.Path()}, fail);
    ui.AwaitCaller();
    walk.reset();
    static_cast<void>(ui.PumpUntil([] { return false; }, std::chrono::milliseconds(20)));
}

}  // namespace
}  // namespace sontaro::test
