#include "devices/device_remarks.h"

#include "base/json.h"

namespace sontaro {

namespace {

constexpr const char* kRemarks = "Remarks";
constexpr const char* kInputs = "authInputNum";
constexpr const char* kOutputs = "authOutputNum";

void ReadInto(int& number, const Json::Value& value) {
    if (value.isInt()) number = value.asInt();
}

}  // namespace

void DeviceRemarks::ApplyTo(DeviceRecord& device) const {
    const Json::Value& entry = file_.Root()[device.mac];
    if (!entry.isObject()) return;
    if (entry[kRemarks].isString()) device.remarks = TextOf(entry[kRemarks]);
    ReadInto(device.authorisedInputs, entry[kInputs]);
    ReadInto(device.authorisedOutputs, entry[kOutputs]);
}

Status DeviceRemarks::SetRemarks(const std::string& mac, const std::string& remarks) {
    return file_.Update([&](Json::Value& root) {
        Json::Value& entry = root[mac];
        if (!entry.isObject()) entry = Json::Value(Json::objectValue);
        entry[kRemarks] = remarks;
        for (const char* key : {kInputs, kOutputs})
            if (!entry.isMember(key)) entry[key] = 0;
    });
}

}  // namespace sontaro
