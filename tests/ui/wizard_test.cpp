#include <fmt/format.h>
#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

#include "screensplit/screen_split_set_wizard.h"
#include "ui/ui_support.h"

namespace sontaro::test {
namespace {

using testing::HasSubstr;
using testing::Not;

struct SplitWizard : UiTest {
    ~SplitWizard() override { players.reset(); }  // before its log
    /// Opens the wizard on players of 127.x and waits for what it does.
    int Run(const std::function<void()>& step) {
        CScreenSplitSetWizard opened(nullptr, services, Scan(), [](CScreenSplitSetWizard& w) {
            return new WizardPage(w, Window::kSetParam);
        });
        wizard = &opened;
        const ModalScript script{[&](wxDialog*) { step(); }};
        const int result = opened.ShowModal();
        // Though the wizard is still there, and before a scan would have ended by itself.
        EXPECT_TRUE(PumpUntil([&] { return !HasSocket(); }, 2500));
        chosen = opened.Players();
        return result;
    }
    void StartLoggedPlayers(std::size_t count) {
        simulator::LineUpOptions options;
        options.count = count;
        options.baseAddress = {network.Player(7)};
        options.log = &log;
        players = std::make_unique<simulator::PlayerGroup>(*simulator::LineUp(options));
        ASSERT_TRUE(players->Start());
    }
    [[nodiscard]] DeviceList& List() const { return *Find<DeviceList>(wizard, kSplitList); }
    void ScanFor(int count) {
        Press(wizard, kSplitScan);
        ASSERT_TRUE(PumpUntil([&] { return List().GetItemCount() == count; }));
    }
    [[nodiscard]] bool AreEnabled(bool enabled) const {
        constexpr int kIds[] = {kSplitAddress, kSplitSelectAll, kSplitSelectNone, kSplitRemarks};
        return std::ranges::all_of(
            kIds, [&](int id) { return wizard->FindWindow(id)->IsEnabled() == enabled; });
    }
    [[nodiscard]] std::string ScanLabel() const {
        return FromWx(Find<wxButton>(wizard, kSplitScan)->GetLabelText());
    }
    /// Whether a datagram socket is bound to the test's own address, as far as the system tells.
    [[nodiscard]] bool HasSocket() const {
        const auto& o = network.Local().octets;
        std::ifstream file("/proc/net/udp");
        const std::string table{std::istreambuf_iterator<char>(file), {}};
        return table.find(fmt::format("{:02X}{:02X}{:02X}{:02X}:", o[3], o[2], o[1], o[0])) !=
               std::string::npos;
    }

    std::ostringstream events;
    simulator::EventLog log{events};
    CScreenSplitSetWizard* wizard = nullptr;
    std::vector<DeviceRecord> chosen;
};

TEST_F(SplitWizard, HandsOnTheTickedPlayersByNumericAddress) {
    StartLoggedPlayers(4);  // from .9 to .12
    prompts.answers = {true};
    Run([&] {
        EXPECT_FALSE(HasSocket());
        Press(wizard, wxID_FORWARD);
        EXPECT_EQ(std::exchange(prompts.boxes, {}),
                  std::vector{Warning("Please tick the devices!")});
        ScanFor(4);
        EXPECT_TRUE(AreEnabled(false) && !List().HasCheckBoxes());
        EXPECT_EQ(ScanLabel().substr(0, 5), "Stop(");
        Press(wizard, kSplitScan);
        EXPECT_TRUE(AreEnabled(true) && List().HasCheckBoxes());
        EXPECT_EQ(ScanLabel(), "Scan");
        EXPECT_TRUE(kOnWindows || List().GetItemText(1) == "         2");
        Press(wizard, kSplitRemarks);  // nothing is highlighted
        EXPECT_EQ(std::exchange(prompts.boxes, {}),
                  std::vector{Warning("Please choose a device first!")});
        Press(wizard, kSplitSelectAll);
        EXPECT_TRUE(List().IsItemChecked(3));
        Press(wizard, kSplitScan);  // goes on under the next page
        Press(wizard, wxID_FORWARD);
        EXPECT_TRUE(directory.Find("Set Param"));
        EXPECT_EQ(wizard->Players().size(), 4U);
        Press(wizard, wxID_BACKWARD);
        EXPECT_EQ(ScanLabel(), "Scan");
        EXPECT_TRUE(List().IsItemChecked(0));
        Press(wizard, kSplitSelectNone);
        Press(wizard, wxID_FORWARD);
        EXPECT_TRUE(directory.Find("Select devices"));
        Press(wizard, wxID_CANCEL);
    });
    ASSERT_EQ(chosen.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(chosen[i].ip, FormatIpv4(network.Player(7 + i)));
        EXPECT_EQ(chosen[i].tcpPort, players->Player(i).Address().port);
    }
    EXPECT_THAT(events.str(), HasSubstr(", 16 bytes"));
    EXPECT_THAT(events.str(), Not(HasSubstr(", 46 bytes")));
}

TEST_F(SplitWizard, CancelDuringAScanClosesTheSocketAndANoGoesOn) {
    StartLoggedPlayers(1);
    prompts.answers = {false, true};
    EXPECT_EQ(wxID_CANCEL, Run([&] {
                  ScanFor(1);
                  EXPECT_TRUE(HasSocket() || kOnWindows);
                  Press(wizard, wxID_CANCEL);
                  EXPECT_EQ(ScanLabel().substr(0, 5), "Stop(");
                  Press(wizard, wxID_CANCEL);
              }));
}

}  // namespace
}  // namespace sontaro::test
