#include "videocontrol/offered_videos.h"

#include <gtest/gtest.h>

#include <chrono>

namespace sontaro::test {
namespace {

TEST(OfferedVideos, TakesVeryManyFoldersInNoTimeAndEachOnce) {
    VideoList list;
    for (int i = 0; i < 100000; ++i) list.screens[0].push_back({std::to_string(i), {{"a"}}});
    list.screens[1] = {{"7", {{"b"}}}};
    OfferedVideos offered;
    const auto start = std::chrono::steady_clock::now();
    offered.Take(list);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    EXPECT_EQ(offered.Folders().size(), 100000U);
    EXPECT_EQ(offered.VideosIn("7"), (std::vector<std::string>{"a", "b"}));
}

}  // namespace
}  // namespace sontaro::test
