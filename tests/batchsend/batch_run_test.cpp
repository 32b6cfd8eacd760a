#include "batchsend/batch_run.h"

#include <gmock/gmock.h>

#include <sstream>

#include "batchsend/fake_source.h"
#include "support/fake_player_channel.h"

namespace sontaro::test {
namespace {

using testing::EndsWith;
using Event = UploadEvent::Kind;

/// Writes down what is sent as "octet:command.sub-command.argument", with "q" and the qualifier
/// and the length of the payload.
struct UploadChannel final : PlayerChannel {
    Sending Send(const Target& player, const SharedPacket& packet, Boxes boxes) override {
        EXPECT_EQ(boxes, Boxes::kMuted);
        if (packet->empty()) {
            log += "close; ";
            isClosed = true;
            return NotSent::kNobodyThere;
        }
        if (refuses) return NotSent::kConnectFailed;
        if (std::exchange(isClosed, false)) ++connection;
        ip = player.ip;
        last = packet;
        const PacketHeader header = DecodeHeader(*packet);
        log += fmt::format("{}:{}.{}.{}q{} {}; ", ip.substr(10), header.command, header.subCommand,
                           header.argument, header.qualifier, header.payloadLength);
        return Sending::Over(connection);
    }

    std::string log;
    SharedPacket last;
    std::string ip;                    // that it went to
    ConnectionNumber connection = 10;  // that it went over
    bool isClosed = true;              // the next packet goes over another one
    bool refuses = false;
};

/// A page with two players; "a" goes to both.
struct BatchPage : testing::Test, BatchView {
    BatchPage() {
        source.sizes = {{"a", 1}, {"bb", 2}, {"ccc", 3}, {"long", 20U << 20}};
        Give({"a"}, {"a"});
    }
    void RowChanged(std::size_t player) override { EXPECT_LT(player, run.Rows().size()); }
    void StateChanged() override {}
    void Heard(const UploadEvent& event) override { ++heard[event.kind]; }
    void Pause(std::chrono::milliseconds time) override {
        channel.log += fmt::format("pause {}; ", time.count());
    }

    void Give(const std::vector<std::string>& first, const std::vector<std::string>& second) {
        std::vector<UploadPlayer> players = {{{"192.168.1.21", 9000, 0}, {}},
                                             {{"192.168.1.22", 9000, 0}, {}}};
        for (const auto& name : first) players[0].videos.push_back({name, name, 7});
        for (const auto& name : second) players[1].videos.push_back({name, name, 7});
        run.SetPlayers(std::move(players));
    }
    void Hear(MessageId id, std::uint8_t command, std::uint32_t selector = 0, Bytes payload = {},
              std::uint32_t wParam = 0, int qualifier = 0) {
        WindowMessage message{id, wParam, ReplyRecord{std::move(payload)}};
        message.origin = {sender, DevicePacket::Request(command, selector).header, over};
        message.origin.header.qualifier = static_cast<std::uint8_t>(qualifier);
        run.Handle(message);
    }
    void Data(std::uint16_t part, int mebibytes, std::size_t size = kPlayerDataSize) {
        Bytes block(size);
        block[4] = static_cast<std::uint8_t>(mebibytes);
        block[5] = static_cast<std::uint8_t>(mebibytes >> 8);
        Hear(MessageId::kPlayerState, kCommandPlayerData, std::uint32_t{part} << 16,
             std::move(block), part);
    }
    void Acknowledge(int qualifier, std::uint16_t subCommand = 0) {
        Hear(MessageId::kUploadAcknowledged, kCommandUpload, subCommand, {}, subCommand, qualifier);
    }
    void Keep(int result, const std::string& text) {
        const auto argument = static_cast<std::uint32_t>(result) << 16;
        Hear(MessageId::kControlProtocol, kCommandSettings, kBlockControlProtocol | argument,
             ToBytes(text));
    }
    void LinkEnds() {
        if (over == channel.connection) channel.isClosed = true;
        Hear(MessageId::kLinkEnded, 0);
    }
    /// What happens, word by word, some with a number. Answers come from the player that was sent
    /// something last: "other:" from another one, "old:" over the connection before.
    void Happen(const std::string& story) {
        std::istringstream stream(story);
        for (std::string word; stream >> word;) {
            sender = {word.starts_with("other:") ? "192.168.1.22" : channel.ip, 9000, 0};
            over = channel.connection;
            if (word.starts_with("old:")) --over;
            word.erase(0, word.find(':') + 1);
            const std::size_t end = std::min(word.find_first_of("0123456789"), word.size());
            words.at(word.substr(0, end))(std::stoi("0" + word.substr(end)));
        }
    }
    std::string Log() { return std::exchange(channel.log, ""); }
    /// What the list says of both players.
    [[nodiscard]] std::string Seen() const {
        std::string seen;
        for (const UploadRow& row : run.Rows()) {
            const std::string note = NoteText(row.note);
            seen += (seen.empty() ? "" : ", ") + StatusText(row);
            if (!note.empty()) seen += " (" + note + ")";
        }
        return seen;
    }

    UploadChannel channel;
    Target sender;
    ConnectionNumber over = 0;
    ExchangeHub hub;
    ManualTimers timers;
    ExchangeServices exchange{channel, hub, timers};
    FakeSource source;
    std::map<Event, int> heard;
    BatchRun run{source, *this, exchange, "types.json"};
    const std::map<std::string, std::function<void(int)>> words = {
        {"start", [this](int) { run.Start(); }},
        {"stop", [this](int) { run.Stop(); }},
        {"continue", [this](int) { run.Continue(); }},
        {"wait", [this](int seconds) { timers.Advance(std::chrono::seconds(seconds)); }},
        {"first", [this](int) { Data(0, 0); }},
        {"short", [this](int) { Data(0, 0, kPlayerDataSize - 1); }},
        {"free", [this](int mebibytes) { Data(1, mebibytes); }},
        {"answer", [this](int) { Data(0, 0), Data(1, 1000); }},
        {"ack", [this](int qualifier) { Acknowledge(qualifier); }},
        {"odd", [this](int qualifier) { Acknowledge(qualifier, 5); }},
        {"categories", [this](int) { source.document = std::optional<std::string>("{}"); }},
        {"tell", [this](int) { Keep(0, "{}"); }},
        {"keep", [this](int result) { Keep(result, ""); }},
        {"end", [this](int) { LinkEnds(); }},
        {"hide", [this](int) { channel.isClosed = true; }},
        {"refuse", [this](int number) { channel.refuses = number == 1; }},
        {"lose", [this](int) { source.sizes.clear(); }},
        {"size", [this](int size) { source.sizes["a"] = static_cast<std::uint64_t>(size); }},
        {"hold", [this](int) { source.holds = true; }},
        {"release", [this](int) { source.Release(); }},
    };
};

TEST_F(BatchPage, ServesOnePlayerAfterAnother) {
    Happen("categories start");
    EXPECT_EQ(Log() + Seen(), "close; 21:19.0.0q0 0; 0/1, Waiting");
    Happen("first");
    EXPECT_EQ(Log(), "21:19.0.1q0 0; ");
    Happen("free1");
    EXPECT_EQ(Log(), "21:20.0.7q0 9; ");
    EXPECT_EQ(*channel.last, Hex("5A5A5AA5 14 00 0000 0000 0700 09000000 0100000000000000 61"));
    Happen("ack");
    EXPECT_EQ(Log() + Seen(), "21:20.1.7q2 1; 1/1, Waiting");
    EXPECT_EQ(*channel.last, Hex("5A5A5AA5 14 02 0000 0100 0700 01000000 00"));
    EXPECT_EQ(run.Percent(), 100);
    Happen("ack tell");
    EXPECT_EQ(Log(), "21:3.1.0q0 2; ");
    EXPECT_EQ(*channel.last, Hex("5A5A5AA5 03 00 0000 0100 0000 02000000 7B7D"));
    Happen("keep old:end");
    EXPECT_EQ(Log() + Seen(), "close; OK, Waiting");
    Happen("end");
    EXPECT_EQ(Log(), "pause 2000; 22:19.0.0q0 0; ");
    Happen("answer ack ack keep end");
    EXPECT_THAT(Log() + Seen(), EndsWith("; close; OK, OK"));
    EXPECT_EQ(LineText(run.Line()), "Batch Send OK!");
    EXPECT_FALSE(run.IsRunning() || run.MayContinue() || timers.Waiting());
    Happen("ack end");
    EXPECT_EQ(Log(), "");
}

TEST_F(BatchPage, CountsBytesBeyond32Bits) {
    source.sizes["a"] = 5'000'000'000;
    Happen("start first free4769");
    EXPECT_EQ(*channel.last, Hex("5A5A5AA5 14 00 0000 0000 0700 09000000 00F2052A01000000 61"));
    for (int i = 0; i < 611; ++i) Happen("ack");
    EXPECT_THAT(Log(), EndsWith("21:20.610.7q1 8192000; 21:20.611.7q2 2880000; "));
    EXPECT_EQ(Bytes(channel.last->begin(), channel.last->begin() + kHeaderSize),
              Hex("5A5A5AA5 14 02 0000 6302 0700 00F22B00"));
    Happen("ack");
    EXPECT_EQ(Seen(), "OK, Waiting");
}

struct Step {
    const char* story;
    const char* log = nullptr;   // none: whatever
    const char* seen = nullptr;  // likewise
};
struct RunCase : NamedCase {
    std::vector<Step> steps;
    std::vector<std::string> videos = {"a"};  // for both players
};
struct Runs : BatchPage, testing::WithParamInterface<RunCase> {};

TEST_P(Runs, GoOnAsTheyShould) {
    Give(GetParam().videos, GetParam().videos);
    for (const Step& step : GetParam().steps) {
        Happen(step.story);
        const std::string log = Log();
        EXPECT_EQ(log, step.log ? step.log : log) << step.story;
        EXPECT_EQ(Seen(), step.seen ? step.seen : Seen()) << step.story;
    }
}

const RunCase kRuns[] = {
    {"SendsChunksOfWhichTheLastIsShort",
     {{"size0 start answer"},
      {"ack ack stop", "21:20.1.7q2 0; close; close; "},
      {"size8191999 start answer"},
      {"ack ack stop", "21:20.1.7q2 8191999; close; close; "},
      {"size8192000 start answer"},
      {"ack ack stop", "21:20.1.7q1 8192000; 21:20.1.7q2 0; close; "},
      {"size8192001 start answer"},
      {"ack ack stop", "21:20.1.7q1 8192000; 21:20.2.7q2 1; close; "}}},
    {"AnnouncesAVideoAgainThatHasGrownOrShrunkAndGivesUpTheSecondTime",
     {{"size20000000 start answer ack"},
      {"size8192000 ack", "21:20.0.7q0 9; "},
      {"ack size8192001 ack", "21:20.1.7q1 8192000; close; ",
       "net failure (The file keeps changing its size while it is sent: a), Waiting"}}},
    {"WaitsForTheDiskWithoutTakingAcknowledgementsForLater",
     {{"start hold answer"},
      {"release hold ack ack", "21:20.0.7q0 12; "},
      {"release", "21:20.1.7q1 8192000; "},
      {"hold ack stop release", "close; "}},
     {"long"}},
    {"IsPatientFor150Seconds",
     {{"start wait29", "close; 21:19.0.0q0 0; "},
      {"wait1", "21:19.0.0q0 0; "},
      {"wait90", "21:19.0.0q0 0; 21:19.0.0q0 0; 21:19.0.0q0 0; "},
      {"wait29", "", "0/1, Waiting"},
      {"wait1", "close; ", "Time Out, Waiting"},
      {"wait300", ""},
      {"end", "pause 2000; 22:19.0.0q0 0; ", "Time Out, 0/1"}}},
    {"GivesUpAChunkThatIsNeverAcknowledgedWhileAnnouncementsAre",
     {{"start answer ack"},
      {"wait30", "21:20.0.7q0 9; ", "0/2, Waiting"},
      {"ack", "21:20.1.7q2 1; ", "1/2, Waiting"},
      {"wait30 ack wait30 ack wait30 ack wait29"},
      {"wait1", "close; ", "Time Out, Waiting"}},
     {"a", "bb"}},
    {"IsPatientAgainOnceThePlayerComesFurther",
     {{"start wait120 answer wait120 ack ack wait149", nullptr, "1/2, Waiting"},
      {"wait1", "close; ", "Time Out, Waiting"}},
     {"a", "bb"}},
    {"WaitsForLateAcknowledgementsBeforeItSaysOk",
     {{"start answer wait30 ack ack", nullptr, "1/1, Waiting"},
      {"ack", "close; ", "OK, Waiting"},
      {"end answer wait30 ack ack wait29", nullptr, "OK, 1/1"},
      {"wait1", "close; ", "OK, OK"}}},
    {"PassesOverStaleAcknowledgementsOfAPlayerThatSaysOfWhat",
     {{"start answer ack0 ack1"},
      {"wait30 ack1 ack2", "21:20.0.7q0 12; "},
      {"ack0 ack0", "21:20.1.7q1 8192000; "},
      {"odd1", ""}},
     {"long"}},
    {"HearsItsPlayerAlone",
     {{"start other:answer old:answer keep short", "close; 21:19.0.0q0 0; "},
      {"answer other:ack old:ack old:end", "21:19.0.1q0 0; 21:20.0.7q0 9; ", "0/1, Waiting"}}},
    {"GoesOnAfterALostLink",
     {{"start answer"},
      {"end", "pause 2000; 22:19.0.0q0 0; ", "net failure (The connection has ended), 0/1"},
      {"old:end", "", "net failure (The connection has ended), 0/1"}}},
    {"EndsThePlayerWhoseChunkWentOverAnotherConnection",
     {{"start answer"},
      {"hide ack", "21:20.1.7q2 1; close; ", "net failure (The connection has ended), Waiting"},
      {"end", "pause 2000; 22:19.0.0q0 0; "}}},
    {"TriesAPlayerThatRefusesConnectionsUntilItsTimeIsOver",
     {{"refuse1 start wait149 refuse0", "close; ",
       "0/1 (Not sent: the player cannot be reached), Waiting"},
      {"wait1", "close; pause 2000; 22:19.0.0q0 0; ",
       "Time Out (Not sent: the player cannot be reached), 0/1"}}},
    {"ContinuesWithTheVideoThatWasInFlight",
     {{"start answer ack ack ack", nullptr, "2/3, Waiting"},
      {"stop", "close; "},
      {"continue answer", "close; 21:19.0.0q0 0; 21:19.0.1q0 0; 21:20.0.7q0 10; ", "1/3, Waiting"}},
     {"a", "bb", "ccc"}},
    {"WaitsForWhatCanNoLongerBeRead",
     {{"start lose answer", nullptr, "0/1 (The file cannot be read: a), Waiting"},
      {"wait30 size1"},
      {"wait30", "21:20.0.7q0 9; "},
      {"lose ack wait149", "", "0/1 (The file cannot be read: a), Waiting"},
      {"wait1", "close; ", "Time Out (The file cannot be read: a), Waiting"}}},
    {"NeedsMoreFreeSpaceThanThereIsToSend",
     {{"start first free20 end", nullptr, "Small disk surplus, 0/1"},
      {"first free21", "22:19.0.1q0 0; 22:20.0.7q0 12; "}},
     {"long"}},
    {"SendsAPlayerWithoutVideosTheCategoriesAlone",
     {{"categories", "", "No choice, No choice"},
      {"start first free1", "close; 21:19.0.0q0 0; 21:19.0.1q0 0; 21:3.1.0q0 2; "},
      {"keep2", "", "0/0 (The player does not keep the categories), Waiting"},
      {"wait30 keep1 end first free0", nullptr, "OK, Small disk surplus"}},
     {}},
};
INSTANTIATE_TEST_SUITE_P(Table, Runs, testing::ValuesIn(kRuns), kCaseName);

TEST_F(BatchPage, BelievesNoVideoDoneThatALateAcknowledgementMayHaveBeenFor) {
    Give({"a", "bb"}, {"a", "bb"});
    Happen("start answer wait30 ack ack");
    EXPECT_EQ(LineText(run.Line()), "Sending video:bb");
    EXPECT_EQ(heard[Event::kVideoDone], 0);
    Happen("end");
    EXPECT_EQ(run.Rows()[0].confirmed, 0U);
    EXPECT_EQ(heard[Event::kVideoFailed], 2);
    Happen("answer wait30");
    EXPECT_EQ(LineText(run.Line()), "ReSending video:a");
    Happen("ack ack ack");
    EXPECT_EQ(run.Rows()[1].confirmed, 1U);
}

TEST_F(BatchPage, StopsInEveryStateAndIgnoresTheLinkThatEndsLater) {
    for (const char* story :
         {"start", "start first", "start answer", "start answer ack", "start answer ack ack"}) {
        Happen(story);
        const std::string seen = Seen();
        Log();
        Happen("stop");
        EXPECT_EQ(Log() + Seen(), "close; " + seen);
        EXPECT_TRUE(run.MayContinue() && timers.Waiting() == 0);
        Happen("start");
        Log();
        Happen("old:end");
        EXPECT_EQ(Log() + Seen(), "0/1, Waiting") << story;
        Happen("stop");
    }
    EXPECT_EQ(heard[Event::kVideoFailed], 2);
}

TEST_F(BatchPage, DoesNotCallAPlayerWholeThatLacksWhatCouldNotBeRead) {
    Give({"x"}, {"x", "a"});
    run.TryAgain(true);
    Happen("start answer end answer ack ack");
    EXPECT_EQ(Seen(), "Time Out (The file cannot be read: x), OK (The file cannot be read: x)");
    source.sizes["x"] = 1;
    Happen("end answer ack ack end answer ack ack end");
    EXPECT_EQ(heard[Event::kVideoDone], 3);
    EXPECT_EQ(Seen(), "OK, OK");
}

TEST_F(BatchPage, DoesNotDoWithoutCategoriesThatCannotBeRead) {
    source.document = Error{"locked"};
    Happen("start answer ack ack");
    EXPECT_EQ(Seen(), "1/1 (The file cannot be read: types.json), Waiting");
    Log();
    Happen("categories wait30");
    EXPECT_EQ(Log(), "21:3.1.0q0 2; ");
}

}  // namespace
}  // namespace sontaro::test
