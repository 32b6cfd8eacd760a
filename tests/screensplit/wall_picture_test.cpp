#include <gmock/gmock.h>

#include "screensplit/split_samples.h"
#include "screensplit/wall_frame.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using Kind = WallSpot::Kind;

/// Three screens side by side.
struct PictureOfAWall : testing::Test {
    PictureOfAWall() {
        document.SetDevices({DeviceAt(21, 2, 1000, 500), DeviceAt(22, 1, 1000, 500)});
        EXPECT_FALSE(document.ApplyOrder());
    }
    [[nodiscard]] WallPicture Picture() const { return WallPicture(document); }
    /// Puts the wall back that players hold when it is this one but for a change.
    void PutBack(const std::function<void(Json::Value&)>& change) {
        Fetch(document, Configuration());
        Json::Value root = *ParseJson(document.Write());
        change(root["configData"]);
        Fetch(document, WriteJson(root));
        document.PutBackFetched();
    }

    SplitDocument document;
};

TEST_F(PictureOfAWall, ShowsWhatIsSentWithOverlapsZoomAndClashes) {
    document.SetOverlap(0, 700);
    document.SetOverlap(1, 300);
    document.SetZoom(1, {10, 20, 30, 40});
    EXPECT_EQ(Picture().SizeText(), "2000 x 500");
    EXPECT_FALSE(Picture().Tiles()[2].clashes);
    document.SetOverlap(1, 301);
    const WallPicture picture = Picture();
    EXPECT_TRUE(picture.Tiles()[2].clashes && !picture.Tiles()[1].clashes);
    EXPECT_EQ(picture.Tiles()[1].CornersText(), "(300, 0) - (1299, 499)");
    EXPECT_EQ(picture.Tiles()[1].shown, (WallRect{310, 20, 960, 440}));
    EXPECT_THAT(picture.Tiles()[1].name->label, ElementsAre("192.168.1.21", "ID21", "Output 2"));
    EXPECT_THAT(picture.Overlaps(), ElementsAre(WallOverlap{700, {300, 0, 700, 500}},
                                                WallOverlap{301, {999, 0, 301, 500}}));
}

TEST_F(PictureOfAWall, IsThatOfARowThatWasFetchedWhateverWasLaidOutBefore) {
    PutBack([](Json::Value& data) { data["channelShowArea"][2]["leftTopX"] = 2100; });
    document.SetDirection(SplitDirection::kVertical);
    EXPECT_FALSE(document.ApplyOrder());
    document.PutBackFetched();
    EXPECT_FALSE(document.IsLaidOut());
    EXPECT_EQ(Picture().Direction(), SplitDirection::kHorizontal);
    EXPECT_EQ(Picture().Overlaps()[0].pixels, 0);
}

TEST_F(PictureOfAWall, StaysInItsWindowWhateverAPlayerHolds) {
    PutBack([](Json::Value& data) {
        data["VScreenSize"][0]["leftZoom"] = data["VScreenSize"][1]["topZoom"] = INT32_MAX;
        data["VScreenSize"][1]["rightZoom"] = INT32_MIN;
        data["channelShowArea"][0]["rightTopX"] = INT32_MIN;
        for (Json::Value& area : data["channelShowArea"]) area["leftBottomY"] = INT32_MIN;
        data["channelShowArea"][2]["leftTopY"] = 500;
    });
    const WallPicture picture = Picture();
    for (const WallOverlap& overlap : picture.Overlaps())
        EXPECT_TRUE(overlap.area.width >= 0 && overlap.area.height >= 0);
    const WallFrame frame(picture, {320, 110, 10, 40, 160, 10});
    for (const WallTile& tile : picture.Tiles())
        for (const WallRect& rect : {frame.Placed(tile.area), frame.Placed(tile.shown)}) {
            EXPECT_TRUE(rect.width >= 0 && rect.height >= 0);
            EXPECT_TRUE(rect.left > 9.999 && rect.Right() < 310.001);
        }
}

TEST_F(PictureOfAWall, ADraggedSeamIsOneStepAndStaysWithinItsLimits) {
    const SeamDrag drag(document, 0, 110, 30, 0.1);
    drag.MoveTo(105, 30, document);
    EXPECT_EQ(Picture().Overlaps()[0].pixels, 50);
    drag.MoveTo(-500, 30, document);
    EXPECT_EQ(Picture().Overlaps()[0].pixels, 999);
    drag.MoveTo(200, 30, document);
    EXPECT_EQ(Picture().Overlaps()[0].pixels, 0);
    drag.MoveTo(107, 30, document);
    EXPECT_EQ(Picture().Overlaps()[0].pixels, 30);
    document.Undo();
    EXPECT_EQ(Picture().Overlaps()[0].pixels, 0);
}

TEST_F(PictureOfAWall, ArrowsGoAlongTheWallToItsSeamsAndIntoTheTray) {
    document.DismissScreen(1);
    const WallPicture picture = Picture();
    const WallSpot second{Kind::kTile, 1};
    EXPECT_EQ(picture.Neighbour(second, WallArrow::kRight), second);
    EXPECT_EQ(picture.Neighbour({Kind::kSeam, 0}, WallArrow::kDown), second);
    EXPECT_EQ(picture.Neighbour(second, WallArrow::kDown), (WallSpot{Kind::kUnused, 0}));
    EXPECT_EQ(picture.MovedBy(second, WallArrow::kDown), (WallDrop{true, 0}));
    EXPECT_EQ(picture.SpotOf(1), (WallSpot{Kind::kUnused, 0}));
    document.SetDirection(SplitDirection::kVertical);
    EXPECT_FALSE(document.ApplyOrder());
    EXPECT_EQ(Picture().SizeText(), "1000 x 1000");
    EXPECT_EQ(Picture().Neighbour(second, WallArrow::kUp), (WallSpot{Kind::kTile, 0}));
    EXPECT_EQ(Picture().Neighbour(second, WallArrow::kLeft), (WallSpot{Kind::kSeam, 0}));
}

}  // namespace
}  // namespace sontaro::test
