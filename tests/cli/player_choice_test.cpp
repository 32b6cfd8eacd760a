#include "cli/player_choice.h"

#include "cli_support.h"

namespace sontaro::cli::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

DeviceRecord Player(const std::string& ip, const std::string& id, const std::string& remark = {}) {
    DeviceRecord player;
    player.ip = ip;
    player.id = id;
    player.mac = "02:00:" + ip;
    player.tcpPort = 9000;
    player.remarks = remark;
    return player;
}

/// A network that answers as the test says.
struct Choice : testing::Test, Caller {
    Choice() {
        SetLanguage(Language::kEnglish);
        find = [this](const FindPlan& plan) -> Result<std::vector<DeviceRecord>> {
            plans.push_back(plan);
            isEnough.clear();
            for (std::size_t i = 0; i <= there.size(); ++i)
                isEnough.push_back(
                    plan.isEnough({there.begin(), there.begin() + static_cast<std::ptrdiff_t>(i)}));
            std::vector<DeviceRecord> answering;
            for (const DeviceRecord& player : there) {
                const bool isAsked =
                    plan.asked.empty() ||
                    std::ranges::find(plan.asked, *ParseIpv4(player.ip)) != plan.asked.end();
                if (isAsked) answering.push_back(player);
            }
            return answering;
        };
    }
    /// The addresses and ports that are chosen; else why there are none.
    std::string Chosen(std::vector<std::string> options) {
        options.insert(options.begin(), "videos");
        const auto call = Invocation::Parse(options);
        if (!call) return call.reason();
        TextCollector text;
        Output output(text, text, Output::Form::kTables, false);
        const Surroundings surroundings{*call, output, {}, folder / "data", folder / "config",
                                        {},    find};
        const auto chosen = ChoosePlayers(surroundings);
        if (!chosen) return chosen.reason();
        std::string list;
        for (const DeviceRecord& player : chosen->players)
            list += player.ip + ':' + std::to_string(player.tcpPort) + (player.silent ? "? " : " ");
        for (const std::string& name : chosen->missing) list += "-" + name + ' ';
        return list;
    }

    sontaro::test::TestNetwork network;  // the machine's own addresses are asked for
    std::vector<DeviceRecord> there = {Player("127.0.0.2", "HALL1", "Stage"),
                                       Player("127.0.0.3", "HALL2", "Bar"),
                                       Player("127.0.0.4", "HALL3", "Bar")};
    std::vector<FindPlan> plans;
    std::vector<bool> isEnough;  // to the last plan: nobody, the first one, the first two, ...
};

TEST_F(Choice, PlayersAreNamedByAddressIdOrRemarkAndServedOnce) {
    EXPECT_EQ(Chosen({"-p", "HALL2", "-p", "127.0.0.2", "-p", "Stage", "-p", "127.0.0.3:9000"}),
              "127.0.0.2:9000 127.0.0.3:9000 ");
    ASSERT_EQ(plans.size(), 2U);
    EXPECT_THAT(plans[0].asked, ElementsAre(*ParseIpv4("127.0.0.2")));
    EXPECT_THAT(plans[1].asked, IsEmpty());
}

TEST_F(Choice, ARemarkThatFitsTwoPlayersIsRefusedWithBoth) {
    const std::string refusal = Chosen({"-p", "HALL1", "-p", "Bar"});
    EXPECT_THAT(refusal, HasSubstr("\"Bar\" fits several players"));
    EXPECT_THAT(refusal, HasSubstr("127.0.0.3 HALL2 Bar"));
    EXPECT_THAT(refusal, HasSubstr("127.0.0.4 HALL3 Bar"));
}

TEST_F(Choice, ASearchIsOverOnceEverybodyWhoIsNamedHasAnswered) {
    folder.Write("config/remarks.json",
                 R"({"a":{"Remarks":"Bar"},"b":{"Remarks":"Bar"},"c":{"Remarks":"Stage"}})");
    Chosen({"-p", "HALL1", "-p", "Stage"});
    EXPECT_THAT(isEnough, ElementsAre(false, true, true, true));
    Chosen({"-p", "Bar"});  // another one has that remark
    EXPECT_THAT(isEnough, ElementsAre(false, false, false, true));
    Chosen({"--all"});
    EXPECT_THAT(isEnough, ElementsAre(false, false, false, false));
}

TEST_F(Choice, ASearchForAnIdThatTwoPlayersHaveWaitsForBoth) {
    there[1].id = "HALL1";
    Chosen({"--all"});
    EXPECT_THAT(Chosen({"-p", "HALL1"}), HasSubstr("\"HALL1\" fits several players"));
    EXPECT_THAT(isEnough, ElementsAre(false, false, true, true));
    there[2].ip = "127.0.0.5";  // one that has moved is no second one
    Chosen({"--all"});
    Chosen({"-p", "HALL3"});
    EXPECT_THAT(isEnough, ElementsAre(false, false, false, true));
}

TEST_F(Choice, AListOfNobodyIsNotTakenForEverybody) {
    folder.Write("empty.txt", "\n");
    EXPECT_THAT(Chosen({"--all", "--expect", TextOfPath(folder / "empty.txt")}),
                HasSubstr("lists no players"));
    EXPECT_THAT(plans, IsEmpty());
}

TEST_F(Choice, AnAddressThatDoesNotAnswerHasThePortThatItHadLast) {
    EXPECT_EQ(Chosen({"-p", "127.0.0.9"}), "-127.0.0.9 ");
    Chosen({"-p", "127.0.0.2"});
    there.clear();
    EXPECT_EQ(Chosen({"-p", "127.0.0.2"}), "127.0.0.2:9000? ");
    EXPECT_EQ(Chosen({"-p", "127.0.0.2:8000"}), "127.0.0.2:8000? ");
    EXPECT_EQ(Chosen({"-p", "HALL1"}), "-HALL1 ");
}

TEST_F(Choice, AVenueNamesItsPlayersAndTheAddressToAskFrom) {
    folder.Write("data/venues/bar.json",
                 R"({"format":"sontaro-venue","version":1,"localAddress":"127.0.0.1",)"
                 R"("players":["HALL3","127.0.0.2"]})");
    EXPECT_EQ(Chosen({"--venue", "bar"}), "127.0.0.2:9000 127.0.0.4:9000 ");
    EXPECT_THAT(plans.back().localAddresses, ElementsAre("127.0.0.1"));
    EXPECT_EQ(Chosen({"--venue", "bar", "-p", "HALL1"}), "127.0.0.2:9000 ");
    EXPECT_THAT(Chosen({"--venue", "none"}), HasSubstr("none"));
}

TEST_F(Choice, TheAddressThatTheWindowsHaveServedWithIsAskedFrom) {
    folder.Write("config/preferences.json", R"({"localAddress":"127.0.0.1"})");
    Chosen({"--all"});
    EXPECT_THAT(plans.back().localAddresses, ElementsAre("127.0.0.1"));
    Chosen({"--all", "--local-address", "127.0.0.7"});
    EXPECT_THAT(plans.back().localAddresses, ElementsAre("127.0.0.7"));
}

TEST_F(Choice, NobodyIsTakenWithoutAName) {
    EXPECT_THAT(Chosen({}), HasSubstr("--all"));
    EXPECT_THAT(Chosen({"--all", "-p", "HALL1"}), HasSubstr("--all"));
    EXPECT_THAT(Chosen({"--expect", "list.txt", "-p", "HALL1"}), HasSubstr("--expect"));
    EXPECT_THAT(plans, IsEmpty());
}

}  // namespace
}  // namespace sontaro::cli::test
