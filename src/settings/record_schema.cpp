#include "settings/record_schema.h"

#include <algorithm>

#include "base/json.h"
#include "settings/record_values.h"
#include "settings/record_walk.h"

namespace sontaro {

const Json::Value* OtherKeys::Find(std::string_view key) const {
    return keys_ ? keys_->find(key.data(), key.data() + key.size()) : nullptr;
}

void OtherKeys::Keep(const Json::Value& object) {
    Json::Value keys = keys_ ? *keys_ : Json::Value(Json::objectValue);
    for (auto key = object.begin(); key != object.end(); ++key) keys[key.name()] = *key;
    keys_ = std::make_shared<const Json::Value>(std::move(keys));
}

void OtherKeys::Drop(std::string_view key) {
    if (!Find(key)) return;
    Json::Value keys = *keys_;
    keys.removeMember(std::string(key));
    keys_ = keys.empty() ? nullptr : std::make_shared<const Json::Value>(std::move(keys));
}

void OtherKeys::Write(Json::Value& object) const {
    if (!keys_) return;
    for (auto key = keys_->begin(); key != keys_->end(); ++key) object[key.name()] = *key;
}

bool OtherKeys::operator==(const OtherKeys& other) const {
    if (!keys_ || !other.keys_) return keys_ == other.keys_;
    return *keys_ == *other.keys_;
}

namespace records {

// NOLINTBEGIN(misc-no-recursion): records hold records

namespace {

void ReadTexts(const Field& field, const Json::Value& json, TextList& texts) {
    if (!json.isArray()) return;
    texts.resize(json.size());
    for (Json::ArrayIndex i = 0; i < json.size(); ++i)
        static_cast<void>(ReadValue(field, json[i], &texts[i]));
}

/// Elements that have been read are given up a batch at a time: a large document is freed while it
/// is still in the cache, and its memory serves the records in pieces of some size.
void ReadList(const Field& field, Json::Value& json, Source source, const RecordList& list) {
    constexpr std::size_t kBatch = 1024;
    if (!json.isArray()) return;
    std::vector<Json::Value*> elements;
    elements.reserve(json.size());
    const bool isFixed = list.access->remake == nullptr;
    for (Json::Value& element : json)
        if (isFixed || element.isObject()) elements.push_back(&element);
    if (!isFixed) {
        elements.resize(std::min(elements.size(), field.shape.longest));
        list.access->remake(list.list, elements.size());
    }
    std::size_t done = 0;
    VisitList(list, [&](void* record, std::size_t place, std::uint32_t) {
        if (place % kBatch == 0)
            for (; done < std::min(place, elements.size()); ++done) *elements[done] = Json::Value();
        if (!isFixed) Reset(*field.parts, record);
        if (place < elements.size()) Read(*field.parts, *elements[place], source, record);
    });
    json = Json::Value();
}

void ReadOne(const RecordTable& table, const Field& field, const Json::Value& json, void* record,
             ValueRef value) {
    OtherKeys* others = OthersOf(table, record);
    if (ReadValue(field, json, value)) {
        if (others) others->Drop(field.key);
    } else if (others && IsRaw(json, value)) {
        Json::Value raw;
        raw[field.key.data()] = json;
        others->Keep(raw);
    }
}

const Field* FieldNamed(const RecordTable& table, std::string_view key) {
    const auto field = std::ranges::find(table.fields, key, &Field::key);
    return field == table.fields.end() || key.empty() ? nullptr : &*field;
}

void ReadField(const RecordTable& table, const Field& field, Json::Value& json, Source source,
               void* record) {
    const Overloaded read = {
        [&](ValueRef value) { ReadOne(table, field, json, record, value); },
        [&](TextList* texts) { ReadTexts(field, json, *texts); },
        [&](CustomEntries* entries) { entries->Read(json); },
        [&](RecordPart part) { Read(*field.parts, json, source, part.record); },
        [&](const RecordList& list) { ReadList(field, json, source, list); }};
    std::visit(read, field.slot(record));
}

}  // namespace

void Reset(const RecordTable& table, void* record) {
    const auto resetPart = [](const RecordTable& parts) {
        return [&parts](void* part, std::size_t, std::uint32_t) { Reset(parts, part); };
    };
    for (const Field& field : table.fields) {
        if (field.key.empty()) continue;
        const Overloaded reset = {[&](ValueRef value) { ResetValue(field, value); },
                                  [](TextList* texts) { texts->clear(); },
                                  [](CustomEntries* entries) { *entries = {}; },
                                  [&](RecordPart part) { Reset(*field.parts, part.record); },
                                  [&](const RecordList& list) {
                                      if (list.access->remake) list.access->remake(list.list, 0);
                                      VisitList(list, resetPart(*field.parts));
                                  }};
        std::visit(reset, field.slot(record));
    }
}

/// One pass over the members, most of which have their fields.
void Read(const RecordTable& table, Json::Value& json, Source source, void* record) {
    if (!json.isObject()) return;
    Json::Value unknown;
    for (auto member = json.begin(); member != json.end(); ++member) {
        const char* end = nullptr;
        const char* begin = member.memberName(&end);
        const std::string_view key(begin, static_cast<std::size_t>(end - begin));
        if (const Field* field = FieldNamed(table, key))
            ReadField(table, *field, *member, source, record);
        else if (source == Source::kPlayer)
            unknown[std::string(key)] = *member;
    }
    OtherKeys* others = OthersOf(table, record);
    if (others != nullptr && !unknown.isNull()) others->Keep(WithValidTexts(unknown));
}

int MembersIn(const RecordTable& table, const Json::Value& json) {
    const auto isIn = [&json](const Field& field) {
        return !field.key.empty() && json.isMember(std::string(field.key));
    };
    return static_cast<int>(std::ranges::count_if(table.fields, isIn));
}

Json::Value ToJson(const RecordTable& table, const void* record) {
    Json::Value json(Json::objectValue);
    for (const Field& field : table.fields) {
        if (field.key.empty()) continue;
        Json::Value& member = json[Json::StaticString(field.key.data())];  // a literal
        const Overloaded write = {
            [&](ValueRef value) { member = ValueToJson(field, value); },
            [&](const TextList* texts) {
                member = Json::Value(Json::arrayValue);
                for (const std::string& text : *texts) member.append(text);
            },
            [&](const CustomEntries* entries) { member = entries->ToJson(); },
            [&](RecordPart part) { member = ToJson(*field.parts, part.record); },
            [&](const RecordList& list) {
                member = Json::Value(Json::arrayValue);
                VisitList(list, [&](const void* part, std::size_t, std::uint32_t) {
                    member.append(ToJson(*field.parts, part));
                });
            }};
        std::visit(write, SlotOf(field, record));
    }
    if (const OtherKeys* others = OthersOf(table, record)) others->Write(json);
    return json;
}

void Clamp(const RecordTable& table, void* record) {
    for (const Field& field : table.fields) {
        if (field.key.empty()) continue;
        const Overloaded clamp = {
            [&](ValueRef value) {
                if (field.shape.rule != FieldRule::kIndex || field.shape.takesAny) return;
                ClampValue(field, value, RawOf(table, field, record));
                if (OtherKeys* others = OthersOf(table, record)) others->Drop(field.key);
            },
            [](TextList*) {}, [](CustomEntries*) {},
            [&](RecordPart part) { Clamp(*field.parts, part.record); },
            [&](const RecordList& list) {
                VisitList(list, [&](void* part, std::size_t, std::uint32_t) {
                    Clamp(*field.parts, part);
                });
            }};
        std::visit(clamp, field.slot(record));
    }
}

// NOLINTEND(misc-no-recursion)

}  // namespace records

}  // namespace sontaro
