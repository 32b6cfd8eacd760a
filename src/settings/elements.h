// Lists of records that come and go.
#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace sontaro {

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
    [[nodiscard]] auto begin() { return records_.begin(); }
    [[nodiscard]] auto end() { return records_.end(); }
    [[nodiscard]] auto begin() const { return records_.begin(); }
    [[nodiscard]] auto end() const { return records_.end(); }
    [[nodiscard]] std::uint32_t IdAt(std::size_t place) const { return ids_[place]; }
    /// The record with that number; absent when there is none.
    [[nodiscard]] Record* Find(std::uint32_t id) {
        const std::size_t place = PlaceOf(id);
        return place < size() ? &records_[place] : nullptr;
    }
    [[nodiscard]] const Record* Find(std::uint32_t id) const {
        const std::size_t place = PlaceOf(id);
        return place < size() ? &records_[place] : nullptr;
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
        if (Find(id) != nullptr) Remove(PlaceOf(id));
    }
    /// Removes all that have one of these numbers.
    void RemoveWithIds(std::vector<std::uint32_t> ids) {
        std::ranges::sort(ids);
        std::size_t kept = 0;
        for (std::size_t place = 0; place < size(); ++place) {
            if (std::ranges::binary_search(ids, ids_[place])) continue;
            if (kept != place) records_[kept] = std::move(records_[place]);
            ids_[kept++] = ids_[place];
        }
        records_.erase(records_.begin() + static_cast<std::ptrdiff_t>(kept), records_.end());
        ids_.resize(kept);
    }
    void Remove(std::size_t place) {
        const auto at = static_cast<std::ptrdiff_t>(place);
        records_.erase(records_.begin() + at);
        ids_.erase(ids_.begin() + at);
    }

    /// Whether the records are equal; their numbers may differ.
    bool operator==(const Elements& other) const { return records_ == other.records_; }

   private:
    /// `size` for a number that there is not.
    [[nodiscard]] std::size_t PlaceOf(std::uint32_t id) const {
        return static_cast<std::size_t>(std::ranges::find(ids_, id) - ids_.begin());
    }

    std::vector<Record> records_;
    std::vector<std::uint32_t> ids_;
    std::uint32_t next_ = kFirstInserted;
};

}  // namespace sontaro
