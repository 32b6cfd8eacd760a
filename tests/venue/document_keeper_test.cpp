#include "venue/document_keeper.h"

#include <gmock/gmock.h>

#include "support/manual_ui_thread.h"
#include "support/temporary_folder.h"
#include "venue/earlier_table.h"
#include "venue/venue_samples.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

DeviceRecord Device(const char* id) {
    DeviceRecord device;
    device.id = id;
    device.ip = "127.0.0.2";
    return device;
}

/// A window's keeping of the overlay, and the thread that it is told on.
struct WindowsDocuments : testing::Test {
    ~WindowsDocuments() override {
        keeper.reset();
        ui.Close();  // a thread may wait for it
    }
    std::vector<EarlierState> List(std::optional<std::string> present = {}) {
        std::optional<std::vector<EarlierState>> listed;
        keeper->List(OwnerOfDocuments(device), kBlockOsd, std::move(present),
                     [&](std::vector<EarlierState> states) { listed = std::move(states); });
        EXPECT_TRUE(ui.PumpUntil([&] { return listed.has_value(); }));
        return *listed;
    }
    static std::string Overlay(int percent) {
        return With(FactoryText("osd"), "data/0/transparent", percent);
    }
    static std::vector<std::string> Cells(const TableModel& table, std::size_t row) {
        std::vector<std::string> cells;
        for (std::size_t i = 0; i < table.Columns().size(); ++i)
            cells.push_back(table.Text(row, i));
        return cells;
    }

    TemporaryFolder folder;
    ManualUiThread ui;
    ThreadGroup threads;
    std::unique_ptr<DocumentKeeper> keeper =
        std::make_unique<DocumentKeeper>(folder / "earlier", ui, threads);
    int told = 0;
    DeviceRecord device = Device("A");
    std::optional<BlockKeeping> keeping{std::in_place, *keeper, kBlockOsd, [this] { ++told; }};
};

TEST_F(WindowsDocuments, AreListedTheLatestFirstWithWhatWasChangedAfterEach) {
    EXPECT_THAT(List(), IsEmpty());
    for (const int percent : {1, 2, 1}) keeping->Keep(device, Overlay(percent));
    keeping->Keep(Device("B"), Overlay(7));
    const auto states = List(Overlay(3));
    ASSERT_THAT(states, SizeIs(2)) << "equal ones are there once";
    EXPECT_EQ(states[0].text, Overlay(1));
    EXPECT_EQ(states[1].text, Overlay(2));
    EarlierTable table;
    table.Show(states);
    const std::string caption = states[0].changes->differences.at(0).caption;
    EXPECT_EQ(table.Text(0, 1) + " " + table.Text(0, 2), "1 " + caption + ": 1 → 3");
    EXPECT_EQ(table.Text(1, 1) + " " + table.Text(1, 2), "1 " + caption + ": 2 → 1");
    EXPECT_EQ(table.Text(0, 0).size(), std::string("2026-11-22 20:30:00").size());
    LaterChangesTable changes;
    changes.Show(states[1].changes);
    EXPECT_THAT(Cells(changes, 0), ElementsAre(caption, "2", "1"));
    EXPECT_EQ(told, 0);
}

TEST_F(WindowsDocuments, SayWhyThereIsNothingToCompare) {
    for (const int percent : {1, 2}) keeping->Keep(device, Overlay(percent));
    auto states = List();
    EXPECT_FALSE(states.at(0).changes);
    EXPECT_THAT(TextBesideChanges(states[0]), HasSubstr("has not been read"));
    EXPECT_EQ(TextBesideChanges(states[1]), "");
    std::ofstream(states[0].document.file) << "other";
    states = List(Overlay(1));
    EXPECT_THAT(TextBesideChanges(states[0]), HasSubstr("is not what was written"));
    EXPECT_EQ(TextBesideChanges(states[1]), "The settings after it are the same.");
    const std::string formed = With(Overlay(1), "data/0/transparent", 1.0);
    EXPECT_THAT(TextBesideChanges(List(formed)[1]), HasSubstr("the same values in another form"));
    EarlierTable table;
    table.Show(states);
    EXPECT_EQ(table.RowCaution(0), table.Text(0, 2));
    EXPECT_EQ(table.Text(1, 1), "0");
}

TEST_F(WindowsDocuments, ThatCannotBeKeptAreToldAndHoldNothingUp) {
    folder.Write("earlier", "a file");
    keeping->Keep(device, Overlay(1));
    EXPECT_TRUE(ui.PumpUntil([&] { return told > 0; }));
    EXPECT_THAT(keeping->Trouble(), HasSubstr("Not among the earlier ones: "));
    std::filesystem::remove(folder / "earlier");
    keeping->Keep(device, Overlay(1));
    EXPECT_TRUE(ui.PumpUntil([&] { return told > 1; }));
    EXPECT_EQ(keeping->Trouble(), "");
}

TEST_F(WindowsDocuments, AreToldToNobodyWhoHasGone) {
    folder.Write("earlier", "a file");
    keeping->Keep(device, Overlay(1));
    keeping.reset();
    EXPECT_THAT(List(), IsEmpty());
    EXPECT_EQ(told, 0);
}

TEST_F(WindowsDocuments, AreOnTheDiskWhenTheProgramHasEnded) {
    for (const int percent : {1, 2, 3}) keeping->Keep(device, Overlay(percent));
    keeper.reset();
    EXPECT_THAT(EarlierDocuments(folder / "earlier").List(OwnerOfDocuments(device), Kind("osd")),
                SizeIs(3));
}

TEST_F(WindowsDocuments, AreThoseOfAnAddressWhereAPlayerHasNotSaidWhoItIs) {
    device.id = "";
    keeping->Keep(device, Overlay(1));
    EXPECT_THAT(List(), SizeIs(1));
    EXPECT_TRUE(std::filesystem::exists(folder / "earlier" / "127.0.0.2" / "osd"));
}

}  // namespace
}  // namespace sontaro::test
