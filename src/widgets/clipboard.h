// Texts for other programs.
#pragma once

#include <wx/clipbrd.h>

#include "widgets/wx_text.h"

namespace sontaro {

/// Puts `text` on the clipboard, where it stays when the program ends. False when the clipboard
/// cannot be had.
[[nodiscard]] inline bool CopyToClipboard(const wxString& text) {
    if (wxTheClipboard->IsOpened()) return false;
    const wxClipboardLocker lock;
    return !!lock && wxTheClipboard->SetData(new wxTextDataObject(text)) && wxTheClipboard->Flush();
}

}  // namespace sontaro
