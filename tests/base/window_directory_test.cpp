#include "base/window_directory.h"

#include <gtest/gtest.h>

#include "support/fake_window.h"
#include "support/manual_ui_thread.h"

namespace sontaro::test {
namespace {

struct Directory : testing::Test {
    bool Send(const std::string& title) {
        return directory.Send(title, {MessageId::kCave, 5, {}, 6});
    }

    ManualUiThread ui;
    WindowDirectory directory{ui};
};

TEST_F(Directory, FindsTheLatestWindowOfExactlyThatTitle) {
    FakeWindow first(directory, "Set Param");
    {
        FakeWindow second(directory, "Set Param");
        EXPECT_TRUE(Send("Set Param"));
        EXPECT_EQ(second.messages.size(), 1U);
    }
    EXPECT_EQ(first.messages.size(), 0U);
    EXPECT_TRUE(Send("Set Param"));
    EXPECT_EQ(first.messages.at(0).wParam, 5U);
    for (const char* other : {"set param", "Set Param ", "Set", ""}) EXPECT_FALSE(Send(other));
}

TEST_F(Directory, LetsAWindowLeaveWhileItHandlesAMessage) {
    WindowDirectory::Registration registration;
    registration = directory.Register("OSD", [&, alive = std::make_shared<int>(7)](WindowMessage&) {
        registration = {};
        EXPECT_EQ(*alive, 7);
    });
    EXPECT_TRUE(Send("OSD"));
    EXPECT_FALSE(Send("OSD"));
}

TEST_F(Directory, DeliversOnTheUserInterfaceThreadBeforeTheSenderGoesOn) {
    std::thread::id handledBy;
    FakeWindow window(directory, "Cave", [&](auto&) { handledBy = std::this_thread::get_id(); });
    ui.RunAside([&] { EXPECT_TRUE(Send("Cave") && window.messages.size() == 1); });
    EXPECT_EQ(handledBy, std::this_thread::get_id());
}

TEST_F(Directory, ShutDownReleasesWhoWaitsAndRefusesWhoComes) {
    FakeWindow window(directory, "Cave");
    std::jthread sender([&] { EXPECT_FALSE(Send("Cave") || Send("Cave")); });
    ui.AwaitCaller();
    directory.ShutDown();
    sender.join();
    EXPECT_TRUE(window.messages.empty());
}

}  // namespace
}  // namespace sontaro::test
