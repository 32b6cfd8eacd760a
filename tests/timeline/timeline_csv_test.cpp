#include "timeline/timeline_csv.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

namespace sontaro::test {
namespace {

using testing::ElementsAre;

/// Tables of the columns that there must be.
struct Csv : testing::Test {
    Csv() { document.Insert({0, "t", "show", 1000, 0, "", 0, "A5"}); }
    static constexpr const char* kHeaders =
        "Player,Type,Video,Time(S),Port,IP,Peer port,Command\r\n";
    static std::string Trouble(CsvTrouble::Kind kind, const std::string& where) {
        return fmt::format("{} {}", static_cast<int>(kind), where);
    }
    static std::string Trouble(const std::string& text) {
        const auto read = ReadTimelineCsv(text);
        const auto* found = std::get_if<CsvTrouble>(&read);
        return found ? Trouble(found->kind,
                               fmt::format("{}:{} {}", found->line, found->column, found->text))
                     : "";
    }
    std::vector<TimeNode> NodesOf(const std::string& text) {
        auto read = ReadTimelineCsv(text);
        EXPECT_TRUE(std::holds_alternative<std::vector<TimeNode>>(read)) << Trouble(text);
        return std::get<std::vector<TimeNode>>(read);
    }
    TimelineDocument document;
};

TEST_F(Csv, BringsBackWhatItWasWrittenFrom) {
    document.Insert({3, "舞曲,\"热\"", "a\r\nb ", 3'600'001, kPortUdp, "10.0.0.1", 65'535, "5E12"});
    document.Insert({65'535, "", " x", 0, kPortDmx512, "", 0, "00FF"});
    const std::string text = document.Write();
    const std::string csv = TimelineCsv(document.Order());
    EXPECT_THAT(csv, testing::StartsWith("\xEF\xBB\xBF" + std::string(kHeaders) +
                                         "1,t,show,1.000,232:0,,0,A5\r\n"));
    EXPECT_THAT(csv, testing::HasSubstr("4,\"舞曲,\"\"热\"\"\",\"a\r\nb \",3600.001,UDP,10.0.0.1,"
                                        "65535,5E 12\r\n"));
    ImportNodes(document, NodesOf(csv), CsvImport::kReplace);
    EXPECT_EQ(document.Write(), text);
    EXPECT_TRUE(document.Undo());
    EXPECT_EQ(document.Write(), text);
    ImportNodes(document, NodesOf(csv), CsvImport::kAppend);
    EXPECT_EQ(document.NodeCount(), 6U);
}

TEST_F(Csv, IsReadInTheFormsOfOtherPrograms) {
    const std::vector<TimeNode> nodes = NodesOf(
        "播放器;端口;视频;类别;时间(秒);命令;IP地址;网络端口;模式;备注\n"
        "2;232串口1;v;t;0.5;a50b;;;x;y\n\n\"1\";232:03:00;v;t;1; 5E 12 "
        ";;\"\";;\r3;485;;;7;00;;0;;");
    EXPECT_THAT(nodes, ElementsAre(TimeNode{1, "t", "v", 500, 1, "", 0, "A50B"},
                                   TimeNode{0, "t", "v", 1000, 3, "", 0, "5E12"},
                                   TimeNode{2, "", "", 7000, 4, "", 0, "00"}));
    EXPECT_TRUE(NodesOf(kHeaders).empty());
}

TEST_F(Csv, NamesLineAndColumnOfWhatItCannotRead) {
    using enum CsvTrouble::Kind;
    // clang-format off
    const std::tuple<const char*, CsvTrouble::Kind, const char*> cases[] = {
        {"1,t,\"a\n\",1,485,,,5A\n0,t,v,1,485,,,5A", kPlayer, "4:1 0"}, {"65537,t,v,1,485,,,5A", kPlayer, "2:1 65537"},
        {"1,t,v,-1,485,,,5A", kTime, "2:4 -1"}, {"1,t,v,1,COM1,,,5A", kPort, "2:5 COM1"},
        {"1,t,v,1,TCP,,80,5A", kAddress, "2:6 "}, {"1,t,v,1,TCP,1.2.3.4,65536,5A", kPeerPort, "2:7 65536"},
        {"1,t,v,1,485,,,5A 0", kCommand, "2:8 5A 0"}, {"1,t,v,1,485,,,", kCommand, "2:8 "},
        {"1,t,v,1,TCP,,", kColumns, "2:7 "}, {"1,t,v,1,TCP,,,,x", kColumns, "2:9 x"},
        {"1,t,\"v", kOpenQuote, "2:3 "}, {"1,t,\"v\"x", kAfterQuote, "2:3 x"}, {"1,\xFF,v,1,TCP,,,", kNoUtf8, "2:2 "}};
    // clang-format on
    for (const auto& [row, kind, where] : cases)
        EXPECT_EQ(Trouble(kHeaders + std::string(row)), Trouble(kind, where));
    EXPECT_EQ(Trouble("Player,Type\r\n"), Trouble(kHeader, "1:3 Video"));
}

}  // namespace
}  // namespace sontaro::test
