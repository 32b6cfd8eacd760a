#include "playercontrol/player_control_dialog.h"

#include <gmock/gmock.h>
#include <wx/listbox.h>
#include <wx/propgrid/propgrid.h>
#include <wx/treectrl.h>

#include "ui/ui_support.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

const Box kNoRoom = Limit("It has reached its limit!");
const Box kDeletion = Question("Do you really want to delete it?");

struct PlayerControlDialog : FeatureTest {
    void Run(const std::function<void()>& step) {
        RunDialog<CPlayerControl>([&] {
            EXPECT_TRUE(PumpUntil([&] { return Players().GetCount() == 1; }));
            dialog->Raise();
            EXPECT_TRUE(PumpUntil([&] { return dialog->IsActive(); }));
            step();
        });
    }
    wxListBox& Players() { return *Find<wxListBox>(dialog, kControlledPlayers); }
    wxPropertyGrid& Grid() { return *Find<wxPropertyGrid>(dialog, kPlayerControlGrid); }
    wxTreeCtrl& Videos() { return *Find<wxTreeCtrl>(dialog, kVideoTree); }
    /// The group of the type that has been added.
    wxString NewType() { return Grid().GetSelection()->GetParent()->GetName(); }
    /// Gives a control the keyboard and presses a key.
    void Key(wxWindow& window, int key) {
        window.SetFocus();
        PumpUntil([&] { return window.HasFocus(); }, 500);
        test::Key(key);
    }
};

TEST_F(PlayerControlDialog, AddsAndDeletesPlayersAndTypesByKeys) {
    Run([&] {
        Key(Players(), WXK_INSERT);
        EXPECT_EQ(Players().GetStrings().Last(), "Player2");
        EXPECT_EQ(Players().GetSelection(), 1);
        Key(Players(), WXK_INSERT);
        Key(Grid(), WXK_INSERT);
        const wxString type = NewType();
        EXPECT_TRUE(Grid().GetPropertyByName(type + "/SendCmd"));
        prompts.answers = {true};
        Key(Grid(), WXK_DELETE);
        EXPECT_FALSE(Grid().GetPropertyByName(type));
        prompts.answers = {true};
        Key(Players(), WXK_DELETE);
        EXPECT_EQ(Players().GetCount(), 1U);
        EXPECT_THAT(Told(), ElementsAre(kNoRoom, kDeletion, kDeletion));
        Grid().SelectProperty("Players/0/VideoType/0/SendCmd", true);
        Grid().GetEditorTextCtrl()->SetFocus();
        test::Key(WXK_DELETE);
        EXPECT_THAT(Told(), ElementsAre());  // the key has been the text's
        EXPECT_TRUE(Grid().GetPropertyByName("Players/0/VideoType/0"));
    });
}

TEST_F(PlayerControlDialog, MakesATypeOfACategoryThatIsActivated) {
    Run([&] {
        EXPECT_FALSE(dialog->FindWindow(kAddAsType)->IsEnabled());
        wxTreeItemIdValue cookie{};
        const wxTreeItemId screen = Videos().GetFirstChild(Videos().GetRootItem(), cookie);
        const wxTreeItemId category = Videos().GetFirstChild(screen, cookie);
        Videos().SelectItem(category);
        Key(Videos(), WXK_RETURN);
        const std::string name = FromWx(Grid().GetPropertyValueAsString(NewType() + "/TypeName"));
        EXPECT_FALSE(name.empty());
        EXPECT_TRUE(FromWx(Videos().GetItemText(category)).starts_with(name));
        Press(dialog, wxID_OK);
        EXPECT_TRUE(PumpUntil([&] { return !prompts.boxes.empty(); }));
        EXPECT_THAT(Told(), ElementsAre(Notice("Changes have been saved!")));
        const wxString type = NewType();
        OpenEarlier();
        EXPECT_FALSE(Grid().GetPropertyByName(type));
        Press(dialog, kUndoButton);
        EXPECT_TRUE(Grid().GetPropertyByName(type));
    });
}

TEST_F(PlayerControlDialog, WithoutAPlayerShowsTheRowsOfAnEmptyOneAndSaysWhatIsMissing) {
    Run([&] {
        prompts.answers = {true};
        Press(dialog, kDeletePlayer);
        EXPECT_TRUE(Grid().IsShown());
        EXPECT_EQ(Players().GetCount(), 0U);
        Told();
        for (const int id : {kAddType, kDeleteType, kDeletePlayer}) Press(dialog, id);
        wxPropertyGridIterator row = Grid().GetIterator(wxPG_ITERATE_PROPERTIES);
        EXPECT_FALSE(Grid().ChangePropertyValue(row.GetProperty(), "7"));
        EXPECT_TRUE(PumpUntil([&] { return prompts.boxes.size() == 4; }));
        const Box none = Warning("No player selected!");
        EXPECT_THAT(Told(), ElementsAre(none, none, none,
                                        Warning("Select player first, then set attributes!")));
    });
}

}  // namespace
}  // namespace sontaro::test
