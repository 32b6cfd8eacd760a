// Undoing in the dialogs that edit settings.
#pragma once

#include <functional>

#include "settings/settings_run.h"

class wxSizer;
class wxWindow;

namespace sontaro {

/// Control numbers.
inline constexpr int kUndoButton = 2821;
inline constexpr int kRedoButton = 2822;

/// Two buttons, and Ctrl+Z and Ctrl+Y anywhere in a dialog: they undo the latest change of its
/// settings and do it again. While a text is being typed, the keys are the text's.
/// User-interface thread.
class UndoButtons {
   public:
    /// Puts the buttons into `foot`, the bottom row of `dialog`, behind Open and Save. `commit`
    /// ends an edit that is open, and returns false when it is refused. What is given outlives the
    /// buttons' use.
    UndoButtons(wxWindow& dialog, wxSizer& foot, SettingsRun& run, std::function<bool()> commit);

    /// What can be undone may have changed.
    void Enable();

   private:
    void Walk(bool back);

    wxWindow& dialog_;
    SettingsRun& run_;
    std::function<bool()> commit_;
};

}  // namespace sontaro
