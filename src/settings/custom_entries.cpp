#include "settings/custom_entries.h"

#include "settings/custom_item_rows.h"

namespace sontaro {

namespace {

using Item = CCustomSettingAnalysor::Item;

constexpr const char* kKey = "keyVal";
constexpr const char* kInputType = "inputType";
constexpr const char* kSelect = "select";
constexpr const char* kValueRange = "valueRange";
constexpr const char* kEdited[] = {kSelect, kValueRange};

Item ReadEntry(const Json::Value& json) {
    if (!json.isObject() || !json[kInputType].isInt()) return ReadCustomSetting(json);
    Json::Value named = json;
    named[kInputType] = std::string(KeywordAt(json[kInputType].asInt()));
    return ReadCustomSetting(named);
}

/// Whether a value of `other` is one that `entry` may have. What has no limits keeps its value in
/// their place.
bool HasSameShape(const Json::Value& entry, const Json::Value& other) {
    if (!entry.isObject() || !other.isObject() || entry[kKey] != other[kKey] ||
        entry[kInputType] != other[kInputType])
        return false;
    const Item item = ReadEntry(entry);
    const Item another = ReadEntry(other);
    if (!item.record || !another.record) return false;
    const CCustomSettingAnalysor::BASE* record = item.record.get();
    const bool isSingle = dynamic_cast<const CCustomSettingAnalysor::Int*>(record) != nullptr ||
                          dynamic_cast<const CCustomSettingAnalysor::Double*>(record) != nullptr;
    return isSingle || item.record->ToJson()[kValueRange] == another.record->ToJson()[kValueRange];
}

/// Calls `visit(json, item, key)` for every entry that can be read, until it returns true.
template <class Entries, class Visit>
void VisitEntries(Entries& entries, const std::string& path, const Visit& visit) {
    RowKeys keys;
    for (auto& json : entries) {
        Item item = ReadEntry(json);
        if (item.record && item.kind != &TitleKind() &&
            visit(json, item, path + '/' + keys.Next(item.record->key)))
            return;
    }
}

}  // namespace

void CustomEntries::Read(const Json::Value& json) {
    if (json.isArray()) entries_ = json;
}

void CustomEntries::AddRows(const std::string& path, std::vector<SettingsRow>& rows) const {
    VisitEntries(entries_, path, [&](const Json::Value&, const Item& item, std::string key) {
        AddCustomRows(item, std::move(key), rows);
        return false;
    });
}

EditAnswer CustomEntries::Edit(const std::string& path, std::string_view key,
                               const std::string& text, bool mayBeNegative) {
    EditAnswer answer;
    VisitEntries(entries_, path, [&](Json::Value& json, Item& item, const std::string& itemKey) {
        const auto row = NameOfCustomRow(item, itemKey, key);
        if (!row) return false;
        answer = EditCustomItem(item, {row->rowName, row->occurrence, text, mayBeNegative});
        if (answer.outcome == EditAnswer::Outcome::kAccepted)
            for (const char* edited : kEdited) json[edited] = item.record->ToJson()[edited];
        return true;
    });
    return answer;
}

Item CustomEntries::ItemOf(const std::string& path, std::string_view key) const {
    Item found;
    VisitEntries(entries_, path, [&](const Json::Value&, Item& item, const std::string& itemKey) {
        if (!NameOfCustomRow(item, itemKey, key)) return false;
        found = std::move(item);
        return true;
    });
    return found;
}

void CustomEntries::TakeValues(const CustomEntries& others) {
    std::vector<bool> isTaken(others.entries_.size());
    for (Json::Value& entry : entries_) {
        for (Json::ArrayIndex i = 0; i < others.entries_.size(); ++i) {
            const Json::Value& other = others.entries_[i];
            if (isTaken[i] || !HasSameShape(entry, other)) continue;
            isTaken[i] = true;
            if (entry[kSelect] != other[kSelect])
                for (const char* edited : kEdited) entry[edited] = other[edited];
            break;
        }
    }
}

}  // namespace sontaro
