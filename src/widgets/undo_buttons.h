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

/// What is undone, and whether it can be at present.
struct UndoActions {
    std::function<bool()> mayUndo, mayRedo;
    std::function<void()> undo, redo;
};

/// Two buttons, and Ctrl+Z and Ctrl+Y anywhere in a dialog: they undo the latest change of its
/// settings and do it again. While a text is being typed, the keys are the text's.
/// User-interface thread.
class UndoButtons {
   public:
    /// Puts the buttons into `foot`, the bottom row of `owner`, behind Open and Save. `owner` is a
    /// dialog, or a page of one: the keys are its own while it is shown. `commit` ends an edit that
    /// is open, and returns false when it is refused. What is given outlives the buttons' use.
    UndoButtons(wxWindow& owner, wxSizer& foot, UndoActions actions, std::function<bool()> commit);
    UndoButtons(wxWindow& owner, wxSizer& foot, SettingsRun& run, std::function<bool()> commit);

    /// What can be undone may have changed.
    void Enable();

   private:
    void Walk(bool back);

    wxWindow& owner_;
    const UndoActions actions_;
    const std::function<bool()> commit_;
};

}  // namespace sontaro
