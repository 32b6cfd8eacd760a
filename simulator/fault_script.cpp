#include "simulator/fault_script.h"

#include <algorithm>

#include "simulator/number.h"

namespace sontaro::simulator {

namespace {

constexpr std::size_t kLargestNumber = 100'000'000;

struct FaultRow {
    std::string_view name;
    std::size_t least;  ///< of the number behind "="; `kNoNumber`: there is none
    void (*apply)(FaultScript& faults, std::size_t number);
};

constexpr std::size_t kNoNumber = kLargestNumber + 1;

constexpr FaultRow kFaults[] = {
    {"refuse", kNoNumber, [](FaultScript& faults, std::size_t) { faults.refuse = true; }},
    {"silent", kNoNumber, [](FaultScript& faults, std::size_t) { faults.silent = true; }},
    {"drop", kNoNumber, [](FaultScript& faults, std::size_t) { faults.drop = true; }},
    {"not-supported", kNoNumber,
     [](FaultScript& faults, std::size_t) { faults.notSupported = true; }},
    {"garbage", kNoNumber, [](FaultScript& faults, std::size_t) { faults.garbage = true; }},
    {"oversize", kNoNumber, [](FaultScript& faults, std::size_t) { faults.oversize = true; }},
    {"cut", 1, [](FaultScript& faults, std::size_t number) { faults.cut = number; }},
    {"close-after", 0, [](FaultScript& faults, std::size_t number) { faults.closeAfter = number; }},
    {"delay", 0,
     [](FaultScript& faults, std::size_t number) {
         faults.delay = std::chrono::milliseconds(number);
     }},
};

/// Sets the fault that `text` names; false when it names none.
bool ApplyFault(FaultScript& faults, std::string_view text) {
    const std::size_t equals = text.find('=');
    const bool hasNumber = equals != std::string_view::npos;
    const auto row = std::ranges::find(kFaults, text.substr(0, equals), &FaultRow::name);
    if (row == std::end(kFaults) || hasNumber == (row->least == kNoNumber)) return false;
    std::string_view digits = hasNumber ? text.substr(equals + 1) : "0";
    if (row->name == "delay" && digits.ends_with("ms")) digits.remove_suffix(2);
    const auto number = ParseNumber(digits, hasNumber ? row->least : 0, kLargestNumber);
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
