#include "exchange/link_pool.h"

#include <gmock/gmock.h>

#include <set>

#include "support/link_surroundings.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

struct NineSlots : testing::Test, LinkSurroundings {
    NineSlots() {
        for (std::size_t i = 0; i < 10; ++i) players.emplace_back(network.Player(i));
    }

    std::vector<Sending> SendTo(const std::vector<Target>& targets, std::string_view text) {
        return Submit({targets, std::make_shared<const Bytes>(ToBytes(text))});
    }
    std::vector<Sending> Submit(SendRequest request) {
        pool.Submit(request);
        return request.outcomes;
    }
    Target At(std::size_t player) {
        return players[player].AsTarget(static_cast<std::uint16_t>(player));
    }
    Socket Accept(std::size_t player, std::string_view firstText) {
        Socket connection = players[player].Accept();
        ExpectNext(connection, firstText);
        return connection;
    }
    static void ExpectNext(Socket& connection, std::string_view text) {
        EXPECT_EQ(AsText(ReceiveExactly(connection, text.size())), text);
    }

    std::vector<Listener> players;
    FakeWindow window{directory, "main"};
    LinkPool pool{"main", Services()};
};

TEST_F(NineSlots, TenthDeviceFailsAndTheFailureIsShownOnce) {
    std::vector<Target> all;
    for (std::size_t i = 0; i < 10; ++i) all.push_back(At(i));
    SendTo(all, "first");
    for (std::size_t i = 1; i < 9; ++i) Accept(i, "first");
    EXPECT_THAT(SendTo({At(9)}, "again"), ElementsAre(NotSent::kNoSlot));
    EXPECT_THAT(prompts.boxes, ElementsAre(Warning("Failed to connect player！")));
    pool.ForgetShownFailure();
    SendTo({At(9), At(9), At(0)}, "again");
    EXPECT_EQ(prompts.boxes.size(), 2U);
    Accept(0, "firstagain");  // a failure does not keep the next target from its packet
}

TEST_F(NineSlots, SameIpReusesItsConnectionAndNoTargetMeansTheCurrentDevice) {
    SendTo({At(0)}, "one");
    const Target sameIp{At(0).ip, 1, 0};
    EXPECT_TRUE(SendTo({sameIp}, "two").front());
    pool.SetCurrentDevice(sameIp);
    SendTo({}, "three");
    Accept(0, "onetwothree");
}

TEST_F(NineSlots, EmptyRequestClosesEveryLink) {
    SendTo({At(0), At(1)}, "x");
    Socket first = Accept(0, "x");
    Socket second = Accept(1, "x");
    Submit({});
    EXPECT_TRUE(ReceiveExactly(first, 1).empty() && ReceiveExactly(second, 1).empty());
    SendTo({At(0)}, "y");
    Accept(0, "y");
}

TEST_F(NineSlots, CountThatNamesAConnectedSlotKeepsItsSocketForTheNewTarget) {
    SendTo({At(0), At(1)}, "x");
    Socket first = Accept(0, "x");
    Socket second = Accept(1, "x");
    first.Close();
    Await([&] { return window.Has(LinkCode::kReceiveEnded); });
    EXPECT_THAT(SendTo({At(2)}, "for three"), ElementsAre(NotSent::kOtherPlayersLink));
    ExpectNext(second, "for three");
    window.Forget();
    second.Send(AsBytes("answer"));
    Await([&] { return window.Has(LinkCode::kReceived); });
    const auto& event = std::get<LinkEvent>(window.messages[0].record);
    EXPECT_EQ(event.ip, At(1).ip);
    EXPECT_EQ(event.deviceTag, 2);
}

TEST_F(NineSlots, EveryConnectionHasItsOwnNumberAndItsEventsCarryIt) {
    const Sending first = SendTo({At(0)}, "x").front();
    EXPECT_EQ(SendTo({At(0)}, "x").front(), first);
    const Sending other = SendTo({At(1)}, "x").front();
    Accept(0, "xx").Close();
    Await([&] { return window.Has(LinkCode::kReceiveEnded); });
    EXPECT_EQ(std::get<LinkEvent>(window.messages.back().record).connection, first.Connection());
    pool.CloseAll();
    const Sending again = SendTo({At(0)}, "x").front();
    ASSERT_TRUE(first && other && again);
    EXPECT_EQ((std::set{first.Connection(), other.Connection(), again.Connection()}).size(), 3U);
}

TEST_F(NineSlots, PlayerThatTakesNothingInIsToldAsWhatItIs) {
    Socket full = (SendTo({At(0)}, "x"), Accept(0, "x"));
    const auto large = std::make_shared<const Bytes>(kBufferSize);
    std::vector<Sending> last;
    while (prompts.boxes.empty()) last = Submit({{At(0)}, large});
    EXPECT_THAT(last, ElementsAre(NotSent::kTooMuchWaiting));
    EXPECT_THAT(prompts.boxes[0].text, testing::StartsWith("The player does not take in"));
    Submit({{At(0)}, large, Boxes::kMuted});
    EXPECT_EQ(prompts.boxes.size(), 1U);
}

TEST_F(NineSlots, LinkThatIsEndingIsPassedOverWithoutABox) {
    SendTo({At(0)}, "x");
    Accept(0, "x").ResetOnClose();
    std::optional<Sending> first;
    window.react = [&](WindowMessage&) {
        if (!first) first = SendTo({At(0)}, "y").front();
    };
    Await([&] { return window.Has(LinkCode::kReceiveEnded); });
    EXPECT_EQ(first, NotSent::kNotRunning);
    EXPECT_TRUE(prompts.boxes.empty());
}

}  // namespace
}  // namespace sontaro::test
