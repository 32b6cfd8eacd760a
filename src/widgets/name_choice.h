// A drop-down of names, which may be typed as well.
#pragma once

#include <wx/combobox.h>

#include <string>
#include <vector>

namespace sontaro {

/// Offers names, and keeps the text that stands in it, and the caret, whatever they become. While
/// the user looks at the names they stay: others, moving under the pointer, would be chosen by
/// mistake. User-interface thread.
class NameChoice : public wxComboBox {
   public:
    /// As wide as `letters`, or as it is given room, however long the names are.
    NameChoice(wxWindow* parent, int id, int letters);

    /// Offers these names instead. The user is shown no more than 200 at once: of more, those that
    /// contain what has been typed come before the others.
    void Offer(std::vector<std::string> names);
    /// Has one of the names stand there, if there are any: the first unless another one does.
    void ChooseOffered();

    /// Only the names: what becomes of them is nothing that the user has entered.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): the parent would clear the text as well
    void Clear() override { wxChoice::Clear(); }

   private:
    [[nodiscard]] wxArrayString NamesToShow() const;
    void ShowNames();

    std::vector<std::string> names_;
    wxArrayString shown_;
    bool isOpen_ = false;
    bool isLate_ = false;  // other names are to be shown when it is closed
};

}  // namespace sontaro
