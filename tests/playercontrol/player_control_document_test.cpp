#include <gmock/gmock.h>

#include "base/encoding.h"
#include "base/json.h"
#include "playercontrol/player_control_settings.h"
#include "support/literals.h"

namespace sontaro::test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* kDocument = R"({"lamp":1,"Players":[
    {"PlayerID":0,"PlayerEnable":1,"VideoPlayMode":9,"Play":"A501","Pause":"a5 z","glow":[2],"VideoType":[
        {"TypeName":"霓虹之夜长名","SendCmd":"0A","ScreenEffectID":1000,"dim":3},
        {"TypeName":"b"}]},
    {"PlayerID":2,"AspectRatio":1,"MovTypeRandom":"ff"}]})";

/// Type after type with that many keys' worth of nothing.
std::string Listing(std::size_t players, std::size_t types) {
    std::string list = "{}";
    for (std::size_t i = 1; i < types; ++i) list += ",{}";
    std::string text = R"({"VideoType":[)" + list + "]}";
    const std::string player = text;
    for (std::size_t i = 1; i < players; ++i) text += ',' + player;
    return R"({"Players":[)" + text + "]}";
}

struct PlayerControl : testing::Test {
    void Take(const std::string& text) { EXPECT_TRUE(settings.TakeReply(text).ok()) << text; }
    std::string Written() const { return Compact(AsBytes(settings.Write())); }
    std::string Enter(const std::string& key, const std::string& text) {
        const EditAnswer answer = settings.Edit({key, text});
        constexpr const char* kOutcomes[] = {"=", "!", "ignored"};
        return kOutcomes[static_cast<int>(answer.outcome)] + answer.text +
               (answer.caution.empty() ? "" : "!");
    }
    /// Does an edit that adds or deletes; the number of what it was about.
    ControlElement Do(const SettingsEdit& edit) {
        EXPECT_EQ(settings.Edit(edit).outcome, EditAnswer::Outcome::kAccepted) << edit.key;
        return *ElementOf(edit.key);
    }
    void Hold() {
        std::map<std::string, std::string> values;
        for (const SettingsGroup& group : settings.Rows()) {
            for (const SettingsRow& row : group.rows) values[row.key] = row.value;
            for (const SettingsGroup& type : group.groups)
                for (const SettingsRow& row : type.rows) values[row.key] = row.value;
        }
        settings.ShowHeld(values);
    }
    std::size_t Players() const { return settings.Model().players.size(); }
    std::size_t Types() const { return settings.Model().players[0].types.size(); }

    PlayerControlSettings settings;
};

TEST_F(PlayerControl, IsWrittenAsItWasReadWithItsCommandsInLowerCase) {
    Take(kDocument);
    const std::string written = Written();
    for (const char* part :
         {R"("Play":"a501")", R"("Pause":"a5z")", R"("SendCmd":"0a")", R"("VideoPlayMode":9)",
          R"("ScreenEffectID":1000,"SendCmd")", R"("glow":[2])", R"("dim":3)", R"("lamp":1)",
          R"("MovTypeRandom":"ff")", R"("PlayerID":2)", R"("RecvCmd":"")"})
        EXPECT_THAT(written, HasSubstr(part));
    Take(
        R"({"Players":[{"PlayerID":true,"Play":5,"VideoType":[7,{"ScreenEffectID":1.5}]},"odd"]})");
    EXPECT_EQ(Players() + Types(), 2U);
    EXPECT_THAT(Written(), HasSubstr(R"("PlayerID":0)"));
    EXPECT_THAT(Written(), Not(HasSubstr("lamp")));
}

TEST_F(PlayerControl, WithoutPlayersIsAnEmptyListButNoneOfAnotherDocumentsFile) {
    for (const char* none : {"{}", R"({"x":1})", R"({"Players":{}})"}) {
        Take(kDocument), Take(none);
        EXPECT_EQ(Players(), 0U) << none;
    }
    Take(kDocument);
    const std::string before = Written();
    for (const char* bad : {"", "{", "[]", "7", R"({"KtvDev":{}})", R"({"Players":7})"})
        EXPECT_FALSE(settings.TakeFile(bad)) << bad;
    EXPECT_FALSE(settings.TakeReply("[]"));
    EXPECT_EQ(Written(), before);
    EXPECT_TRUE(settings.TakeFile("{}") && Players() == 0);
    EXPECT_EQ(Written(), R"({"Players":[],"lamp":1})");
}

TEST_F(PlayerControl, HoldsTwoPlayersAnd256TypesOfEach) {
    Take(Listing(3, 257));
    EXPECT_EQ(Players(), 2U);
    EXPECT_EQ(Types(), 256U);
    EXPECT_EQ(Enter("Players/2", "+") + Enter("Players/0/VideoType/999", "+"), "ignoredignored");
    EXPECT_EQ(settings.TakeDropped() * 10 + settings.TakeDropped(), 20);
    EXPECT_EQ(Players() * 1000 + Types(), 2256U);
}

TEST_F(PlayerControl, RefusesEachTextWithItsOwnWords) {
    Take(kDocument);
    const std::string type = "Players/0/VideoType/0/";
    // clang-format off
    const std::tuple<std::string, const char*, const char*> cases[] = {
        {"Players/0/Play", " A5 0b ", "=a50b"}, {"Players/0/Play", "A50", "!input error!"}, {"Players/0/PlayerID", "1.5", "!input type error!"},
        {"Players/0/PlayerID", "-1", "!input error!"}, {"Players/0/PlayerID", "2147483648", "!input error!"},
        {"Players/0/VideoPlayMode", "Single Play", "=Single Play"}, {"Players/0/VideoPlayMode", "Never", "!input error!"},
        {type + "ScreenEffectID", "999", "=999"}, {type + "ScreenEffectID", "1000", "!input error!"},
        {type + "TypeName", "四个汉字", "=四个汉字"}, {type + "TypeName", "四个汉字a", "!input error!"},
        {"Players/2/Play", "00", "ignored"}, {"Players/none/Play", "00", "!Select player first, then set attributes!"}};
    // clang-format on
    for (const auto& [key, text, answer] : cases)
        EXPECT_EQ(Enter(key, text), answer) << key << ' ' << text;
    EXPECT_THAT(Written(), HasSubstr(R"("VideoPlayMode":4)"));
    EXPECT_EQ(ControlledPlayerCaption(INT32_MAX), "Player2147483648");
}

TEST_F(PlayerControl, NewPlayersHaveTheLowestFreeNumberAndNewTypesACutName) {
    Take(R"({"Players":[{"PlayerID":0}]})");
    const ElementId added = Do(settings.NewPlayer()).player;
    EXPECT_EQ(settings.Model().players[1].number, 1);
    Do(PlayerControlSettings::Without({0}));
    Do(settings.NewPlayer());
    EXPECT_EQ(settings.Model().players[1].number, 0);
    for (const auto& [name, cut] : {std::pair{"霓虹之夜长名", "霓虹之夜"},
                                    {"abc霓虹之", "abc霓虹"},
                                    {"a😀霓虹之夜", "a😀霓虹之"},
                                    {"+-12345678", "+-123456"}}) {
        const ControlElement type = Do(settings.NewType(added, name));
        EXPECT_EQ(settings.Model().players[0].types.Find(*type.type)->name, cut);
    }
    EXPECT_EQ(CutToLegacyLength("\xFF汉", 3), "\uFFFD汉");
}

TEST_F(PlayerControl, ElementsKeepTheirNumbersWhateverIsReadAgain) {
    Take(kDocument);
    const ControlElement inserted = Do(settings.NewType(0, "new"));
    Do(PlayerControlSettings::Without({0, 0}));
    Hold();
    Take(settings.Write());
    EXPECT_EQ(Enter(KeyOf(inserted) + "/TypeName", "x") +
                  Enter("Players/0/VideoType/1/TypeName", "y") +
                  Enter("Players/0/VideoType/0/TypeName", "z"),
              "=x=yignored");
    EXPECT_THAT(Written(), testing::AllOf(HasSubstr(R"("TypeName":"y"},{)"), HasSubstr("glow")));
    const ControlElement later = Do(settings.NewType(0, "later"));
    Take(Listing(1, 3));
    EXPECT_GT(settings.Model().players[0].types.IdAt(2), *later.type);
    Do({KeyOf(later), "+later"});
    EXPECT_EQ(settings.Model().players[0].types[2].name, "later");
}

}  // namespace
}  // namespace sontaro::test
