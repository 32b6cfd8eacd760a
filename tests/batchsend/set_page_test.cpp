#include <gmock/gmock.h>

#include "base/file.h"
#include "batchsend/fake_source.h"
#include "batchsend/set_page_text.h"
#include "batchsend/set_tables.h"
#include "batchsend/video_set_files.h"
#include "batchsend/video_types.h"
#include "support/fake_player_channel.h"
#include "support/manual_ui_thread.h"
#include "support/recording_prompts.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kNames = R"({"VideoType": [{"TypeName": "舞曲"}, {"TypeName": "Live"}]})";

/// The page with players from 192.168.1.21 on, and files that are on a disk, but as large as the
/// test says.
struct SetPages : testing::Test, ExchangeBench, SetPageView {
    SetPages() {
        channel.sent = [this](const PacketHeader& header) {
            channel.log += fmt::format("{}:{}; ", channel.to.ip.substr(10), header.command);
        };
        OpenWizard();
    }
    ~SetPages() override {
        run.reset();
        ui.Close();  // a thread may wait for it
    }
    void OpenWizard() {
        run.emplace(set, *this,
                    SetPageServices{source, ui, threads, prompts, preferences, exchange, types});
    }
    static DeviceRecord Player(int octet, const std::string& id = "") {
        DeviceRecord record;
        record.ip = "192.168.1." + std::to_string(octet);
        record.tcpPort = 9000;
        record.id = id;
        return record;
    }
    void Enter(std::vector<DeviceRecord> players) {
        run->Enter(std::move(players));
        timers.Advance(0ms);
    }
    void From(int octet, WindowMessage message) {
        message.origin.sender = {"192.168.1." + std::to_string(octet), 9000, 0};
        run->Handle(message);
    }
    /// A master with free disk space in MiB and names of categories.
    void Answers(int octet, char mebibytes = 100, const char* document = kNames) {
        WindowMessage mode = Message(MessageId::kDeviceModes, kCommandDeviceModes, 0);
        mode.record = std::make_unique<DeviceModes>(DeviceModes{1});
        From(octet, std::move(mode));
        std::string data(kPlayerDataSize, '\0');
        data[4] = mebibytes;
        From(octet, Message(MessageId::kPlayerState, kCommandPlayerData, 0, data));
        From(octet, Message(MessageId::kControlProtocol, kCommandSettings, 1, document));
    }
    void Ends(int octet) {
        From(octet, Message(MessageId::kLinkEnded, 0, 0));
        player.ip = "192.168.1." + std::to_string(octet);
        Report(ExchangeNews::Kind::kLinkEnded);
    }
    /// Adds files or folders, and awaits that they have been found.
    void Add(SetPageRun::Paths paths, std::uint32_t slot = 0) {
        bool isFound = false;
        changed = [&] { isFound = true; };
        run->Add(std::move(paths), slot);
        isFound = false;
        EXPECT_TRUE(ui.PumpUntil([&] { return isFound; }));
        changed = [] {};
    }
    void AddFile(const char* name, std::uint64_t size) {
        const std::filesystem::path file = folder.Write(name, "");
        source.sizes[file.string()] = size;
        Add({file});
    }
    /// Adds "Live" with a video as the first category while no player has told its names, and asks
    /// again.
    void AddLiveEarly() {
        folder.Write("v/Live/x", "");
        Enter({Player(21)});
        timers.Advance(5s);
        Add({folder / "v"});
        run->AskAgain();
        timers.Advance(0ms);
    }
    [[nodiscard]] std::string Listed() const {
        std::string listed;
        for (const SetVideo& video : run->Videos())
            listed += fmt::format("{}@{} ", video.Name(), video.category);
        return listed;
    }
    bool GoesOn() { return run->GoOn(); }

    void SetChanged() override { changed(); }
    void VideosChanged() override { totals = TotalsText(*run); }
    void CategoriesSettled(const std::vector<SettledName>&) override {}
    void PlayerChanged(std::size_t) override {}
    void ChooseVideo(std::uint32_t id) override { chosen = id; }

    TemporaryFolder folder;
    const std::filesystem::path types = folder / "Videos/VideoTypeProtocol.Json";
    ManualUiThread ui;
    ThreadGroup threads;
    RecordingPrompts prompts;
    JsonFile preferences{folder / "preferences.json"};
    FakeSource source;
    VideoSet set;
    std::optional<std::uint32_t> chosen;
    std::string totals;  // as they were told last
    std::function<void()> changed = [] {};
    std::optional<SetPageRun> run;
};

TEST_F(SetPages, KeepTheShownPlayerAliveAsLongAsItAnswers) {
    Enter({Player(21), Player(22)});
    EXPECT_EQ(channel.Log(), "close; 21:36; 22:36; ");
    run->Show(1);
    Answers(21), Answers(22);
    channel.Log();
    timers.Advance(4s);
    EXPECT_EQ(channel.Log(), "22:50; 22:50; ");
    EXPECT_EQ(channel.lastBoxes, Boxes::kMuted);
    run->Show({});
    timers.Advance(4s);
    EXPECT_EQ(channel.Log(), "");
    run->Show(0);
    timers.Advance(2s);
    Ends(21);
    timers.Advance(4s);
    EXPECT_EQ(channel.Log(), "21:50; ");
    run->Leave();
    EXPECT_EQ(timers.Waiting(), 0U);
}

TEST_F(SetPages, ConnectAShownPlayerAnewOnlyAfterAllOtherLinksAreClosed) {
    Enter({Player(21), Player(22)});
    Answers(21), Answers(22);
    run->Show(1);
    run->AskAgain();
    timers.Advance(0ms);
    Ends(21);
    run->Show(0);
    timers.Advance(2s);
    EXPECT_THAT(channel.Log(), testing::EndsWith("close; 22:36; "));
    Answers(22);
    channel.Log();
    timers.Advance(4s);
    EXPECT_EQ(channel.Log(), "close; 21:50; 21:50; ");
    channel.refusal = NotSent::kConnectFailed;
    timers.Advance(2s);
    channel.refusal.reset();
    timers.Advance(10s);
    EXPECT_EQ(channel.Log(), "");
}

TEST_F(SetPages, MakeCategoriesOfFoldersOnceTheirNamesAreKnown) {
    for (const char* name : {"v/10 b", "v/2 a", "v/Live/x", "v/New/sub/y"}) folder.Write(name, "");
    Enter({Player(21), Player(22)});
    Add({folder / "v"}, 5);
    EXPECT_TRUE(run->IsSearching());
    EXPECT_EQ(Listed(), "");
    Answers(21);
    EXPECT_EQ(Listed(), "") << "the other one may use any slot";
    Answers(22, 100, R"({"VideoType": [{}, {}, {"TypeName": "Rock"}]})");
    EXPECT_EQ(Listed(), "2 a@5 10 b@5 x@1 y@3 ");
    EXPECT_EQ(SlotText(*run, 3), "4  New");
    Add({folder / "v/New", folder / "none"});
    EXPECT_EQ(Listed(), "2 a@5 10 b@5 x@1 y@3 ");
    EXPECT_THAT(prompts.boxes,
                ElementsAre(Warning("This cannot be read:\n" + TextOfPath(folder / "none"))));
}

TEST_F(SetPages, AddWhatIsFoundToThePlayerThatWasShownThen) {
    Enter({Player(21), Player(22)});
    run->Show(1);
    run->Add({folder.Write("a", "")}, 0);
    run->Show({});
    EXPECT_TRUE(ui.PumpUntil([&] { return !run->IsSearching(); }));
    EXPECT_TRUE(set.videos.size() == 0 && set.players[1].videos.size() == 1);
    run->Add({folder.Path()}, 0);
    run->Leave();
    EXPECT_FALSE(run->IsSearching());
}

TEST_F(SetPages, FindAPlayersVideosAgainByItsIdOrAddress) {
    Enter({Player(21, "one"), Player(22, "two"), Player(23)});
    for (const std::size_t place : {0U, 1U, 2U}) {
        run->Show(place);
        AddFile(std::to_string(place).c_str(), 1);
    }
    run->Leave();
    OpenWizard();
    Enter({Player(31, "two")});
    run->Show(0);
    EXPECT_EQ(Listed(), "1@0 ");
    run->Leave();
    OpenWizard();
    Enter({Player(23, "three"), Player(22, "other"), Player(21, "one")});
    EXPECT_EQ(set.players[0].videos[0].Name(), "2");
    EXPECT_EQ(set.players[1].videos.size(), 0U);
    EXPECT_EQ(set.players[2].videos[0].Name(), "0");
    EXPECT_EQ(set.absent.size(), 1U);
}

TEST_F(SetPages, RememberAChangeASecondLater) {
    Enter({Player(21)});
    AddFile("01 a.mp4", 1);
    run->RemoveNumbers(true, {run->Videos().IdAt(0)});
    timers.Advance(1s);
    const VideoSet remembered = RememberedVideoSet(JsonFile(folder / "preferences.json"));
    EXPECT_EQ(remembered, set);
    EXPECT_EQ(remembered.videos[0].Name(), "a.mp4");
}

TEST_F(SetPages, StopLookingAtFilesWhenASetWithoutAnyIsOpened) {
    SaveVideoSet(VideoSet(), folder / "none.json", prompts);
    Enter({Player(21)});
    source.holds = true;
    AddFile("a.mp4", 1);
    EXPECT_THAT(totals, HasSubstr("Looking at the files"));
    run->Open(folder / "none.json");
    EXPECT_EQ(totals, "Videos for every player: 0 (0 B)");
}

TEST_F(SetPages, RefuseToGoOnWithWhatNoPlayerTakes) {
    Enter({Player(21)});
    Answers(21);
    run->Show(0);
    AddFile("gone", 1);
    AddFile("a.mp4", kLongestVideo + 1);
    run->Show({});
    EXPECT_FALSE(GoesOn());
    EXPECT_EQ(run->Shown(), 0U);
    EXPECT_EQ(chosen, run->Videos().IdAt(1));
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_THAT(prompts.boxes[0].text, HasSubstr("a.mp4: The file is too large"));
    run->Remove({run->Videos().IdAt(1)});
    EXPECT_TRUE(GoesOn());
    run->Leave();
    source.sizes.clear();
    Enter({Player(21)});
    EXPECT_EQ(run->Problems().size(), 1U);
    EXPECT_TRUE(GoesOn());
}

TEST_F(SetPages, KeepTheDocumentOfTheNamesWhereItIsNeeded) {
    const auto giveName = [this](const char* name) {
        std::array<CategoryAlias, kVideoCategories> aliases;
        aliases[1].name = name;
        run->SetAliases(aliases);
        return GoesOn();
    };
    Enter({Player(21)});
    EXPECT_FALSE(giveName("Konzert"));
    EXPECT_EQ(prompts.boxes.size(), 1U);
    EXPECT_FALSE(std::filesystem::exists(types));
    Answers(21);
    EXPECT_TRUE(giveName("Konzert"));
    const CategoryNames written = *ReadCategoryNames(*ReadFile(types));
    EXPECT_EQ(written[0] + written[1], "舞曲Konzert");
    EXPECT_TRUE(giveName("Live"));
    EXPECT_FALSE(std::filesystem::exists(types));
    run->WriteNames(true);
    EXPECT_TRUE(GoesOn() && std::filesystem::exists(types));
}

TEST_F(SetPages, GiveAllPlayersTheNamesOfOneOnlyAfterAYes) {
    Enter({Player(21), Player(22)});
    Answers(21),
        Answers(22, 100, R"({"VideoType": [{"TypeName": "Dance"}, {"TypeName": "Rock"}]})");
    EXPECT_TRUE(GoesOn() && !std::filesystem::exists(types));
    std::array<CategoryAlias, kVideoCategories> aliases;
    aliases[1].name = "Live";
    run->SetAliases(aliases);
    EXPECT_FALSE(GoesOn() || std::filesystem::exists(types));
    prompts.answers = {true, true};
    for (const std::size_t place : {0U, 1U}) {
        run->Show(place);
        EXPECT_TRUE(GoesOn());
        const CategoryNames written = *ReadCategoryNames(*ReadFile(types));
        EXPECT_EQ(written[0] + written[1], place == 0 ? "舞曲Live" : "DanceLive");
    }
    EXPECT_EQ(prompts.boxes.back(),
              Question("The names of the categories are written to all players. Where you have "
                       "given none, those of 192.168.1.22 replace those of the others:\n"
                       "1 (192.168.1.21: 舞曲; 192.168.1.22: Dance)\nGo on all the same?"));
}

TEST_F(SetPages, WriteTheNamesForPlayersThatHaveNotToldTheirOwn) {
    Enter({Player(21), Player(22)});
    Answers(21);
    timers.Advance(5s);
    std::array<CategoryAlias, kVideoCategories> aliases;
    aliases[0].name = "舞曲";
    run->SetAliases(aliases);
    EXPECT_FALSE(GoesOn() || std::filesystem::exists(types));
    EXPECT_EQ(prompts.boxes.back(),
              Question("The names, those of 192.168.1.21, are also written to players whose own "
                       "ones are not known: 192.168.1.22.\nGo on all the same?"));
    prompts.answers = {true};
    EXPECT_TRUE(GoesOn() && std::filesystem::exists(types));
}

TEST_F(SetPages, AskOnceMoreWhenNamesArriveBehindAQuestion) {
    Enter({Player(21), Player(22)});
    Answers(21);
    run->WriteNames(true);
    prompts.answers = {true};
    prompts.whileShown = [this] { Answers(22, 100, R"({"VideoType": [{"TypeName": "Dance"}]})"); };
    EXPECT_FALSE(GoesOn() || std::filesystem::exists(types));
    EXPECT_EQ(prompts.boxes.size(), 2U);
    EXPECT_THAT(prompts.boxes.back().text,
                HasSubstr("\n1 (192.168.1.21: 舞曲; 192.168.1.22: Dance)"));
    prompts.answers = {true};
    EXPECT_TRUE(GoesOn() && std::filesystem::exists(types));
}

TEST_F(SetPages, KeepTheNumbersOfFoldersOpenUntilPlayersHaveToldTheirNames) {
    for (const char* name : {"loose", "v/Live/x", "v/New/y"}) folder.Write(name, "");
    Enter({Player(21)});
    timers.Advance(5s);
    Add({folder / "v", folder / "loose"});
    EXPECT_EQ(Listed(), "loose@0 x@1 y@2 ");
    EXPECT_EQ(SlotText(*run, 1), "2?  Live");
    EXPECT_THAT(TotalsText(*run), HasSubstr("wait for the players' names: 2"));
    EXPECT_FALSE(GoesOn() || std::filesystem::exists(types));
    prompts.boxes.clear();
    run->Leave();
    OpenWizard();
    Enter({Player(21)});
    Answers(21, 100,
            R"({"VideoType": [{"TypeName": "a"}, {"TypeName": "Jazz"}, {"TypeName": "Live"}]})");
    EXPECT_EQ(Listed(), "loose@0 x@2 y@3 ");
    EXPECT_EQ(SlotText(*run, 1) + SlotText(*run, 3), "2  Jazz4  New");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_THAT(prompts.boxes[0].text, HasSubstr("\nLive: 2 → 3\nNew: 3 → 4"));
    EXPECT_TRUE(GoesOn());
    EXPECT_EQ(ReadCategoryNames(*ReadFile(types))->at(1), "Jazz");
}

TEST_F(SetPages, LeaveNamesThatAreBeingEditedWhereTheyAre) {
    AddLiveEarly();
    run->WhileNamesStay([this] {
        auto aliases = set.aliases;
        Answers(21);
        EXPECT_EQ(set.aliases, aliases);
        aliases[0].name = "Jazz";
        run->SetAliases(aliases);
    });
    EXPECT_EQ(Listed(), "x@2 ");
    EXPECT_EQ(SlotText(*run, 0) + SlotText(*run, 2), "1  舞曲3  Jazz");
}

TEST_F(SetPages, PutWhatIsFoundWhereTheNameOfItsCategoryGoes) {
    AddLiveEarly();
    folder.Write("w/舞曲/z", "");
    run->Add({folder.Write("y", ""), folder / "w"}, 0);
    Answers(21);
    EXPECT_EQ(Listed(), "x@0 ");
    EXPECT_TRUE(ui.PumpUntil([&] { return !run->IsSearching(); }));
    EXPECT_EQ(Listed(), "x@1 y@1 z@0 ");
}

TEST_F(SetPages, SettleNamesWhenTheSearchIsGivenUp) {
    AddLiveEarly();
    run->Add({folder / "v"}, 0);
    Answers(21);
    EXPECT_EQ(Listed(), "x@0 ");
    run->GiveUpSearch();
    EXPECT_EQ(Listed(), "x@1 ");
}

TEST_F(SetPages, SettleNamesByWhatIsToldWhenTheUserGoesOn) {
    AddLiveEarly();
    run->Leave();
    Enter({Player(21), Player(22)});
    Answers(21);
    EXPECT_TRUE(GoesOn() && !std::filesystem::exists(types));
    EXPECT_EQ(Listed(), "x@1 ");
}

TEST_F(SetPages, ShowPlayersAndVideosWithWhatIsOdd) {
    const SetPlayersTable players(*run);
    SetVideosTable videos(*run);
    Enter({Player(21, "one"), Player(22)});
    Answers(21, 1), Answers(22, 100, R"({"VideoType": [{"TypeName": "Dance"}]})");
    AddFile("01 a.mp4", 1'500'000);
    AddFile("a.mp4", 5);
    const auto row = [](const TableModel& table, std::size_t place) {
        std::string texts;
        for (std::size_t i = 0; i < 5; ++i) texts += table.Text(place, i) + "|";
        return texts;
    };
    EXPECT_EQ(row(players, 0), "All players|||||");
    EXPECT_EQ(row(players, 1), "192.168.1.21|one|Master|1.05 MB|Answered|");
    EXPECT_THAT(players.CellCaution(1, 3), HasSubstr("Too little space"));
    EXPECT_THAT(players.CellCaution(2, 3), IsEmpty());
    EXPECT_EQ(row(videos, 0), "01 a.mp4|1.50 MB|1  舞曲 ≠|01 a.mp4|0|");
    run->RemoveNumbers(true, {run->Videos().IdAt(0)});
    EXPECT_THAT(videos.CellCaution(1, 3), HasSubstr("is called \"a.mp4\", too"));
    EXPECT_THAT(FirstProblemText(*run), HasSubstr("(1 more)"));
    videos.SetTicked(0, true);
    run->Show(1);
    EXPECT_EQ(row(players, 2), "192.168.1.22||Master|104.86 MB|Answered|");
    EXPECT_EQ(SlotText(*run, 0), "1  Dance ≠");
    run->Show({});
    run->MoveDown({run->Videos().IdAt(0)});
    EXPECT_THAT(videos.TickedRows(), ElementsAre(1U));
}

}  // namespace
}  // namespace sontaro::test
