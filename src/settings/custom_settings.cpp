#include "settings/custom_settings.h"

#include <algorithm>

#include "base/json.h"
#include "settings/custom_item_rows.h"

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
        SettingsGroup shown{KeyOfCustomGroup(group, keys), group.title->value, {}};
        RowKeys itemKeys;
        for (const Item& item : group.items)
            AddCustomRows(item, shown.key + '/' + itemKeys.Next(item.record->key), shown.rows);
        groups.push_back(std::move(shown));
    }
    return groups;
}

EditAnswer CCustomSettingAnalysor::UpdateFromGrid(int group, int item, const std::string& groupName,
                                                  const std::string& rowName,
                                                  const std::string& value, int occurrence) {
    Group* holder = At(groups_, group);
    Item* edited = holder && holder->title->value == groupName ? At(holder->items, item) : nullptr;
    return edited ? EditCustomItem(*edited, {rowName, occurrence, value}) : EditAnswer{};
}

void CCustomSettingAnalysor::Clear() {
    version_.reset();
    groups_.clear();
}

CCustomSettingAnalysor CCustomSettingAnalysor::Copy() const {
    CCustomSettingAnalysor copy;
    copy.version_ = version_;
    copy.groups_.reserve(groups_.size());
    for (const Group& group : groups_) {
        std::vector<Item>& items =
            copy.groups_.emplace_back(Group{std::make_unique<GroupName>(*group.title), {}}).items;
        items.reserve(group.items.size());
        for (const Item& item : group.items)
            items.push_back({item.kind, item.kind->copy(*item.record), item.ticks});
    }
    return copy;
}

bool CCustomSettingAnalysor::HasItems() const {
    return std::ranges::any_of(groups_, [](const Group& group) { return !group.items.empty(); });
}

}  // namespace sontaro
