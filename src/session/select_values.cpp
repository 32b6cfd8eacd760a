#include "session/select_values.h"

#include <deque>
#include <optional>
#include <utility>

#include "base/json.h"
#include "base/local_text.h"
#include "settings/custom_entries.h"
#include "settings/custom_setting_kinds.h"

namespace sontaro {

namespace {

constexpr const char* kGroups = "CustomSettings";
constexpr const char* kKey = "keyVal";
constexpr const char* kKind = "inputType";
constexpr const char* kSelect = "select";

constexpr LocalText kOtherKind = {"播放器的同名设置属于另一类型。",
                                  "The player's setting of that key is of another kind."};
constexpr LocalText kNotWithinLimits = {"播放器的设置不允许这个值。",
                                        "The player's setting does not allow this value."};

/// Calls `visit(key, item)` for every setting, titles left out.
template <class Document, class Visit>
void VisitItems(Document& document, const Visit& visit) {
    if (!document.isObject() || !document.isMember(kGroups)) return;
    auto& groups = document[kGroups];
    if (!groups.isArray()) return;
    for (auto& group : groups) {
        if (!group.isArray()) continue;
        for (auto& item : group)
            if (item.isObject() && item.isMember(kKind) && item.isMember(kSelect) &&
                TextOf(item[kKind]) != TitleKind().keyword)
                visit(TextOf(item[kKey]), item);
    }
}

/// Whether the setting allows the value: it is taken over where it does.
bool Allows(const Json::Value& item, const Json::Value& value) {
    Json::Value present(Json::arrayValue);
    present.append(item);
    Json::Value wanted = present;
    wanted[0U][kSelect] = value;
    CustomEntries entries;
    CustomEntries others;
    entries.Read(present);
    others.Read(wanted);
    static_cast<void>(entries.TakeValues(others));
    return entries.ToJson()[0U][kSelect] != item[kSelect];
}

/// Settings by their keys, those of one key in their order.
template <class Item>
using ByKey = std::map<std::string, std::deque<Item>>;

/// The next setting of that key, which is used up; absent: there is none left.
template <class Item>
std::optional<Item> Next(ByKey<Item>& items, const std::string& key) {
    const auto found = items.find(key);
    if (found == items.end() || found->second.empty()) return std::nullopt;
    Item next = found->second.front();
    found->second.pop_front();
    return next;
}

/// Why the setting keeps its value; empty: it has the other one's.
std::string TakeValue(Json::Value& item, const Json::Value& other) {
    if (item[kKind] != other[kKind]) return Localized(kOtherKind);
    if (!Allows(item, other[kSelect])) return Localized(kNotWithinLimits);
    item[kSelect] = other[kSelect];
    return {};
}

}  // namespace

TakenValues TakeSelectValues(Json::Value& document, const Json::Value& others) {
    ByKey<const Json::Value*> offered;
    VisitItems(others, [&](const std::string& key, const Json::Value& other) {
        offered[key].push_back(&other);
    });
    TakenValues taken;
    VisitItems(document, [&](const std::string& key, Json::Value& item) {
        const auto other = Next(offered, key);
        if (!other) return taken.missing.push_back(key);
        if (item[kSelect] == (**other)[kSelect]) return;
        if (std::string why = TakeValue(item, **other); !why.empty())
            taken.refused.emplace(key, std::move(why));
        else
            taken.changed.push_back(key);
    });
    for (const auto& [key, left] : offered)
        taken.unknown.insert(taken.unknown.end(), left.size(), key);
    return taken;
}

void TakeSelectChanges(Json::Value& document, const Json::Value& before, const Json::Value& after) {
    ByKey<Json::Value> values;
    VisitItems(before, [&](const std::string& key, const Json::Value& item) {
        values[key].push_back(item[kSelect]);
    });
    ByKey<std::optional<Json::Value>> changes;
    VisitItems(after, [&](const std::string& key, const Json::Value& item) {
        const bool isSame = Next(values, key) == item[kSelect];
        changes[key].push_back(isSame ? std::nullopt : std::optional(item[kSelect]));
    });
    VisitItems(document, [&](const std::string& key, Json::Value& item) {
        if (const auto change = Next(changes, key); change && *change) item[kSelect] = **change;
    });
}

}  // namespace sontaro
