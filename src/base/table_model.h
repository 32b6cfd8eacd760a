// What a table shows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "base/local_text.h"

namespace sontaro {

/// What the cells of a column are.
enum class CellKind {
    kText,
    kNumber,  ///< stands at the right
    kButton,  ///< is pressed; a cell without a text is none
};

/// One column. Columns stay as long as the table.
struct TableColumn {
    LocalText caption{};
    int characters = 0;  ///< width at first, in Latin letters; never narrower than the caption
    CellKind kind = CellKind::kText;
};

/// The rows that a table shows, by their index. The table asks for what is in view, and keeps no
/// texts: whoever changes the rows tells it so, before control is back in the event loop. Texts are
/// UTF-8. User-interface thread.
class TableModel {
   public:
    virtual ~TableModel() = default;

    [[nodiscard]] virtual std::span<const TableColumn> Columns() const = 0;
    [[nodiscard]] virtual std::size_t RowCount() const = 0;
    [[nodiscard]] virtual std::string Text(std::size_t row, std::size_t column) const = 0;

    /// A number that is the row's own wherever it stands: by it, chosen rows stay chosen when the
    /// rows change.
    [[nodiscard]] virtual std::uint64_t IdOf(std::size_t row) const = 0;

    /// Whether rows can be ticked. Those of a table without ticks have no labels at their left.
    [[nodiscard]] virtual bool HasTicks() const { return true; }
    [[nodiscard]] virtual bool IsTicked(std::size_t /*row*/) const { return false; }
    /// The user has ticked the row, or taken the tick away.
    virtual void SetTicked(std::size_t /*row*/, bool /*ticked*/) {}

    /// What is odd about a row or about one of its cells, which is marked; empty: nothing.
    [[nodiscard]] virtual std::string RowCaution(std::size_t /*row*/) const { return {}; }
    [[nodiscard]] virtual std::string CellCaution(std::size_t /*row*/,
                                                  std::size_t /*column*/) const {
        return {};
    }

   protected:
    TableModel() = default;
    TableModel(const TableModel&) = default;
    TableModel& operator=(const TableModel&) = default;
};

}  // namespace sontaro
