// A field for an IPv4 address.
#pragma once

#include <wx/panel.h>

#include <array>
#include <string>

namespace sontaro {

class NumberField;

/// Four numbers of 0 to 255. The third digit of a number and a point lead on to the next one, and
/// Backspace in an empty one leads back; a whole address may be pasted into any of them.
/// User-interface thread.
class IpField : public wxPanel {
   public:
    /// `id` is the control number of the first number; the others' follow it.
    IpField(wxWindow* parent, int id);

    /// Shows an address; the fields stay empty when it is none.
    void ShowAddress(const std::string& ip);
    /// What was given to show, until the user changes it: then the four numbers with points between
    /// them, of which those that have not been entered are missing. Empty when all are.
    [[nodiscard]] std::string Address() const;

   private:
    void BindPart(std::size_t part);
    void GoTo(std::size_t part);
    [[nodiscard]] bool Paste();
    [[nodiscard]] std::string Entered() const;

    std::array<NumberField*, 4> parts_{};
    std::string given_;
    std::string shown_;  // in its place
};

}  // namespace sontaro
