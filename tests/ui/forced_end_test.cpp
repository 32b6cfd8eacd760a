#include <gtest/gtest.h>
#include <wx/weakref.h>

#include <atomic>
#include <thread>

#include "app/features.h"
#include "base/json.h"
#include "devices/remarks_dialog.h"
#include "ui/ui_support.h"
#include "widgets/message_prompts.h"
#include "widgets/settings_dialog.h"

namespace sontaro::test {
namespace {

/// The program with its real boxes, ended from outside in the innermost of the dialogs that are
/// open.
class ForcedEnd : public UiTest {
   protected:
    ForcedEnd() {
        StartPlayers(1);
        window = new CSontaroDlg(realServices, {folder.Path() / "Temp", Scan(), 0});
        window->Show();
    }
    ~ForcedEnd() override {
        if (window) window->Destroy();
        EXPECT_TRUE(PumpUntil([&] { return !window; }));
    }

    void End() { EXPECT_TRUE(window->Close(true)); }
    ModalScript::Step Ending() {
        return [this](wxDialog*) { End(); };
    }

    /// Chooses the player in the scan dialog.
    static void Choose(wxDialog* scan) {
        Press(scan, kScanButton);
        auto* list = Find<DeviceList>(scan, kScanList);
        ASSERT_TRUE(PumpUntil([&] { return list->GetItemCount() > 0; }));
        list->Select(0);
        Press(scan, wxID_OK);
    }

    void ExpectGone() {
        EXPECT_TRUE(PumpUntil([&] { return !window; }));
        EXPECT_FALSE(directory.Find(TitleOf(Window::kOsd)));
    }

    Json::Value Kept(const std::string& file) { return *ParseJson(folder.Read(file)); }
    bool IsPlaceKept(const std::string& name) {
        return std::filesystem::exists(folder / "preferences.json") &&
               Kept("preferences.json")["windows"].isMember(name);
    }

    MessagePrompts boxes;
    UiServices realServices{
        {directory, threads, boxes}, hub, gate, preferences, documents, folder.Path()};
    wxWeakRef<CSontaroDlg> window;
};

TEST_F(ForcedEnd, LeavesThroughAMessageOverAFeature) {
    const ModalScript script{Choose, [&](wxDialog*) { boxes.Inform("A notice"); },
                             [&](wxDialog*) {
                                 End();
                                 EXPECT_TRUE(IsPlaceKept("osd"));
                                 End();
                             }};
    Press(window, FeatureButton(Window::kOsd));
    ExpectGone();
}

TEST_F(ForcedEnd, LeavesThroughTheSystemsOwnBoxes) {
    const FileQuestion question{FileQuestion::Purpose::kSave, "Keep", "All|*", "a.json", "json"};
    std::optional<std::filesystem::path> file;
    std::optional<std::uint32_t> colour;
    const ModalScript script{
        Choose,
        [&](wxDialog*) { colour = boxes.ChooseColour(0); },
        [&](wxDialog*) { file = boxes.ChooseFile(question); },
        Ending(),
    };
    Press(window, FeatureButton(Window::kOsd));
    EXPECT_FALSE(file || colour);
    ExpectGone();
}

TEST_F(ForcedEnd, LeavesThroughTheScanAndKeepsTheRemarksThatAreTyped) {
    wxWeakRef<wxDialog> scan;
    const ModalScript script{[&](wxDialog* dialog) {
                                 scan = dialog;
                                 Press(dialog, kScanButton);
                                 auto* list = Find<DeviceList>(dialog, kScanList);
                                 ASSERT_TRUE(PumpUntil([&] { return list->GetItemCount() > 0; }));
                                 wxListEvent activate(wxEVT_LIST_ITEM_ACTIVATED, kScanList);
                                 activate.SetIndex(0);
                                 list->GetEventHandler()->ProcessEvent(activate);
                             },
                             [&](wxDialog* dialog) {
                                 Find<wxTextCtrl>(dialog, kRemarksText)->SetValue("left");
                                 End();
                                 const Json::Value kept = Kept("remarks.json");
                                 EXPECT_EQ(kept[kept.getMemberNames().at(0)]["Remarks"], "left");
                                 EXPECT_TRUE(IsPlaceKept("scan"));
                             }};
    Press(window, FeatureButton(Window::kOsd));
    EXPECT_FALSE(scan);
    ExpectGone();
}

TEST_F(ForcedEnd, NeedsNoAnswerToTheExitQuestion) {
    const ModalScript script{Ending()};
    Press(window, wxID_CANCEL);
    ExpectGone();
}

TEST_F(ForcedEnd, HurriesAWindowThatFadesOut) {
    const ModalScript script{[](wxDialog* question) { question->EndModal(wxID_YES); }};
    Press(window, wxID_CANCEL);
    End();
    ExpectGone();
}

TEST_F(ForcedEnd, OpensNothingMore) {
    End();
    bool hasRun = false;
    window->CallAfter([&] { hasRun = true; });
    boxes.Inform("Not shown");
    Press(window, FeatureButton(Window::kOsd));
    EXPECT_FALSE(hasRun) << "a modal loop";
    ExpectGone();
}

TEST_F(ForcedEnd, FreesThreadsThatWaitForTheWindows) {
    std::atomic<int> calls = 0;
    std::vector<std::jthread> links;
    const ModalScript script{
        Choose,
        [&](wxDialog*) {
            for (int i = 0; i < 3; ++i)
                links.emplace_back([&] {
                    while (directory.Call([&] { ++calls; })) {
                    }
                });
            links.emplace_back([&] { directory.Call([&] { boxes.Inform("A reply"); }); });
        },
        [&](wxDialog*) {
            EXPECT_TRUE(PumpUntil([&] { return calls > 100; }));
            End();
        }};
    Press(window, FeatureButton(Window::kOsd));
    ExpectGone();
}

}  // namespace
}  // namespace sontaro::test
