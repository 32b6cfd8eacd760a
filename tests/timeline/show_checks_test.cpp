#include "timeline/show_checks.h"

#include <gmock/gmock.h>

#include "support/literals.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = ShowFinding::Kind;

/// A show of one video, node by node.
struct Show : testing::Test {
    NodeId Add(std::int64_t time, std::int32_t port, std::string command = "A5",
               std::string ip = "", std::int32_t peerPort = 0) {
        return document.Insert(
            {1, "舞曲", "v", time, port, std::move(ip), peerPort, std::move(command)});
    }
    std::vector<ShowFinding> Check(int baudRate = kUsualBaudRate) const {
        return CheckShow(document.Order(), baudRate);
    }
    TimelineDocument document;
};

TEST_F(Show, ThatIsSoundHasNoFindings) {
    Add(0, kPortSerial0);
    Add(0, kPortSerial0 + 1);
    Add(0, kPortTcp, "A5", "10.0.0.1", 80);
    Add(0, kPortTcp, "A5", "10.0.0.1", 81);
    Add(0, kPortUdp, "A5", "10.0.0.1", 80);
    Add(0, kPortDmx512);
    document.Insert({1, "舞曲", "other", 0, 0, "", 0, "A5"});
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(Show, TellsNodesOfOneMomentOnOnePort) {
    const NodeId first = Add(5, kPortDmx512);
    const NodeId second = Add(5, kPortDmx512);
    const NodeId peer = Add(5, kPortTcp, "A5", "10.0.0.1", 80);
    const NodeId same = Add(5, kPortTcp, "B5", "10.0.0.1", 80);
    EXPECT_THAT(Check(), ElementsAre(ShowFinding{Kind::kSameMoment, second, first},
                                     ShowFinding{Kind::kSameMoment, same, peer}));
}

TEST_F(Show, TellsSerialCommandsThatComeBeforeTheOneBeforeHasGone) {
    const std::string tenBytes(20, '0');
    const NodeId first = Add(1000, kPortSerial3, tenBytes);  // 10.4 ms at 9600 baud
    Add(1000, kPortSerial0, tenBytes);
    const NodeId second = Add(1010, kPortSerial3);
    Add(1011, kPortSerial0);
    EXPECT_THAT(Check(), ElementsAre(ShowFinding{Kind::kTooClose, first, second, 10}));
    EXPECT_THAT(Check(19'200), IsEmpty());
    EXPECT_EQ(Check(1200).size(), 2U);
    EXPECT_EQ(Told(Check().front(), document),
              "Player2 舞曲 v 1.000: the next command on 232:3 comes 10 ms later, before this one "
              "has gone out.");
    const auto gone = Check().front();
    document.Apply({{first}, {}, {}});
    EXPECT_EQ(Told(gone, document), "");
}

TEST_F(Show, TellsPeersThatNothingCanBeSentTo) {
    const NodeId nobody = Add(0, kPortTcp, "A5", "0.0.0.0", 80);
    const NodeId noPort = Add(0, kPortUdp, "A5", "10.0.0.1", 0);
    const NodeId incomplete = Add(1, kPortUdp, "A5", "10.0.", 80);
    EXPECT_THAT(Check(),
                ElementsAre(ShowFinding{Kind::kNoPeer, nobody}, ShowFinding{Kind::kNoPeer, noPort},
                            ShowFinding{Kind::kNoPeer, incomplete}));
}

TEST_F(Show, TellsValuesOutOfRange) {
    const NodeId odd = Add(0, 8, "5");
    EXPECT_THAT(Check(), ElementsAre(ShowFinding{Kind::kOutOfRange, odd}));
    const InLanguage chinese(Language::kChinese);
    EXPECT_EQ(Told(Check().front(), document),
              "播放器2 舞曲 v 0.000：没有编号为 8 的端口，显示为第一个端口，原值保留。");
}

TEST_F(Show, TellsVideosThatThePlayersDoNotHaveOncePerGroup) {
    const auto addFor = [&](std::int64_t player, const char* type, const char* video) {
        const NodeId first = document.Insert({player, type, video, 0, 0, "", 0, "A5"});
        document.Insert({player, type, video, 1000, 0, "", 0, "A5"});
        return first;
    };
    addFor(0, "t", "a");
    const NodeId noVideo = addFor(0, "t", "b");
    const NodeId noType = addFor(3, "x", "a");
    addFor(4, "x", "a");
    addFor(-1, "x", "a");
    const KnownVideos videos{[](auto, const auto& type) { return type == "t"; },
                             [](auto, const auto&, const auto& video) { return video == "a"; }};
    const auto findings = CheckShow(document.Order(), kUsualBaudRate, &videos);
    EXPECT_THAT(findings, testing::IsSupersetOf({ShowFinding{Kind::kNoVideo, noVideo},
                                                 ShowFinding{Kind::kNoType, noType}}));
    const auto isVideos = [](const ShowFinding& f) { return f.kind != Kind::kOutOfRange; };
    EXPECT_EQ(std::ranges::count_if(findings, isVideos), 2);
}

}  // namespace
}  // namespace sontaro::test
