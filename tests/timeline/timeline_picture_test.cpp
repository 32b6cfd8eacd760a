#include "timeline/timeline_picture.h"

#include <gmock/gmock.h>

#include <map>

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kApart = 8;

/// A video's nodes, numbered from 1, in a window of 1000 pixels of 10 ms.
struct Picture : testing::Test {
    void Add(std::int64_t time, std::int32_t port = 0) {
        GroupNode node;
        node.id = static_cast<NodeId>(group.nodes.size() + 1);
        node.time = time;
        node.port = port;
        group.nodes.push_back(node);
    }
    [[nodiscard]] TimelinePicture Drawn() const { return TimelinePicture(group); }
    NodeGroup group;
    TimeWindow window{0, 10, 1000};
};

TEST_F(Picture, HasALaneForEachUsedPortAndJoinsNodesThatAreTooClose) {
    Add(3000, 7);
    for (const std::int64_t time : {1200, 1000, 1079, 1000, 1080}) Add(time, 7);
    Add(2000, 99);
    const TimelinePicture picture = Drawn();
    const auto marks = picture.Marks(window, kApart);
    EXPECT_THAT(marks, ElementsAre(PictureMark{0, 200, 0}, PictureMark{1, 100, 0, 4},
                                   PictureMark{1, 120, 4}, PictureMark{1, 300, 5}));
    EXPECT_EQ(picture.NodesOf(marks[2]).front().id, 2U);
    EXPECT_EQ(MarkOf(marks, *picture.Find(4)), &marks[1]);
    EXPECT_FALSE(picture.Find(9));
}

TEST_F(Picture, MarksStayJoinedAsTheyAreWhileItMoves) {
    for (std::int64_t time = 0; time < 20'000; time += 70) Add(time);
    const TimelinePicture picture = Drawn();
    const auto counts = [&](int pixels) {
        std::map<std::size_t, std::size_t> joined;
        for (const PictureMark& mark : picture.Marks(Moved(window, -pixels, 19'990), kApart))
            if (mark.x > 0 && mark.x < 500) joined[mark.first] = mark.count;
        return joined;
    };
    const auto before = counts(300);
    for (const auto& [first, count] : counts(309))
        EXPECT_TRUE(!before.contains(first) || before.at(first) == count) << first;
}

TEST_F(Picture, HasNoTicksBehindTheLastMillisecond) {
    EXPECT_THAT(AxisTicks({9.22e18, 1e9, 1000}, 100), IsEmpty());
    EXPECT_LT(AxisTicks({9.1e18, 1e15, 1000}, 100).size(), 12U);
}

TEST_F(Picture, ADragMovesBeyondItsThresholdAndNotBeforeTheStart) {
    MarkDrag drag(1000, 100, 4);
    EXPECT_FALSE(drag.MovedTo(103, window));
    EXPECT_EQ(drag.MovedTo(105, window), 1050);
    EXPECT_EQ(drag.MovedTo(101, window), 1010);
    EXPECT_EQ(drag.MovedTo(-500, window), 0);
}

}  // namespace
}  // namespace sontaro::test
