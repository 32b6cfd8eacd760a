#include "app/link_pool.h"

#include <gmock/gmock.h>

#include "support/fake_window.h"
#include "support/link_surroundings.h"
#include "support/literals.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

struct NineSlots : testing::Test {
    NineSlots() {
        for (std::size_t i = 0; i < 10; ++i) players.emplace_back(surroundings.network.Player(i));
    }

    void Send(const std::vector<std::size_t>& targets, std::string_view text) {
        SendRequest request{{}, std::make_shared<const Bytes>(ToBytes(text))};
        for (const std::size_t i : targets)
            request.targets.push_back(players[i].AsTarget(static_cast<std::uint16_t>(i)));
        pool.Submit(request);
    }
    static void ExpectNext(Socket& connection, std::string_view text) {
        EXPECT_EQ(ReceiveExactly(connection, text.size()), ToBytes(text));
    }
    void AwaitEvents(std::size_t count) {
        EXPECT_TRUE(surroundings.ui.PumpUntil([&] { return window.received.size() >= count; }));
    }

    LinkSurroundings surroundings;
    std::vector<Listener> players;
    FakeWindow window{surroundings.directory, "main"};
    LinkPool pool{"main", surroundings.Services()};
};

TEST_F(NineSlots, TenthDeviceFailsAndTheFailureIsShownOnce) {
    Send({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, "first");
    for (std::size_t i = 0; i < 9; ++i) {
        Socket connection = players[i].Accept();
        ExpectNext(connection, "first");
    }
    Send({9}, "again");
    EXPECT_THAT(surroundings.prompts.texts, ElementsAre("Failed to connect player！"));
    const InLanguage chinese(Language::kChinese);
    pool.ForgetShownFailure();
    Send({9, 9}, "again");
    EXPECT_THAT(surroundings.prompts.texts,
                ElementsAre("Failed to connect player！", "连接播放器失败！"));
}

TEST_F(NineSlots, UnreachableTargetDoesNotKeepTheNextFromItsPacket) {
    const Target gone = players[9].AsTarget();
    players.pop_back();
    pool.Submit({{gone, players[0].AsTarget()}, std::make_shared<const Bytes>(ToBytes("x"))});
    Socket connection = players[0].Accept();
    ExpectNext(connection, "x");
    EXPECT_EQ(surroundings.prompts.texts.size(), 1U);
}

TEST_F(NineSlots, SameIpReusesItsConnectionAndNoTargetMeansTheCurrentDevice) {
    Send({0}, "one");
    Socket connection = players[0].Accept();
    Target sameIp = players[0].AsTarget();
    sameIp.port = 1;
    pool.Submit({{sameIp}, std::make_shared<const Bytes>(ToBytes("two"))});
    pool.SetCurrentDevice(sameIp);
    Send({}, "three");
    ExpectNext(connection, "onetwothree");
}

TEST_F(NineSlots, EmptyRequestClosesEveryLink) {
    Send({0, 1, 2}, "x");
    std::vector<Socket> connections;
    for (std::size_t i = 0; i < 3; ++i)
        ExpectNext(connections.emplace_back(players[i].Accept()), "x");
    pool.Submit({});
    for (Socket& connection : connections) EXPECT_EQ(ReceiveExactly(connection, 1), Bytes());
    Send({0}, "y");
    Socket again = players[0].Accept();
    ExpectNext(again, "y");
}

TEST_F(NineSlots, CountThatNamesAConnectedSlotKeepsItsSocketForTheNewTarget) {
    Send({0, 1}, "x");
    Socket first = players[0].Accept();
    Socket second = players[1].Accept();
    ExpectNext(second, "x");
    first.Close();
    AwaitEvents(2);
    Send({2}, "for three");
    ExpectNext(second, "for three");
    window.received.clear();
    second.Send(AsBytes("answer"));
    AwaitEvents(1);
    const auto& event = std::get<LinkEvent>(window.received.at(0).message.record);
    EXPECT_EQ(event.ip, players[1].AsTarget().ip);
    EXPECT_EQ(event.deviceTag, 2);
}

}  // namespace
}  // namespace sontaro::test
