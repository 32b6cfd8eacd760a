// A dialog of several steps.
#pragma once

#include <wx/simplebook.h>

#include <span>
#include <vector>

#include "widgets/feature_dialog.h"
#include "widgets/wizard_page.h"

namespace sontaro {

/// Which page gets a message to the wizard. A message may have several.
struct PageRoute {
    MessageId message{};
    std::size_t page = 0;          ///< its place, from 0; it need not be the active one
    bool onlyWhileActive = false;  ///< otherwise it gets the message whichever page is active
};

/// Pages with Back, Next or Finish, and Cancel in the order that the system has for them. The
/// dialog is found by the title of its active page. Messages that its table does not name are
/// dropped.
class WizardDialog : public FeatureDialog {
   public:
    using FeatureDialog::CloseLinks;
    using FeatureDialog::Exchange;
    using FeatureDialog::Services;

    /// What pages are made in.
    [[nodiscard]] wxWindow* Book() { return book_; }

    /// What a page says of its buttons has changed.
    void ButtonsChanged();

   protected:
    /// `first` is the caption of the first page. `routes` outlives the wizard.
    WizardDialog(wxWindow* parent, Window first, const UiServices& services,
                 std::span<const PageRoute> routes);

    /// The next page in order.
    void AddPage(WizardPage* page);

    /// All pages are there: finds the dialog's size and place, remembered as `name`, and enters the
    /// first page.
    void Begin(const char* name);

   private:
    void HandleMessage(WindowMessage& message) override;
    [[nodiscard]] bool HasUnsentChanges() const override;
    void EndModal(int result) override;

    [[nodiscard]] wxSizer* MakeButtons();
    [[nodiscard]] WizardPage& Active() const { return *pages_[active_]; }
    [[nodiscard]] bool IsLast() const { return active_ + 1 == pages_.size(); }
    void GoOn();
    void GoBack();
    void TurnTo(std::size_t page);
    void Enter();

    const std::span<const PageRoute> routes_;
    std::vector<WizardPage*> pages_;
    std::size_t active_ = 0;
    wxSimplebook* book_ = nullptr;
    wxButton* back_ = nullptr;
    wxButton* next_ = nullptr;
};

}  // namespace sontaro
