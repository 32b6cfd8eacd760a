#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

#include "ui/ui_support.h"
#include "widgets/feature_dialog.h"

namespace sontaro::test {
namespace {

TEST_F(UiTest, CallsOfNineThreadsRunInsideAModalDialogWhileItsTimersTick) {
    constexpr int kCallsEach = 300;
    int calls = 0;
    int ticks = 0;
    std::vector<std::jthread> callers;
    wxTimer timer;
    timer.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { ++ticks; });
    ModalScript script{[&](wxDialog* dialog) {
        timer.Start(10);
        for (int i = 0; i < 9; ++i)
            callers.emplace_back([&] {
                for (int call = 0; call < kCallsEach; ++call)
                    gate.Call([&] {
                        ++calls;
                        if (call % 10 == 0) wxMilliSleep(2);
                    });
            });
        EXPECT_TRUE(PumpUntil([&] { return calls == 9 * kCallsEach; }, 30000));
        dialog->EndModal(wxID_OK);
    }};
    wxDialog(nullptr, wxID_ANY, "busy").ShowModal();
    EXPECT_GT(ticks, 10);
}

TEST_F(UiTest, WhatHasComeWhileTheWindowsWereBlockedGoesBeforeWhatIsDue) {
    std::string order;
    gate.After(std::chrono::milliseconds(20), [&] { order += "due"; });
    const std::jthread caller([&] { gate.Call([&] { order += "answer "; }); });
    wxMilliSleep(200);
    EXPECT_TRUE(PumpUntil([&] { return order == "answer due"; })) << order;
}

TEST_F(UiTest, WhatACallThrowsReachesTheCallingThread) {
    std::atomic<bool> caught = false;
    const std::jthread caller([&] {
        try {
            gate.Call([] { throw std::runtime_error("window"); });
        } catch (const std::runtime_error&) {
            caught = true;
        }
    });
    EXPECT_TRUE(PumpUntil([&] { return caught.load(); }));
}

TEST_F(UiTest, ClosingReleasesWaitingThreadsAndRefusesLaterCalls) {
    std::atomic<int> refused = 0;
    bool ran = false;
    std::vector<std::jthread> callers;
    for (int i = 0; i < 5; ++i)
        callers.emplace_back([&] { refused += gate.Call([&] { ran = true; }) ? 0 : 1; });
    wxMilliSleep(50);  // not served meanwhile
    gate.Close();
    callers.clear();
    EXPECT_EQ(refused, 5);
    PumpUntil([] { return false; }, 50);
    EXPECT_FALSE(ran);
}

}  // namespace
}  // namespace sontaro::test
