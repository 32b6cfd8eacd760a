#include "devices/device_remarks.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

struct Remarks : testing::Test {
    DeviceRecord Apply() {
        DeviceRecord device;
        device.mac = "02:00";
        DeviceRemarks(folder / "remarks.json").ApplyTo(device);
        return device;
    }

    TemporaryFolder folder;
};

TEST_F(Remarks, AreReadByMacAndBrokenOnesLeaveTheirField) {
    folder.Write("remarks.json",
                 R"({"02:00": {"Remarks": "大厅", "authInputNum": 2, "authOutputNum": "x"}})");
    const DeviceRecord device = Apply();
    EXPECT_EQ(device.remarks, "大厅");
    EXPECT_EQ(device.authorisedInputs, 2);
    EXPECT_EQ(device.authorisedOutputs, 0);
    folder.Write("remarks.json", R"({"02:00": 7})");
    EXPECT_EQ(Apply().remarks, "");
}

TEST_F(Remarks, AreWrittenBesideWhatIsNotKnown) {
    folder.Write("remarks.json", R"({"02:00": {"authInputNum": 4, "shelf": "B"}, "99": [1]})");
    ASSERT_TRUE(DeviceRemarks(folder / "remarks.json").SetRemarks("02:00", "left"));
    const JsonFile file(folder / "remarks.json");
    EXPECT_EQ(file.Root()["02:00"]["shelf"].asString(), "B");
    EXPECT_EQ(file.Root()["99"][0].asInt(), 1);
    EXPECT_EQ(Apply().remarks, "left");
    EXPECT_EQ(Apply().authorisedInputs, 4);
}

TEST_F(Remarks, ThatCannotBeKeptAreReported) {
    std::filesystem::create_directories(folder / "remarks.json.new");
    EXPECT_FALSE(DeviceRemarks(folder / "remarks.json").SetRemarks("02:00", "left"));
}

}  // namespace
}  // namespace sontaro::test
