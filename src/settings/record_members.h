// Where the values of a record are, whatever the record is.
#pragma once

#include <json/value.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include "settings/custom_entries.h"

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

/// Records that come and go. Each has a number of its own, which it keeps when others go: those
/// that a document gives are counted from 0, those that are inserted from a number beyond.
template <class Record>
class Elements {
   public:
    /// The lowest number of those that are inserted.
    static constexpr std::uint32_t kFirstInserted = 1U << 20;

    [[nodiscard]] std::size_t size() const { return records_.size(); }
    [[nodiscard]] Record& operator[](std::size_t place) { return records_[place]; }
    [[nodiscard]] const Record& operator[](std::size_t place) const { return records_[place]; }
    [[nodiscard]] auto begin() const { return records_.begin(); }
    [[nodiscard]] auto end() const { return records_.end(); }
    [[nodiscard]] std::uint32_t IdAt(std::size_t place) const { return ids_[place]; }
    /// The record with that number; absent when there is none.
    [[nodiscard]] Record* Find(std::uint32_t id) {
        const auto own = std::ranges::find(ids_, id);
        return own == ids_.end() ? nullptr
                                 : &records_[static_cast<std::size_t>(own - ids_.begin())];
    }
    [[nodiscard]] const Record* Find(std::uint32_t id) const {
        return const_cast<Elements*>(this)->Find(
            id);  // NOLINT(cppcoreguidelines-pro-type-const-cast)
    }

    /// `count` new records in place of all.
    void Remake(std::size_t count) {
        records_.assign(count, Record());
        ids_.resize(count);
        for (std::uint32_t id = 0; std::uint32_t & own : ids_) own = id++;
    }
    /// Puts a record before the one at `place`, which is at most `size`.
    void Insert(std::size_t place, Record record) {
        const auto at = static_cast<std::ptrdiff_t>(place);
        records_.insert(records_.begin() + at, std::move(record));
        ids_.insert(ids_.begin() + at, next_++);
    }
    /// Puts a record whose number is known, and no other's, before those with higher ones.
    void InsertInOrder(std::uint32_t id, Record record) {
        const auto place = std::ranges::upper_bound(ids_, id) - ids_.begin();
        records_.insert(records_.begin() + place, std::move(record));
        ids_.insert(ids_.begin() + place, id);
    }
    /// Gives the records other numbers, one each.
    void Renumber(std::vector<std::uint32_t> ids) { ids_ = std::move(ids); }
    /// Removes the record with that number, if there is one.
    void RemoveWithId(std::uint32_t id) {
        const auto own = std::ranges::find(ids_, id);
        if (own != ids_.end()) Remove(static_cast<std::size_t>(own - ids_.begin()));
    }
    void Remove(std::size_t place) {
        const auto at = static_cast<std::ptrdiff_t>(place);
        records_.erase(records_.begin() + at);
        ids_.erase(ids_.begin() + at);
    }

    /// Whether the records are equal; their numbers may differ.
    bool operator==(const Elements& other) const { return records_ == other.records_; }

   private:
    std::vector<Record> records_;
    std::vector<std::uint32_t> ids_;
    std::uint32_t next_ = kFirstInserted;
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
