#include "widgets/settings_grid_rows.h"

#include <algorithm>
#include <limits>

#include "base/filter_text.h"
#include "base/hex_command.h"
#include "widgets/toolkit_quirks.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

/// The headings that a row stands under, its name, and what stands beside it, which is no text for
/// a check box.
std::string SearchedText(const wxPGProperty& property, const SettingsRow& row) {
    std::string text = row.name;
    if (row.kind != RowKind::kYesNo) text += '\n' + FromWx(property.GetDisplayedString());
    for (const wxPGProperty* group = property.GetParent(); group && group->GetParent();
         group = group->GetParent())
        text += '\n' + FromWx(group->GetLabel());
    return LowerCase(text);
}

/// The bytes of a command, typed with blanks between them; empty when `text` is none.
std::string CommandIn(const std::string& text) {
    const bool hasBlanks = text.find(' ') != std::string::npos;
    return hasBlanks ? NormalizedHexCommand(text, LetterCase::kLower).value_or("") : "";
}

}  // namespace

/// What rows are compared with, and how many of them contain it.
struct SettingsGridRows::Filter {
    const std::string& text;
    const std::set<wxString>& folded;
    const wxPGProperty* kept = nullptr;
    int found = 0;
};

RowPlace& SettingsGridRows::PlaceOf(const wxPGProperty& property) {
    return *static_cast<RowPlace*>(property.GetClientData());
}

bool SettingsGridRows::IsHidden(const wxPGProperty& property) {
    return property.HasFlag(wxPG_PROP_HIDDEN) != 0;
}

void SettingsGridRows::Choose(wxPGProperty* row) {
    Reveal(row);
    SelectProperty(row, false);
}

/// Editors that are about to go must have gone before the rows scroll: the toolkit would move each
/// of them along and complain of it.
void SettingsGridRows::Reveal(wxPGProperty* row) {
    DeletePendingObjects();
    EnsureVisible(row);
}

/// A cell that was left still has its editor, hidden until there is time to delete it.
void SettingsGridRows::ScrollWindow(int across, int down, const wxRect* area) {
    ScrollWithHidden(*this, [&] { wxPropertyGrid::ScrollWindow(across, down, area); });
}

wxPGProperty* SettingsGridRows::RowAt(int key) {
    constexpr int kAll = std::numeric_limits<int>::max() / 2;
    const std::vector<wxPGProperty*> rows = ShownRows();
    const auto chosen = std::find(rows.begin(), rows.end(), GetSelection());
    if (chosen == rows.end()) return nullptr;
    const int page = std::max(1, GetClientSize().y / GetRowHeight() - 1);
    const int place = static_cast<int>(chosen - rows.begin());
    const auto rowBeyond = [&](int count) {
        const int last = static_cast<int>(rows.size()) - 1;
        return rows[static_cast<std::size_t>(std::clamp(place + count, 0, last))];
    };
    switch (key) {
        case WXK_UP: return rowBeyond(-1);
        case WXK_DOWN: return rowBeyond(1);
        case WXK_PAGEUP: return rowBeyond(-page);
        case WXK_PAGEDOWN: return rowBeyond(page);
        case WXK_HOME: return rowBeyond(-kAll);
        case WXK_END: return rowBeyond(kAll);
        default: return nullptr;
    }
}

/// Forwards only: backwards the toolkit's iterator leaves out the rows of a group's last sub-group.
std::vector<wxPGProperty*> SettingsGridRows::ShownRows() {
    std::vector<wxPGProperty*> rows;
    for (auto at = GetIterator(wxPG_ITERATE_VISIBLE); !at.AtEnd(); at.Next())
        rows.push_back(at.GetProperty());
    return rows;
}

wxPGProperty* SettingsGridRows::FirstRow() {
    auto at = GetIterator(wxPG_ITERATE_VISIBLE);
    wxPGProperty* first = at.GetProperty();
    while (!at.AtEnd() && at.GetProperty()->IsCategory()) at.Next();
    return at.AtEnd() ? first : at.GetProperty();
}

std::set<wxString> SettingsGridRows::FoldedGroups() const {
    std::set<wxString> folded;
    for (auto at = GetIterator(wxPG_ITERATE_ALL); !at.AtEnd(); at.Next()) {
        const wxPGProperty* property = at.GetProperty();
        // One without rows says that it is not expanded.
        const bool isFolded = property->HasFlag(wxPG_PROP_COLLAPSED) != 0;
        if (property->IsCategory() && isFolded) folded.insert(property->GetName());
    }
    return folded;
}

bool SettingsGridRows::Contains(const wxPGProperty& row, const std::string& text) {
    if (text.empty()) return true;
    RowPlace& place = PlaceOf(row);
    if (!place.row) return false;
    if (place.searched.empty()) place.searched = SearchedText(row, *place.row);
    if (place.searched.find(text) != std::string::npos) return true;
    const std::string command =
        place.row->kind == RowKind::kHexCommand ? CommandIn(text) : std::string();
    return !command.empty() && place.searched.find(command) != std::string::npos;
}

/// Flags first and one calculation at the end, where hiding a property at a time would calculate
/// the whole grid for each.
int SettingsGridRows::Narrow(const std::string& text, const std::set<wxString>& folded,
                             const wxPGProperty* kept) {
    Filter filter{text, folded, kept};
    DeletePendingObjects();
    NarrowGroup(*GetRoot(), filter);
    m_pState->VirtualHeightChanged();
    RecalculateVirtualSize();
    CorrectEditorWidgetPosY();  // the rows may have moved within the same height
    Refresh();
    return filter.found;
}

// NOLINTNEXTLINE(misc-no-recursion): groups stand within groups
bool SettingsGridRows::NarrowGroup(wxPGProperty& group, Filter& filter) {
    bool showsAny = filter.text.empty();
    for (unsigned i = 0; i < group.GetChildCount(); ++i) {
        wxPGProperty& child = *group.Item(i);
        bool shows = &child == filter.kept;
        if (child.IsCategory()) {
            shows = NarrowGroup(child, filter);
            child.SetExpanded(!filter.folded.contains(child.GetName()));
        } else if (Contains(child, filter.text)) {
            shows = true;
            ++filter.found;
        }
        child.ChangeFlag(wxPG_PROP_HIDDEN, !shows);
        showsAny |= shows;
    }
    return showsAny;
}

void SettingsGridRows::ChooseShown() {
    wxPGProperty* row = GetSelection();
    if (row && row->IsVisible()) return Reveal(row);
    const bool isFolded = row != nullptr && !IsHidden(*row);
    while (isFolded && !row->IsVisible()) row = row->GetParent();
    if (isFolded) return Choose(row);
    ClearSelection();
    DeletePendingObjects();
    Scroll(0, 0);
}

}  // namespace sontaro
