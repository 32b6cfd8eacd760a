#include <gmock/gmock.h>

#include "screensplit/split_samples.h"
#include "screensplit/wall_text.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The second of two screens, where every byte is as wide as a pixel.
struct TextOfATile : testing::Test {
    TextOfATile() {
        std::vector<SplitDevice> devices = ThreeScreens();
        devices[0].record.remarks = "大厅左侧";
        document.SetDevices(std::move(devices));
        EXPECT_FALSE(document.ApplyOrder());
    }
    [[nodiscard]] std::vector<std::string> Lines(double width, std::size_t lines) const {
        const auto widthOf = [](const std::string& text) {
            return static_cast<double>(text.size());
        };
        return TileLines(WallPicture(document).Tiles()[1], {width, lines, widthOf});
    }
    SplitDocument document;
};

TEST_F(TextOfATile, LeavesOutWhatFindsNoRoomAndCutsNoLetter) {
    EXPECT_THAT(Lines(100, 9), ElementsAre("192.168.1.21", "大厅左侧", "ID21", "Output 2",
                                           "(1920, 0) - (3839, 1079)"));
    EXPECT_THAT(Lines(12, 6), ElementsAre("192.168.1.21", "大厅左侧", "ID21", "Output 2",
                                          "(1920, 0)", "(3839, 1079)"));
    EXPECT_THAT(Lines(12, 5), ElementsAre("192.168.1.21", "大厅左侧", "ID21", "Output 2"));
    EXPECT_THAT(Lines(11, 3), ElementsAre(".21-2", "大厅…", "Output 2"));
    EXPECT_THAT(Lines(4, 3), ElementsAre("21-2", "ID21"));
    EXPECT_THAT(Lines(3, 3), IsEmpty());
    EXPECT_THAT(Lines(100, 1), ElementsAre("192.168.1.21"));
}

TEST_F(TextOfATile, EverythingIsSaidOfASpot) {
    document.SetAllOverlaps(1000);
    document.DismissScreen(0);
    const WallPicture picture(document);
    EXPECT_EQ(DescriptionOf(picture, {WallSpot::Kind::kTile, 1}),
              "2: 192.168.1.22, ID22, Output 1, (920, 0) - (2839, 1079)");
    EXPECT_EQ(DescriptionOf(picture, {WallSpot::Kind::kSeam, 0}),
              "Screens 1 and 2 overlap by 1000 pixels");
    EXPECT_EQ(DescriptionOf(picture, {WallSpot::Kind::kUnused, 0}),
              "192.168.1.21, 大厅左侧, ID21, Output 1, not used");
    document.PlaceScreen(0, 0);
    EXPECT_THAT(DescriptionOf(WallPicture(document), {WallSpot::Kind::kTile, 2}),
                testing::StartsWith("3: reaches into screen 1 as well, "));
}

}  // namespace
}  // namespace sontaro::test
