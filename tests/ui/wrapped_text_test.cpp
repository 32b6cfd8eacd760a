#include "widgets/wrapped_text.h"

#include <gmock/gmock.h>
#include <wx/frame.h>
#include <wx/tokenzr.h>

#include "widgets/wx_text.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

struct Wrapping : testing::Test {
    /// The lines of a text in a window that is as wide as `widest`.
    [[nodiscard]] std::vector<std::string> Lines(const char* text, const char* widest,
                                                 std::size_t most = 100) const {
        const int width = WidthOf(ToWx(std::string(widest)));
        const wxString wrapped =
            FirstLines(*frame, WrappedText(*frame, ToWx(std::string(text)), width), width, most);
        std::vector<std::string> lines;
        for (wxStringTokenizer left(wrapped, "\n", wxTOKEN_RET_EMPTY_ALL); left.HasMoreTokens();) {
            const wxString line = left.GetNextToken();
            EXPECT_TRUE(line.length() == 1 || WidthOf(line) <= width) << FromWx(line);
            lines.push_back(FromWx(line));
        }
        return lines;
    }
    [[nodiscard]] int WidthOf(const wxString& text) const { return frame->GetTextExtent(text).x; }
    ~Wrapping() override { frame->Destroy(); }

    wxFrame* const frame = new wxFrame(nullptr, wxID_ANY, "");
};

TEST_F(Wrapping, BreaksChineseAnywhereButBeforeAMark) {
    EXPECT_THAT(Lines("没有空闲的类别，名称已取消。", "没有空闲的类别"),
                ElementsAre("没有空闲的类", "别，名称已取", "消。"));
    EXPECT_THAT(Lines("ab中文", "ab中"), ElementsAre("ab中", "文"));
    EXPECT_THAT(Lines("中ab", "中a"), ElementsAre("中", "ab"));
}

TEST_F(Wrapping, BreaksOtherTextsAtBlanksAndWordsThatHaveNoRoom) {
    EXPECT_THAT(Lines("The names of the categories", "The names of t"),
                ElementsAre("The names of", "the categories"));
    EXPECT_THAT(Lines("a Donaudampfschiff", "Donau"), ElementsAre("a", "Donau", "dampf", "schiff"));
    EXPECT_THAT(Lines("ab 中", ""), ElementsAre("a", "b", "中"));
}

TEST_F(Wrapping, KeepsTheLinesThatATextHas) {
    EXPECT_THAT(Lines("One\n\ntwo three", "two three"), ElementsAre("One", "", "two three"));
    EXPECT_THAT(Lines("One\ntwo\nthree", "three"), ElementsAre("One", "two", "three"));
    EXPECT_THAT(Lines("", "x"), testing::IsEmpty());
}

TEST_F(Wrapping, CutsALongTextWithinItsLastLine) {
    EXPECT_THAT(Lines("One\ntwo\nthree", "three", 3), ElementsAre("One", "two", "three"));
    EXPECT_THAT(Lines("One\nno\nthree", "three", 2), ElementsAre("One", "no…"));
    EXPECT_THAT(Lines("Donau Donau", "Donau", 1), ElementsAre(testing::MatchesRegex("Dona?…")));
}

}  // namespace
}  // namespace sontaro::test
