// One step of a wizard.
#pragma once

#include <wx/panel.h>

#include "base/window_titles.h"
#include "link/window_message.h"

namespace sontaro {

class WizardDialog;

/// A page of a wizard, which outlives it. The active page is the one that is shown; the wizard has
/// its title and is found by it. User-interface thread.
class WizardPage : public wxPanel {
   public:
    /// The page is made within the wizard's book; `WizardDialog::AddPage` gives it its place.
    WizardPage(WizardDialog& wizard, Window window);

    /// Whose title the wizard has while the page is active.
    [[nodiscard]] Window Caption() const { return window_; }

    /// The page has become the active one, whether from the page before it or from the one behind;
    /// takes the focus.
    virtual void Entered() { SetFocus(); }

    /// The page ceases to be the active one, or the wizard closes. What reports to the wizard by
    /// the page's title ends here, before the wizard takes another.
    virtual void Left() {}

    /// Next, or Finish on the last page, has been pressed. False: the page stays. It may have begun
    /// something, or told the user what is missing.
    [[nodiscard]] virtual bool GoOn() { return true; }

    /// Back has been pressed. False: the page stays.
    [[nodiscard]] virtual bool GoBack() { return true; }

    /// Whether the buttons can be pressed at present; what changes it calls
    /// `WizardDialog::ButtonsChanged`.
    [[nodiscard]] virtual bool MayGoOn() const { return true; }
    [[nodiscard]] virtual bool MayGoBack() const { return true; }

    /// Whether the user would lose something with the wizard.
    [[nodiscard]] virtual bool HasUnsentChanges() const { return false; }

    /// A message to the wizard that its table has for this page.
    virtual void HandleMessage(WindowMessage& /*message*/) {}

   private:
    const Window window_;
};

}  // namespace sontaro
