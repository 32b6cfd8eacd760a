#include "venue/venue_file.h"

#include <gmock/gmock.h>

#include "base/path_text.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// The names with what is known of them; why there are none.
std::vector<std::string> Names(std::string_view text) {
    const auto read = ReadExpectedPlayers(text);
    if (const auto* trouble = std::get_if<TextTrouble>(&read)) return {trouble->Told()};
    std::vector<std::string> names;
    for (const PlayerName& name : std::get<0>(read))
        names.push_back(name.text +
                        (name.ip.empty() ? "" : " @" + name.ip + ' ' + std::to_string(name.port)));
    return names;
}

TEST(ExpectedPlayers, AreNamesOneOnALine) {
    EXPECT_THAT(
        Names(
            "\xEF\xBB\xBF# hall\r\n 127.0.0.2 # left\r\n\r\n127.0.0.3:5001\r\nPLAYER#1\r\n大厅 左"),
        ElementsAre("127.0.0.2 @127.0.0.2 0", "127.0.0.3:5001 @127.0.0.3 5001", "PLAYER#1",
                    "大厅 左"));
    EXPECT_THAT(Names(""), testing::IsEmpty());
    EXPECT_THAT(Names("A:1"), ElementsAre("A:1"));
    const auto read = ReadExpectedPlayers("\n # x\n  A");
    EXPECT_EQ(std::get<0>(read).front().place, (TextPlace{3, 3}));
}

TEST(ExpectedPlayers, AreRefusedWithLineAndColumn) {
    const std::pair<const char*, const char*> cases[] = {
        {"A\nB\n A", "line 3, column 2: \"A\" is listed already."},
        {"127.0.0.2:0", "line 1, column 1: the port of \"127.0.0.2:0\""},
        {"127.0.0.2:5000x", "line 1, column 1: the port"},
        {"A\n127.0.0.256", "line 2, column 1: \"127.0.0.256\" is no IP address."},
        {"A\tB", "line 1, column 1: there are control characters"},
        {"\xFF\xFE", "no text in UTF-8"},
        {R"({"format":"sontaro-players","version":1,"players":["A",7]})",
         "line 1, column 56: a player's IP"},
        {"{\"format\":\"sontaro-players\",\n\"version\":1}",
         "line 1, column 1: \"players\" is missing"},
        {R"({"format":"sontaro-backup","version":1})",
         "line 1, column 11: it is no list of players"}};
    for (const auto& [text, why] : cases)
        EXPECT_THAT(Names(text), ElementsAre(HasSubstr(why))) << text;
    EXPECT_THAT(Names(R"({"format":"sontaro-players","version":1,"players":["A"]})"),
                ElementsAre("A"));
}

constexpr const char* kVenue = R"({"format":"sontaro-venue","version":1,
"localAddress":"127.0.0.1","players":["127.0.0.2","Left"],"backupFolder":"../backups/hall"})";

TEST(VenueFile, HoldsAddressPlayersAndBackupFolder) {
    const TemporaryFolder folder;
    folder.Write("venues/Hall 1.json", kVenue);
    const auto venue = OpenVenue(folder.Path(), "Hall 1");
    ASSERT_TRUE(venue) << venue.reason();
    EXPECT_EQ(venue->localAddress, "127.0.0.1");
    EXPECT_THAT(venue->players, testing::SizeIs(2));
    EXPECT_EQ(PathOfText(venue->backupFolder), folder / "backups/hall");
    EXPECT_THAT(Names(kVenue), ElementsAre("127.0.0.2 @127.0.0.2 0", "Left"));
    EXPECT_TRUE(
        std::holds_alternative<Venue>(ReadVenue(R"({"format":"sontaro-venue","version":1})")));
}

TEST(VenueFile, IsNamedWithLineAndColumnWhenItIsNotTaken) {
    const TemporaryFolder folder;
    folder.Write("venues/a.json",
                 "{\"format\":\"sontaro-venue\",\"version\":1,\n\"localAddress\":\"x\"}");
    EXPECT_THAT(OpenVenue(folder.Path(), "a").reason(),
                HasSubstr("a.json: line 2, column 16: \"x\" is no IP address."));
    for (const char* name : {"", "..", "../a", "a/b", "a:b", "a\nb", ".a"})
        EXPECT_THAT(OpenVenue(folder.Path(), name).reason(), HasSubstr("no venue can be called"))
            << name;
    EXPECT_FALSE(OpenVenue(folder.Path(), "b"));
    EXPECT_FALSE(OpenExpectedPlayers(folder / "players.txt"));
}

}  // namespace
}  // namespace sontaro::test
