#include "venue/document_shape.h"

#include <json/value.h>

#include <algorithm>
#include <set>

#include "base/local_text.h"
#include "settings/row_keys.h"
#include "venue/document_leaves.h"

namespace sontaro {

namespace {

constexpr LocalText kOtherType = {"值的类型与播放器的不同。",
                                  "the value is of another type than the player's."};

enum class Type : std::uint8_t { kNull, kBool, kNumber, kText, kList, kObject };

Type TypeOf(const Json::Value& value) {
    if (value.isBool()) return Type::kBool;
    if (value.isNumeric()) return Type::kNumber;
    if (value.isString()) return Type::kText;
    if (value.isArray()) return Type::kList;
    return value.isObject() ? Type::kObject : Type::kNull;
}

std::string Joined(const std::string& key, const std::string& part) {
    return key.empty() ? part : key + '/' + part;
}

struct Shape {
    std::map<std::string, std::set<Type>> types;  ///< of the values under each key
    std::vector<std::string> emptyLists;

    [[nodiscard]] bool Lacks(const std::string& key) const {
        return !types.contains(key) &&
               std::ranges::none_of(emptyLists,
                                    [&](const std::string& list) { return IsUnder(key, list); });
    }
};

// NOLINTBEGIN(misc-no-recursion): values hold values, which the reader limits

void AddShape(const Json::Value& json, const std::string& key, Shape& shape) {
    shape.types[key].insert(TypeOf(json));
    if (json.isArray()) {
        if (json.empty()) shape.emptyLists.push_back(key);
        for (const Json::Value& element : json) AddShape(element, Joined(key, "*"), shape);
    } else if (json.isObject()) {
        RowKeys keys;
        for (auto member = json.begin(); member != json.end(); ++member) {
            AddShape(*member, Joined(key, keys.Next(member.name())), shape);
        }
    }
}

/// Whether what leads to the key is missing as well, which says enough.
bool IsWithin(const std::string& key, const std::vector<std::string>& keys) {
    return !keys.empty() && IsUnder(key, keys.back());
}

std::vector<std::string> KeysBeyond(const Shape& shape, const Shape& other) {
    std::vector<std::string> keys;
    for (const auto& [key, types] : shape.types)
        if (other.Lacks(key) && !IsWithin(key, keys)) keys.push_back(key);
    return keys;
}

}  // namespace

ShapeDifference CompareShapes(const Json::Value& first, const Json::Value& second) {
    if (!first.isObject() || first.empty()) return {};
    Shape held;
    Shape added;
    AddShape(first, "", held);
    AddShape(second, "", added);
    ShapeDifference difference{KeysBeyond(added, held), KeysBeyond(held, added), {}};
    for (const auto& [key, types] : added.types) {
        const auto known = held.types.find(key);
        if (known != held.types.end() && !std::ranges::includes(known->second, types))
            difference.otherTypes.emplace(key, Localized(kOtherType));
    }
    return difference;
}

void AddMissing(const Json::Value& present, const std::vector<std::string>& missing,
                Json::Value& target, const std::string& key) {
    if (present.isObject() && target.isObject()) {
        RowKeys keys;
        for (auto member = present.begin(); member != present.end(); ++member) {
            const std::string own = Joined(key, keys.Next(member.name()));
            if (target.isMember(member.name()))
                AddMissing(*member, missing, target[member.name()], own);
            else if (std::ranges::find(missing, own) != missing.end())
                target[member.name()] = *member;
        }
    }
    if (present.isArray() && target.isArray())
        for (Json::ArrayIndex i = 0; i < std::min(present.size(), target.size()); ++i)
            AddMissing(present[i], missing, target[i], Joined(key, "*"));
}

// NOLINTEND(misc-no-recursion)

}  // namespace sontaro
