#include "session/session.h"

#include <gmock/gmock.h>

#include <thread>

#include "exchange/player_requests.h"
#include "session/player_calls.h"
#include "simulator/player_group.h"
#include "support/link_surroundings.h"
#include "timeline/timeline_tests.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using simulator::ParseFaultScript;
using simulator::SimulatedPlayer;
using testing::ElementsAre;

constexpr auto kSoon = 200ms;
/// Where a refused connection is tried again by the system, the limit comes first.
constexpr const char* kRefused =
    kOnWindows ? "not-sent connect-timed-out" : "not-sent connect-refused";

std::string Words(const SessionEnd& end) {
    const std::string trouble = WordFor(end.trouble);
    return WordFor(end) + (trouble.empty() ? "" : ' ' + trouble);
}

std::unique_ptr<Session> OpenSession(const Endpoint& player, SessionOptions options = {}) {
    return std::move(*Session::Open(player, std::move(options)));
}

/// A session with a simulated player.
struct Talking : testing::Test {
    Talking() {
        simulator::PlayerOptions options;
        options.address = network.Player(0);
        options.pacing.spacing = 0ms;
        player = std::make_unique<SimulatedPlayer>(options);
        EXPECT_TRUE(player->Start());
        session = OpenSession(player->Address(), {.stop = stop.get_token()});
    }
    /// How the player's overlay is read.
    std::string Read(std::optional<std::chrono::milliseconds> limit = {}) {
        const auto answer = session->Ask(ReadSettings(kBlockOsd), limit);
        EXPECT_TRUE(!answer || AsText(PayloadOf(*answer)) == player->State().osd);
        return Words(answer.HowItEnded());
    }
    void SetFaults(const char* script) { player->SetFaults(*ParseFaultScript(script)); }

    TestNetwork network;
    std::unique_ptr<SimulatedPlayer> player;
    std::stop_source stop;
    std::unique_ptr<Session> session;
};

TEST_F(Talking, EveryEndTellsWhatHasGoneWrongAndTheNextRequestIsAnswered) {
    const std::pair<const char*, const char*> cases[] = {{"refuse", kRefused},
                                                         {"silent", "timed-out"},
                                                         {"not-supported", "not-supported"},
                                                         {"unsupported=4", "not-supported"},
                                                         {"drop", "link-ended broken"},
                                                         {"close-after=0", "link-ended hung-up"},
                                                         {"close-after=20", "link-ended cut-off"},
                                                         {"garbage", "link-ended garbage"},
                                                         {"oversize", "link-ended too-long"}};
    for (const auto& [faults, end] : cases) {
        session->Close();
        SetFaults(faults);
        EXPECT_EQ(Read(kSoon), end) << faults;
        SetFaults("");
        EXPECT_EQ(Read(), "reply") << faults;
    }
}

TEST_F(Talking, WhatIsNotSupportedCostsNoConnection) {
    SetFaults("unsupported=4");
    EXPECT_EQ(Read(), "not-supported");
    EXPECT_TRUE(session->IsConnected());
    EXPECT_TRUE(session->Ask(ReadSettings(kBlockCave)));
    player->ChangeState([](auto& state) { state.layoutLocked = true; });
    EXPECT_EQ(ReadLayouts(*session).HowItEnded().how, End::kRefused);
    EXPECT_TRUE(session->IsConnected());
}

TEST_F(Talking, IsCancelledByAnotherThreadWhileItWaits) {
    SetFaults("silent");
    std::jthread other([this] {
        EXPECT_TRUE(player->WaitForPacket([](const auto&) { return true; }, 10s));
        session->Cancel();
    });
    EXPECT_EQ(Read(), "cancelled");
    EXPECT_FALSE(session->IsConnected());
    other.join();
    SetFaults("");
    EXPECT_EQ(Read(), "reply");
    session->Cancel();
    EXPECT_EQ(Read(), "cancelled");
    EXPECT_EQ(Read(), "reply");
}

TEST_F(Talking, IsStoppedForGood) {
    EXPECT_EQ(Read(), "reply");
    std::jthread other([this] {
        std::this_thread::sleep_for(20ms);
        stop.request_stop();
    });
    EXPECT_EQ(Words(session->Listen(1h)), "cancelled");
    for (int i = 0; i < 2; ++i) EXPECT_EQ(Read(), "cancelled");
    EXPECT_EQ(Words(session->Post(ReadyPacket(kCommandSerialData, 0))), "cancelled");
}

TEST_F(Talking, ConnectsAnewToAPlayerThatHasDiedAndReturned) {
    EXPECT_EQ(Read(), "reply");
    player->Stop();
    EXPECT_EQ(Words(session->Listen(10s)), "link-ended hung-up");
    EXPECT_EQ(Read(), kRefused);
    ASSERT_TRUE(player->Start());
    EXPECT_EQ(Read(), "reply");
}

TEST_F(Talking, APlayerHasOneSessionOfAProcess) {
    EXPECT_FALSE(Session::Open(player->Address()));
    PlainLoop loop;
    ExchangeHub hub;
    SessionLinks links(loop, hub, [](WindowMessage&) {});
    const Target target{FormatIpv4(player->Address().address), player->Address().port, 0};
    const SharedPacket packet = ReadyPacket(kCommandSerialData, 0);
    EXPECT_EQ(links.Send(target, packet, Boxes::kMuted).Reason(), NotSent::kNoSlot);
    session.reset();
    EXPECT_TRUE(links.Send(target, packet, Boxes::kMuted));
    EXPECT_FALSE(Session::Open(player->Address()));
}

TEST_F(Talking, WhatHasBeenPostedIsWithThePlayerWhateverComesNext) {
    const TimeNode node{0, "", "", 0, kPortSerial0, "", 0, "A501"};
    EXPECT_TRUE(SendCommand(*session, node));
    session.reset();
    const SharedPacket packet = TestPacket(node);
    EXPECT_TRUE(player->WaitForPacket(
        [&](const DevicePacket& request) { return request.Serialize() == *packet; }, 10s));
}

TEST_F(Talking, SessionsOfManyPlayersRunBesideEachOther) {
    session.reset();
    player.reset();
    simulator::LineUpOptions options;
    options.count = 9;
    options.baseAddress = network.Player(0);
    options.spacing = 0ms;
    simulator::PlayerGroup players(*simulator::LineUp(options));
    ASSERT_TRUE(players.Start());
    std::atomic<int> answers = 0;
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < players.Size(); ++i)
        threads.emplace_back([&, i] {
            const auto own = OpenSession(players.Player(i).Address());
            for (const SettingsBlockKind& kind : SettingsBlocks())
                if (ReadBlock(*own, kind)) ++answers;
        });
    threads.clear();
    EXPECT_EQ(answers, 81);
}

/// A session with a player whose every move a test says.
struct Scripted : testing::Test {
    void Play(std::function<void()> moves) { actor = std::jthread(std::move(moves)); }
    [[nodiscard]] Endpoint Address() const { return {network.Player(0), listener.AsTarget().port}; }
    static Bytes Reply(std::uint8_t command, std::uint16_t subCommand, std::string_view payload,
                       std::uint16_t argument = 0) {
        return DevicePacket::Request(command | kReplyBit,
                                     subCommand | std::uint32_t{argument} << 16, payload)
            .Serialize();
    }
    /// The next request, of which nothing but its header is read.
    static void AwaitRequest(Socket& socket) { ReceiveExactly(socket, kHeaderSize); }

    /// The document of a block, or how the request has ended.
    std::string ReadCave(std::chrono::milliseconds limit = 10s) {
        const auto answer = session->Ask(ReadSettings(kBlockCave), limit);
        return answer ? std::string(AsText(PayloadOf(*answer))) : Words(answer.HowItEnded());
    }

    TestNetwork network;
    Listener listener{network.Player(0)};
    std::unique_ptr<Session> session = OpenSession(Address());
    std::jthread actor;
};

TEST_F(Scripted, PiecesOfOneByteMakeAnAnswerAndTenPacketsInOnePieceAreAllTaken) {
    int reports = 0;
    session->SetListener([&](WindowMessage& message) {
        NowPlaying playing;
        reports += TakeReport(message, playing) ? 1 : 0;
    });
    Play([this] {
        Socket socket = listener.Accept();
        socket.SendAtOnce();
        AwaitRequest(socket);
        for (const std::uint8_t byte : Reply(3, kBlockCave, "bytes")) socket.Send({&byte, 1});
        AwaitRequest(socket);
        Bytes packets;
        const auto add = [&](const Bytes& packet) {
            packets.insert(packets.end(), packet.begin(), packet.end());
        };
        for (int i = 0; i < 8; ++i)
            add(Reply(59, 10,
                      R"({"cmdId":10,"code":0,"data":{"currentPosition":1,"totalDuration":9}})"));
        add(Reply(3, kBlockCave, "packets"));
        add(Reply(59, 12, R"({"cmdId":12,"code":0,"data":["a"]})"));
        socket.Send(packets);
        AwaitRequest(socket);
    });
    EXPECT_EQ(ReadCave(), "bytes");
    EXPECT_EQ(ReadCave(), "packets");
    EXPECT_EQ(Words(session->Listen(10s, [&] { return reports == 9; })), "reply");
    session->Close();
}

TEST_F(Scripted, ALateAnswerIsNeverTakenForTheNextOne) {
    Play([this] {
        Socket first = listener.Accept();
        AwaitRequest(first);
        Socket second = listener.Accept();
        AwaitRequest(second);
        first.Send(Reply(3, kBlockCave, "late"));
        second.Send(Reply(3, kBlockCave, "right"));
    });
    EXPECT_EQ(ReadCave(50ms), "timed-out");
    EXPECT_FALSE(session->IsConnected());
    EXPECT_EQ(ReadCave(), "right");
}

TEST_F(Scripted, OnlyARequestsOwnReplyEndsItAndOthersAreHeard) {
    std::vector<int> heard;
    session->SetListener(
        [&](WindowMessage& message) { heard.push_back(message.origin.header.subCommand); });
    Play([this] {
        Socket socket = listener.Accept();
        AwaitRequest(socket);
        socket.Send(Reply(3, kBlockOsd, "{}"));
        socket.Send(Reply(3, kBlockCave, "", 1));
        socket.Send(Reply(59, 3, R"({"cmdId":3,"code":0,"data":[]})"));
        socket.Send(Reply(3 | kNotSupportedBit, kBlockOsd, ""));
        socket.Send(Reply(62, 0, "nobody knows the command"));
        socket.Send(Reply(3, kBlockCave, ""));
        ReceiveExactly(socket, VideoCommandPacket(kVideoSound, "5")->size());
        socket.Send(Reply(59, 4, R"({"cmdId":4,"code":0})"));
        socket.Send(Reply(59, 8, R"({"cmdId":8,"code":2})"));
    });
    EXPECT_EQ(ReadCave(), "") << "an empty document";
    const SessionEnd end = SendVideoCommand(*session, kVideoSound, "5");
    EXPECT_EQ(end.how, End::kRefused);
    EXPECT_EQ(end.code, 2);
    EXPECT_THAT(heard, ElementsAre(kBlockOsd, kBlockCave, 3, 4));
}

TEST_F(Scripted, WhoTakesNothingInIsGivenUpInTime) {
    const auto packet = std::make_shared<const Bytes>(
        DevicePacket::Request(kCommandSettings, 0, std::string(kLongestPayload, ' ')).Serialize());
    EXPECT_EQ(Words(session->Post(packet, kSoon)), "timed-out");
    EXPECT_FALSE(session->IsConnected());
}

}  // namespace
}  // namespace sontaro::test
