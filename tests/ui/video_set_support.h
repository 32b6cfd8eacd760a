// The wizard that sends videos, in a real window.
#pragma once

#include <gmock/gmock.h>
#include <wx/grid.h>

#include "app/features.h"
#include "batchsend/set_page_ids.h"
#include "devices/device_list.h"
#include "devices/video_select_device.h"
#include "ui/ui_support.h"

namespace sontaro::test {

/// The wizard over a main window, with two players.
struct VideoSetTest : UiTest {
    ~VideoSetTest() override {
        EXPECT_TRUE(PumpUntil([&] { return !window; }));
    }

    /// Opens the wizard for both players, takes `step`, and leaves with a yes; maybe once more.
    void Run(const std::function<void()>& step, const std::function<void()>& again = {}) {
        if (!players) StartPlayers(2);
        window = OpenMainWindow();
        RunWizard(step);
        if (again) RunWizard(again);
        window->Destroy();
    }
    void RunWizard(const std::function<void()>& step) {
        script.Expect([&, step](wxDialog* opened) {
            dialog = opened;
            Press(dialog, kVideoSetScan);
            auto* list = Find<DeviceList>(dialog, kVideoSetList);
            ASSERT_TRUE(PumpUntil([&] { return list->GetItemCount() == 2; }));
            Press(dialog, kVideoSetScan);
            Press(dialog, kVideoSetSelectAll);
            Press(dialog, wxID_FORWARD);
            dialog->Raise();
            EXPECT_TRUE(PumpUntil([&] { return dialog->IsActive() && Rows(kSetPlayers) == 3; }));
            step();
            if (!dialog) return;
            prompts.answers = {true};
            Press(dialog, wxID_CANCEL);
        });
        wxCommandEvent press(wxEVT_BUTTON, FeatureButton(Window::kSetParam));
        window->GetEventHandler()->ProcessEvent(press);
    }
    [[nodiscard]] wxGrid& Grid(int id) const { return *Find<wxGrid>(dialog, id); }
    [[nodiscard]] int Rows(int id) const { return Grid(id).GetNumberRows(); }
    [[nodiscard]] std::string Cell(int id, int row, int column) const {
        return FromWx(Grid(id).GetCellValue(row, column));
    }
    wxWeakRef<CSontaroDlg> window;
    wxWeakRef<wxDialog> dialog;
    ModalScript script{};
};

}  // namespace sontaro::test
