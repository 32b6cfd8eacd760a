// A field for a whole number.
#pragma once

#include <wx/textctrl.h>

#include <cstdint>

namespace sontaro {

/// Takes digits only, typed or pasted, and no number above `most`: that one is put in its place.
/// What it is given to show it keeps all the same, until the user changes it. User-interface
/// thread.
class NumberField : public wxTextCtrl {
   public:
    /// As wide as `characters` digits.
    NumberField(wxWindow* parent, int id, std::int64_t most, int characters);

    /// Shows any number; tells nobody.
    void ShowNumber(std::int64_t number);
    /// 0 while the field is empty.
    [[nodiscard]] std::int64_t Number() const;

   private:
    void OnText();

    const std::int64_t most_;
    std::int64_t given_ = 0;
};

}  // namespace sontaro
