// How the parts of a table look.
#pragma once

#include <wx/dc.h>
#include <wx/window.h>

#include "base/table_rows.h"

namespace sontaro {

/// How a cell is shown.
struct CellLook {
    wxString text = {};  ///< on one line
    CellKind kind{};
    bool chosen = false;
    bool pressed = false;  ///< of a button
};

/// Draws in the system's colours of the moment, so that any theme stays readable.
class TableDrawing {
   public:
    /// `window` gives the font; it outlives this object.
    explicit TableDrawing(wxWindow& window) : window_(window) {}

    /// Height of a row, in any script and with a tick box.
    [[nodiscard]] int RowHeight() const;
    [[nodiscard]] int HeaderHeight() const;
    /// Width in which `characters` letters and a column's caption find room.
    [[nodiscard]] int ColumnWidth(int characters, const wxString& caption) const;
    /// Width of the labels of `rows` rows.
    [[nodiscard]] int LabelWidth(std::size_t rows) const;
    /// Width of a cell that has room for `text`.
    [[nodiscard]] int WidthOf(const wxString& text, CellKind kind) const;

    void Cell(wxDC& canvas, const wxRect& area, const CellLook& look) const;
    /// The frame around the cell that has the keyboard.
    void Cursor(wxDC& canvas, const wxRect& area, bool chosen) const;
    /// A row's tick box, its number and, where there is a caution, a mark.
    void RowLabel(wxDC& canvas, const wxRect& area, std::size_t number, bool ticked,
                  bool marked) const;
    void ColumnLabel(wxDC& canvas, const wxRect& area, const wxString& caption,
                     CellKind kind) const;
    /// The tick box of all rows.
    void Corner(wxDC& canvas, const wxRect& area, Ticks ticks, bool enabled) const;
    /// What is said in place of rows.
    void Message(wxDC& canvas, const wxRect& area, const wxString& text) const;

    [[nodiscard]] static wxColour LineColour();

   private:
    [[nodiscard]] int Space() const { return window_.FromDIP(4); }
    [[nodiscard]] int MarkWidth() const;
    static void Header(wxDC& canvas, const wxRect& area);
    void Text(wxDC& canvas, wxRect area, const wxString& text, int alignment) const;
    void TickBox(wxDC& canvas, const wxRect& area, int flags) const;

    wxWindow& window_;
};

}  // namespace sontaro
