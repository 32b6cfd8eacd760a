#include "controlprotocol/control_protocol_document.h"

#include "base/file.h"
#include "base/json.h"
#include "controlprotocol/control_protocol_table.h"

namespace sontaro {

ControlProtocolModel::ControlProtocolModel() { ControlProtocolSchema().Reset(*this); }

Result<int> ReadControlProtocol(std::string_view text, ControlProtocolModel& model, Source source) {
    Result<Json::Value> json = ParseJson(text);
    if (!json) return Error{json.reason()};
    if (!json->isObject()) return Error{"the text is no JSON object"};
    const int sections = ControlProtocolSchema().MembersIn(*json);
    ControlProtocolSchema().Read(std::move(*json), source, model);
    return sections;
}

std::string ControlProtocolText(const ControlProtocolModel& model) {
    return WriteJson(ControlProtocolSchema().ToJson(model));
}

Status WriteControlProtocol(const ControlProtocolModel& model, const std::filesystem::path& path) {
    return WriteFileAtomically(path, ControlProtocolText(model));
}

std::filesystem::path ControlProtocolPath(const std::filesystem::path& programFolder) {
    return programFolder / "ControlProtocol.Json";
}

}  // namespace sontaro
