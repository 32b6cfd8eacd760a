#include "widgets/table.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

#include "support/listed_table.h"
#include "ui/ui_support.h"
#include "widgets/clipboard.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kTest = 2;  // the column of the buttons

struct TableWindow : UiTest {
    TableWindow() {
        dialog = new wxDialog(nullptr, wxID_ANY, "Table", wxDefaultPosition, wxSize(620, 420));
        before = new wxTextCtrl(dialog, wxID_ANY);
        table = new Table(dialog, 2950, model, Actions(), prompts);
        behind = new wxTextCtrl(dialog, wxID_ANY);
        auto* column = new wxBoxSizer(wxVERTICAL);
        column->Add(before, wxSizerFlags().Expand());
        column->Add(table, wxSizerFlags(1).Expand());
        column->Add(behind, wxSizerFlags().Expand());
        dialog->SetSizer(column);
        dialog->Layout();
        dialog->Show();
        dialog->Raise();
        table->Grid().SetFocus();
        PumpUntil([&] { return dialog->IsActive() && Cells()->HasFocus(); });
    }
    ~TableWindow() override {
        dialog->Destroy();
        EXPECT_TRUE(PumpUntil([] { return wxTopLevelWindows.empty(); }));
    }

    TableActions Actions() {
        const auto note = [this](const char* what) {
            return [this, what] { told.push_back(what); };
        };
        return {[this](std::size_t row) { told.push_back(fmt::format("edit {}", row)); },
                [this](std::size_t row, std::size_t column) {
                    told.push_back(fmt::format("press {} {}", row, column));
                },
                note("insert"),
                note("remove"),
                note("choose"),
                note("tick")};
    }
    void Fill(std::size_t count) {
        model.rows.clear();
        for (std::size_t i = 0; i < count; ++i)
            model.rows.push_back({i + 1, fmt::format("row {}", i), std::to_string(i % 10)});
        table->RowsChanged();
        Settle();
    }
    void FillBadly() {
        Fill(3);
        model.rows[0].caution = "odd value";
        model.rows[1].name = std::string(200, 'x');
        table->RowsChanged();
        Settle();
    }
    wxWindow* Cells() { return table->Grid().GetGridWindow(); }
    wxPoint At(int place, int column) {
        const wxRect cell = table->Grid().CellToRect(place, column);
        return Cells()->ClientToScreen(table->Grid().CalcScrolledPosition(
            wxPoint(cell.x + cell.width / 2, cell.y + cell.height / 2)));
    }
    wxPoint AtLabel(int place) {
        return {table->Grid().GetGridRowLabelWindow()->ClientToScreen(wxPoint(8, 0)).x,
                At(place, 0).y};
    }
    /// With a key held down, unless there is none. It goes down where the mouse is already: some
    /// systems take a simulated key back when the mouse comes into a window.
    static void ClickAt(const wxPoint& point, int held = WXK_NONE) {
        wxUIActionSimulator user;
        user.MouseMove(point);
        Settle();
        if (held) user.KeyDown(held);
        user.MouseClick();
        Settle();
        if (held) user.KeyUp(held);
    }
    std::string Ticked() {
        std::string ticked;
        for (std::size_t row = 0; row < model.rows.size(); ++row)
            if (model.rows[row].ticked) ticked += std::to_string(row) + " ";
        return ticked;
    }
    /// What has been told since the last call.
    std::vector<std::string> Told() { return std::exchange(told, {}); }
    bool IsInView(int place) { return table->Grid().IsVisible(place, 0); }

    ListedTable model{{}};
    std::vector<std::string> told;
    wxDialog* dialog;
    wxTextCtrl* before;
    wxTextCtrl* behind;
    Table* table;
};

TEST_F(TableWindow, ShiftAndCtrlChooseSeveralAndSpaceTicksThem) {
    Fill(100);
    Key(WXK_DOWN);
    Key(WXK_DOWN, wxMOD_SHIFT);
    Key(WXK_DOWN, wxMOD_SHIFT);
    EXPECT_THAT(table->ChosenRows(), ElementsAre(1, 2, 3));
    for (const char* ticked : {"1 2 3 ", ""}) {
        Told();
        Key(WXK_SPACE);
        EXPECT_EQ(Ticked(), ticked);
        EXPECT_THAT(Told(), ElementsAre("tick"));
    }
    Key(WXK_END, wxMOD_SHIFT);
    EXPECT_EQ(table->ChosenRows().size(), 99);
    Key('A', wxMOD_CONTROL);
    EXPECT_EQ(table->ChosenRows().size(), 100);
    Key(WXK_HOME);
    EXPECT_THAT(table->ChosenRows(), ElementsAre(0));
    ClickAt(At(4, 0), WXK_CONTROL);
    EXPECT_THAT(table->ChosenRows(), ElementsAre(0, 4));
}

TEST_F(TableWindow, ClicksOnLabelsTick) {
    Fill(8);
    ClickAt(AtLabel(2));
    EXPECT_EQ(Ticked(), "2 ");
    ClickAt(AtLabel(5), WXK_SHIFT);
    EXPECT_EQ(Ticked(), "2 3 4 5 ");
    EXPECT_EQ(table->Filter("  ROW 7 "), 1);
    Click(table->Grid().GetGridCornerLabelWindow());
    EXPECT_TRUE(PumpUntil([&] { return Ticked() == "2 3 4 5 7 "; })) << Ticked();
    table->Filter("");
    Click(table->Grid().GetGridCornerLabelWindow());
    EXPECT_TRUE(PumpUntil([&] { return Ticked() == "0 1 2 3 4 5 6 7 "; }));
    wxUIActionSimulator mouse;
    mouse.MouseMove(AtLabel(3));
    mouse.MouseDblClick();
    Settle();
    EXPECT_EQ(Ticked(), "0 1 2 3 4 5 6 7 ");
    EXPECT_EQ(table->ChosenRow(), 0);
}

TEST_F(TableWindow, ButtonIsPressedByMouseAndKeyboard) {
    Fill(3);
    ClickAt(At(1, kTest));
    EXPECT_THAT(Told(), testing::Contains("press 1 2"));
    Key(WXK_SPACE);
    Key(WXK_RETURN);
    EXPECT_THAT(Told(), ElementsAre("press 1 2", "press 1 2"));
    EXPECT_EQ(Ticked(), "");
    wxUIActionSimulator mouse;
    mouse.MouseMove(At(2, kTest));
    mouse.MouseDown();
    mouse.MouseMove(At(0, kTest));
    mouse.MouseUp();
    Settle();
    EXPECT_THAT(Told(), ElementsAre("choose"));
    EXPECT_EQ(table->ChosenRow(), 2);
}

TEST_F(TableWindow, ReportsWhatIsToBeDone) {
    Fill(3);
    Key(WXK_DOWN);
    Told();
    for (const int key : {WXK_RETURN, WXK_INSERT, WXK_DELETE}) Key(key);
    EXPECT_THAT(Told(), ElementsAre("edit 1", "insert", "remove"));
    wxUIActionSimulator mouse;
    mouse.MouseMove(At(2, 0));
    mouse.MouseDblClick();
    Settle();
    EXPECT_THAT(Told(), testing::Contains("edit 2"));
    Fill(0);
    Told();
    for (const int key :
         {WXK_RETURN, WXK_SPACE, WXK_HOME, WXK_END, WXK_DOWN, WXK_RIGHT, WXK_PAGEDOWN, WXK_INSERT})
        Key(key);
    for (const int key : {int{'A'}, int{'C'}, int{WXK_END}, int{WXK_DOWN}}) Key(key, wxMOD_CONTROL);
    EXPECT_THAT(Told(), ElementsAre("insert"));
    EXPECT_THAT(table->ChosenRows(), IsEmpty());
}

TEST_F(TableWindow, TabGoesOn) {
    for (const std::size_t rows : {std::size_t{3}, std::size_t{0}}) {
        Fill(rows);
        before->SetFocus();
        Key(WXK_TAB);
        EXPECT_TRUE(Cells()->HasFocus());
        Key(WXK_TAB);
        EXPECT_TRUE(behind->HasFocus());
        Key(WXK_TAB, wxMOD_SHIFT);
        EXPECT_TRUE(Cells()->HasFocus());
        Key(WXK_TAB, wxMOD_SHIFT);
        EXPECT_TRUE(before->HasFocus());
    }
}

TEST_F(TableWindow, CopiesTheChosenRows) {
    Fill(5);
    model.rows[1].name = "two\nlines\tand a tab";
    Key(WXK_DOWN);
    Key(WXK_DOWN, wxMOD_SHIFT);
    Key('C', wxMOD_CONTROL);
    const wxClipboardLocker lock;
    wxTextDataObject copied;
    ASSERT_TRUE(wxTheClipboard->GetData(copied));
    EXPECT_EQ(FromWx(copied.GetText()), "two lines and a tab\t1\nrow 2\t2");
}

TEST_F(TableWindow, ChoiceSurvivesAChangeOfTheRows) {
    Fill(400);
    table->Choose(300);
    Key(WXK_DOWN, wxMOD_SHIFT);
    Told();
    model.rows.insert(model.rows.begin(), {1000, "first", ""});
    table->RowsChanged();
    Settle();
    EXPECT_THAT(table->ChosenRows(), ElementsAre(301, 302));
    EXPECT_TRUE(IsInView(301));
    model.rows.erase(model.rows.begin() + 301, model.rows.begin() + 303);
    table->RowsChanged();
    EXPECT_EQ(table->ChosenRow(), 301);
    model.rows.resize(100);
    table->RowsChanged();
    Settle();
    EXPECT_EQ(table->ChosenRow(), 99);
    EXPECT_TRUE(IsInView(99));
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(TableWindow, CursorComesBackBehindAFilter) {
    Fill(400);
    table->Choose(251);
    table->Filter("row 3");
    EXPECT_EQ(table->ChosenRow(), 300);
    table->Filter("");
    EXPECT_EQ(table->ChosenRow(), 251);
    EXPECT_TRUE(IsInView(251));
    table->Filter("row 3");
    table->Choose(17);
    EXPECT_EQ(table->ChosenRow(), 17);
    EXPECT_EQ(table->Filter("nothing"), 0);
    EXPECT_EQ(table->ChosenRow(), std::nullopt);
    EXPECT_EQ(table->Filter(""), 400);
    EXPECT_EQ(table->ChosenRow(), 17);
}

TEST_F(TableWindow, ShowsWhatIsOddOrCut) {
    FillBadly();
    wxUIActionSimulator mouse;
    const auto tipAt = [&](const wxPoint& point, wxWindow* window) {
        mouse.MouseMove(point);
        Settle();
        return FromWx(window->GetToolTipText());
    };
    EXPECT_EQ(tipAt(At(0, 1), Cells()), "odd value");
    EXPECT_EQ(tipAt(At(1, 0), Cells()), std::string(200, 'x'));
    EXPECT_EQ(tipAt(At(2, 0), Cells()), "");
    EXPECT_EQ(tipAt(AtLabel(0), table->Grid().GetGridRowLabelWindow()), "odd value");
}

TEST_F(TableWindow, RemembersTheWidthsOfColumns) {
    Fill(3);
    table->KeepWidths("sample", preferences);
    const int width = table->Grid().GetColSize(0);
    const wxPoint edge = table->Grid().GetGridColLabelWindow()->ClientToScreen(
        wxPoint(width - 1, table->Grid().GetColLabelSize() / 2));
    wxUIActionSimulator mouse;
    mouse.MouseMove(edge);
    Settle();
    mouse.MouseDragDrop(edge.x, edge.y, edge.x + 40, edge.y);
    Settle();
    const int wider = table->Grid().GetColSize(0);
    EXPECT_GT(wider, width + 30);
    Table another(dialog, wxID_ANY, model, {}, prompts);
    another.KeepWidths("sample", preferences);
    EXPECT_EQ(another.Grid().GetColSize(0), wider);
    another.KeepWidths("other", preferences);
}

}  // namespace
}  // namespace sontaro::test
