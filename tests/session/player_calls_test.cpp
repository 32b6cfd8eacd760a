#include "session/player_calls.h"

#include <gmock/gmock.h>

#include "simulator/simulated_player.h"
#include "support/link_surroundings.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using simulator::ParseFaultScript;
using simulator::PlayerState;
using simulator::SimulatedPlayer;
using testing::AnyOf;
using testing::ElementsAre;
using testing::IsEmpty;

/// A simulated player, and a session with it.
struct Asked : testing::Test {
    Asked() {
        simulator::PlayerOptions options;
        options.address = network.Player(0);
        options.pacing.spacing = 0ms;
        options.restartTime = 1ms;
        options.state.mode = 2;
        player = std::make_unique<SimulatedPlayer>(options);
        EXPECT_TRUE(player->Start());
        session = std::move(*Session::Open(player->Address()));
    }
    void SetFaults(const char* script) { player->SetFaults(*ParseFaultScript(script)); }
    const SettingsBlockKind& Kind(const char* name) { return *FindSettingsBlock(name); }

    TestNetwork network;
    std::unique_ptr<SimulatedPlayer> player;
    std::unique_ptr<Session> session;
};

/// What another value of a row may be.
std::string OtherValue(const SettingsRow& row) {
    switch (row.kind) {
        case RowKind::kYesNo: return row.value == kRowYes ? kRowNo : kRowYes;
        case RowKind::kChoice:
            return row.choices.back() == row.value ? row.choices.front() : row.choices.back();
        case RowKind::kWholeNumber: return row.value == "1" ? "2" : "1";
        case RowKind::kHexCommand: return row.value == "A5" ? "A6" : "A5";
        default: return row.value;
    }
}

/// Gives the first row that takes one another value; its path.
std::string ChangeARow(BlockDocument& document) {
    for (const auto& [path, row] : document.RowsByPath()) {
        const std::string value = OtherValue(row.row);
        if (value != row.row.value && document.SetValue(path, value)) return path;
    }
    return "";
}

TEST_F(Asked, EveryBlockIsReadAsItIsWrittenAndHeldAsItIsRead) {
    for (const SettingsBlockKind& kind : SettingsBlocks()) {
        SCOPED_TRACE(kind.name);
        auto read = ReadBlock(*session, kind);
        ASSERT_TRUE(read);
        ASSERT_TRUE(read->Usable());
        const std::string path = ChangeARow(*read);
        ASSERT_NE(path, "");
        EXPECT_EQ(read->RefusalToSend(), std::nullopt);
        EXPECT_TRUE(WriteBlock(*session, kind, read->Text()));
        const auto again = ReadBlock(*session, kind);
        ASSERT_TRUE(again);
        EXPECT_EQ(again->Text(), read->Text());
        EXPECT_EQ(*ReadBlockText(*session, kind), read->Text());
        EXPECT_EQ(again->RowsByPath().at(path).row.value, read->RowsByPath().at(path).row.value);
        EXPECT_THAT(DifferencesBetween(*read, *again), IsEmpty());
    }
    EXPECT_EQ(player->ConnectionCount(), 1U);
}

TEST_F(Asked, ADocumentOfNoUseIsAnAnswerThatIsKeptAsItIs) {
    SetFaults("bad-json");
    const auto read = ReadBlock(*session, Kind("osd"));
    ASSERT_TRUE(read);
    EXPECT_FALSE(read->Usable());
    const std::string whole = player->State().osd;
    EXPECT_EQ(read->Text(), whole.substr(0, whole.size() / 2));
    EXPECT_THAT(read->PathRows(), IsEmpty());
    EXPECT_TRUE(read->RefusalToSend());
}

TEST_F(Asked, AWriteIsConfirmedRefusedOrNotSent) {
    SetFaults("refused=13");
    EXPECT_EQ(WriteBlock(*session, Kind("screen-split"), "{}").how, End::kRefused);
    for (const auto& [fault, kind] : {std::pair("refused=15", "serial-port"),
                                      {"refused=21", "player-control"},
                                      {"refused=4", "osd"}}) {
        SetFaults(fault);  // of a block whose answers tell no refusal
        EXPECT_EQ(WriteBlock(*session, Kind(kind), "{}").how, End::kNotSupported) << kind;
        EXPECT_EQ(ReadBlock(*session, Kind(kind)).HowItEnded().how, End::kNotSupported) << kind;
    }
    SetFaults("refuse-saves");
    EXPECT_EQ(WriteBlock(*session, Kind("cave"), "{}").how, End::kNotSupported);
    player->ForgetPackets();
    EXPECT_EQ(WriteBlock(*session, Kind("osd"), "").how, End::kNotSent);
    EXPECT_EQ(WriteBlock(*session, Kind("osd"), std::string(kBufferSize, ' ')).how, End::kNotSent);
    EXPECT_THAT(player->ReceivedPackets(), IsEmpty());
}

TEST_F(Asked, TheControlProtocolIsWrittenWithoutARestartUnlessOneIsWanted) {
    const SettingsBlockKind& kind = Kind("control-protocol");
    EXPECT_TRUE(WriteBlock(*session, kind, R"({"a":1})"));
    EXPECT_EQ(player->ReceivedPackets().back().header.qualifier, 0);
    EXPECT_TRUE(session->IsConnected());
    EXPECT_TRUE(WriteBlock(*session, kind, R"({"a":2})", Restart::kYes));
    EXPECT_EQ(player->ReceivedPackets().back().header.command, kCommandCloseLinks);
    EXPECT_FALSE(session->IsConnected());
    EXPECT_EQ(player->State().controlProtocol, R"({"a":2})");
}

TEST_F(Asked, TellsItsStateAndItsVideos) {
    EXPECT_EQ(*ReadFreeSpace(*session), std::uint64_t{20'000} << 20);
    EXPECT_EQ(*ReadMode(*session), PlayerMode::kSlave);
    EXPECT_EQ(ReadLayouts(*session)->size(), player->State().layouts.size());
    const auto videos = ReadVideos(*session);
    ASSERT_TRUE(videos);
    EXPECT_EQ(videos->screens[0].front().name, player->State().folders.front().name);
    SetFaults("bad-list");
    EXPECT_STREQ(WordFor(ReadVideos(*session).HowItEnded()), "unreadable");
}

TEST_F(Asked, ReportsWhatItPlaysAndDoesWhatItsButtonsSay) {
    const auto playing = ReadNowPlaying(*session, 10s);
    ASSERT_TRUE(playing && playing->position);
    EXPECT_EQ(playing->position->video, player->State().folders[0].videos[0].name);
    const auto captions = ReadCaptions(*session);
    ASSERT_TRUE(captions);
    const auto pause =
        std::ranges::find(*captions, int(simulator::Action::kPause), &VideoCaption::type);
    ASSERT_NE(pause, captions->end());
    EXPECT_TRUE(SendVideoCommand(*session, kVideoPlayMode, pause->caption));
    EXPECT_FALSE(player->State().playing);
    EXPECT_EQ(SendVideoCommand(*session, kVideoLayout, "nowhere").how, End::kRefused);
}

TEST_F(Asked, APlayerThatReportsNothingIsNoFailure) {
    player->ChangeState([](PlayerState& state) { state.folders.clear(); });
    const auto playing = ReadNowPlaying(*session, 50ms);
    ASSERT_TRUE(playing);
    EXPECT_FALSE(playing->position);
    SetFaults("silent");
    session = nullptr;
    session = std::move(*Session::Open(player->Address(), {.limit = 50ms}));
    EXPECT_EQ(ReadNowPlaying(*session, 50ms).HowItEnded().how, End::kTimedOut);
}

}  // namespace
}  // namespace sontaro::test
