#include <gmock/gmock.h>

#include "support/literals.h"
#include "venue/backup_manifest.h"
#include "venue/sha256.h"
#include "venue/venue_samples.h"

namespace sontaro::test {
namespace {

using testing::HasSubstr;
using Outcome = BlockReading::Outcome;

BackupManifest Sample() {
    BackupManifest manifest{"0.1.0", "2026-11-21T20:30:00Z", "2026-11-21T20:30:07Z", {}};
    ManifestPlayer player{PlayerNamed("a/B"), "a%2FB+2", {}};
    player.blocks.push_back({&Kind("osd"), Outcome::kRead, "", true, 2, Sha256Text("{}")});
    player.blocks.push_back({&Kind("touch"), Outcome::kFailed, "timed-out"});
    player.blocks.push_back({&Kind("cave"), Outcome::kNotSupported});
    manifest.players.push_back(player);
    return manifest;
}

/// Why a manifest is not taken; "taken" when it is.
std::string Refusal(const std::string& text) {
    const auto read = ReadManifest(text);
    const auto* trouble = std::get_if<TextTrouble>(&read);
    return trouble ? trouble->Told() : "taken";
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    return text.replace(text.find(from), from.size(), to);
}

TEST(Manifest, IsReadAsItWasWritten) {
    const std::string text = WriteManifest(Sample());
    const auto read = ReadManifest(text);
    ASSERT_TRUE(std::holds_alternative<BackupManifest>(read)) << Refusal(text);
    EXPECT_EQ(std::get<BackupManifest>(read), Sample());
    for (std::size_t size = 0; size + 1 < text.size(); size += 3)
        EXPECT_NE(Refusal(text.substr(0, size)), "taken") << size;
}

TEST(Manifest, IsRefusedWithLineAndColumnWhenItCannotBeTrue) {
    const std::string text = WriteManifest(Sample());
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"sontaro-backup", "sontaro-venue", "no manifest of a backup"},
        {"\"version\" : 1", "\"version\" : 2", "later version"},
        {"20:30:00Z", "20:30:00", "time in UTC"},
        {"a%2FB+2", "..", "not called as the player's ID says"},
        {"a%2FB+2", "a%2FB+2@02007F000003", "not called as"},
        {"\"osd\"", "\"video\"", "no such block"},
        {"\"cave\"", "\"osd\"", "listed already"},
        {"not-supported", "lost", "read, not-supported or failed"},
        {"osd.json", "../osd.json", "not called as its block"},
        {"\"bytes\" : 2", "\"bytes\" : 99999999999", "whole number from 0 to 67108864"},
        {"\"bytes\" : 2", "\"bytes\" : -1", "whole number"},
        {"\"sha256\" : \"44", "\"sha256\" : \"4G", "SHA-256"},
        {"\"port\" : 5000", "\"port\" : 65536", "whole number from 0 to 65535"},
        {"\"mac\"", "\"ID\"", "\"mac\" is missing"},
        {"\"players\" :", "\"others\" :", "\"players\" is missing"},
        {"\"ip\"", "\"id\"", "Duplicate key"}};
    for (const auto& [from, to, why] : cases) {
        const std::string told = Refusal(Replaced(text, from, to));
        EXPECT_THAT(told, HasSubstr(why)) << to;
        EXPECT_THAT(told, testing::StartsWith("line ")) << to;
    }
    EXPECT_THAT(Refusal(std::string(kLongestManifest + 1, ' ')), HasSubstr("too long"));
    EXPECT_THAT(Refusal(std::string(100'000, '[')), HasSubstr("nested"));
}

TEST(Manifest, DoesNotTakeOneFolderForTwoPlayers) {
    BackupManifest manifest = Sample();
    manifest.players.push_back(manifest.players.front());
    EXPECT_THAT(Refusal(WriteManifest(manifest)), HasSubstr("another player's already"));
    manifest.players.back().folder += "@02007F000002";
    EXPECT_EQ(Refusal(WriteManifest(manifest)), "taken");
}

TEST(Manifest, HoldsTheSameAtAnotherTimeAndInAnotherOrder) {
    BackupManifest first = Sample();
    first.players.push_back({PlayerNamed("b"), "b+1", {}});
    BackupManifest second = first;
    std::swap(second.players[0], second.players[1]);
    second.begun = second.ended = second.program = "";
    bool areAlike = false;
    const auto hold = [&] {
        return HoldTheSame(first, second, [&](const auto&, const auto&) { return areAlike; });
    };
    EXPECT_TRUE(hold());
    second.players[1].blocks[0].sha256 = Sha256Text("{ }");
    EXPECT_FALSE(hold());
    areAlike = true;
    EXPECT_TRUE(hold());
    second.players[1].player.remark = "Foyer";
    EXPECT_FALSE(hold());
}

TEST(JsonText, KnowsThePlaceOfEverythingInLinesAndCharacters) {
    const std::pair<const char*, TextPlace> cases[] = {{"", {1, 1}},
                                                       {"{\n \"大\": x}", {2, 7}},
                                                       {"{\r\n \"a\": x}", {2, 7}},
                                                       {"\xEF\xBB\xBF{\r\"a\": x}", {2, 6}},
                                                       {"{\"a\": 1}\n x", {2, 2}},
                                                       {"{\"a\": 1,\n\"a\": 2}", {2, 1}}};
    for (const auto& [text, place] : cases) {
        const auto read = ReadJsonText(text);
        const auto* trouble = std::get_if<TextTrouble>(&read);
        ASSERT_TRUE(trouble) << text;
        EXPECT_EQ(trouble->place.line, place.line) << trouble->Told();
        EXPECT_EQ(trouble->place.column, place.column) << trouble->Told();
    }
    const std::string text = "\xEF\xBB\xBF{\n\"大厅\": [1, 22]}";
    const auto json = std::get<Json::Value>(ReadJsonText(text));
    EXPECT_EQ(PlaceOf(json["大厅"][1], text), (TextPlace{2, 11}));
}

TEST(JsonText, IsToldInTheLanguageOfTheProcess) {
    const InLanguage chinese(Language::kChinese);
    EXPECT_THAT(Refusal("{"), HasSubstr("不是有效的 JSON 文本"));
    EXPECT_THAT(Refusal("{}"), testing::StartsWith("第 1 行第 1 列：它不是备份清单"));
}

}  // namespace
}  // namespace sontaro::test
