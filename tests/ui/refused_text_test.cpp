// A text that is not taken, in the windows that refuse it, by mouse and by key.
#include <gmock/gmock.h>
#include <wx/srchctrl.h>

#include "controlprotocol/control_protocol_dialog.h"
#include "osd/osd_dialog.h"
#include "ui/ui_support.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

/// What the user does with a dialog while a text is being typed.
using Act = std::function<void(wxDialog*)>;

Act ByMouse(int id) {
    return [=](wxDialog* dialog) { Click(dialog->FindWindow(id)); };
}
Act ByKey(int key, int modifiers = wxMOD_NONE) {
    return [=](wxDialog*) { wxUIActionSimulator().Char(key, modifiers); };
}
void BySpaceOnOk(wxDialog* dialog) {
    dialog->FindWindow(wxID_OK)->SetFocus();
    PumpUntil([&] { return dialog->FindWindow(wxID_OK)->HasFocus(); });
    wxUIActionSimulator().Char(WXK_SPACE);
}

struct Refusal : FeatureTest {
    template <class Dialog>
    void Run(int gridId, const std::function<void()>& step) {
        RunDialog<Dialog>([&] {
            grid = Find<wxPropertyGrid>(dialog, gridId);
            EXPECT_TRUE(PumpUntil([&] { return dialog->FindWindow(wxID_OK)->IsEnabled(); }));
            Player().ForgetPackets();
            step();
            prompts.boxes.clear();
        });
    }

    /// Settings that the player has received.
    std::size_t Sent() {
        return static_cast<std::size_t>(
            std::ranges::count_if(Player().ReceivedPackets(), [](const DevicePacket& packet) {
                return packet.header.command == kCommandSettings && !packet.payload.empty();
            }));
    }
    void Type(const char* row, const char* text) { TypeInCell(*grid, row, text); }
    std::string InCell() {
        const wxTextCtrl* editor = grid->GetEditorTextCtrl();
        return editor ? FromWx(editor->GetValue()) : "no text";
    }
    /// Whatever is done with the dialog, the user is told once, and the text stays.
    void ExpectToldAndKept(const std::vector<Act>& acts, const char* row, const char* text,
                           const Box& told) {
        for (std::size_t i = 0; i < acts.size(); ++i) {
            SCOPED_TRACE(i);
            prompts.boxes.clear();
            Type(row, text);
            acts[i](dialog);
            EXPECT_TRUE(PumpUntil([&] { return !prompts.boxes.empty(); }));
            Settle();
            EXPECT_THAT(prompts.boxes, ElementsAre(told));
            EXPECT_EQ(InCell(), text);
            EXPECT_TRUE(grid->IsShownOnScreen());
            EXPECT_TRUE(grid->GetEditorTextCtrl()->HasFocus());
        }
        EXPECT_EQ(Sent(), 0U);
    }
    /// Leaving brings only the question whether to leave; Escape leaves the cell alone.
    void ExpectLeftWithoutAMessage(const char* row, const char* text, const std::string& held) {
        const Box exit = Question("Do you really want to exit?");
        prompts.boxes.clear();
        Type(row, text);
        Click(dialog->FindWindow(wxID_CANCEL));
        EXPECT_TRUE(PumpUntil([&] { return !prompts.boxes.empty(); }));
        EXPECT_EQ(InCell(), text);
        Type(row, text);
        wxUIActionSimulator().Char(WXK_ESCAPE);
        EXPECT_TRUE(PumpUntil([&] { return FromWx(grid->GetPropertyValueAsString(row)) == held; }));
        Settle();
        EXPECT_THAT(prompts.boxes, ElementsAre(exit));
        EXPECT_FALSE(grid->IsEditorsValueModified());
    }

    wxPropertyGrid* grid = nullptr;
};

TEST_F(Refusal, InAnOverlayStaysInItsCellUntilItIsMended) {
    constexpr const char* kRow = "data/0/showTime";
    Run<COSD>(kSettingsGrid, [&] {
        const std::string held = FromWx(grid->GetPropertyValueAsString(kRow));
        ExpectToldAndKept(
            {ByMouse(wxID_OK), BySpaceOnOk, ByKey('O', wxMOD_ALT), ByKey(WXK_RETURN),
             ByMouse(kSaveSettings), ByMouse(kOpenSettings), ByKey('R', wxMOD_CONTROL)},
            kRow, "10001", Warning("ShowTime input error!"));
        ExpectLeftWithoutAMessage(kRow, "10001", held);
        Type(kRow, "9999");
        Click(dialog->FindWindow(wxID_OK));
        EXPECT_TRUE(PumpUntil([&] { return Sent() == 1; }));
    });
}

TEST_F(Refusal, InAControlProtocolKeepsItsPageAndItsRow) {
    constexpr const char* kRow = "Serial/NextType";
    Run<CControlProtocol>(kProtocolGrid + 2, [&] {
        Find<wxNotebook>(dialog, kProtocolTabs)->SetSelection(1);
        const std::string held = FromWx(grid->GetPropertyValueAsString(kRow));
        const Act otherRow = [&](wxDialog*) { grid->SelectProperty("Serial/BackType", true); };
        ExpectToldAndKept({ByMouse(wxID_OK), BySpaceOnOk, ByKey('O', wxMOD_ALT), ByKey(WXK_RETURN),
                           ByKey(WXK_TAB, wxMOD_CONTROL), ByMouse(kOpenProtocol),
                           ByMouse(kSaveProtocol), ByKey('R', wxMOD_CONTROL), otherRow},
                          kRow, "a5 0", Warning("input error!"));
        EXPECT_EQ(Find<wxNotebook>(dialog, kProtocolTabs)->GetSelection(), 1);
        prompts.boxes.clear();
        Find<wxSearchCtrl>(dialog, kProtocolFilter)->SetFocus();
        Find<wxSearchCtrl>(dialog, kProtocolFilter)->SetValue("nothing like it");
        EXPECT_EQ(InCell(), "a5 0");
        Find<wxSearchCtrl>(dialog, kProtocolFilter)->Clear();
        EXPECT_THAT(prompts.boxes, ElementsAre());
        ExpectLeftWithoutAMessage(kRow, "a5 0", held);
    });
}

}  // namespace
}  // namespace sontaro::test
