#include "batchsend/batch_run.h"

#include <gmock/gmock.h>

#include "batchsend/fake_source.h"
#include "support/fake_player_channel.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;
using Note = UploadNote::Kind;
using Event = UploadEvent::Kind;

/// Writes down what is sent as "octet:command.sub-command.argument", with "q" and the qualifier
/// and the length of the payload; each player has a connection of its own.
class UploadChannel final : public PlayerChannel {
   public:
    Sending Send(const Target& player, const SharedPacket& packet, Boxes boxes) override {
        EXPECT_EQ(boxes, Boxes::kMuted);
        if (packet->empty()) {
            log += "close; ";
            connection_ = 0;
            return NotSent::kNobodyThere;
        }
        if (refusal) return *refusal;
        if (std::exchange(ip_, player.ip) != player.ip || connection_ == 0) connection_ = ++last_;
        last = packet;
        const PacketHeader header = DecodeHeader(*packet);
        log +=
            fmt::format("{}:{}.{}.{}q{} {}; ", player.ip.substr(10), header.command,
                        header.subCommand, header.argument, header.qualifier, header.payloadLength);
        return Sending::Over(connection_);
    }
    /// The next packet goes over another connection.
    void Hide() { connection_ = 0; }
    [[nodiscard]] ConnectionNumber Last() const { return last_; }

    std::string log;
    SharedPacket last;
    std::optional<NotSent> refusal;

   private:
    std::string ip_;
    ConnectionNumber connection_ = 0, last_ = 0;
};

/// A page with two players; "a" has 1 byte, and goes to both.
struct BatchPage : testing::Test, BatchView {
    BatchPage() {
        source.sizes = {{"a", 1}};
        Give({"a"}, {"a"});
    }
    void RowChanged(std::size_t player) override { EXPECT_LT(player, run.Rows().size()); }
    void StateChanged() override {}
    void Heard(const UploadEvent& event) override { events.push_back(event); }
    void Pause(std::chrono::milliseconds time) override {
        channel.log += fmt::format("pause {}; ", time.count());
    }

    static std::string Ip(int octet) { return "192.168.1." + std::to_string(octet); }
    void Give(const std::vector<std::string>& first, const std::vector<std::string>& second) {
        std::vector<UploadPlayer> players = {{{Ip(21), 9000, 0}, {}}, {{Ip(22), 9000, 0}, {}}};
        for (const auto& name : first) players[0].videos.push_back({name, name, 7});
        for (const auto& name : second) players[1].videos.push_back({name, name, 7});
        run.SetPlayers(std::move(players));
    }
    WindowMessage From(int octet, MessageId id, std::uint8_t command, std::uint32_t selector = 0,
                       Bytes payload = {}) {
        WindowMessage message{id, selector & 0xFFFF, ReplyRecord{std::move(payload)}};
        message.origin = {{Ip(octet), 9000, 0},
                          DevicePacket::Request(command, selector).header,
                          connection.value_or(channel.Last())};
        return message;
    }
    void Data(int octet, std::uint16_t part, std::uint32_t mebibytes = 1000) {
        Bytes block(kPlayerDataSize);
        for (std::size_t i = 0; i < 4; ++i)
            block[4 + i] = static_cast<std::uint8_t>(mebibytes >> 8 * i);
        WindowMessage message = From(octet, MessageId::kPlayerState, kCommandPlayerData,
                                     std::uint32_t{part} << 16, std::move(block));
        message.wParam = part;
        run.Handle(message);
    }
    void Answer(int octet, std::uint32_t mebibytes = 1000) {
        Data(octet, 0), Data(octet, 1, mebibytes);
    }
    void Acknowledge(int octet, std::uint8_t qualifier = 0, std::uint16_t subCommand = 0) {
        WindowMessage message =
            From(octet, MessageId::kUploadAcknowledged, kCommandUpload, subCommand);
        message.record = {};
        message.origin.header.qualifier = qualifier;
        run.Handle(message);
    }
    void Acknowledge(int octet, std::initializer_list<int> qualifiers) {
        for (const int qualifier : qualifiers)
            Acknowledge(octet, static_cast<std::uint8_t>(qualifier));
    }
    void Keep(int octet, const std::string& text = "") {
        WindowMessage message = From(octet, MessageId::kControlProtocol, kCommandSettings,
                                     kBlockControlProtocol, ToBytes(text));
        run.Handle(message);
    }
    void LinkEnds(int octet) {
        WindowMessage message = From(octet, MessageId::kLinkEnded, 0);
        message.record = {};
        run.Handle(message);
    }
    /// Over a connection that is not the last one.
    void Over(ConnectionNumber other, const std::function<void()>& happen) {
        connection = other;
        happen();
        connection.reset();
    }
    std::string Log() { return std::exchange(channel.log, ""); }
    [[nodiscard]] std::string Status(std::size_t player = 0) const {
        return StatusText(run.Rows()[player]);
    }
    [[nodiscard]] Note NoteOf(std::size_t player = 0) const { return run.Rows()[player].note.kind; }
    [[nodiscard]] std::size_t Count(Event kind) const {
        return static_cast<std::size_t>(std::ranges::count(events, kind, &UploadEvent::kind));
    }

    UploadChannel channel;
    std::optional<ConnectionNumber> connection;
    ExchangeHub hub;
    ManualTimers timers;
    ExchangeServices exchange{channel, hub, timers};
    FakeSource source;
    std::vector<UploadEvent> events;
    BatchRun run{source, *this, exchange, "VideoTypeProtocol.Json"};
};

TEST_F(BatchPage, ServesOnePlayerAfterAnother) {
    source.document = std::optional<std::string>("{}");
    run.Start();
    EXPECT_EQ(Log(), "close; 21:19.0.0q0 0; ");
    EXPECT_EQ(Status() + Status(1), "0/1Waiting");
    Data(21, 0);
    EXPECT_EQ(Log(), "21:19.0.1q0 0; ");
    Data(21, 1);
    EXPECT_EQ(Log(), "21:20.0.7q0 9; ");
    EXPECT_EQ(*channel.last, Hex("5A5A5AA5 14 00 0000 0000 0700 09000000 0100000000000000 61"));
    EXPECT_EQ(LineText(run.Line()), "Sending video:a");
    Acknowledge(21);
    EXPECT_EQ(Log(), "21:20.1.7q2 1; ");
    EXPECT_EQ(*channel.last, Hex("5A5A5AA5 14 02 0000 0100 0700 01000000 00"));
    EXPECT_EQ(Status(), "1/1");
    EXPECT_EQ(run.Percent(), 100);
    Acknowledge(21);
    EXPECT_EQ(Log(), "21:3.1.0q0 2; ");
    Keep(21, "{}");
    EXPECT_EQ(Log(), "");
    Keep(21);
    Over(77, [&] { LinkEnds(22), LinkEnds(21); });
    EXPECT_EQ(Log(), "close; ");
    EXPECT_EQ(Status(), "OK");
    LinkEnds(21);
    EXPECT_EQ(Log(), "pause 2000; 22:19.0.0q0 0; ");
    source.document = std::optional<std::string>();
    Answer(22);
    Acknowledge(22, {0, 0});
    EXPECT_EQ(Status(1), "OK");
    LinkEnds(22);
    EXPECT_THAT(Log(), EndsWith("close; "));
    EXPECT_EQ(LineText(run.Line()), "Batch Send OK!");
    EXPECT_FALSE(run.IsRunning() || run.MayContinue() || timers.Waiting());
    Acknowledge(22), LinkEnds(22);
    EXPECT_EQ(Log(), "");
}

struct FileCase : NamedCase {
    std::uint64_t size;
    const char* chunks;
};
struct FileSizes : BatchPage, testing::WithParamInterface<FileCase> {};

TEST_P(FileSizes, AreSentInChunksOfWhichTheLastIsShort) {
    source.sizes["a"] = GetParam().size;
    run.Start();
    Answer(21);
    Log();
    for (int i = 0; i < 3; ++i) Acknowledge(21);
    EXPECT_THAT(Log(), StartsWith(GetParam().chunks));
}

const FileCase kFiles[] = {
    {"Empty", 0, "21:20.1.7q2 0; close; "},
    {"OneByte", 1, "21:20.1.7q2 1; close; "},
    {"Short", 8'191'999, "21:20.1.7q2 8191999; close; "},
    {"Whole", 8'192'000, "21:20.1.7q1 8192000; 21:20.1.7q2 0; close; "},
    {"Longer", 8'192'001, "21:20.1.7q1 8192000; 21:20.2.7q2 1; close; "},
    {"Long", 16'384'001, "21:20.1.7q1 8192000; 21:20.2.7q1 8192000; 21:20.3.7q2 1; "},
};
INSTANTIATE_TEST_SUITE_P(Table, FileSizes, testing::ValuesIn(kFiles), kCaseName);

TEST_F(BatchPage, CountsBytesBeyond32Bits) {
    source.sizes["a"] = 5'000'000'000;
    run.Start();
    Answer(21, 4769);
    EXPECT_EQ(*channel.last, Hex("5A5A5AA5 14 00 0000 0000 0700 09000000 00F2052A01000000 61"));
    for (int i = 0; i < 611; ++i) Acknowledge(21);
    EXPECT_THAT(Log(), EndsWith("21:20.610.7q1 8192000; 21:20.611.7q2 2880000; "));
    Acknowledge(21);
    EXPECT_EQ(Status(), "OK");
}

TEST_F(BatchPage, NeedsMoreFreeSpaceThanThereIsToSend) {
    source.sizes["a"] = 10U << 20;
    run.Start();
    Answer(21, 10);
    EXPECT_EQ(Status(), "Small disk surplus");
    EXPECT_THAT(Log(), EndsWith("close; "));
    LinkEnds(21);
    Answer(22, 11);
    EXPECT_THAT(Log(), EndsWith("22:20.0.7q0 9; "));
}

TEST_F(BatchPage, SendsAPlayerWithoutVideosTheCategoriesAlone) {
    source.document = std::optional<std::string>("{}");
    Give({}, {});
    EXPECT_EQ(Status(), "No choice");
    run.Start();
    Answer(21, 1);
    EXPECT_THAT(Log(), EndsWith("21:3.1.0q0 2; "));
    Keep(21), LinkEnds(21);
    Answer(22, 0);
    EXPECT_EQ(Status() + Status(1), "OKSmall disk surplus");
}

TEST_F(BatchPage, IsPatientFor150Seconds) {
    run.Start();
    Log();
    timers.Advance(29s);
    EXPECT_EQ(Log(), "");
    for (int i = 0; i < 4; ++i) {
        timers.Advance(i == 0 ? 1s : 30s);
        EXPECT_EQ(Log(), "21:19.0.0q0 0; ") << i;
    }
    timers.Advance(29s);
    EXPECT_EQ(Status(), "0/1");
    timers.Advance(1s);
    EXPECT_EQ(Status(), "Time Out");
    EXPECT_EQ(Log(), "close; ");
    timers.Advance(300s);
    EXPECT_EQ(Log(), "");
    LinkEnds(21);
    EXPECT_EQ(Log(), "pause 2000; 22:19.0.0q0 0; ");
    EXPECT_EQ(Status(1), "0/1");
}

TEST_F(BatchPage, GivesUpAChunkThatIsNeverAcknowledgedWhileAnnouncementsAre) {
    run.Start();
    Answer(21);
    Acknowledge(21);
    Log();
    for (int i = 0; i < 4; ++i) {
        timers.Advance(30s);
        EXPECT_EQ(Log(), "21:20.0.7q0 9; ");
        EXPECT_EQ(LineText(run.Line()), "ReSending video:a");
        EXPECT_EQ(Status(), "0/1");
        Acknowledge(21);
        EXPECT_EQ(Log(), "21:20.1.7q2 1; ");
    }
    timers.Advance(30s);
    EXPECT_EQ(Status(), "Time Out");
    EXPECT_EQ(Count(Event::kVideoFailed), 1U);
}

TEST_F(BatchPage, IsPatientAgainOnceThePlayerComesFurther) {
    source.sizes["b"] = 1;
    Give({"a", "b"}, {});
    run.Start();
    timers.Advance(120s);
    Answer(21);
    timers.Advance(120s);
    Acknowledge(21, {0, 0});
    Log();
    timers.Advance(149s);
    EXPECT_EQ(Status(), "1/2");
    timers.Advance(1s);
    EXPECT_EQ(Status(), "Time Out");
}

TEST_F(BatchPage, ResendsTheVideoWhoseLastChunkIsNotAcknowledged) {
    source.sizes["b"] = 1;
    Give({"a", "b"}, {});
    run.Start();
    Answer(21);
    Acknowledge(21);
    EXPECT_EQ(Status(), "1/2");
    EXPECT_EQ(source.opens, "a; b; ");
    Log();
    timers.Advance(30s);
    EXPECT_EQ(LineText(run.Line()), "ReSending video:a");
    EXPECT_EQ(source.opens, "a; b; a; ");
    EXPECT_EQ(Log(), "21:20.0.7q0 9; ");
}

TEST_F(BatchPage, WaitsForLateAcknowledgementsBeforeItSaysOk) {
    run.Start();
    Answer(21);
    timers.Advance(30s);
    Acknowledge(21, {0, 0});
    EXPECT_EQ(Status(), "1/1");
    Acknowledge(21);
    EXPECT_EQ(Status(), "OK");
    LinkEnds(21);
    Answer(22);
    timers.Advance(30s);
    Acknowledge(22, {0, 0});
    timers.Advance(29s);
    EXPECT_EQ(Status(1), "1/1");
    timers.Advance(1s);
    EXPECT_EQ(Status(1), "OK");
}

TEST_F(BatchPage, BelievesNoVideoDoneThatALateAcknowledgementMayHaveBeenFor) {
    source.sizes["b"] = 1;
    Give({"a", "b"}, {"a", "b"});
    run.Start();
    Answer(21);
    timers.Advance(30s);
    Acknowledge(21, {0, 0});
    EXPECT_EQ(Count(Event::kVideoDone), 0U);
    LinkEnds(21);
    EXPECT_EQ(run.Rows()[0].confirmed, 0U);
    EXPECT_EQ(Count(Event::kVideoFailed), 2U);
    Answer(22);
    timers.Advance(30s);
    Acknowledge(22, {0, 0, 0});
    EXPECT_EQ(run.Rows()[1].confirmed, 1U);
}

TEST_F(BatchPage, PassesOverStaleAcknowledgementsOfAPlayerThatSaysOfWhat) {
    source.sizes["a"] = 20'000'000;
    run.Start();
    Answer(21);
    Acknowledge(21, {0, 1});
    Log();
    timers.Advance(30s);
    Acknowledge(21, {1, 2});
    EXPECT_EQ(Log(), "21:20.0.7q0 9; ");
    Acknowledge(21, {0, 0});
    EXPECT_EQ(Log(), "21:20.1.7q1 8192000; ");
    Acknowledge(21, 1, 5);
    EXPECT_EQ(Log(), "");
}

TEST_F(BatchPage, HearsItsPlayerAlone) {
    run.Start();
    Answer(22);
    Over(77, [&] { Answer(21); });
    Keep(21);
    EXPECT_EQ(Log(), "close; 21:19.0.0q0 0; ");
    Answer(21);
    Log();
    Acknowledge(22);
    Over(77, [&] { LinkEnds(22), LinkEnds(21); });
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(Status(), "0/1");
}

TEST_F(BatchPage, GoesOnAfterALostLink) {
    run.Start();
    Answer(21);
    Log();
    LinkEnds(21);
    EXPECT_EQ(Status(), "net failure");
    EXPECT_EQ(NoteOf(), Note::kLinkLost);
    EXPECT_EQ(Log(), "pause 2000; 22:19.0.0q0 0; ");
    Over(1, [&] { LinkEnds(21); });
    EXPECT_EQ(Status(1), "0/1");
}

TEST_F(BatchPage, EndsThePlayerWhoseChunkWentOverAnotherConnection) {
    run.Start();
    Answer(21);
    channel.Hide();
    Acknowledge(21);
    EXPECT_EQ(Status(), "net failure");
    EXPECT_THAT(Log(), EndsWith("close; "));
    LinkEnds(21);
    EXPECT_EQ(Status(1), "0/1");
}

TEST_F(BatchPage, TriesAPlayerThatRefusesConnectionsUntilItsTimeIsOver) {
    channel.refusal = NotSent::kConnectFailed;
    run.Start();
    EXPECT_EQ(NoteOf(), Note::kNotSent);
    timers.Advance(149s);
    EXPECT_EQ(Status(), "0/1");
    channel.refusal.reset();
    timers.Advance(1s);
    EXPECT_EQ(Status() + Status(1), "Time Out0/1");
    EXPECT_EQ(Log(), "close; close; pause 2000; 22:19.0.0q0 0; ");
}

TEST_F(BatchPage, StopsInEveryStateAndIgnoresTheLinkThatEndsLater) {
    for (int steps = 0; steps < 5; ++steps) {
        run.Start();
        const ConnectionNumber stopped = channel.Last();
        if (steps > 0) Data(21, 0);
        if (steps > 1) Data(21, 1);
        for (int i = 2; i < steps; ++i) Acknowledge(21);
        const std::string status = Status();
        Log();
        run.Stop();
        EXPECT_EQ(Log(), "close; ");
        EXPECT_EQ(Status(), status);
        EXPECT_TRUE(run.MayContinue() && timers.Waiting() == 0);
        run.Start();
        Log();
        Over(stopped, [&] { LinkEnds(21); });
        EXPECT_EQ(Status() + Log(), "0/1") << steps;
        run.Stop();
    }
    EXPECT_EQ(Count(Event::kVideoFailed), 2U);
}

TEST_F(BatchPage, ContinuesWithTheVideoThatWasInFlight) {
    source.sizes["b"] = source.sizes["c"] = 1;
    Give({"a", "b", "c"}, {"a"});
    run.Start();
    Answer(21);
    Acknowledge(21, {0, 0, 0});
    EXPECT_EQ(Status(), "2/3");
    run.Stop();
    source.opens.clear();
    run.Continue();
    EXPECT_EQ(Status(), "1/3");
    Answer(21);
    EXPECT_EQ(source.opens, "b; ");
}

TEST_F(BatchPage, AnnouncesAVideoAgainThatHasGrownOrShrunkAndGivesUpTheSecondTime) {
    source.sizes["a"] = 20'000'000;
    run.Start();
    Answer(21);
    Acknowledge(21);
    source.sizes["a"] = 8'192'000;
    Log();
    Acknowledge(21);
    EXPECT_EQ(Log(), "21:20.0.7q0 9; ");
    EXPECT_EQ(*channel.last, Hex("5A5A5AA5 14 00 0000 0000 0700 09000000 00007D0000000000 61"));
    Acknowledge(21);
    source.sizes["a"] = 8'192'001;
    Acknowledge(21);
    EXPECT_EQ(Status(), "net failure");
    EXPECT_EQ(NoteOf(), Note::kChanged);
    EXPECT_THAT(Log(), EndsWith("8192000; close; "));
}

TEST_F(BatchPage, LeavesOutWhatCannotBeReadAndWaitsForWhatNoLongerCan) {
    Give({"x", "a"}, {"x"});
    run.Start();
    EXPECT_EQ(Status(), "0/1");
    EXPECT_EQ(Count(Event::kLeftOut), 2U);
    source.sizes.clear();
    Answer(21);
    EXPECT_EQ(NoteOf(), Note::kUnreadable);
    timers.Advance(30s);
    source.sizes["a"] = 1;
    Log();
    timers.Advance(30s);
    EXPECT_EQ(Log(), "21:20.0.7q0 9; ");
    source.sizes.clear();
    Acknowledge(21);
    EXPECT_EQ(NoteOf(), Note::kUnreadable);
    timers.Advance(119s);
    EXPECT_EQ(Status(), "0/1");
    timers.Advance(31s);
    EXPECT_EQ(Status(), "Time Out");
}

TEST_F(BatchPage, DoesNotCallAPlayerWholeThatLacksWhatCouldNotBeRead) {
    Give({"x"}, {"x", "a"});
    run.TryAgain(true);
    run.Start();
    Answer(21), LinkEnds(21);
    EXPECT_EQ(Status(), "Time Out");
    Answer(22);
    Acknowledge(22, {0, 0});
    EXPECT_EQ(Status(1), "OK");
    EXPECT_EQ(NoteText(run.Rows()[1].note), "The file cannot be read: x");
    source.sizes["x"] = 1;
    LinkEnds(22);
    Answer(21), Acknowledge(21, {0, 0}), LinkEnds(21);
    Answer(22), Acknowledge(22, {0, 0}), LinkEnds(22);
    EXPECT_EQ(Count(Event::kVideoDone), 3U);
    EXPECT_EQ(NoteOf(1), Note::kNone);
}

TEST_F(BatchPage, DoesNotDoWithoutCategoriesThatCannotBeRead) {
    source.document = Error{"locked"};
    run.Start();
    Answer(21);
    Acknowledge(21, {0, 0});
    EXPECT_EQ(Status(), "1/1");
    EXPECT_EQ(NoteOf(), Note::kUnreadable);
    source.document = std::optional<std::string>("{}");
    Log();
    timers.Advance(30s);
    EXPECT_EQ(Log(), "21:3.1.0q0 2; ");
}

TEST_F(BatchPage, WaitsForTheDiskWithoutTakingAcknowledgementsForLater) {
    source.sizes["a"] = 20'000'000;
    run.Start();
    source.holds = true;
    Answer(21);
    source.Release();
    source.holds = true;
    Acknowledge(21, {0, 0});
    EXPECT_THAT(Log(), EndsWith("21:20.0.7q0 9; "));
    source.Release();
    EXPECT_EQ(Log(), "21:20.1.7q1 8192000; ");
    source.holds = true;
    Acknowledge(21);
    run.Stop();
    source.Release();
    EXPECT_EQ(Log(), "close; ");
}

}  // namespace
}  // namespace sontaro::test
