#include "settings/custom_entries.h"

#include <algorithm>
#include <map>
#include <optional>
#include <queue>
#include <utility>

#include "settings/custom_item_rows.h"

namespace sontaro {

namespace {

using Document = CCustomSettingAnalysor;
using Item = Document::Item;

constexpr const char* kKey = "keyVal";
constexpr const char* kInputType = "inputType";
constexpr const char* kSelect = "select";
constexpr const char* kValueRange = "valueRange";

Item ReadEntry(const Json::Value& json) {
    if (!json.isObject() || !json[kInputType].isInt()) return ReadCustomSetting(json);
    Json::Value named = json;
    named[kInputType] = std::string(KeywordAt(json[kInputType].asInt()));
    return ReadCustomSetting(named);
}

/// Entries of one shape may have each other's values. What has no limits keeps its value in their
/// place. None for what cannot be read.
std::optional<Json::Value> ShapeOf(const Json::Value& entry) {
    const Item item = ReadEntry(entry);
    if (!item.record) return std::nullopt;
    const Document::BASE* record = item.record.get();
    const bool isText =
        dynamic_cast<const Document::String*>(record) != nullptr && item.kind != &TitleKind();
    const bool isSingle = isText || dynamic_cast<const Document::Int*>(record) != nullptr ||
                          dynamic_cast<const Document::Double*>(record) != nullptr;
    Json::Value shape(Json::arrayValue);
    shape.append(entry[kKey]);
    shape.append(entry[kInputType]);
    if (!isSingle) shape.append(record->ToJson()[kValueRange]);
    return shape;
}

template <class Range>
bool IsOutside(const Document::BASE& record) {
    const auto* range = dynamic_cast<const Range*>(&record);
    return range && (range->value < range->minimum || range->value > range->maximum);
}

template <class Array>
bool IsNotAllowed(const Document::BASE& record) {
    const auto* array = dynamic_cast<const Array*>(&record);
    return array && std::ranges::find(array->allowed, array->chosen) == array->allowed.end();
}

template <class Multiple>
bool IsNotOffered(const Document::BASE& record) {
    const auto* multiple = dynamic_cast<const Multiple*>(&record);
    return multiple && std::ranges::any_of(multiple->chosen, [&](const auto& chosen) {
               return std::ranges::find(multiple->offered, chosen) == multiple->offered.end();
           });
}

bool FitsItsLimits(const Document::BASE& record) {
    constexpr bool (*kTests[])(const Document::BASE&) = {
        IsOutside<Document::IntRange>,          IsOutside<Document::DoubleRange>,
        IsOutside<Document::IntStringRange>,    IsOutside<Document::DoubleStringRange>,
        IsNotAllowed<Document::IntArray>,       IsNotAllowed<Document::DoubleArray>,
        IsNotAllowed<Document::StringArray>,    IsNotOffered<Document::IntMultiple>,
        IsNotOffered<Document::DoubleMultiple>, IsNotOffered<Document::StringMultiple>};
    return std::ranges::none_of(kTests, [&](auto* isWrong) { return isWrong(record); });
}

template <class Record>
bool IsA(const Document::BASE& record) {
    return dynamic_cast<const Record*>(&record) != nullptr;
}

template <class Range>
bool HasBounds(const Document::BASE& record) {
    const auto* range = dynamic_cast<const Range*>(&record);
    return range && range->minimum < range->maximum;
}

/// Offered values, and bounds that were not understood, stay as they came.
void PutValue(Json::Value& json, const Document::BASE& record) {
    constexpr bool (*kTellRange[])(const Document::BASE&) = {
        IsA<Document::Int>,
        IsA<Document::Double>,
        HasBounds<Document::IntRange>,
        HasBounds<Document::DoubleRange>,
        HasBounds<Document::IntStringRange>,
        HasBounds<Document::DoubleStringRange>};
    const Json::Value written = record.ToJson();
    json[kSelect] = written[kSelect];
    if (std::ranges::any_of(kTellRange, [&](auto* tells) { return tells(record); }))
        json[kValueRange] = written[kValueRange];
}

/// What entries are shown until a grid would be full: a hostile document must not freeze it.
class Room {
   public:
    bool Takes(const Json::Value& entry) {
        const std::size_t values = std::max(SizeOf(entry, kSelect), SizeOf(entry, kValueRange));
        if (values > left_) return false;
        left_ -= values;
        return true;
    }

   private:
    static std::size_t SizeOf(const Json::Value& entry, const char* list) {
        const bool isList = entry.isObject() && entry[list].isArray();
        return isList && entry[list].size() > 2 ? entry[list].size() : 1;  // of a range it may vary
    }

    std::size_t left_ = 5000;
};

/// Calls `visit(json, item, key)` for every entry that is shown, until it returns true.
template <class Entries, class Visit>
void VisitEntries(Entries& entries, const std::string& path, const Visit& visit) {
    RowKeys keys;
    Room room;
    for (auto& json : entries) {
        if (!room.Takes(json)) continue;
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

std::size_t CustomEntries::HiddenCount() const {
    Room room;
    return static_cast<std::size_t>(std::ranges::count_if(
        entries_, [&](const Json::Value& entry) { return !room.Takes(entry); }));
}

EditAnswer CustomEntries::Edit(const std::string& path, std::string_view key,
                               const std::string& text, bool mayBeNegative) {
    EditAnswer answer;
    VisitEntries(entries_, path, [&](Json::Value& json, Item& item, const std::string& itemKey) {
        const auto row = NameOfCustomRow(item, itemKey, key);
        if (!row) return false;
        answer = EditCustomItem(item, {row->rowName, row->occurrence, text, mayBeNegative});
        if (answer.outcome == EditAnswer::Outcome::kAccepted) PutValue(json, *item.record);
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

CustomEntries CustomEntries::ChangedSince(const CustomEntries& before) const {
    CustomEntries changed;
    for (Json::ArrayIndex i = 0; i < entries_.size(); ++i)
        if (!before.entries_.isValidIndex(i) || entries_[i] != before.entries_[i])
            changed.entries_.append(entries_[i]);
    return changed;
}

std::size_t CustomEntries::TakeValues(const CustomEntries& others) {
    std::map<Json::Value, std::queue<const Json::Value*>> offered;
    std::size_t left = 0;
    for (const Json::Value& other : others.entries_)
        if (auto shape = ShapeOf(other)) offered[std::move(*shape)].push(&other), ++left;
    for (Json::Value& entry : entries_) {
        const auto shape = ShapeOf(entry);
        const auto found = shape ? offered.find(*shape) : offered.end();
        if (found == offered.end() || found->second.empty()) continue;
        const Json::Value& other = *found->second.front();
        found->second.pop();
        const bool isSame = entry[kSelect] == other[kSelect];
        const Item item = ReadEntry(other);
        if (!isSame && !FitsItsLimits(*item.record)) continue;
        --left;
        if (!isSame) PutValue(entry, *item.record);
    }
    return left;
}

}  // namespace sontaro
