// The head of a settings grid.
#pragma once

#include <wx/headerctrl.h>

#include <array>

#include "widgets/wx_text.h"

namespace sontaro {

/// The titles of the two columns; they cannot be dragged, the columns can.
class SettingsGridTitles : public wxHeaderCtrl {
   public:
    explicit SettingsGridTitles(wxWindow* parent)
        : wxHeaderCtrl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, 0) {
        SetColumnCount(2);
    }

    void SetWidths(int first, int second) {
        columns_[0].SetWidth(first);
        columns_[1].SetWidth(second);
        if (GetClientSize().x <= first) return;  // there would be less than nothing to be drawn
        UpdateColumn(0);
        UpdateColumn(1);
    }

   private:
    [[nodiscard]] const wxHeaderColumn& GetColumn(unsigned column) const override {
        return columns_.at(column);
    }

    std::array<wxHeaderColumnSimple, 2> columns_ = {
        wxHeaderColumnSimple(ToWx(LocalText{"属性", "Property"}), 1, wxALIGN_LEFT, 0),
        wxHeaderColumnSimple(ToWx(LocalText{"值", "Value"}), 1, wxALIGN_LEFT, 0)};
};

}  // namespace sontaro
