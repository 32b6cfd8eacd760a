// The property grid inside a settings grid.
#pragma once

#include <wx/propgrid/propgrid.h>

#include <set>
#include <string>
#include <vector>

#include "base/settings_rows.h"

namespace sontaro {

/// What a property stands for: a row in its group, or the heading of a group.
struct RowPlace {
    const SettingsGroup* group;
    const SettingsRow* row;     ///< absent for a heading
    std::string caution = {};   ///< what is odd about the row's value; empty: nothing
    std::string searched = {};  ///< what a filter looks in; empty until it is needed
};

/// Chooses rows and narrows them to a text. Each property has its `RowPlace` as client data.
/// User-interface thread.
class SettingsGridRows : public wxPropertyGrid {
   public:
    using wxPropertyGrid::wxPropertyGrid;

    /// The place of a property of this grid.
    [[nodiscard]] static RowPlace& PlaceOf(const wxPGProperty& property);

    /// Whether a filter hides a row or heading.
    [[nodiscard]] static bool IsHidden(const wxPGProperty& property);

    /// Chooses a row without editing it.
    void Choose(wxPGProperty* row);

    /// Scrolls to a row, and unfolds the groups that it stands in.
    void Reveal(wxPGProperty* row);

    /// The row or heading that `key` leads to from the chosen one; absent for other keys.
    [[nodiscard]] wxPGProperty* RowAt(int key);

    /// The first row that is shown, or the first heading when all are folded; absent when nothing
    /// is shown.
    [[nodiscard]] wxPGProperty* FirstRow();

    [[nodiscard]] std::set<wxString> FoldedGroups() const;

    /// Whether a row's name or value, or a heading that it stands under, contains `text`, which is
    /// in its form to compare. A command may have blanks between its bytes.
    [[nodiscard]] static bool Contains(const wxPGProperty& row, const std::string& text);

    /// Shows `kept`, which may be absent, and the rows that contain `text`, under the headings
    /// that lead to them; everything when it is empty. Folds the groups named `folded`, no others.
    /// The chosen row may be hidden then. Returns how many rows contain the text.
    int Narrow(const std::string& text, const std::set<wxString>& folded, const wxPGProperty* kept);

    /// After rows were hidden or folded: the chosen row stays, with its edit, where it is shown.
    /// The heading that it is folded under takes its place; in that of a hidden one there is none.
    void ChooseShown();

    /// Painted in its time, with the rest of the window: the toolkit would paint all of that now,
    /// fields among it that it has not laid out yet.
    void Update() override {}

    void ScrollWindow(int across, int down, const wxRect* area) override;

   private:
    struct Filter;

    [[nodiscard]] std::vector<wxPGProperty*> ShownRows();
    static bool NarrowGroup(wxPGProperty& group, Filter& filter);
};

}  // namespace sontaro
