#include "settings/custom_entries.h"

#include "settings/custom_item_rows.h"

namespace sontaro {

namespace {

using Item = CCustomSettingAnalysor::Item;

constexpr const char* kInputType = "inputType";
constexpr const char* kEdited[] = {"select", "valueRange"};

Item ReadEntry(const Json::Value& json) {
    if (!json.isObject() || !json[kInputType].isInt()) return ReadCustomSetting(json);
    Json::Value named = json;
    named[kInputType] = std::string(KeywordAt(json[kInputType].asInt()));
    return ReadCustomSetting(named);
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
                               const std::string& text) {
    EditAnswer answer;
    VisitEntries(entries_, path, [&](Json::Value& json, Item& item, const std::string& itemKey) {
        const auto row = NameOfCustomRow(item, itemKey, key);
        if (!row) return false;
        answer = EditCustomItem(item, {row->rowName, row->occurrence, text});
        if (answer.outcome == EditAnswer::Outcome::kAccepted)
            for (const char* edited : kEdited) json[edited] = item.record->ToJson()[edited];
        return true;
    });
    return answer;
}

}  // namespace sontaro
