#include "batchsend/batch_plan.h"

#include <gmock/gmock.h>

#include "batchsend/send_batch.h"
#include "batchsend/video_types.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using enum PlannedFate;
using enum ProofKind;

/// Three players, of whom the last one does not answer. "a" and "b" go to everyone, "c" to the
/// second one.
struct Plans : testing::Test {
    Plans() {
        for (const int octet : {21, 22, 23})
            set.players.Insert(set.players.size(),
                               {"192.168.1." + std::to_string(octet), 9000, "", {}});
        Add(set.videos, "x/a", 100), Add(set.videos, "x/b", 50);
        Add(set.players[1].videos, "x/c", 7);
        for (PlayerFacts& player : facts) player.isAsked = true;
        facts[0].isReached = facts[1].isReached = true;
        facts[0].free = facts[1].free = 1000;
        facts[1].videos.emplace();
        facts[0].videos.emplace().screens[2].push_back({"Live", {{"a", 100}, {"b", 49}}});
    }
    static void Add(Elements<SetVideo>& videos, const std::string& path, std::int64_t size) {
        AddVideos(videos, std::vector{path}, 3);
        videos[videos.size() - 1].size = size;
    }
    [[nodiscard]] BatchPlan Plan() const { return {set, facts}; }

    VideoSet set;
    std::vector<PlayerFacts> facts{3};
};

TEST_F(Plans, SayWhatIsSentAndWhatIsThere) {
    const BatchPlan all = Plan();
    EXPECT_THAT(all.Fates(), ElementsAre(ElementsAre(kSendAnyway, kToSend),
                                         ElementsAre(kToSend, kToSend, kToSend),
                                         ElementsAre(kUnreachable, kUnreachable)));
    EXPECT_EQ(all.Totals().bytes, 307U);
    EXPECT_EQ(all.Totals().videos, 5U);
    set.skipsPresent = true;
    const BatchPlan rest = Plan();
    EXPECT_THAT(rest.Fates()[0], ElementsAre(kSkipped, kToSend));
    EXPECT_EQ(rest.Totals().bytes, 207U);
    EXPECT_THAT(rest.Players()[0].videos, ElementsAre(UploadVideo{"x/b", "b", 3, 3}));
    EXPECT_EQ(rest.Players()[2].videos.size(), 2U);
    facts[2].isAsked = false;
    EXPECT_THAT(Plan().Fates()[2], ElementsAre(kNotAsked, kNotAsked));
    EXPECT_EQ(Plan().Totals().bytes, 357U);
    facts[1].videos.reset();
    EXPECT_THAT(Plan().Fates()[1], ElementsAre(kListUnknown, kListUnknown, kListUnknown));
    EXPECT_EQ(Plan().Totals().bytes, 357U);
}

TEST_F(Plans, AreToldAgainForWhatIsStillToCome) {
    facts[2].isAsked = false;
    const BatchPlan plan = Plan();
    SendBatch batch(set, plan);
    const std::vector<UploadPlayer> run = {plan.Players()[0], plan.Players()[1]};
    const auto told = [&] { return batch.PairAt(0, 1).Text() + ", " + batch.PairAt(1, 1).Text(); };
    batch.Begin(run);
    batch.Take({UploadEvent::Kind::kRunEnded});
    EXPECT_EQ(told(), "not sent, not sent");
    std::vector<UploadRow> rows(2);
    rows[0].status = UploadStatus::kTimedOut, rows[1].status = UploadStatus::kInProgress;
    batch.Resume(rows);
    EXPECT_EQ(told(), "not sent, will be sent");
    batch.Take({UploadEvent::Kind::kPlayerBegun, 0});
    EXPECT_EQ(told(), "will be sent, will be sent");
    facts[2].isAsked = true;
    batch.Learn(set, Plan());
    EXPECT_EQ(batch.PairAt(2, 0).fate, kUnreachable);
}

TEST_F(Plans, SendNothingToAPlayerThatIsTooFull) {
    set.videos[1].trouble = "gone";
    facts[0].free = 101, facts[1].free = 107;
    EXPECT_THAT(Plan().Fates(), ElementsAre(ElementsAre(kSendAnyway, kUnreadable),
                                            ElementsAre(kDoesNotFit, kUnreadable, kDoesNotFit),
                                            ElementsAre(kUnreachable, kUnreadable)));
    EXPECT_EQ(Plan().Totals().bytes, 100U);
}

TEST_F(Plans, ProveWhatPlayersHave) {
    VideoList list = *facts[0].videos;
    list.screens[0].push_back({"Jazz", {{"a", 1}}});
    EXPECT_EQ(ProofOf(list, "a", 100, "Live"), kConfirmed);
    EXPECT_EQ(ProofOf(list, "a", 99, "Live"), kOtherSize);
    EXPECT_EQ(ProofOf(list, "a", 100, "Jazz"), kOtherSize);
    EXPECT_EQ(ProofOf(list, "a", 100, "Dance"), kOtherCategory);
    EXPECT_EQ(ProofOf(list, "c", 7, "Live"), kMissing);
    EXPECT_EQ(ProofOf(list, "a", 100, ""), kCannotTell);
    EXPECT_EQ(ProofOf(std::nullopt, "a", 100, "Live"), kCannotTell);
}

TEST_F(Plans, ProveByTheCategoryAndNotByTheCode) {
    const std::vector<UploadPlayer> run = {
        {{"192.168.1.21", 9000, 0}, {{"x/a", "a", 3, 5}, {"x/b", "b", 3}}}};
    SendBatch batch(run);
    batch.Begin(run);
    for (const std::size_t video : {0U, 1U}) {
        batch.Take({UploadEvent::Kind::kVideoBegun, 0, video, 100});
        batch.Take({UploadEvent::Kind::kVideoDone, 0, video, 100});
    }
    CategoryNames names;
    names[3] = "Jazz", names[5] = "Live";
    facts[0].controlProtocol = VideoTypeDocument(names);
    facts[0].videos->screens[2][0].videos[1].size = 100;
    const std::string before = *facts[0].controlProtocol;
    EXPECT_EQ(batch.Prove(0, facts[0], before).Text(), "1 confirmed; 1 not: b: cannot be told");
    EXPECT_THAT(batch.Prove(0, facts[0], {}).Text(),
                testing::EndsWith("; the settings before the run are not known"));
}

}  // namespace
}  // namespace sontaro::test
