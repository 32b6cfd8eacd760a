// From which of this machine's addresses to scan.
#pragma once

#include <wx/combobox.h>
#include <wx/timer.h>

#include <functional>
#include <string>
#include <vector>

#include "link/local_adapters.h"

namespace sontaro {

/// Offers this machine's addresses, each with the name of its adapter, and takes any other that is
/// typed.
class AddressBox : public wxComboBox {
   public:
    using Source = std::function<std::vector<LocalAdapter>()>;

    AddressBox(wxWindow* parent, int id, Source source);

    /// Reads what is on offer again; what is shown stays.
    void Reread();

    /// The list has dropped down: when something else is on offer now, it closes and opens anew.
    void RereadOpenList();

    /// Shows an address, with the name of its adapter where that is known.
    void ShowAddress(const std::string& ip);

    /// The address that is shown, without a name; empty when there is none.
    [[nodiscard]] std::string Address() const;

    [[nodiscard]] const std::vector<LocalAdapter>& Offered() const { return offered_; }

   private:
    Source source_;
    std::vector<LocalAdapter> offered_;
    wxTimer reopening_;
};

}  // namespace sontaro
