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
    void End(std::size_t player, UploadStatus status) {
        rows[player].status = status;
        if (status != UploadStatus::kDone) Take(Kind::kVideoFailed, player);
        Take(Kind::kPlayerEnded, player);
    }

    UploadFigures::Time now = 5s;
    std::vector<UploadRow> rows{2};
    UploadFigures figures;
};

TEST_F(Figures, CountWhatHasBeenAcknowledged) {
    Take(Kind::kPlayerBegun, 0, 100);
    Expect({}, {0, 100}, {0, 200});
    Take(Kind::kVideoBegun, 0, 100), Take(Kind::kAcknowledged, 0, 60);
    Expect({60, 100}, {60, 100}, {60, 200});
    Take(Kind::kAcknowledged, 0, 100), Take(Kind::kVideoDone, 0);
    rows[0].confirmed = 1;
    End(0, UploadStatus::kDone);
    Take(Kind::kPlayerBegun, 1, 100);
    Expect({}, {0, 100}, {100, 200});
}

TEST_F(Figures, TakeBackWhatIsSentOnceMoreOrNotToItsEnd) {
    Take(Kind::kPlayerBegun, 0, 100);
    Take(Kind::kVideoBegun, 0, 100), Take(Kind::kAcknowledged, 0, 100);
    Take(Kind::kVideoBegun, 0, 130);
    Expect({0, 130}, {0, 100}, {0, 200});
    Take(Kind::kAcknowledged, 0, 110);
    Expect({110, 130}, {110, 110}, {110, 200});
    End(0, UploadStatus::kNetworkFailure);
    EXPECT_EQ(figures.Run(), (UploadAmount{0, 100}));
}

TEST_F(Figures, AreOfTheLastTenSeconds) {
    EXPECT_EQ(SpeedText(figures, now), "");
    Take(Kind::kPlayerBegun, 0, 100), Take(Kind::kVideoBegun, 0, 100);
    now += 2s;
    Take(Kind::kAcknowledged, 0, 40);
    EXPECT_EQ(figures.Speed(now), 20);
    EXPECT_EQ(SpeedText(figures, now), "20 B/s, 0:08 left");
    now += 8s;
    Take(Kind::kAcknowledged, 0, 50);
    EXPECT_EQ(figures.Speed(now), 5);
    EXPECT_EQ(figures.SecondsLeft(figures.Video(), now), 10);
    now += 2s;
    EXPECT_EQ(figures.Speed(now), 1);
    now += 10s;
    EXPECT_EQ(figures.SecondsLeft(figures.Run(), now), std::nullopt);
}

TEST(FigureTexts, AreShort) {
    EXPECT_EQ(AmountText({8'192'000, 20'000'000'000}), "8.19 MB / 20.00 GB");
    EXPECT_EQ(AmountText({999, 999'999}), "999 B / 1.00 MB");
    EXPECT_EQ(DurationText(59.1), "1:00");
    EXPECT_EQ(DurationText(3723), "1:02:03");
    EXPECT_EQ(DurationText(1e300), "99:59:59");
    EXPECT_EQ(SilenceText(2), "");
    EXPECT_EQ(SilenceText(31), "No acknowledgement for 31 s");
}

}  // namespace
}  // namespace sontaro::test
