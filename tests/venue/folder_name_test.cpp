#include "venue/folder_name.h"

#include <gmock/gmock.h>

#include <map>
#include <random>

#include "venue/sha256.h"
#include "venue/utc_time.h"

namespace sontaro::test {
namespace {

std::string Capitals(std::string text) {
    for (char& letter : text)
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    return text;
}

TEST(FolderName, IsReadableForOrdinaryIdsAndEscapedForOthers) {
    const std::pair<FolderOwner, const char*> cases[] = {
        {{"PLAYER-1.2_A", ""}, "PLAYER-1.2_A"},
        {{"Player1", ""}, "Player1+1f"},
        {{"大厅1", ""}, "大厅1"},
        {{"PLAYER1", "02:00:7F:00:00:0A"}, "PLAYER1@02007F00000A"},
        {{"", "02:00:7F:00:00:0A"}, "%@02007F00000A"},
        {{"..", ""}, "%2E%2E"},
        {{"a/B", ""}, "a%2FB+2"},
        {{"CON", ""}, "%43ON"},
        {{"Lpt1.x", ""}, "%4Cpt1.x+7"},
        {{"COM10", ""}, "COM10"},
        {{"A. ", ""}, "A.%20"},
        {{"A.", ""}, "A%2E"},
        {{"é+@%\x01", ""}, "%C3%A9%2B%40%25%01"}};
    for (const auto& [owner, name] : cases) {
        EXPECT_EQ(FolderNameOf(owner), name);
        EXPECT_EQ(OwnerOfFolder(name), owner);
        EXPECT_EQ(OwnerOfFolder(Capitals(name)), owner) << name;
    }
}

TEST(FolderName, IsValidAndNobodyElsesForAnyTwelveBytes) {
    constexpr std::string_view kNasty = "aAbBcCoOnN.%+@ \x80/\\0:~#\n\xE5\xA4\xA7";
    std::mt19937 random(1);
    std::map<std::string, std::string> ids;
    for (int i = 0; i < 50'000; ++i) {
        std::string id(random() % 13, ' ');
        for (char& byte : id)
            byte = random() % 4 ? kNasty[random() % kNasty.size()] : static_cast<char>(random());
        const std::string name = FolderNameOf({id, ""});
        ASSERT_EQ(OwnerOfFolder(name), (FolderOwner{id, ""})) << name;
        ASSERT_EQ(ids.emplace(Capitals(name), id).first->second, id) << name;
        ASSERT_EQ(name.find_first_of("/\\:*?\"<>| \n"), std::string::npos) << name;
        ASSERT_FALSE(name.starts_with('.') || name.ends_with('.') || name.empty());
    }
}

TEST(FolderName, IsNoPlayersWhenItIsSpelledOtherwise) {
    for (const char* name : {"", ".", "..", "a+0", "a+01", "a+2", "A+", "%4", "%41", "A B", "%zz",
                             "A@02", "A@02007F00000G", "CON", "é", "A%2e%2"})
        EXPECT_EQ(OwnerOfFolder(name), std::nullopt) << name;
}

TEST(Sha256, HasTheSumsOfTheStandardWhateverThePieces) {
    const std::pair<std::string, const char*> cases[] = {
        {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
        {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
        {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
         "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
        {std::string(1'000'000, 'a'),
         "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"}};
    for (const auto& [text, sum] : cases) EXPECT_EQ(Sha256Text(text), sum);
    const std::string text(1000, 'x');
    Sha256 whole;
    whole.Add(text);
    const Sha256::Digest expected = whole.Finish();
    for (const std::size_t piece : {1U, 3U, 63U, 64U, 65U, 127U}) {
        Sha256 sum;
        for (std::size_t at = 0; at < text.size(); at += piece)
            sum.Add(std::string_view(text).substr(at, piece));
        EXPECT_EQ(sum.Finish(), expected) << piece;
    }
}

TEST(UtcTime, IsReadInItsOwnFormsAlone) {
    const auto time = TimeOfText("2026-02-28T23:59:59Z");
    ASSERT_TRUE(time);
    EXPECT_EQ(TimeText(*time), "2026-02-28T23:59:59Z");
    EXPECT_EQ(TimeOfName(TimeName(*time)), time);
    for (const char* text : {"2026-02-29T00:00:00Z", "2026-01-01T24:00:00Z", "2026-01-01 00:00:00Z",
                             "2026-01-01T00:00:00", "2026-01-01T00:00:0 Z", ""})
        EXPECT_FALSE(TimeOfText(text)) << text;
}

}  // namespace
}  // namespace sontaro::test
