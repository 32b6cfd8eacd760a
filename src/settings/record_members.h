// Where the values of a record are, whatever the record is.
#pragma once

#include <json/value.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include "settings/custom_entries.h"
#include "settings/elements.h"

namespace sontaro {

/// What an object of a player's document has besides the fields of its record: keys that nobody
/// here knows, and whole numbers that are too large for their fields. A record that has a member
/// `others` of this type keeps them.
class OtherKeys {
   public:
    [[nodiscard]] const Json::Value* Find(std::string_view key) const;
    /// Adds the members of an object.
    void Keep(const Json::Value& object);
    void Drop(std::string_view key);
    /// Puts them into `object`.
    void Write(Json::Value& object) const;

    bool operator==(const OtherKeys& other) const;

   private:
    std::shared_ptr<const Json::Value> keys_;  // an object that copies share; absent: none
};

/// A list of records of any type.
struct RecordList {
    struct Access {
        std::size_t (*size)(const void* list);
        void* (*at)(void* list, std::size_t place);
        std::uint32_t (*idAt)(const void* list, std::size_t place);
        void (*remake)(void* list, std::size_t count);  ///< absent: their number is fixed
    };
    void* list;
    const Access* access;
};

/// A record of any type.
struct RecordPart {
    void* record;
};

using TextList = std::vector<std::string>;
using ValueRef = std::variant<bool*, std::int32_t*, std::uint32_t*, std::int64_t*, std::uint64_t*,
                              double*, std::string*>;
using Slot = std::variant<ValueRef, TextList*, CustomEntries*, RecordPart, RecordList>;

template <class List>
inline constexpr RecordList::Access kAccess = {};
template <class Record, std::size_t kCount>
inline constexpr RecordList::Access kAccess<std::array<Record, kCount>> = {
    [](const void*) { return kCount; },
    [](void* list, std::size_t place) -> void* {
        return &(*static_cast<std::array<Record, kCount>*>(list))[place];
    },
    [](const void*, std::size_t place) { return static_cast<std::uint32_t>(place); }, nullptr};
template <class Record>
inline constexpr RecordList::Access kAccess<Elements<Record>> = {
    [](const void* list) { return static_cast<const Elements<Record>*>(list)->size(); },
    [](void* list, std::size_t place) -> void* {
        return &(*static_cast<Elements<Record>*>(list))[place];
    },
    [](const void* list, std::size_t place) {
        return static_cast<const Elements<Record>*>(list)->IdAt(place);
    },
    [](void* list, std::size_t count) { static_cast<Elements<Record>*>(list)->Remake(count); }};

}  // namespace sontaro
