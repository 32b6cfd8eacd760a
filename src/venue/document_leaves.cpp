#include "venue/document_leaves.h"

#include <algorithm>

#include "base/json.h"
#include "settings/custom_setting_kinds.h"
#include "settings/row_keys.h"

namespace sontaro {

namespace {

constexpr const char* kKey = "keyVal";
constexpr const char* kInputType = "inputType";
constexpr const char* kSelect = "select";
constexpr const char* kScreen = "screenID";
constexpr const char* kTitle = "#title";  // no name has that, escaped as they are

/// The member whose own members and elements have the shortest paths; empty: there is none.
std::string_view InnerMember(const SettingsBlockKind& kind) {
    if (kind.describesItself) return "CustomSettings";
    return kind.readBlock == kBlockScreenSplitRead ? "configData" : "";
}

/// Some, titles above all, have no key.
bool IsSetting(const Json::Value& value) {
    return value.isObject() && (value[kKey].isString() || value.isMember(kInputType));
}
bool IsTitle(const Json::Value& value) {
    return IsSetting(value) && TextOf(value[kInputType]) == TitleKind().keyword &&
           ReadCustomSetting(value).record;
}

std::string Joined(const std::string& path, const std::string& part) {
    return path.empty() ? part : path + '/' + part;
}

/// The last title counts; without one the group has the name of nothing.
std::string GroupName(const Json::Value& group) {
    std::string name;
    for (const Json::Value& element : group)
        if (IsTitle(element))
            name = TextOf(element[TextOf(element[kKey]).empty() ? kSelect : kKey]);
    return name;
}

bool IsGroup(const Json::Value& value) {
    return value.isArray() && std::ranges::any_of(value, IsSetting);
}

/// The parts of paths for the elements of an array.
class ElementNames {
   public:
    std::string Next(const Json::Value& element, std::size_t place) {
        if (IsTitle(element)) return kTitle;
        if (IsSetting(element)) return keys_.Next(TextOf(element[kKey]));
        if (IsGroup(element)) return keys_.Next(GroupName(element));
        if (element.isObject() && element[kScreen].isInt())
            return keys_.Next(element[kScreen].asString());
        return std::to_string(place);
    }

   private:
    RowKeys keys_;
};

// NOLINTBEGIN(misc-no-recursion): values hold values, which the reader limits

/// Calls `visit` with every leaf of `json`.
template <class Value, class Visit>
void VisitLeaves(Value& json, const std::string& path, const std::string& item,
                 std::string_view inner, const Visit& visit) {
    const bool isWhole = !item.empty();
    if (isWhole || (!json.isObject() && !json.isArray()) || json.empty())
        return visit(path, item, json);
    if (json.isArray()) {
        ElementNames names;
        for (std::size_t place = 0; auto& element : json)
            VisitLeaves(element, Joined(path, names.Next(element, place++)), item, {}, visit);
        return;
    }
    const std::string own = IsSetting(json) ? path : "";
    RowKeys keys;
    for (auto member = json.begin(); member != json.end(); ++member) {
        const bool isInner = !inner.empty() && member.name() == inner;
        VisitLeaves(*member, isInner ? path : Joined(path, keys.Next(member.name())), own, {},
                    visit);
    }
}

// NOLINTEND(misc-no-recursion)

}  // namespace

bool DocumentLeaf::IsSelect() const {
    return !item.empty() && path.size() == item.size() + 1 + std::string_view(kSelect).size() &&
           path.ends_with(kSelect);
}

bool DocumentLeaf::IsOfTitle() const { return item.ends_with(kTitle); }

std::vector<DocumentLeaf> LeavesOf(const SettingsBlockKind& kind, const Json::Value& document) {
    std::vector<DocumentLeaf> leaves;
    VisitLeaves(document, {}, {}, InnerMember(kind),
                [&](const std::string& path, const std::string& item, const Json::Value& value) {
                    leaves.push_back({path, item, &value});
                });
    return leaves;
}

// NOLINTNEXTLINE(misc-no-recursion): values hold values, which the reader limits
bool IsSameLeaf(const Json::Value& first, const Json::Value& second) {
    if (first.isNumeric() && second.isNumeric())
        return first == second || first.asDouble() == second.asDouble();
    if (first.isArray() && second.isArray()) return std::ranges::equal(first, second, IsSameLeaf);
    return first == second;
}

std::string LeafText(const Json::Value& value) {
    return value.isString() ? TextOf(value) : WriteJsonLine(value);
}

bool IsUnder(std::string_view path, std::string_view key) {
    return path == key ||
           (path.size() > key.size() && path.starts_with(key) && path[key.size()] == '/');
}

void TakeLeaves(const SettingsBlockKind& kind, Json::Value& document, const Json::Value& others,
                const std::function<bool(const DocumentLeaf&)>& isWanted) {
    std::map<std::string, const Json::Value*> values;
    for (const DocumentLeaf& leaf : LeavesOf(kind, others)) values.emplace(leaf.path, leaf.value);
    VisitLeaves(document, {}, {}, InnerMember(kind),
                [&](const std::string& path, const std::string& item, Json::Value& value) {
                    const auto other = values.find(path);
                    if (other != values.end() && isWanted({path, item, &value}) &&
                        !IsSameLeaf(value, *other->second))
                        value = *other->second;
                });
}

}  // namespace sontaro
