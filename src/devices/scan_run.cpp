#include "devices/scan_run.h"

#include <fmt/printf.h>

#include <algorithm>

namespace sontaro {

namespace {

constexpr int kLastRound = 5;

}  // namespace

void ScanRun::Opened(const std::optional<DeviceRecord>& chosenBefore) {
    if (chosenBefore) tickedBefore_.push_back(*chosenBefore);
    opening_ = true;
    actions_.StartTimer();
}

void ScanRun::PressScan() {
    if (scanning_) {
        Stop();
        return;
    }
    if (!style_.clearsEveryRound) Clear();
    opening_ = false;
    scanning_ = true;
    round_ = 0;
    actions_.StartTimer();
    actions_.DevicesChanged();
}

void ScanRun::Tick() {
    answered_.clear();
    if (opening_) {
        opening_ = false;
        Clear();
        static_cast<void>(Ask());
    } else if (!scanning_) {
        actions_.StopTimer();  // whoever answers from now on has not been asked just now
    } else if (++round_ >= kLastRound) {
        Stop();
    } else {
        if (style_.clearsEveryRound) Clear();
        if (!Ask()) Stop();
    }
    actions_.DevicesChanged();
}

bool ScanRun::Ask() {
    asked_ = actions_.SendRequest();
    return *asked_;
}

void ScanRun::RequestFailed() {
    asked_ = false;
    actions_.DevicesChanged();
}

void ScanRun::ChooseOnly(std::size_t row) {
    tickedBefore_.clear();
    for (std::size_t i = 0; i < devices_.size(); ++i) devices_[i].ticked = i == row;
}

void ScanRun::ChooseAll() {
    for (DeviceRecord& device : devices_) device.ticked = true;
}

void ScanRun::ChooseNone() {
    tickedBefore_.clear();
    for (DeviceRecord& device : devices_) device.ticked = false;
}

void ScanRun::Stop() {
    scanning_ = false;
    actions_.StopTimer();
    if (style_.clearsEveryRound) ListSilentOnes();
    actions_.DevicesChanged();
}

/// A tick that cannot be seen could not be taken away either.
void ScanRun::ListSilentOnes() {
    for (DeviceRecord& device : tickedBefore_) {
        device.silent = true;
        MarkSharedAddress(devices_.emplace_back(std::move(device)).ip);
    }
    tickedBefore_.clear();
    SortDevices(devices_, sortColumn_, sortAscending_);
}

void ScanRun::Clear() {
    std::ranges::copy_if(devices_, std::back_inserter(tickedBefore_), &DeviceRecord::ticked);
    devices_.clear();
    answered_.clear();
}

bool ScanRun::Receive(ByteView datagram) {
    const std::optional<DeviceRecord> device = ParseDiscoveryReply(datagram);
    if (!device) return false;
    Enter(*device);
    SortDevices(devices_, sortColumn_, sortAscending_);
    actions_.DevicesChanged();
    return true;
}

void ScanRun::Enter(DeviceRecord device) {
    DeviceRecord* row = RowFor(device);
    if (!row) return;
    if (row->ticked) tickedBefore_.push_back(*row);  // the choice is that player's, not the row's
    remarks_.ApplyTo(device);
    device.ticked = TakeTick(device);
    answered_.insert({device.mac, device.ip});
    *row = std::move(device);
    MarkSharedAddress(row->ip);
}

/// Whether the player, or else its address, is one that was ticked; it need not be again.
bool ScanRun::TakeTick(const DeviceRecord& device) {
    const auto isSame = [&](const DeviceRecord& other) { return other.IsSameDevice(device); };
    if (std::erase_if(tickedBefore_, isSame) > 0) return true;
    const auto there = std::ranges::find(tickedBefore_, device.ip, &DeviceRecord::ip);
    if (!style_.clearsEveryRound || there == tickedBefore_.end()) return false;
    tickedBefore_.erase(there);
    return true;
}

/// The player's own row; else that of a player at its address that has not answered since; else
/// one more. Absent when the list is full.
DeviceRecord* ScanRun::RowFor(const DeviceRecord& device) {
    auto row = std::ranges::find_if(
        devices_, [&](const DeviceRecord& other) { return other.IsSameDevice(device); });
    if (row == devices_.end())
        row = std::ranges::find_if(devices_, [&](const DeviceRecord& other) {
            return other.ip == device.ip && !HasAnswered(other);
        });
    if (row != devices_.end()) return &*row;
    return devices_.size() < kLongestList ? &devices_.emplace_back() : nullptr;
}

void ScanRun::MarkSharedAddress(const std::string& ip) {
    const bool shared = std::ranges::count(devices_, ip, &DeviceRecord::ip) > 1;
    for (DeviceRecord& device : devices_)
        if (device.ip == ip) device.sharesAddress = shared;
}

void ScanRun::SortBy(DeviceColumn column, bool ascending) {
    sortColumn_ = column;
    sortAscending_ = ascending;
    SortDevices(devices_, column, ascending);
    actions_.DevicesChanged();
}

void ScanRun::RemarksChanged() {
    for (auto* devices : {&devices_, &tickedBefore_})
        for (DeviceRecord& device : *devices) remarks_.ApplyTo(device);
    SortBy(sortColumn_, sortAscending_);
}

std::string ScanRun::ButtonText() const {
    if (!scanning_) return Localized(style_.scan);
    if (round_ == 0) return Localized(style_.stop);
    return fmt::sprintf(Localized(style_.stopIn), kLastRound - round_);
}

std::vector<DeviceRecord> ScanRun::Chosen() const {
    std::vector<DeviceRecord> chosen;
    std::ranges::copy_if(devices_, std::back_inserter(chosen), &DeviceRecord::ticked);
    if (style_.clearsEveryRound) std::ranges::copy(tickedBefore_, std::back_inserter(chosen));
    SortDevices(chosen, DeviceColumn::kIp, true);
    return chosen;
}

}  // namespace sontaro
