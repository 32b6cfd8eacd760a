// A drop-down of names, which may be typed as well.
#pragma once

#include <wx/combobox.h>

#include <optional>
#include <string>
#include <vector>

namespace sontaro {

/// Offers names, and keeps the text that stands in it whatever they become. While the user looks
/// at the names they stay: others, moving under the pointer, would be chosen by mistake.
/// User-interface thread.
class NameChoice : public wxComboBox {
   public:
    NameChoice(wxWindow* parent, int id, const wxSize& size);

    /// Offers these names instead.
    void Offer(const std::vector<std::string>& names);

   private:
    bool isOpen_ = false;
    std::optional<std::vector<std::string>> next_;  // to be offered when it is closed
};

}  // namespace sontaro
