#include "settings/custom_settings.h"

#include <algorithm>

#include "base/json.h"
#include "settings/custom_setting_kinds.h"
#include "settings/row_keys.h"

namespace sontaro {

namespace {

using Document = CCustomSettingAnalysor;

constexpr std::size_t kBatch = 1024;
constexpr const char* kVersion = "Version";
constexpr const char* kCustomSettings = "CustomSettings";

/// The element at an index that may be any number.
template <class T>
T* At(std::vector<T>& elements, int index) {
    const auto at = static_cast<std::size_t>(index);
    return index >= 0 && at < elements.size() ? &elements[at] : nullptr;
}

/// A group from its elements, of which the last title counts. Elements that have been read are
/// given up a batch at a time: a large document is freed while it is still in the cache, and its
/// memory serves the items in larger pieces than single elements would leave.
Document::Group ReadGroup(Json::Value& elements) {
    Document::Group group{std::make_unique<Document::GroupName>(), {}};
    group.title->inputType = TitleKind().keyword;
    if (!elements.isArray()) return group;
    group.items.reserve(elements.size());
    auto done = elements.begin();
    std::size_t count = 0;
    for (auto element = elements.begin(); element != elements.end(); ++element) {
        if (count++ % kBatch == 0)
            for (; done != element; ++done) *done = Json::Value();
        Document::Item item = ReadCustomSetting(*element);
        if (item.kind == &TitleKind())
            *group.title = dynamic_cast<const Document::GroupName&>(*item.record);
        else if (item.record)
            group.items.push_back(std::move(item));
    }
    return group;
}

/// Titles without a key of their own are told apart by their texts.
std::string KeyOf(const Document::Group& group, RowKeys& keys) {
    return keys.Next(group.title->key.empty() ? group.title->value : group.title->key);
}

void AddRows(const Document::Item& item, std::string key, std::vector<SettingsRow>& rows) {
    SettingsRow row;
    row.key = std::move(key);
    row.name = item.record->label;
    row.help = item.record->remarks;
    item.kind->addRows(item, row, rows);
}

/// The row of an item with that key.
std::optional<Document::GridRow> RowOf(const Document::Item& item, const std::string& itemKey,
                                       std::string_view key) {
    std::vector<SettingsRow> rows;
    AddRows(item, itemKey, rows);
    const auto row = std::ranges::find(rows, key, &SettingsRow::key);
    if (row == rows.end()) return std::nullopt;
    const auto alike = std::count_if(
        rows.begin(), row, [&row](const SettingsRow& other) { return other.name == row->name; });
    return Document::GridRow{0, 0, "", row->name, static_cast<int>(alike)};
}

/// The row of a group whose items' keys begin with `prefix`.
std::optional<Document::GridRow> RowOf(const Document::Group& group, const std::string& prefix,
                                       std::string_view key) {
    RowKeys keys;
    for (int index = 0; const Document::Item& item : group.items) {
        const std::string itemKey = prefix + keys.Next(item.record->key);
        if (key == itemKey || key.starts_with(itemKey + '/')) {
            auto row = RowOf(item, itemKey, key);
            if (row) row->item = index, row->groupName = group.title->value;
            return row;
        }
        ++index;
    }
    return std::nullopt;
}

}  // namespace

bool CCustomSettingAnalysor::Parse(std::string_view text) {
    Clear();
    Result<Json::Value> document = ParseJson(text);
    if (!document) return false;
    if (!document->isObject()) return true;
    if (document->isMember(kVersion)) version_ = (*document)[kVersion];
    Json::Value& groups = (*document)[kCustomSettings];
    if (!groups.isArray()) return true;
    groups_.reserve(groups.size());
    for (Json::Value& elements : groups) groups_.push_back(ReadGroup(elements));
    return true;
}

std::string CCustomSettingAnalysor::Serialise() const {
    Json::Value document;
    if (version_) document[kVersion] = *version_;
    Json::Value& groups = document[kCustomSettings] = Json::Value(Json::arrayValue);
    for (const Group& group : groups_) {
        Json::Value& elements = groups.append(Json::Value(Json::arrayValue));
        elements.append(group.title->ToJson());
        for (const Item& item : group.items) elements.append(item.record->ToJson());
    }
    return WriteJson(document);
}

SettingsRows CCustomSettingAnalysor::BuildGrid() const {
    SettingsRows groups;
    RowKeys keys;
    for (const Group& group : groups_) {
        SettingsGroup shown{KeyOf(group, keys), group.title->value, {}};
        RowKeys itemKeys;
        for (const Item& item : group.items)
            AddRows(item, shown.key + '/' + itemKeys.Next(item.record->key), shown.rows);
        groups.push_back(std::move(shown));
    }
    return groups;
}

EditAnswer CCustomSettingAnalysor::UpdateFromGrid(int group, int item, const std::string& groupName,
                                                  const std::string& rowName,
                                                  const std::string& value, int occurrence) {
    Group* holder = At(groups_, group);
    Item* edited = holder && holder->title->value == groupName ? At(holder->items, item) : nullptr;
    if (!edited) return {};
    const std::optional<std::string> shown =
        edited->kind->edit(*edited, {rowName, occurrence, value});
    return shown ? EditAnswer{EditAnswer::Outcome::kAccepted, *shown} : EditAnswer{};
}

std::optional<Document::GridRow> CCustomSettingAnalysor::RowWithKey(std::string_view key) const {
    RowKeys keys;
    for (int index = 0; const Group& group : groups_) {
        const std::string prefix = KeyOf(group, keys) + '/';
        if (key.starts_with(prefix)) {
            auto row = RowOf(group, prefix, key);
            if (row) row->group = index;
            return row;
        }
        ++index;
    }
    return std::nullopt;
}

void CCustomSettingAnalysor::Clear() {
    version_.reset();
    groups_.clear();
}

bool CCustomSettingAnalysor::HasItems() const {
    return std::ranges::any_of(groups_, [](const Group& group) { return !group.items.empty(); });
}

}  // namespace sontaro
