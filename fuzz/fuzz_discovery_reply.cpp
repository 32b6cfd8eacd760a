// Datagrams of anything through the discovery reply into a scan.
#include <algorithm>

#include "devices/scan_run.h"

namespace sontaro {
namespace {

class NoActions : public ScanActions {
    bool SendRequest() override { return true; }
    void StartTimer() override {}
    void StopTimer() override {}
    void DevicesChanged() override {}
};

/// Takes datagrams off the input: a length, and so many bytes. Between two of them the user does
/// something, as the length says.
void Run(ByteView input) {
    NoActions actions;
    const DeviceRemarks remarks("no-such-file.json");
    ScanRun run(actions, remarks, {});
    while (!input.empty()) {
        const std::uint8_t first = input[0];
        const std::size_t length = std::min<std::size_t>(first % 64U, input.size() - 1);
        run.Receive(input.subspan(1, length));
        input = input.subspan(1 + length);
        if (first >= 0xC0) run.PressScan();
        if (first >= 0x80) run.SortBy(static_cast<DeviceColumn>(first % 7), first % 2 == 0);
        if (!run.Devices().empty()) run.SetTicked(first % run.Devices().size(), first % 3 == 0);
    }
    for (std::size_t row = 0; row < run.Devices().size(); ++row)
        for (int column = 0; column < 7; ++column)
            static_cast<void>(
                DeviceCell(run.Devices()[row], row, static_cast<DeviceColumn>(column)));
}

}  // namespace
}  // namespace sontaro

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sontaro::Run({data, size});
    return 0;
}
