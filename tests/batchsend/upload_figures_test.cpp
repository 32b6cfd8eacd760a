#include "batchsend/upload_figures.h"

#include <gtest/gtest.h>

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using Kind = UploadEvent::Kind;

/// Two players with a video of 100 bytes each.
struct Figures : testing::Test {
    Figures() {
        for (UploadRow& row : rows) {
            row.plan = {{0, 100}};
            row.status = UploadStatus::kWaiting;
        }
        figures.Begin(now);
    }
    void Take(Kind kind, std::size_t player, std::uint64_t bytes = 0) {
        figures.Take({kind, player, 0, bytes}, rows, now);
    }
    void Expect(UploadAmount video, UploadAmount player, UploadAmount run) {
        EXPECT_EQ(figures.Video(), video);
        EXPECT_EQ(figures.Player(), player);
        EXPECT_EQ(figures.Run(), run);
    }

    UploadFigures::Time now = 5s;
    std::vector<UploadRow> rows{2};
    UploadFigures figures;
};

TEST_F(Figures, CountWhatHasBeenAcknowledgedAndTakeBackWhatIsNotSentToItsEnd) {
    Take(Kind::kPlayerBegun, 0, 100);
    Expect({}, {0, 100}, {0, 200});
    Take(Kind::kVideoBegun, 0, 100), Take(Kind::kAcknowledged, 0, 100);
    Take(Kind::kVideoBegun, 0, 130);
    Expect({0, 130}, {0, 100}, {0, 200});
    Take(Kind::kAcknowledged, 0, 110), Take(Kind::kVideoDone, 0);
    rows[0].confirmed = 1, rows[0].status = UploadStatus::kDone;
    Take(Kind::kPlayerEnded, 0);
    Take(Kind::kPlayerBegun, 1, 100);
    Expect({}, {0, 100}, {110, 210});
    Take(Kind::kVideoBegun, 1, 100), Take(Kind::kAcknowledged, 1, 60);
    Expect({60, 100}, {60, 100}, {170, 210});
    rows[1].status = UploadStatus::kNetworkFailure;
    Take(Kind::kVideoFailed, 1), Take(Kind::kPlayerEnded, 1);
    EXPECT_EQ(figures.Run(), (UploadAmount{110, 110}));
}

TEST_F(Figures, AreOfTheLastTenSeconds) {
    EXPECT_EQ(PaceText(figures, 2, now), "");
    EXPECT_EQ(PaceText(figures, 3, now), "No acknowledgement for 3 s");
    Take(Kind::kPlayerBegun, 0, 100), Take(Kind::kVideoBegun, 0, 100);
    now += 2s;
    Take(Kind::kAcknowledged, 0, 40);
    EXPECT_EQ(PaceText(figures, 2, now), "20 B/s, 0:08 left");
    EXPECT_EQ(PaceText(figures, 3, now), "20 B/s, no acknowledgement for 3 s");
    now += 8s;
    Take(Kind::kAcknowledged, 0, 50);
    EXPECT_EQ(figures.Speed(now), 5);
    now += 2s;
    EXPECT_EQ(figures.Speed(now), 1);
    now += 10s;
    EXPECT_EQ(figures.SecondsLeft(figures.Run(), now), std::nullopt);
    EXPECT_EQ(DurationText(1e300), "99:59:59");
}

}  // namespace
}  // namespace sontaro::test
