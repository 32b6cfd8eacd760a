// The window that the user works in.
#pragma once

#include <wx/dialog.h>

namespace sontaro {

/// The latest dialog that is shown: the innermost modal one, else the main window; absent when
/// there is none.
inline wxDialog* FrontDialog() {
    for (auto* node = wxTopLevelWindows.GetLast(); node; node = node->GetPrevious()) {
        auto* dialog = dynamic_cast<wxDialog*>(node->GetData());
        if (dialog && dialog->IsShown() && !dialog->IsBeingDeleted()) return dialog;
    }
    return nullptr;
}

}  // namespace sontaro
