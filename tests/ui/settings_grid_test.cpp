#include "widgets/settings_grid.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <wx/notebook.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include "ui/ui_support.h"

namespace sontaro::test {
namespace {

using Outcome = EditAnswer::Outcome;
using testing::ElementsAre;

struct Grid : UiTest {
    Grid() {
        dialog = new wxDialog(nullptr, wxID_ANY, "Grid", wxDefaultPosition, wxSize(500, 400));
        dialog->SetEscapeId(wxID_NONE);
        grid = MakeGrid(dialog);
        dialog->SetSizer(new wxBoxSizer(wxVERTICAL));
        dialog->GetSizer()->Add(grid, wxSizerFlags(1).Expand());
        dialog->Layout();
        dialog->Show();
    }
    ~Grid() override {
        dialog->Destroy();
        EXPECT_TRUE(PumpUntil([] { return wxTopLevelWindows.empty(); }));
    }

    SettingsGrid* MakeGrid(wxWindow* parent) {
        return new SettingsGrid(parent, 2801, true, prompts, [this](const SettingsEdit& edit) {
            const auto answer = answers.find(edit.text);
            if (answer != answers.end()) return answer->second;
            edits.push_back(edit.key + ": " + edit.text);
            return EditAnswer{Outcome::kAccepted, edit.text};
        });
    }
    wxPropertyGrid& Properties() { return grid->Properties(); }
    std::string Shown(const char* name) {
        return FromWx(Properties().GetPropertyByName(name)->GetDisplayedString());
    }
    std::string Chosen() {
        const wxPGProperty* chosen = Properties().GetSelection();
        return chosen ? FromWx(chosen->GetName()) : "";
    }
    std::string Edited() { return FromWx(Properties().GetEditorTextCtrl()->GetValue()); }
    std::string Help() {
        return FromWx(
            dynamic_cast<wxTextCtrl&>(*grid->GetChildren().GetLast()->GetData()).GetValue());
    }
    /// Names of the rows and headings that can be scrolled to.
    std::string Listed() {
        std::string names;
        for (auto at = Properties().GetIterator(wxPG_ITERATE_VISIBLE); !at.AtEnd(); at.Next())
            names += FromWx(at.GetProperty()->GetName()) + " ";
        return names;
    }
    void Type(const char* name, const char* text) { TypeInCell(Properties(), name, text); }
    /// Two groups of one sub-group each, with many rows.
    static SettingsRows Many() {
        SettingsRows groups;
        for (int i = 0; i < 2; ++i) {
            const std::string key = std::to_string(i);
            SettingsGroup inner{key + "/1", "inner", {}};
            for (int row = 0; row < 30; ++row)
                inner.rows.push_back({fmt::format("{}/1/{}", key, row), RowKind::kText,
                                      "row " + std::to_string(row), "v"});
            groups.push_back({key, "outer", {{key + "/0", RowKind::kText, "first", "v"}}, {inner}});
        }
        return groups;
    }

    wxDialog* dialog;
    SettingsGrid* grid;
    std::vector<std::string> edits;
    std::map<std::string, EditAnswer> answers;  // to texts; others are accepted as they are
};

TEST_F(Grid, ReportsAnEditOfEveryKindByItsKey) {
    const std::vector<std::string> choices = {"one", "two"};
    // clang-format off
    grid->Fill({{"g", "group", {
        {"g/text", RowKind::kText, "a", "a"}, {"g/whole", RowKind::kWholeNumber, "b", "1"}, {"g/decimal", RowKind::kDecimal, "c", "0.5"},
        {"g/hex", RowKind::kHexCommand, "d", ""}, {"g/choice", RowKind::kChoice, "e", "unlisted", "", choices},
        {"g/yes", RowKind::kYesNo, "g", kRowNo},
        {"g/colour", RowKind::kColour, "h", "#010203"}, {"g/fixed", RowKind::kReadOnly, "i", "f"}}}});
    // clang-format on
    EXPECT_EQ(Shown("g/choice"), "unlisted");
    EXPECT_EQ(Shown("g/colour"), "#010203");
    const std::pair<const char*, wxVariant> changes[] = {
        {"g/text", "b"},  {"g/whole", "12"}, {"g/decimal", "0.25"}, {"g/hex", " a5 0b"},
        {"g/choice", 1L}, {"g/yes", true},   {"g/colour", -1L},     {"g/colour", 0x0000FFL}};
    for (const auto& [name, value] : changes)
        EXPECT_TRUE(Properties().ChangePropertyValue(name, value)) << name;
    EXPECT_FALSE(Properties().ChangePropertyValue("g/fixed", "g"));
    EXPECT_THAT(edits, ElementsAre("g/text: b", "g/whole: 12", "g/decimal: 0.25", "g/hex:  a5 0b",
                                   "g/choice: two", "g/yes: 1", "g/colour: ", "g/colour: #FF0000"));
    EXPECT_TRUE(Properties().IsPropertyModified("g/hex"));
}

TEST_F(Grid, TakesAgainWhatItOffersBesidesTheChoices) {
    grid->Fill({{"g", "g", {{"a", RowKind::kChoice, "a", "250000", "", {"1200", "9600"}}}}});
    for (const long choice : {1L, 2L}) EXPECT_TRUE(Properties().ChangePropertyValue("a", choice));
    EXPECT_THAT(edits, ElementsAre("a: 9600", "a: 250000"));
    EXPECT_EQ(Shown("a"), "250000");
    SettingsRow row{"a", RowKind::kChoice, "a", "9600", "", {"1200", "9600"}};
    row.takesHeld = true;
    grid->ShowConfirmed({{"a", "460800"}});
    grid->Fill({{"g", "g", {row}}});
    EXPECT_TRUE(Properties().ChangePropertyValue("a", 2L));
    EXPECT_EQ(Shown("a"), "460800");
}

TEST_F(Grid, MarksAValueThatIsOdd) {
    const auto label = [&] { return FromWx(Properties().GetPropertyLabel("a")); };
    SettingsRow row = {"a", RowKind::kText, "a", "11", "help"};
    row.caution = "too much";
    grid->Fill({{"g", "g", {row}}});
    EXPECT_EQ(label(), "⚠ a");
    dialog->Raise();
    Properties().SetFocus();
    EXPECT_TRUE(PumpUntil([&] { return Help() == "a\nhelp\ntoo much"; }));
    EXPECT_TRUE(Properties().ChangePropertyValue("a", "10"));
    EXPECT_EQ(label() + '|' + Help(), "a|a\nhelp");
    answers["12"] = {Outcome::kAccepted, "12", "still too much"};
    EXPECT_TRUE(Properties().ChangePropertyValue("a", "12"));
    EXPECT_EQ(label() + '|' + Help(), "⚠ a|a\nhelp\nstill too much");
    EXPECT_TRUE(grid->Change("a", "1"));
    EXPECT_EQ(label(), "a");
}

TEST_F(Grid, IsUsedByKeysAlone) {
    grid->Fill(
        {{"g",
          "g",
          {{"a", RowKind::kText, "a", "old", "a"}, {"b", RowKind::kText, "b", "old", "B"}}}});
    dialog->Raise();
    Properties().SetFocus();
    EXPECT_TRUE(PumpUntil([&] { return Help() == "a"; }));
    answers["new"] = {Outcome::kAccepted, "as taken"};
    Type("a", "new");
    Key(WXK_RETURN);
    EXPECT_EQ(Shown("a"), "as taken");
    Key(WXK_ESCAPE);
    Key(WXK_DOWN);
    EXPECT_EQ(Help(), "b\nB");
    Key(WXK_RETURN);
    Type("b", "half");
    Key(WXK_ESCAPE);
    EXPECT_EQ(Properties().GetSelection()->GetName(), "b");
    EXPECT_FALSE(Properties().IsEditorFocused());
    Key(WXK_ESCAPE);
    EXPECT_TRUE(grid->Commit());
    EXPECT_TRUE(edits.empty() && dialog->IsShown());
}

TEST_F(Grid, CommitsWhatIsBeingTypedAndSaysWhenItIsNotTaken) {
    grid->Fill({{"g", "g", {{"a", RowKind::kDecimal, "a", "1"}}}});
    answers["2,5"] = {Outcome::kRefused, "not that!"};
    Type("a", "2.5");
    EXPECT_TRUE(grid->Commit());
    Type("a", "2,5");
    for (std::size_t told = 1; told < 3; ++told) {
        EXPECT_FALSE(grid->Commit() || grid->Commit());
        EXPECT_TRUE(PumpUntil([&] { return prompts.boxes.size() == told; }));
        EXPECT_EQ(Edited() + ' ' + Shown("a"), "2,5 2.5");
        grid->Fill({{"g", "g", {{"a", RowKind::kDecimal, "a", "2.5"}}}});
    }
    Type("a", "7");
    EXPECT_TRUE(grid->Commit());
    EXPECT_THAT(edits, ElementsAre("a: 2.5", "a: 7"));
    EXPECT_EQ(prompts.boxes, std::vector(2, Warning("not that!")));
}

TEST_F(Grid, RebuiltKeepsItsPlaceItsFoldsAndWhatIsBeingTyped) {
    grid->Fill(Many());
    Properties().Collapse("0/1");
    Type("1/1/25", "half");
    const int scroll = Properties().GetScrollPos(wxVERTICAL);
    EXPECT_GT(scroll, 0);
    grid->Fill(Many());
    EXPECT_EQ(Properties().GetScrollPos(wxVERTICAL), scroll);
    EXPECT_FALSE(Properties().IsPropertyExpanded("0/1"));
    EXPECT_TRUE(Properties().IsPropertyExpanded("1/1"));
    EXPECT_TRUE(edits.empty());
    EXPECT_TRUE(grid->Commit());
    EXPECT_THAT(edits, ElementsAre("1/1/25: half"));
    grid->Fill({});
    EXPECT_FALSE(Properties().IsShown());
}

/// A group with a row for every letter, whose texts they are.
SettingsRows Letters(const std::string& group, const std::string& letters) {
    SettingsGroup rows{group, group, {}};
    for (const char letter : letters) {
        const std::string text(1, letter);
        rows.rows.push_back({group + '/' + text, RowKind::kText, text, text});
    }
    return {rows};
}

TEST_F(Grid, RebuiltWithRowsThatHaveMovedFollowsTheirKeys) {
    const auto fill = [this](const std::string& first, const std::string& second) {
        SettingsRows groups = Letters(first.substr(0, 1), first.substr(1));
        groups.push_back(Letters(second.substr(0, 1), second.substr(1)).front());
        grid->Fill(groups);
    };
    fill("Gabc", "Hd");
    Properties().Collapse("H");
    Type("G/b", "half");
    fill("Hd", "Gxacb");
    EXPECT_EQ(Chosen() + '=' + Edited(), "G/b=half");
    EXPECT_FALSE(Properties().IsPropertyExpanded("H"));
    EXPECT_TRUE(Properties().IsPropertyExpanded("G"));
    fill("Hd", "Gxac");
    EXPECT_TRUE(grid->Commit() && edits.empty());
    EXPECT_EQ(Shown("G/x") + Shown("G/a") + Shown("G/c"), "xac");
    EXPECT_NE(Chosen(), "G/b");
}

TEST_F(Grid, TakesNoKeyForThePathOfAnotherRow) {
    grid->Fill(Letters("g.g", "g/a"));
    Type("g.g/a", "half");
    grid->Fill(Letters("g", "g/a"));
    EXPECT_TRUE(grid->Commit() && edits.empty());
}

TEST_F(Grid, AsksForAnotherColour) {
    constexpr long kOther = -2;
    grid->Fill({{"g", "g", {{"c", RowKind::kColour, "c", ""}}}});
    EXPECT_EQ(Shown("c"), "default");
    Properties().ChangePropertyValue("c", kOther);
    Settle();
    EXPECT_TRUE(edits.empty());
    prompts.colour = 0x563412;
    Properties().ChangePropertyValue("c", kOther);
    EXPECT_TRUE(PumpUntil([&] { return !edits.empty(); }));
    EXPECT_THAT(edits, ElementsAre("c: #123456"));
    EXPECT_EQ(Shown("c"), "#123456");
}

TEST_F(Grid, IsNarrowedToHeadingsNamesAndShownValues) {
    // clang-format off
    grid->Fill({{"0", "gate", {{"a", RowKind::kText, "串口Port一", "9600"}, {"b", RowKind::kYesNo, "on", kRowYes}}, {{"1", "empty", {}},
        {"2", "Type5", {{"c", RowKind::kChoice, "mode", "全部随机", "", {"全部随机", "one"}}, {"d", RowKind::kColour, "back", "#FF0000"}, {"e", RowKind::kHexCommand, "cmd", "A50102"}}}}}});
    const std::tuple<const char*, int, const char*> cases[] = {
        {" \t口pORT　", 1, "0 a "}, {"随机", 1, "0 2 c "}, {"RED", 1, "0 2 d "}, {"00", 1, "0 a "},
        {"port empty", 0, ""}, {"true", 0, ""}, {"o", 3, "0 a b 2 c "}, {"　", 5, "0 a b 1 2 c d e "},
        {"type5", 3, "0 2 c d e "}, {"gate", 5, "0 a b 2 c d e "}, {"a5 01 0", 0, ""}, {"5 01", 0, ""}, {"A5 01 02", 1, "0 2 e "}, {"a5 01", 1, "0 2 e "}, {"01", 1, "0 2 e "}};
    // clang-format on
    for (const auto& [text, found, listed] : cases) {
        EXPECT_EQ(grid->Filter(wxString::FromUTF8(text)), found) << text;
        EXPECT_EQ(Listed(), listed) << text;
        EXPECT_EQ(Properties().IsShown(), found > 0) << text;
    }
}

TEST_F(Grid, GivesBackWhatAFilterHid) {
    grid->Fill(Many());
    Properties().Collapse("0/1");
    Properties().SelectProperty("1/1/7");
    Properties().ChangePropertyValue("1/1/7", "x");
    EXPECT_EQ(grid->Filter("row 7"), 2);
    grid->Fill(Many());
    EXPECT_EQ(Listed(), "0 0/1 0/1/7 1 1/1 1/1/7 ");
    Properties().SetFocus();
    const std::pair<int, const char*> keys[] = {
        {WXK_UP, "1/1"}, {WXK_HOME, "0"}, {WXK_DOWN, "0/1"}, {WXK_PAGEDOWN, "1/1/7"}};
    for (const auto& [key, name] : keys) {
        Key(key);
        EXPECT_EQ(Chosen(), name);
    }
    grid->Filter("first");
    EXPECT_FALSE(grid->ChosenRow() || grid->ChosenGroup());
    grid->Filter("row 7");
    EXPECT_EQ(Chosen(), "1/1/7");
    EXPECT_EQ(grid->ChosenRow()->name, "row 7");
    Properties().SelectProperty("0/1/7");
    grid->Filter("");
    EXPECT_EQ(Chosen(), "0/1");
    EXPECT_EQ(grid->ChosenGroup()->key, "0/1");
    EXPECT_EQ(Listed().substr(0, 22), "0 0/0 0/1 1 1/0 1/1 1/");
}

TEST_F(Grid, FiltersWithoutLosingAnEdit) {
    grid->Fill(
        {{"g", "g", {{"b", RowKind::kWholeNumber, "ab", "1"}, {"c", RowKind::kText, "ac", "2"}}}});
    answers["x"] = {Outcome::kRefused, "not that!"};
    Type("b", "x");
    grid->Filter("ab");
    EXPECT_EQ(Edited(), "x");
    EXPECT_EQ(grid->Filter("ac"), 1);
    EXPECT_EQ(Listed(), "g b c ");
    EXPECT_TRUE(PumpUntil([&] { return !prompts.boxes.empty(); }));
    grid->Filter("");
    Type("b", "34");
    EXPECT_EQ(grid->Filter("C"), 1);
    EXPECT_THAT(edits, ElementsAre("b: 34"));
    EXPECT_EQ(Listed(), "g c ");
    EXPECT_EQ(grid->Filter("2"), 1);
    Properties().ChangePropertyValue("c", "9");
    EXPECT_EQ(Listed(), "g c ");
    EXPECT_EQ(grid->Filter("3"), 1);
    EXPECT_TRUE(Properties().IsPropertyModified("b"));
}

TEST_F(Grid, ShowsWhatTheProgramChanges) {
    grid->Fill({{"g",
                 "g",
                 {{"g/1", RowKind::kText, "a", "old"},
                  {"g/2", RowKind::kChoice, "b", "x", "", {"x", "y"}}}}});
    Type("g/1", "half");
    EXPECT_TRUE(grid->Change("g/1", "new"));
    EXPECT_EQ(Edited(), "new");
    EXPECT_TRUE(Properties().IsPropertyModified("g/1"));
    grid->Filter("a");
    EXPECT_TRUE(grid->Change("g/2", "unlisted"));
    EXPECT_EQ(Listed(), "g g/1 ");
    EXPECT_EQ(grid->Filter("LIST"), 1);
    EXPECT_EQ(Shown("g/2"), "unlisted");
    EXPECT_FALSE(grid->Change("g", "new") || grid->Change("g.1", "new"));
    EXPECT_TRUE(edits.empty());
    grid->Filter("");
    grid->Fill(Many());
    EXPECT_TRUE(grid->Change("1/1/29", "new"));
    EXPECT_GT(Properties().GetScrollPos(wxVERTICAL), 0);
}

TEST_F(Grid, ExplainsTheRowThatTheProgramHasChangedUnlessAnotherIsBeingTypedInto) {
    // clang-format off
    grid->Fill({{"g", "g", {{"a", RowKind::kText, "a", "old", "about a"},
                            {"b", RowKind::kText, "b", "old", "about b"}}}});
    // clang-format on
    Properties().SelectProperty("a");
    EXPECT_TRUE(grid->Change("b", "new"));
    EXPECT_EQ(Chosen() + " " + Help(), "b b\nabout b");
    Type("a", "half");
    EXPECT_TRUE(grid->Change("b", "newer"));
    EXPECT_EQ(Edited() + " " + Help(), "half a\nabout a");
}

TEST_F(Grid, ScrollsToARowThatIsChosenDirectlyWhileAnotherIsEdited) {
    grid->Fill(Many());
    for (const char* name : {"0/0", "1/1/25", "0/1/3"}) {
        Type(name, "half");
        EXPECT_EQ(Chosen(), name);
    }
    Properties().SelectProperty("1/1/29");
    Properties().SelectProperty("0/0");
    Settle();
}

TEST_F(Grid, DropsAnEditThatIsOpenWhenItsWindowGoes) {
    grid->Fill(Many());
    Type("1/1/0", "half");
    grid->Destroy();
    EXPECT_TRUE(edits.empty());
}

TEST_F(Grid, IsFilledOnAPageThatHasNotBeenShown) {
    auto* book = new wxNotebook(dialog, wxID_ANY);
    auto* after = new wxTextCtrl(dialog, wxID_ANY);
    grid->Destroy();
    grid = MakeGrid(book);
    book->AddPage(new wxPanel(book), "shown");
    book->AddPage(grid, "not shown");
    dialog->GetSizer()->Add(book, wxSizerFlags(1).Expand());
    dialog->GetSizer()->Add(after);
    dialog->Layout();
    dialog->Raise();
    grid->Fill(Many());
    book->SetSelection(1);
    Properties().SetFocus();
    ASSERT_TRUE(PumpUntil([&] { return Properties().GetSelection() != nullptr; }));
    EXPECT_EQ(Chosen(), "0/0");
    const auto tabTo = [](wxWindow* window, int modifiers) {
        const auto focused = [=] { return window->IsDescendant(wxWindow::FindFocus()); };
        for (int presses = 0; presses < 4 && !focused(); ++presses) {
            wxUIActionSimulator().Char(WXK_TAB, modifiers);
            PumpUntil(focused, 300);
        }
        return focused();
    };
    EXPECT_TRUE(tabTo(after, wxMOD_NONE));
    EXPECT_TRUE(tabTo(&Properties(), wxMOD_SHIFT));
}

}  // namespace
}  // namespace sontaro::test
