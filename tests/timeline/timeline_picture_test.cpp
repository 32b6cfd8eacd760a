#include "timeline/timeline_picture.h"

#include <gmock/gmock.h>

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
    [[nodiscard]] std::vector<double> Pixels() const {
        std::vector<double> pixels;
        for (const PictureMark& mark : Drawn().Marks(window, kApart)) pixels.push_back(mark.x);
        return pixels;
    }
    NodeGroup group;
    TimeWindow window{0, 10, 1000};
};

TEST_F(Picture, HasALaneForEachUsedPortInTheOrderOfTime) {
    Add(3000, 7);
    Add(1000, 7);
    Add(2000, 99);
    const TimelinePicture picture = Drawn();
    ASSERT_EQ(picture.Lanes().size(), 2U);
    EXPECT_EQ(picture.Lanes()[0].port, 0);
    EXPECT_EQ(picture.LastTime(), 3000);
    EXPECT_THAT(
        picture.Marks(window, kApart),
        ElementsAre(PictureMark{0, 200, 0}, PictureMark{1, 100, 0}, PictureMark{1, 300, 1}));
    EXPECT_EQ(picture.NodesOf({1, 100, 0, 1}).front().id, 2U);
    EXPECT_TRUE(TimelinePicture().Marks(window, kApart).empty());
}

TEST_F(Picture, JoinsNodesThatAreTooCloseAndCountsThem) {
    for (const std::int64_t time : {1000, 1000, 1079, 1080, 1200}) Add(time);
    const TimelinePicture picture = Drawn();
    const auto marks = picture.Marks(window, kApart);
    EXPECT_THAT(marks, ElementsAre(PictureMark{0, 100, 0, 4}, PictureMark{0, 120, 4, 1}));
    EXPECT_EQ(MarkOf(marks, *picture.Find(3)), &marks[0]);
    EXPECT_FALSE(picture.Find(9));
    window.perPixel = 1;
    window.begin = 900;
    EXPECT_THAT(Pixels(), ElementsAre(100, 179, 300));
}

TEST_F(Picture, KeepsItsMarksTogetherWhenItIsMoved) {
    for (std::int64_t time = 0; time < 20'000; time += 37) Add(time);
    const TimelinePicture picture = Drawn();
    const auto before = picture.Marks(Moved(window, -300, 20'000), kApart);
    const auto after = picture.Marks(Moved(window, -301, 20'000), kApart);
    const auto shown = std::ranges::find_if(before, [](const auto& mark) { return mark.x > 20; });
    const auto same = std::ranges::find(after, shown->first, &PictureMark::first);
    ASSERT_NE(same, after.end());
    EXPECT_EQ(same->count, shown->count);
    EXPECT_NEAR(same->x, shown->x - 1, 1e-6);
    for (std::size_t i = 1; i < after.size(); ++i)
        EXPECT_GE(after[i].x - after[i - 1].x, kApart - 1e-9);
}

TEST_F(Picture, FindsTheNearestMarkOfALane) {
    Add(1000);
    Add(1100);
    Add(1000, 3);
    const auto marks = Drawn().Marks(window, kApart);
    EXPECT_EQ(MarkAt(marks, 0, 106, 6), &marks[1]);
    EXPECT_EQ(MarkAt(marks, 0, 104, 6), &marks[0]);
    EXPECT_EQ(MarkAt(marks, 1, 104, 6), &marks[2]);
    EXPECT_EQ(MarkAt(marks, 0, 117, 6), nullptr);
}

TEST_F(Picture, ZoomsAtThePointerAndStaysWithinTheVideo) {
    const std::int64_t last = 60'000;
    const TimeWindow whole = WholeTime(last, 1000);
    EXPECT_GT(whole.TimeAt(1000), 60'000);
    const TimeWindow zoomed = Zoomed(whole, 250, 0.5, last);
    EXPECT_NEAR(zoomed.TimeAt(250), whole.TimeAt(250), 1e-6);
    EXPECT_NEAR(zoomed.perPixel, whole.perPixel / 2, 1e-9);
    EXPECT_EQ(Zoomed(zoomed, 900, 100, last).begin, 0);
    EXPECT_GE(Zoomed(whole, 0, 1e-9, last).perPixel, 1);
    EXPECT_EQ(Moved(zoomed, 1e9, last).begin, 0);
    EXPECT_NEAR(Moved(zoomed, -1e9, last).TimeAt(1000), whole.TimeAt(1000), 1e-6);
    const TimeWindow shown = Showing(zoomed, last, last);
    EXPECT_LE(shown.PixelOf(60'000), 1000);
    EXPECT_EQ(Showing(shown, last, last).begin, shown.begin);
}

TEST_F(Picture, TicksAreRoundMomentsFarEnoughApart) {
    window = {0, 100, 1000};
    const auto ticks = AxisTicks(window, 80);
    ASSERT_EQ(ticks.size(), 11U);
    EXPECT_EQ(ticks[7], (AxisTick{70'000, 700, "0:01:10"}));
    window = {3'599'990, 0.5, 100};
    EXPECT_THAT(AxisTicks(window, 60), ElementsAre(AxisTick{3'600'000, 20, "1:00:00"}));
    EXPECT_LT(AxisTicks(WholeTime(INT64_MAX, 1000), 80).size(), 14U);
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
