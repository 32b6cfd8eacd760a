#include "timeline/show_checks.h"

#include <gmock/gmock.h>

#include "support/literals.h"

namespace sontaro::test {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;
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

TEST_F(Show, TellsNodesOfOneMomentOnOnePortOrPeer) {
    Add(5, kPortSerial0);
    Add(5, kPortSerial0 + 1);
    for (const std::int32_t peerPort : {81, 82}) Add(5, kPortTcp, "A5", "10.0.0.1", peerPort);
    Add(5, kPortUdp, "A5", "10.0.0.1", 80);
    document.Insert({1, "舞曲", "other", 5, kPortDmx512, "", 0, "A5"});
    const NodeId first = Add(5, kPortDmx512);
    const NodeId peer = Add(5, kPortTcp, "A5", "10.0.0.1", 80);
    EXPECT_THAT(Check(), IsEmpty());
    const NodeId second = Add(5, kPortDmx512);
    const NodeId same = Add(5, kPortTcp, "B5", "10.0.0.1", 80);
    EXPECT_THAT(Check(), ElementsAre(ShowFinding{Kind::kSameMoment, second, first},
                                     ShowFinding{Kind::kSameMoment, same, peer}));
}

TEST_F(Show, TellsSerialCommandsThatComeBeforeTheOneBeforeHasGone) {
    const std::string tenBytes(20, '0');
    const NodeId first = Add(1000, kPortSerial3, tenBytes);  // 10.4 ms at 9600 baud
    Add(1010, kPortSerial3);
    Add(1000, kPortSerial0, tenBytes);
    Add(1011, kPortSerial0);
    EXPECT_THAT(Check(), ElementsAre(ShowFinding{Kind::kTooClose, first, first + 1, 10}));
    EXPECT_THAT(Check(19'200), IsEmpty());
    EXPECT_EQ(Check(1200).size(), 2U);
    Add(1000, kPortSerial3);
    Add(1005, kPortSerial3);
    EXPECT_THAT(Check(), Contains(ShowFinding{Kind::kTooClose, first, first + 5, 5}));
    const auto gone = Check().front();
    document.Apply({{first}, {}, {}});
    EXPECT_EQ(Told(gone, document), "");
}

TEST_F(Show, TellsPeersThatNothingCanBeSentTo) {
    const ShowFinding nobody{Kind::kNoPeer, Add(0, kPortTcp, "A5", "0.0.0.0", 80)};
    const ShowFinding noPort{Kind::kNoPeer, Add(0, kPortUdp, "A5", "10.0.0.1", 0)};
    const ShowFinding incomplete{Kind::kNoPeer, Add(1, kPortUdp, "A5", "10.0.", 80)};
    EXPECT_THAT(Check(), ElementsAre(nobody, noPort, incomplete));
}

TEST_F(Show, TellsValuesOutOfRangeAndNotTheLastWithin) {
    document.Insert({65'535, "t", "v", 0, 7, "", 65'535, "5A"});
    EXPECT_THAT(Check(), IsEmpty());
    // clang-format off
    const TimeNode odd[] = {
        {65'536, "t", "v", 0, 7, "", 0, "5A"}, {0, "t", "v", -1, 7, "", 0, "5A"}, {1, "t", "v", 0, 7, "", 65'536, "5A"},
        {2, "t", "v", 0, 7, "", 0, "5"}, {3, "t", "v", 0, 8, "", 0, "5A"}};
    // clang-format on
    for (const TimeNode& node : odd) document.Insert(node);
    EXPECT_THAT(Check(),
                testing::AllOf(SizeIs(5), Each(Field(&ShowFinding::kind, Kind::kOutOfRange))));
    const InLanguage chinese(Language::kChinese);
    EXPECT_EQ(Told(Check()[3], document),
              "播放器4 t v 0.000：没有编号为 8 的端口，显示为第一个端口，原值保留。");
}

TEST_F(Show, TellsVideosThatThePlayersDoNotHaveOncePerGroup) {
    document.Insert({0, "t", "a", 0, 0, "", 0, "A5"});
    for (const std::int64_t time : {0, 1000}) document.Insert({0, "t", "b", time, 0, "", 0, "A5"});
    const ShowFinding noType{Kind::kNoType, document.Insert({3, "x", "a", 0, 0, "", 0, "A5"})};
    document.Insert({4, "x", "a", 0, 0, "", 0, "A5"});
    const KnownVideos videos{[](auto, const auto& type) { return type == "t"; },
                             [](auto, const auto&, const auto& video) { return video == "a"; }};
    EXPECT_THAT(CheckShow(document.Order(), kUsualBaudRate, &videos),
                ElementsAre(ShowFinding{Kind::kNoVideo, document.IdAt(1)}, noType));
}

}  // namespace
}  // namespace sontaro::test
