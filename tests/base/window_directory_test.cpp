#include "base/window_directory.h"

#include <gmock/gmock.h>

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
        EXPECT_EQ(second.received.size(), 1U);
        EXPECT_EQ(first.received.size(), 0U);
    }
    EXPECT_TRUE(Send("Set Param"));
    EXPECT_EQ(first.received.at(0).message.wParam, 5U);
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

TEST_F(Directory, DeliversFromOtherThreadsOnTheUserInterfaceThread) {
    std::thread::id handledBy;
    FakeWindow window(directory, "Cave",
                      [&](WindowMessage&) { handledBy = std::this_thread::get_id(); });
    bool handledBeforeReturn = false;
    ui.RunAside([&] { handledBeforeReturn = Send("Cave") && window.received.size() == 1; });
    EXPECT_TRUE(handledBeforeReturn);
    EXPECT_EQ(handledBy, std::this_thread::get_id());
}

TEST_F(Directory, ThrowsWhatTheWindowThrowsToTheSender) {
    FakeWindow window(directory, "Cave", [](WindowMessage&) { throw std::runtime_error("full"); });
    std::string reason;
    ui.RunAside([&] {
        try {
            Send("Cave");
        } catch (const std::runtime_error& error) {
            reason = error.what();
        }
    });
    EXPECT_EQ(reason, "full");
}

TEST_F(Directory, ShutDownReleasesWhoWaitsAndRefusesWhoComes) {
    FakeWindow window(directory, "Cave");
    std::array<bool, 2> delivered = {true, true};
    std::jthread sender([&] {
        delivered[0] = Send("Cave");
        delivered[1] = Send("Cave");
    });
    ui.AwaitCaller();
    directory.ShutDown();
    sender.join();
    EXPECT_THAT(delivered, testing::ElementsAre(false, false));
    EXPECT_TRUE(window.received.empty());
}

}  // namespace
}  // namespace sontaro::test
