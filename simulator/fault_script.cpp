#include "simulator/fault_script.h"

#include <algorithm>

#include "simulator/number.h"
#include "simulator/sample_schema.h"

namespace sontaro::simulator {

namespace {

constexpr std::size_t kLargestNumber = 100'000'000;
constexpr std::size_t kMostItems = 100'000;
constexpr std::size_t kNoNumber = 0;

struct FaultRow {
    std::string_view name;
    std::size_t least;  ///< of the number behind "="
    std::size_t most;   ///< `kNoNumber`: there is none
    void (*apply)(FaultScript& faults, std::size_t number);
};

constexpr FaultRow kFaults[] = {
    {"refuse", 0, kNoNumber, [](FaultScript& faults, std::size_t) { faults.refuse = true; }},
    {"silent", 0, kNoNumber, [](FaultScript& faults, std::size_t) { faults.silent = true; }},
    {"drop", 0, kNoNumber, [](FaultScript& faults, std::size_t) { faults.drop = true; }},
    {"not-supported", 0, kNoNumber,
     [](FaultScript& faults, std::size_t) { faults.notSupported = true; }},
    {"garbage", 0, kNoNumber, [](FaultScript& faults, std::size_t) { faults.garbage = true; }},
    {"oversize", 0, kNoNumber, [](FaultScript& faults, std::size_t) { faults.oversize = true; }},
    {"bad-json", 0, kNoNumber, [](FaultScript& faults, std::size_t) { faults.badJson = true; }},
    {"no-ack", 0, kNoNumber, [](FaultScript& faults, std::size_t) { faults.noAck = true; }},
    {"no-second-part", 0, kNoNumber,
     [](FaultScript& faults, std::size_t) { faults.noSecondPart = true; }},
    {"bad-list", 0, kNoNumber, [](FaultScript& faults, std::size_t) { faults.badList = true; }},
    {"refuse-saves", 0, kNoNumber,
     [](FaultScript& faults, std::size_t) { faults.refuseSaves = true; }},
    {"empty-timeline", 0, kNoNumber,
     [](FaultScript& faults, std::size_t) { faults.emptyTimeline = true; }},
    {"changed-timeline", 0, kNoNumber,
     [](FaultScript& faults, std::size_t) { faults.changedTimeline = true; }},
    {"no-return", 0, kNoNumber, [](FaultScript& faults, std::size_t) { faults.noReturn = true; }},
    {"bad-checksum", 0, kNoNumber,
     [](FaultScript& faults, std::size_t) { faults.badChecksum = true; }},
    {"empty-block", 0, kNoNumber,
     [](FaultScript& faults, std::size_t) { faults.emptyBlock = true; }},
    {"no-correction", 0, kNoNumber,
     [](FaultScript& faults, std::size_t) { faults.noCorrection = true; }},
    {"other-resolution", 0, kNoNumber,
     [](FaultScript& faults, std::size_t) { faults.otherResolution = true; }},
    {"hang-up", 0, kNoNumber, [](FaultScript& faults, std::size_t) { faults.hangUp = true; }},
    {"no-second-query", 0, kNoNumber,
     [](FaultScript& faults, std::size_t) { faults.noSecondQuery = true; }},
    {"store-short", 0, kNoNumber,
     [](FaultScript& faults, std::size_t) { faults.storeShort = true; }},
    {"disk-full", 0, kLargestNumber,
     [](FaultScript& faults, std::size_t number) { faults.diskFull = number; }},
    {"restart-at", 1, kLargestNumber,
     [](FaultScript& faults, std::size_t number) { faults.restartAt = number; }},
    {"slow", 1, kLargestNumber * 100,
     [](FaultScript& faults, std::size_t number) { faults.slow = number; }},
    {"withhold", 0, UINT16_MAX,
     [](FaultScript& faults, std::size_t number) {
         faults.unacknowledged = static_cast<std::uint16_t>(number);
     }},
    {"withhold-once", 0, UINT16_MAX,
     [](FaultScript& faults, std::size_t number) {
         faults.unacknowledged = static_cast<std::uint16_t>(number);
         faults.withholdsOnce = true;
     }},
    {"lose-chunk", 0, UINT16_MAX,
     [](FaultScript& faults, std::size_t number) {
         faults.loseChunk = static_cast<std::uint16_t>(number);
     }},
    {"result", 0, UINT16_MAX,
     [](FaultScript& faults, std::size_t number) {
         faults.result = static_cast<std::uint16_t>(number);
     }},
    {"items", 0, kMostItems,
     [](FaultScript& faults, std::size_t number) {
         faults.schema = std::make_shared<const std::string>(LargeSchema(number));
     }},
    {"unread", 1, UINT16_MAX,
     [](FaultScript& faults, std::size_t number) {
         faults.unread = static_cast<std::uint16_t>(number);
     }},
    {"unsupported", 1, UINT16_MAX,
     [](FaultScript& faults, std::size_t number) {
         faults.unsupported = static_cast<std::uint16_t>(number);
     }},
    {"refused", 1, UINT16_MAX,
     [](FaultScript& faults, std::size_t number) {
         faults.refused = static_cast<std::uint16_t>(number);
     }},
    {"cut", 1, kLargestNumber,
     [](FaultScript& faults, std::size_t number) { faults.cut = number; }},
    {"close-after", 0, kLargestNumber,
     [](FaultScript& faults, std::size_t number) { faults.closeAfter = number; }},
    {"delay", 0, kLargestNumber,
     [](FaultScript& faults, std::size_t number) {
         faults.delay = std::chrono::milliseconds(number);
     }},
    {"delay-ack", 0, kLargestNumber,
     [](FaultScript& faults, std::size_t number) {
         faults.acknowledgementDelay = std::chrono::milliseconds(number);
     }},
};

/// Sets the fault that `text` names; false when it names none.
bool ApplyFault(FaultScript& faults, std::string_view text) {
    const std::size_t equals = text.find('=');
    const bool hasNumber = equals != std::string_view::npos;
    const auto row = std::ranges::find(kFaults, text.substr(0, equals), &FaultRow::name);
    if (row == std::end(kFaults) || hasNumber == (row->most == kNoNumber)) return false;
    std::string_view digits = hasNumber ? text.substr(equals + 1) : "0";
    if (row->name.starts_with("delay") && digits.ends_with("ms")) digits.remove_suffix(2);
    const auto number = ParseNumber(digits, row->least, row->most);
    if (number) row->apply(faults, *number);
    return number.has_value();
}

}  // namespace

Result<FaultScript> ParseFaultScript(std::string_view script) {
    FaultScript faults;
    while (!script.empty()) {
        const std::size_t comma = std::min(script.find(','), script.size());
        const std::string_view fault = script.substr(0, comma);
        if (!ApplyFault(faults, fault)) return Error{"unknown fault \"" + std::string(fault) + '"'};
        script.remove_prefix(std::min(comma + 1, script.size()));
    }
    return faults;
}

}  // namespace sontaro::simulator
