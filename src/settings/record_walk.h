// What all walks over a table of records share.
#pragma once

#include <string_view>

#include "settings/record_fields.h"

namespace sontaro::records {

template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

/// A record for the tables' functions, which find its members alike for readers and for writers.
inline void* Findable(const void* record) {
    return const_cast<void*>(record);  // NOLINT(cppcoreguidelines-pro-type-const-cast)
}

/// Where the value of a field is. Who looks for it leaves the record as it is.
inline Slot SlotOf(const Field& field, const void* record) { return field.slot(Findable(record)); }

/// What the record keeps besides; absent when it keeps nothing.
inline OtherKeys* OthersOf(const RecordTable& table, const void* record) {
    return table.others != nullptr ? table.others(Findable(record)) : nullptr;
}

/// The number that the document holds in the place of a value that cannot hold it.
inline const Json::Value* RawOf(const RecordTable& table, const Field& field, const void* record) {
    const OtherKeys* others = OthersOf(table, record);
    return others ? others->Find(field.key) : nullptr;
}

/// Calls `visit(record, place, id)` for every record of a list.
template <class Visit>
// NOLINTNEXTLINE(misc-no-recursion): records hold records
void VisitList(const RecordList& list, const Visit& visit) {
    const std::size_t size = list.access->size(list.list);
    for (std::size_t place = 0; place < size; ++place)
        visit(list.access->at(list.list, place), place, list.access->idAt(list.list, place));
}

/// What labels count from 1.
inline int NumberOf(std::size_t place) { return static_cast<int>(place) + 1; }

}  // namespace sontaro::records
