#include <chrono>
#include <thread>

#include "cli_support.h"

namespace sontaro::cli::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using Clock = std::chrono::steady_clock;

struct PlayerCommands : CliTest {
    PlayerCommands() : CliTest(3) {}

    /// How each object ends: the address, and the word for its error.
    static std::vector<std::string> Ends(const Told& told) {
        std::vector<std::string> ends;
        for (const Json::Value& object : told.Objects())
            ends.push_back(object.get("ip", object["name"]).asString() + ' ' +
                           object["error"]["end"].asString());
        return ends;
    }
};

TEST_F(PlayerCommands, FindNamesWhoIsThereAndWhoIsMissing) {
    const Told found = Run({"find", Address(0), "--json"});
    EXPECT_EQ(found.code, kAllWell) << found.remarks;
    const auto objects = found.Objects();
    ASSERT_THAT(objects, SizeIs(1));
    EXPECT_EQ(objects[0]["id"], "SIMPLAYER1");
    EXPECT_EQ(objects[0]["port"], players.Player(0).Address().port);
    const std::string list =
        TextOfPath(folder.Write("expected", "# the hall\nSIMPLAYER2\n" + Address(0) + "\nHALL9\n"));
    const Told expected = Run({"find", "--expect", list, "--json"});
    EXPECT_EQ(expected.code, kSomeFailed);
    EXPECT_THAT(Ends(expected), ElementsAre(Address(0) + ' ', Address(1) + ' ', "HALL9 not-found"));
    EXPECT_EQ(Run({"find", "-p", Address(9)}).code, kNobodyFound);
    EXPECT_EQ(Run({"find", "1.2.3"}).code, kWrongUse);
    EXPECT_EQ(Run({"find", Address(0), "--parallel", "10"}).code, kWrongUse);
}

TEST_F(PlayerCommands, ShowTellsWhatIsPlaying) {
    const Told told = Run({"show", "-p", Name(0), "--json"});
    EXPECT_EQ(told.code, kAllWell) << told.remarks;
    const Json::Value shown = told.Objects().at(0);
    EXPECT_EQ(shown["mode"], "independent");
    EXPECT_GT(shown["free"].asUInt64(), 0U);
    const simulator::PlayerState state = players.Player(0).State();
    EXPECT_EQ(shown["playing"]["folder"], state.folders.at(0).name);
    EXPECT_THAT(Run({"videos", "-p", Name(0)}).results, HasSubstr(state.folders.at(0).name));
}

TEST_F(PlayerCommands, AButtonIsPickedByItsTypeWhateverItSays) {
    players.Player(0).ChangeState([](auto& state) {
        for (simulator::Caption& caption : state.captions)
            if (caption.type == simulator::Action::kPause) caption.text = "Halt!";
    });
    EXPECT_EQ(Run({"control", "pause", "-p", Name(0)}).code, kAllWell);
    EXPECT_FALSE(players.Player(0).State().playing);
    EXPECT_EQ(Run({"control", "play", "-p", Name(0)}).code, kAllWell);
    EXPECT_TRUE(players.Player(0).State().playing);
    EXPECT_EQ(Run({"control", "mode", "all-random", "-p", Name(0)}).code, kAllWell);
    EXPECT_EQ(players.Player(0).State().playMode, simulator::Action::kAllRandom);
    EXPECT_EQ(Run({"control", "volume", "35", "-p", Name(0)}).code, kAllWell);
    EXPECT_EQ(players.Player(0).State().volume, 35);
}

TEST_F(PlayerCommands, WithoutTheButtonThoseThatThereAreAreListed) {
    players.Player(0).ChangeState([](auto& state) {
        state.captions = {{simulator::Action::kPause, "Halt!"}};
    });
    const Told told = Run({"control", "play", "-p", Name(0)});
    EXPECT_EQ(told.code, kSomeFailed);
    EXPECT_THAT(told.remarks, HasSubstr("Halt! (pause)"));
    for (const auto& wrong : {std::vector<std::string>{"volume", "101"},
                              {"volume"},
                              {"play", "x"},
                              {"power", "up"},
                              {"folder"}}) {
        std::vector<std::string> call = {"control", "-p", Name(1)};
        call.insert(call.begin() + 1, wrong.begin(), wrong.end());
        EXPECT_EQ(Run(call).code, kWrongUse) << wrong[0];
    }
    EXPECT_THAT(players.Player(1).ReceivedPackets(), IsEmpty());
}

TEST_F(PlayerCommands, ACommandIsSentAsTheTestOfATimeline) {
    EXPECT_EQ(Run({"send", "-p", Name(0), "--port", "232:1", "a5", "01"}).code, kAllWell);
    const auto sent = players.Player(0).WaitForPacket(
        [](const DevicePacket& packet) {
            return packet.header.subCommand == kBlockPlayerTimeline && packet.header.argument == 2;
        },
        std::chrono::seconds(5));
    ASSERT_TRUE(sent);
    EXPECT_THAT(std::string(AsText(sent->payload)),
                AllOf(HasSubstr("A501"), HasSubstr("\"expendCmdIndex\" : 1")));
}

TEST_F(PlayerCommands, EachOfTheDeadIsToldAndTheOthersAreServed) {
    SetFault(0, "refuse");
    SetFault(2, "silent");
    const auto begin = Clock::now();
    const Told told =
        Run({"videos", "--json", "--timeout", "0.4", "-p", Name(0), "-p", Name(1), "-p", Name(2)});
    EXPECT_LT(Clock::now() - begin, std::chrono::seconds(5));
    EXPECT_EQ(told.code, kSomeFailed);
    const auto ends = Ends(told);
    EXPECT_EQ(ends.front(), Address(0) + " not-sent");
    EXPECT_EQ(ends.back(), Address(2) + " timed-out");
    EXPECT_THAT(ends, testing::Contains(Address(1) + ' '));
    // Where a refused connection is tried again by the system, the limit comes first.
    EXPECT_EQ(told.Objects().front()["error"]["link"],
              sontaro::test::kOnWindows ? "connect-timed-out" : "connect-refused");
}

TEST_F(PlayerCommands, AnInterruptionEndsWhateverWaits) {
    SetFault(0, "silent");
    std::jthread interrupt([this] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        stop.request_stop();
    });
    const auto begin = Clock::now();
    EXPECT_EQ(Run({"videos", "-p", Name(0), "--timeout", "60"}).code, kInterrupted);
    EXPECT_LT(Clock::now() - begin, std::chrono::seconds(10));
}

TEST_F(PlayerCommands, WatchTellsPositionsUntilItsTimeIsOver) {
    const Told told = Run({"watch", "-p", Name(0), "-p", Name(1), "--json", "--for", "2.5"});
    EXPECT_EQ(told.code, kAllWell) << told.remarks;
    std::set<std::string> heard;
    for (const Json::Value& object : told.Objects()) {
        EXPECT_TRUE(object["position"].isInt());
        heard.insert(object["ip"].asString());
    }
    EXPECT_THAT(heard, ElementsAre(Address(0), Address(1)));
}

TEST_F(PlayerCommands, AFailureIsAnObjectWhateverItIs) {
    const Told told = Run({"fidn", "--json"});
    EXPECT_EQ(told.code, kWrongUse);
    EXPECT_EQ(told.Objects().at(0)["error"]["end"], "wrong-use");
    EXPECT_THAT(told.remarks, IsEmpty());
}

}  // namespace
}  // namespace sontaro::cli::test
