// The property grid that every settings dialog stands on.
#pragma once

#include <wx/panel.h>

#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>

#include "base/prompts.h"
#include "base/settings_rows.h"
#include "widgets/settings_grid_rows.h"

class wxSizer;
class wxStaticText;
class wxTextCtrl;

namespace sontaro {

class SettingsGridTitles;

/// Shows settings in two columns, groups and sub-groups in their own order, with an explanation of
/// the chosen row below. What differs from what the
/// player holds is bold. Up and Down choose a row, Enter edits
/// it, Escape leaves the edit. User-interface thread.
class SettingsGrid : public wxPanel {
   public:
    /// Decides on an edit. Is given every text.
    using EditHandler = std::function<EditAnswer(const SettingsEdit&)>;

    /// `id` is the control number of the property grid inside. Refusals and questions for a
    /// colour go to `prompts`.
    SettingsGrid(wxWindow* parent, int id, bool withTitles, Prompts& prompts, EditHandler onEdit);
    /// An edit that is still open is dropped.
    ~SettingsGrid() override;

    /// Shows other rows. The chosen row, the folded groups and a text that is being typed stay with
    /// their keys, as far as the new rows have them too; so does the place that is scrolled to.
    void Fill(SettingsRows groups);

    /// What is shown while there are no rows.
    void SetEmptyText(const wxString& text);

    /// Narrows the grid to the rows whose name or shown value, or a heading above them, contains
    /// `text`, whatever the case of its letters; blanks at its ends do not count. All groups are
    /// unfolded meanwhile. An empty text shows all rows again and folds the groups that were folded
    /// before. Returns how many rows contain the text. A row whose edit is open is committed when
    /// it would be hidden; when that is refused the row stays, and so does a row that is changed,
    /// until the text changes.
    int Filter(const wxString& text);

    /// Ends the edit that is open in a cell. False when it is refused: the user is told, and the
    /// text stays in the cell. What is only ignored is no refusal. A refused text is told of when
    /// another row is chosen, too, but not when the keyboard only goes elsewhere.
    [[nodiscard]] bool Commit();

    /// Gives a row another value without asking the edit handler, as changed by the user. Scrolls
    /// to it and chooses it, unless a filter hides it or another row is being typed into, which
    /// stays chosen. False when there is no row with that key.
    bool Change(const std::string& key, const std::string& text);

    /// The chosen row as it was filled in; absent for a heading.
    [[nodiscard]] const SettingsRow* ChosenRow() const;
    /// The group of the chosen row or heading; absent when none is chosen. Both last until `Fill`.
    [[nodiscard]] const SettingsGroup* ChosenGroup() const;
    /// Whether the chosen row is only the first one, chosen when the keyboard came here; the user
    /// has not chosen it yet.
    [[nodiscard]] bool IsOffered() const;

    /// What the player holds, by the keys of the rows: a row that differs from it is bold, whoever
    /// changed it. As long as that is not known, what the user changes is.
    void ShowConfirmed(std::map<std::string, std::string> values);

    /// Whether the user has entered a cell, or changed the text in it.
    [[nodiscard]] bool IsEditing() const;
    /// Whether there is a row or heading with this key, hidden or not.
    [[nodiscard]] bool Has(const std::string& key) const;
    /// Chooses the row or heading with this key and scrolls to it. False, and nothing happens, when
    /// there is none or a filter hides it.
    bool ChooseKey(const std::string& key);
    /// Chooses no row any more.
    void ChooseNone();

    /// The property grid, whose properties have the keys of the rows and groups as their names.
    [[nodiscard]] wxPropertyGrid& Properties();

   private:
    /// What a rebuild keeps.
    struct View {
        std::set<wxString> folded;
        wxString chosen;
        wxString typed;
        bool typing = false;
        int scroll = 0;
    };

    void LayOut();
    void BindEvents();
    void ShowRowsOrText();
    void WrapEmptyText();
    void AppendGroup(wxPGProperty* parent, const SettingsGroup& group);
    [[nodiscard]] wxPGProperty* PropertyNamed(const wxString& key) const;
    [[nodiscard]] bool KeepsEdit(const std::string& filter) const;
    void Present(wxPGProperty* row);
    [[nodiscard]] View CurrentView() const;
    void Restore(const View& view);
    void ChooseFirst();

    void OnChanging(wxPropertyGridEvent& event);
    void OnChanged(wxPropertyGridEvent& event);
    void OnKey(wxKeyEvent& event);
    void MoveOn(bool back);
    void Mark(wxPGProperty& property, const std::string& caution);
    [[nodiscard]] bool IsLeft() const;
    void Reject(const wxString& name, const EditAnswer& answer);
    void Refuse(const wxString& name, const std::string& reason);
    void AskForColour(const wxString& name);
    void ShowHelp();
    void MarkChange(wxPGProperty& property, const std::string& value);
    void PlaceTitles();

    Prompts& prompts_;
    EditHandler onEdit_;
    SettingsRows groups_;
    std::map<std::string, std::string> confirmed_;
    std::deque<RowPlace> places_;  // what the properties point to
    SettingsGridRows* grid_ = nullptr;
    SettingsGridTitles* titles_ = nullptr;
    wxSizer* emptyArea_ = nullptr;
    wxStaticText* empty_ = nullptr;
    wxTextCtrl* help_ = nullptr;
    wxString emptyText_;
    std::string filter_;          // in its form to compare
    int found_ = 0;               // rows that contain it
    std::set<wxString> folded_;   // before there was a filter
    wxString chosen_;             // by the user, before a filter hid it
    wxString offered_;            // the row that the keyboard found when it came
    EditAnswer accepted_;         // to the edit in progress
    bool committing_ = false;     // because something is to be done with the edit
    wxString telling_;            // the row about whose refusal the user is told, or is to be
    bool columnsChosen_ = false;  // by the user
};

}  // namespace sontaro
