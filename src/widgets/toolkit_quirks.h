// What the toolkit would do by itself and our windows do not want.
#pragma once

#include <wx/combobox.h>
#include <wx/dialog.h>
#include <wx/notebook.h>

#include <functional>
#include <string>

namespace sontaro {

/// Makes the mouse wheel choose nothing in a drop-down: a turn of the wheel on the way to something
/// else would be a choice, which may be sent at once or go unnoticed.
void IgnoreWheel(wxControl& dropDown);

/// Pages with tabs that go without a complaint of the toolkit while a screen reader listens.
class TabBook : public wxNotebook {
   public:
    using wxNotebook::wxNotebook;
    ~TabBook() override;
};

/// A dialog whose controls hear their keys (Alt and a letter) wherever in it the keyboard is.
class KeyedDialog : public wxDialog {
   public:
    using wxDialog::wxDialog;

#ifdef __WXMSW__
   protected:
    /// A panel within would look for the key in itself alone, and nobody else after it.
    bool MSWTranslateMessage(WXMSG* message) override;
#endif
};

/// Calls `scroll`, which moves the children of `window`, without a complaint of the toolkit about
/// those that are hidden.
void ScrollWithHidden(wxWindow& window, const std::function<void()>& scroll);

/// Calls `hear` with whatever the toolkit complains of from now on, on the thread where it does,
/// and prints it as ever. Called once in a process. The toolkit of Windows has no complaints.
void HearComplaints(std::function<void(const std::string&)> hear);

}  // namespace sontaro
