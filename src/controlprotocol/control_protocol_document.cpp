#include "controlprotocol/control_protocol_document.h"

#include <algorithm>

#include "base/file.h"
#include "base/json.h"
#include "controlprotocol/control_protocol_table.h"

namespace sontaro {

namespace {

template <class Record, class Visit>
void VisitOwnFields(Record& record, const Visit& visit) {
    for (const auto& group : GroupsOf(record)) VisitFields(record, group.fields, visit);
}

// Each operation on an array of records is declared before the one on a record: records hold
// arrays again.

template <class Record, std::size_t kCount>
void Reset(std::array<Record, kCount>& records);

template <class Record>
void Reset(Record& record) {
    VisitOwnFields(record, [](const FieldFacts& facts, auto& value) { ResetField(facts, value); });
    VisitParts(record, [](const char*, auto& parts) { Reset(parts); });
}

template <class Record, std::size_t kCount>
void Reset(std::array<Record, kCount>& records) {
    for (Record& record : records) Reset(record);
}

template <class Record, std::size_t kCount>
void Read(const Json::Value& json, std::array<Record, kCount>& records);

template <class Record>
void Read(const Json::Value& json, Record& record) {
    if (!json.isObject()) return;
    VisitOwnFields(record,
                   [&](const FieldFacts& facts, auto& value) { ReadField(facts, json, value); });
    VisitParts(record, [&](const char* key, auto& parts) { Read(json[key], parts); });
}

/// Elements beyond the array are ignored; where there are fewer, the others stay.
template <class Record, std::size_t kCount>
void Read(const Json::Value& json, std::array<Record, kCount>& records) {
    if (!json.isArray()) return;
    const auto count = std::min<Json::ArrayIndex>(json.size(), kCount);
    for (Json::ArrayIndex i = 0; i < count; ++i) Read(json[i], records[i]);
}

template <class Record, std::size_t kCount>
Json::Value ToJson(const std::array<Record, kCount>& records);

template <class Record>
Json::Value ToJson(const Record& record) {
    Json::Value json(Json::objectValue);
    VisitOwnFields(record, [&](const FieldFacts& facts, const auto& value) {
        WriteField(facts, value, json);
    });
    VisitParts(record, [&](const char* key, const auto& parts) { json[key] = ToJson(parts); });
    return json;
}

template <class Record, std::size_t kCount>
Json::Value ToJson(const std::array<Record, kCount>& records) {
    Json::Value json(Json::arrayValue);
    for (const Record& record : records) json.append(ToJson(record));
    return json;
}

}  // namespace

ControlProtocolModel::ControlProtocolModel() {
    VisitSections(*this, [](const auto&, auto& value) { Reset(value); });
}

bool ReadControlProtocol(std::string_view text, ControlProtocolModel& model) {
    const Result<Json::Value> json = ParseJson(text);
    if (!json || !json->isObject()) return false;
    VisitSections(model,
                  [&](const auto& section, auto& value) { Read((*json)[section.key], value); });
    return true;
}

bool HoldsControlProtocol(std::string_view text) {
    const Result<Json::Value> json = ParseJson(text);
    if (!json || !json->isObject()) return false;
    const auto holds = [&](const auto&... section) { return (json->isMember(section.key) || ...); };
    return std::apply(holds, kSections);
}

std::string ControlProtocolText(const ControlProtocolModel& model) {
    Json::Value json(Json::objectValue);
    VisitSections(
        model, [&](const auto& section, const auto& value) { json[section.key] = ToJson(value); });
    return WriteJson(json);
}

Status WriteControlProtocol(const ControlProtocolModel& model, const std::filesystem::path& path) {
    return WriteFileAtomically(path, ControlProtocolText(model));
}

std::filesystem::path ControlProtocolPath(const std::filesystem::path& programFolder) {
    return programFolder / "ControlProtocol.Json";
}

}  // namespace sontaro
