// What is open over the main window, and how it ends when the program has to.
#pragma once

#include <wx/event.h>
#include <wx/modalhook.h>
#include <wx/timer.h>

#include <functional>
#include <vector>

namespace sontaro {

/// Sent to every window of the program when it is about to be ended from outside: nothing may run
/// after the handlers. Whoever has something to keep writes it there and then.
inline const wxEventTypeTag<wxCommandEvent> kKeepEvent(wxNewEventType());

/// The modal dialogs that are open, the system's own boxes among them. User-interface thread.
class ModalDialogs : private wxModalDialogHook {
   public:
    ModalDialogs() { Register(); }

    /// Sends `kKeepEvent`, then, from the event loop, ends the dialogs as Cancel does, the
    /// innermost first and each when the one over it has gone, and then calls `ended`, in which
    /// this object may end. From now on a dialog that is opened is cancelled at once. A second call
    /// keeps once more and changes nothing else.
    void EndAll(std::function<void()> ended);

   private:
    int Enter(wxDialog* dialog) override;
    void Exit(wxDialog* dialog) override;
    void EndInnermost();

    std::vector<wxDialog*> open_;  // the innermost last
    std::function<void()> ended_;
    wxTimer timer_;
};

/// Closes the innermost box that the toolkit has the system run, where it cannot end such a box
/// itself. Nothing happens when there is none.
void CloseSystemBox();

}  // namespace sontaro
