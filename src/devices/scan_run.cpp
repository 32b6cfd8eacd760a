#include "devices/scan_run.h"

#include <fmt/printf.h>

#include <algorithm>

namespace sontaro {

namespace {

constexpr int kLastRound = 5;

constexpr LocalText kScan = {"查找设备", "Scan"};
constexpr LocalText kStop = {"停止查找", "Stop"};
constexpr LocalText kStopIn = {"停止查找(%d)", "Stop(%d)"};

}  // namespace

void ScanRun::Opened() {
    opening_ = true;
    actions_.StartTimer();
}

void ScanRun::PressScan() {
    if (scanning_) {
        Stop();
        return;
    }
    Clear();
    opening_ = false;
    scanning_ = true;
    round_ = 0;
    actions_.StartTimer();
    actions_.DevicesChanged();
}

void ScanRun::Tick() {
    if (!scanning_) {
        opening_ = false;
        actions_.StopTimer();
        Clear();
        static_cast<void>(Ask());
    } else if (++round_ >= kLastRound || !Ask()) {
        Stop();
    }
    actions_.DevicesChanged();
}

bool ScanRun::Ask() {
    asked_ = actions_.SendRequest();
    return asked_;
}

void ScanRun::RequestFailed() {
    asked_ = false;
    actions_.DevicesChanged();
}

void ScanRun::ChooseOnly(std::size_t row) {
    tickedBefore_.clear();
    for (std::size_t i = 0; i < devices_.size(); ++i) devices_[i].ticked = i == row;
}

void ScanRun::Stop() {
    scanning_ = false;
    actions_.StopTimer();
    actions_.DevicesChanged();
}

void ScanRun::Clear() {
    std::ranges::copy_if(devices_, std::back_inserter(tickedBefore_), &DeviceRecord::ticked);
    devices_.clear();
}

void ScanRun::Receive(ByteView datagram) {
    std::optional<DeviceRecord> device = ParseDiscoveryReply(datagram);
    if (!device) return;
    const auto isSame = [&](const DeviceRecord& other) { return other.IsSameDevice(*device); };
    remarks_.ApplyTo(*device);
    device->ticked = std::erase_if(tickedBefore_, isSame) > 0;
    if (const auto known = std::ranges::find_if(devices_, isSame); known != devices_.end()) {
        device->ticked = device->ticked || known->ticked;
        *known = *device;
    } else if (devices_.size() < kLongestList) {
        devices_.push_back(*device);
    }
    SortDevices(devices_, sortColumn_, sortAscending_);
    actions_.DevicesChanged();
}

void ScanRun::SortBy(DeviceColumn column, bool ascending) {
    sortColumn_ = column;
    sortAscending_ = ascending;
    SortDevices(devices_, column, ascending);
    actions_.DevicesChanged();
}

void ScanRun::RemarksChanged() {
    for (DeviceRecord& device : devices_) remarks_.ApplyTo(device);
    SortBy(sortColumn_, sortAscending_);
}

std::string ScanRun::ButtonText() const {
    if (!scanning_) return Localized(kScan);
    return round_ == 0 ? Localized(kStop) : fmt::sprintf(Localized(kStopIn), kLastRound - round_);
}

}  // namespace sontaro
