// Which rows of a table are shown, and where.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/table_model.h"

namespace sontaro {

/// How many of some rows are ticked.
enum class Ticks { kNone, kSome, kAll };

/// The rows of a model that a filter leaves, in the model's order. A row's place is its index among
/// those shown.
class TableRows {
   public:
    /// `model` outlives this object.
    explicit TableRows(TableModel& model);

    [[nodiscard]] TableModel& Model() const { return model_; }

    /// Number of rows shown.
    [[nodiscard]] std::size_t Count() const { return shown_.size(); }
    [[nodiscard]] std::size_t RowAt(std::size_t place) const { return shown_[place]; }
    /// The id that the row had when the rows were last read.
    [[nodiscard]] std::uint64_t IdAt(std::size_t place) const { return ids_[shown_[place]]; }
    /// None when the row is hidden, or there is none with that index.
    [[nodiscard]] std::optional<std::size_t> PlaceOf(std::size_t row) const;
    /// The place of the row, or of the first one behind it that is shown, or of the last one. There
    /// is a row.
    [[nodiscard]] std::size_t NearestTo(std::size_t row) const;
    /// The places of the rows with these ids, as far as they are shown, in ascending order.
    [[nodiscard]] std::vector<std::size_t> PlacesOf(std::vector<std::uint64_t> ids) const;

    /// The model's rows have changed.
    void Read();

    /// Leaves the rows that contain `text`, which is in its filter form, in any column but those
    /// of buttons; all when it is empty. They stay when they change, until all rows change or the
    /// filter does. False when that is the filter already.
    bool Filter(const std::string& text);
    [[nodiscard]] bool IsFiltered() const { return !filter_.empty(); }

    /// Shows a row of the model that the filter hides, until it changes or the rows do.
    void Show(std::size_t row);

    /// Of the rows shown; none when there are none.
    [[nodiscard]] Ticks ShownTicks() const;
    /// Ticks the rows shown, or takes their ticks away; hidden ones keep theirs.
    void TickShown(bool ticked);

   private:
    [[nodiscard]] bool Contains(std::size_t row) const;
    void Narrow(bool further);

    TableModel& model_;
    std::vector<std::size_t> shown_;  // rows of the model, ascending
    std::vector<std::uint64_t> ids_;  // of all rows of the model
    std::string filter_;
};

}  // namespace sontaro
