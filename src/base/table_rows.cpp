#include "base/table_rows.h"

#include <algorithm>
#include <numeric>

#include "base/filter_text.h"

namespace sontaro {

TableRows::TableRows(TableModel& model) : model_(model) { Read(); }

std::optional<std::size_t> TableRows::PlaceOf(std::size_t row) const {
    const auto place = std::ranges::lower_bound(shown_, row);
    if (place == shown_.end() || *place != row) return std::nullopt;
    return static_cast<std::size_t>(place - shown_.begin());
}

std::size_t TableRows::NearestTo(std::size_t row) const {
    const auto place = std::ranges::lower_bound(shown_, row);
    return std::min(static_cast<std::size_t>(place - shown_.begin()), shown_.size() - 1);
}

std::vector<std::size_t> TableRows::PlacesOf(std::vector<std::uint64_t> ids) const {
    std::ranges::sort(ids);
    std::vector<std::size_t> places;
    for (std::size_t place = 0; place < shown_.size() && places.size() < ids.size(); ++place)
        if (std::ranges::binary_search(ids, IdAt(place))) places.push_back(place);
    return places;
}

void TableRows::Read() {
    ids_.resize(model_.RowCount());
    for (std::size_t row = 0; row < ids_.size(); ++row) ids_[row] = model_.IdOf(row);
    Narrow(false);
}

bool TableRows::Filter(const std::string& text) {
    if (text == filter_) return false;
    const bool further = IsFiltered() && text.find(filter_) != std::string::npos;
    filter_ = text;
    Narrow(further);
    return true;
}

/// Of what a shorter text has left, a longer one needs no more than another look; a row that is
/// shown in spite of the filter is looked at with the others.
void TableRows::Narrow(bool further) {
    if (!further) {
        shown_.resize(ids_.size());
        std::iota(shown_.begin(), shown_.end(), std::size_t{0});
    }
    if (IsFiltered()) std::erase_if(shown_, [this](std::size_t row) { return !Contains(row); });
}

bool TableRows::Contains(std::size_t row) const {
    const std::span<const TableColumn> columns = model_.Columns();
    for (std::size_t column = 0; column < columns.size(); ++column) {
        if (columns[column].kind == CellKind::kButton) continue;
        if (LowerCase(model_.Text(row, column)).find(filter_) != std::string::npos) return true;
    }
    return false;
}

void TableRows::Show(std::size_t row) {
    const auto place = std::ranges::lower_bound(shown_, row);
    if (place == shown_.end() || *place != row) shown_.insert(place, row);
}

Ticks TableRows::ShownTicks() const {
    if (shown_.empty()) return Ticks::kNone;
    const bool first = model_.IsTicked(shown_.front());
    const bool same =
        std::ranges::all_of(shown_, [&](std::size_t row) { return model_.IsTicked(row) == first; });
    if (!same) return Ticks::kSome;
    return first ? Ticks::kAll : Ticks::kNone;
}

void TableRows::TickShown(bool ticked) {
    for (const std::size_t row : shown_) model_.SetTicked(row, ticked);
}

}  // namespace sontaro
