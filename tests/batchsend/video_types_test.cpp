#include "batchsend/video_types.h"

#include <gmock/gmock.h>

#include "base/json.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

struct VideoTypes : testing::Test {
    VideoTypes() {
        players.emplace();
        players->at(0) = "舞曲", players->at(63) = "Live";
    }
    VideoTypeFile Keep(bool isWanted = false) {
        const auto kept = KeepVideoTypes(folder / "Videos/types.json", set, players, isWanted);
        EXPECT_TRUE(kept);
        EXPECT_EQ(exists(folder / "Videos/types.json"), *kept == VideoTypeFile::kWritten);
        return *kept;
    }

    TemporaryFolder folder;
    VideoSet set;
    std::optional<CategoryNames> players;
};

TEST_F(VideoTypes, AreWrittenWhenWantedUnlessThatWouldTakeNamesAway) {
    EXPECT_EQ(Keep(), VideoTypeFile::kRemoved);
    set.aliases[1].name = "New";
    EXPECT_EQ(Keep(true), VideoTypeFile::kWritten);
    const auto json = ParseJson(folder.Read("Videos/types.json"));
    EXPECT_THAT(json->getMemberNames(), ElementsAre("VideoType"));
    EXPECT_THAT((*json)["VideoType"][63].getMemberNames(), ElementsAre("TypeName"));
    EXPECT_EQ(*ReadCategoryNames(folder.Read("Videos/types.json")), NamesIn(set, *players));
    EXPECT_EQ(Keep(), VideoTypeFile::kRemoved);
    players.reset();
    EXPECT_EQ(Keep(true), VideoTypeFile::kNamesUnknown);
}

TEST_F(VideoTypes, AreNoDifferenceAnythingElseIs) {
    const auto differences = DifferencesBesidesNames(
        R"({"VideoType": [{"TypeName": "a", "SendCmd": "01"}], "Serial": {"Play": "1", "x": 1}})",
        R"({"VideoType": [{"TypeName": "b", "SendCmd": "02"}], "Serial": {"Play": "2", "y": 1}})");
    EXPECT_THAT(*differences,
                ElementsAre("Serial/Play", "Serial/x", "Serial/y", "VideoType/0/SendCmd"));
    EXPECT_FALSE(DifferencesBesidesNames("{}", "[]"));
}

}  // namespace
}  // namespace sontaro::test
