#include "batchsend/video_set.h"

#include <gmock/gmock.h>

#include "base/json.h"
#include "batchsend/set_problems.h"
#include "batchsend/upload_packets.h"
#include "batchsend/video_set_files.h"
#include "support/recording_prompts.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using Kind = SetProblem::Kind;

TEST(SentName, LosesNumbersThatOnlySort) {
    EXPECT_EQ(SentName("01 - 晚风.mp4", true), "晚风.mp4");
    EXPECT_EQ(SentName("7._a.b.mp4", true), "a.b.mp4");
    for (const char* name : {"01.mp4", "01 - .mp4", "2046", "99Luftballons.mp4", " 1 a.mp4", ""})
        EXPECT_EQ(SentName(name, true), name);
}

struct VideoSets : testing::Test {
    VideoSets() {
        set.players.Insert(0, {"192.168.1.21", 9000, "one", {}});
        set.players.Insert(1, {"192.168.1.22", 9000, "two", {}});
    }
    std::uint32_t Add(Elements<SetVideo>& videos, const std::string& path, std::int64_t size = 1,
                      std::uint32_t slot = 0) {
        AddVideos(videos, std::vector{path}, slot);
        videos[videos.size() - 1].size = size;
        return videos.IdAt(videos.size() - 1);
    }
    [[nodiscard]] std::string Order() const {
        std::string names;
        for (const SetVideo& video : set.videos) names += video.Name();
        return names;
    }

    VideoSet set;
};

TEST_F(VideoSets, MoveRowsTogetherAndKeepTheirNumbers) {
    Elements<SetVideo>& videos = set.videos;
    std::vector<std::uint32_t> ids;
    for (const char* name : {"a", "b", "c", "d"}) ids.push_back(Add(videos, name));
    MoveVideosUp(videos, std::vector{ids[1], ids[2]});
    EXPECT_EQ(Order(), "bcad");
    MoveVideosUp(videos, std::vector{ids[1], ids[3]});
    EXPECT_EQ(Order(), "bcda");
    MoveVideosDown(videos, std::vector{ids[1], ids[2]});
    EXPECT_EQ(Order(), "dbca");
    EXPECT_EQ(videos.Find(ids[3])->path, "d");
    videos.RemoveWithIds({ids[3], ids[1], 7});
    EXPECT_EQ(Order(), "ca");
    EXPECT_EQ(videos.Find(ids[0])->path, "a");
    EXPECT_EQ(videos.Find(ids[1]), nullptr);
}

TEST_F(VideoSets, FindOrNameTheSlotOfAFolder) {
    CategoryNames names, others;
    names[0] = "舞曲", names[2] = "Live", others[3] = "Rock";
    const ToldNames told = {&names, &others};
    Add(set.players[0].videos, "a", 1, 1);
    EXPECT_EQ(SlotNamed("Live", told, set), 2U);
    EXPECT_EQ(SlotNamed("New", told, set), 4U) << "the second one has a video";
    EXPECT_EQ(NamesIn(set, names)[4], "New");
    set.aliases[2].name = "Concerts";
    EXPECT_EQ(SlotNamed("Live", told, set), 5U);
    names.fill("x");
    EXPECT_EQ(SlotNamed("y", told, set), std::nullopt);
}

TEST_F(VideoSets, TakeProvisionalNamesToTheSlotsThatPlayersHaveForThem) {
    for (const char* name : {"Rock", "Jazz", "New", "Odd"})
        Add(set.videos, name, 1, *SlotNamed(name, {}, set));
    set.videos[1].code = 70;
    set.absent.Insert(0, {"192.168.1.23", 9000, "", set.videos});
    CategoryNames names, others;
    names.fill("x");
    names[0] = "Jazz", names[1] = "Rock", names[2] = names[3] = names[5] = "";
    others[3] = others[5] = "Film";
    const ToldNames told = {&names, &others};
    EXPECT_THAT(SettleNames(set, told),
                ElementsAre(SettledName{"Rock", 0, 1}, SettledName{"Jazz", 1, 0},
                            SettledName{"New", 2, 2}, SettledName{"Odd", 3, std::nullopt}));
    for (const auto& videos : {set.videos, set.absent[0].videos}) {
        EXPECT_EQ(videos[0].category * 100 + videos[0].code, 101U);
        EXPECT_EQ(videos[1].category * 100 + videos[1].code, 70U);
        EXPECT_EQ(videos[2].category * 10 + videos[3].category, 23U);
    }
    std::array<CategoryAlias, kVideoCategories> aliases;
    aliases[2].name = "New";
    EXPECT_EQ(set.aliases, aliases);
    EXPECT_THAT(SettleNames(set, told), testing::IsEmpty());
}

TEST_F(VideoSets, TellWhatCannotBeSent) {
    const auto a = Add(set.videos, "x/01 a.mp4", 600);
    Add(set.videos, "b.mp4", static_cast<std::int64_t>(kLongestVideo));
    const auto tooLong = Add(set.videos, "c.mp4", static_cast<std::int64_t>(kLongestVideo) + 1);
    const auto missing = Add(set.videos, "d.mp4");
    set.videos.Find(missing)->trouble = "gone";
    set.videos.Find(a)->removesNumbers = true;
    Elements<SetVideo>& own = set.players[1].videos;
    const auto same = Add(own, "y/a.mp4");
    Add(own, "z/a.mp4", 1, 5);
    const auto named = Add(own, std::string(256, 'n'));
    Add(own, std::string(255, 'n'));
    const std::uint64_t needed = 600 + kLongestVideo;
    const std::optional<std::uint64_t> free[] = {needed + 1, needed + 3};
    EXPECT_THAT(ProblemsOf(set, free),
                ElementsAre(SetProblem{Kind::kTooLong, {}, tooLong},
                            SetProblem{Kind::kUnreadable, {}, missing, "gone"},
                            SetProblem{Kind::kSameName, 1, same, "a.mp4"},
                            SetProblem{Kind::kNameTooLong, 1, named},
                            SetProblem{Kind::kDoesNotFit, 1, 0, "", needed + 3, needed + 3}));
}

TEST_F(VideoSets, AreSavedAndOpenedAgainAndStayWhenAFileIsNoneOfTheirs) {
    const TemporaryFolder folder;
    RecordingPrompts prompts, refusals;
    Add(set.videos, "/视频/01 a.mp4", 5'000'000'000, 63);
    set.videos[0].code = 65'535;
    set.videos[0].removesNumbers = set.skipsPresent = set.triesAgain = true;
    Add(set.players[1].videos, "b.mp4", SetVideo::kUnknownSize);
    set.aliases[63] = {"舞曲", true};
    SaveVideoSet(set, folder / "a.json", prompts);
    VideoSet opened;
    EXPECT_TRUE(OpenVideoSet(opened, folder / "a.json", prompts));
    for (const char* text : {"[]", R"({"format": "sontaro-video-set", "version": 1, "set": {}})",
                             R"({"format": "sontaro-video-set", "version": 2,
                                 "set": {"videos": []}})"})
        EXPECT_FALSE(OpenVideoSet(opened, folder.Write("b.json", text), refusals)) << text;
    EXPECT_EQ(refusals.boxes.size(), 3U);
    EXPECT_EQ(opened, set);
    JsonFile preferences(folder / "preferences.json");
    EXPECT_EQ(RememberedVideoSet(preferences), VideoSet());
    RememberVideoSet(set, preferences);
    EXPECT_EQ(RememberedVideoSet(JsonFile(folder / "preferences.json")), set);
}

}  // namespace
}  // namespace sontaro::test
