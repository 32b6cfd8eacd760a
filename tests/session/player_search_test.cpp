#include "session/player_search.h"

#include <gmock/gmock.h>

#include <thread>

#include "simulator/player_group.h"
#include "support/temporary_folder.h"
#include "support/test_network.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::Lt;

/// Three players, of which a search asks.
struct Searching : testing::Test {
    Searching() {
        simulator::LineUpOptions options;
        options.count = 3;
        options.baseAddress = network.Player(0);
        players.emplace(*simulator::LineUp(options));
        EXPECT_TRUE(players->Start());
        plan.localAddresses = {FormatIpv4(network.Local())};
    }
    /// The IDs of who has answered.
    std::vector<std::string> Find() {
        const auto begin = std::chrono::steady_clock::now();
        const auto found = FindPlayers(plan);
        time = std::chrono::steady_clock::now() - begin;
        std::vector<std::string> ids;
        if (found)
            for (const DeviceRecord& device : *found) ids.push_back(device.id);
        return ids;
    }
    TestNetwork network;
    std::optional<simulator::PlayerGroup> players;
    FindPlan plan;
    std::chrono::nanoseconds time{0};
};

TEST_F(Searching, ABroadcastFindsEveryoneAndEndsWhenThatIsEnough) {
    plan.isEnough = [](const auto& found) { return found.size() == 3; };
    plan.roundTime = 10s;
    EXPECT_THAT(Find(), ElementsAre("SIMPLAYER1", "SIMPLAYER2", "SIMPLAYER3"));
    EXPECT_THAT(time, Lt(5s));
}

TEST_F(Searching, SingleAddressesAreAskedAgainUntilEachHasAnswered) {
    if (kOnWindows) GTEST_SKIP() << "Wine binds datagram sockets to any address";
    plan.asked = {network.Player(2), network.Player(0)};
    plan.roundTime = 10s;
    EXPECT_THAT(Find(), ElementsAre("SIMPLAYER1", "SIMPLAYER3"));
    EXPECT_THAT(time, Lt(5s));
    plan.asked = {network.Player(2), network.Player(9)};
    plan.roundTime = 100ms;
    plan.rounds = 2;
    EXPECT_THAT(Find(), ElementsAre("SIMPLAYER3"));
    EXPECT_GE(time, 200ms);
    players->Player(1).Stop();
    plan.asked = {network.Player(1)};
    plan.rounds = 50;
    std::jthread late([this] {
        std::this_thread::sleep_for(250ms);
        EXPECT_TRUE(players->Player(1).Start());
    });
    EXPECT_THAT(Find(), ElementsAre("SIMPLAYER2"));
}

TEST_F(Searching, NoMoreThanAHundredAddressesAreAskedInASecond) {
    plan.asked = *AddressesIn(FormatIpv4(network.Player(0)) + "-52");
    ASSERT_EQ(plan.asked.size(), 51U);
    plan.rounds = 1;
    plan.roundTime = 1ms;
    EXPECT_EQ(Find().size(), 3U);
    EXPECT_GE(time, 510ms);
}

TEST_F(Searching, IsStoppedByAnotherThread) {
    std::stop_source stop;
    plan.stop = stop.get_token();
    plan.roundTime = 10s;
    std::jthread other([&] {
        std::this_thread::sleep_for(20ms);
        stop.request_stop();
    });
    Find();
    EXPECT_THAT(time, Lt(5s));
}

TEST_F(Searching, TellsWhichAddressIsNotOfThisMachine) {
    if (kOnWindows) GTEST_SKIP() << "Wine binds datagram sockets to any address";
    plan.localAddresses = {"192.0.2.1"};
    EXPECT_EQ(FindPlayers(plan).reason(),
              "It is not possible to search from the local address 192.0.2.1.");
}

TEST_F(Searching, KnowsTheUsersNotes) {
    const TemporaryFolder folder;
    const DeviceRemarks none(folder / "none.json");
    plan.asked = {network.Player(0)};
    const std::string mac = FindPlayers(plan)->front().mac;
    DeviceRemarks remarks(folder / "remarks.json");
    ASSERT_TRUE(remarks.SetRemarks(mac, "foyer"));
    plan.remarks = &remarks;
    EXPECT_EQ(FindPlayers(plan)->front().remarks, "foyer");
}

TEST(AddressesIn, TakesNetworksSpansAndSingleAddresses) {
    const std::tuple<const char*, std::size_t, const char*, const char*> cases[] = {
        {"127.0.0.5", 1, "127.0.0.5", "127.0.0.5"},
        {"127.0.0.77/24", 254, "127.0.0.1", "127.0.0.254"},
        {"127.0.0.5/30", 2, "127.0.0.5", "127.0.0.6"},
        {"127.0.0.5/31", 2, "127.0.0.4", "127.0.0.5"},
        {"127.0.0.5/32", 1, "127.0.0.5", "127.0.0.5"},
        {"127.3.9.9/16", 65534, "127.3.0.1", "127.3.255.254"},
        {"127.0.0.10-20", 11, "127.0.0.10", "127.0.0.20"},
        {"255.255.255.0-255", 256, "255.255.255.0", "255.255.255.255"}};
    for (const auto& [range, count, first, last] : cases) {
        const auto addresses = AddressesIn(range);
        ASSERT_TRUE(addresses) << range;
        EXPECT_EQ(addresses->size(), count) << range;
        EXPECT_EQ(FormatIpv4(addresses->front()), first) << range;
        EXPECT_EQ(FormatIpv4(addresses->back()), last) << range;
    }
    for (const char* wrong :
         {"", "127.0.0", "127.0.0.1/", "127.0.0.1/15", "127.0.0.1/33", "127.0.0.1/-1",
          "127.0.0.9-8", "127.0.0.1-256", "127.0.0.1-", "127.0.0.1 ", "/24", "a"})
        EXPECT_FALSE(AddressesIn(wrong)) << wrong;
}

}  // namespace
}  // namespace sontaro::test
