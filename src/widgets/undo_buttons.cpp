#include "widgets/undo_buttons.h"

#include <wx/button.h>
#include <wx/propgrid/propgrid.h>
#include <wx/sizer.h>
#include <wx/textentry.h>

#include "widgets/common_texts.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr std::size_t kPlace = 3;  // behind Open, a space and Save

/// Whether the keyboard is in a text that is not as it was when it got there.
bool IsTyping() {
    wxWindow* focus = wxWindow::FindFocus();
    if (dynamic_cast<wxTextEntry*>(focus) == nullptr) return false;
    const auto* grid = dynamic_cast<wxPropertyGrid*>(focus->GetParent());
    return grid == nullptr || grid->IsEditorsValueModified();
}

}  // namespace

UndoButtons::UndoButtons(wxWindow& dialog, wxSizer& foot, SettingsRun& run,
                         std::function<bool()> commit)
    : dialog_(dialog), run_(run), commit_(std::move(commit)) {
    const auto add = [&](int id, const LocalText& text, char key, const char* tip, bool back) {
        auto* button = new wxButton(&dialog, id, ButtonLabel(text, key));
        button->SetToolTip(tip);
        button->MoveBeforeInTabOrder(dialog.FindWindow(wxID_OK));
        button->Bind(wxEVT_BUTTON, [this, back](wxCommandEvent&) { Walk(back); });
        return button;
    };
    const int gap = dialog.FromDIP(8);
    foot.Insert(kPlace, add(kUndoButton, kUndoText, 'U', "Ctrl+Z", true),
                wxSizerFlags().Border(wxLEFT, 2 * gap));
    foot.Insert(kPlace + 1, add(kRedoButton, kRedoText, 'R', "Ctrl+Y", false),
                wxSizerFlags().Border(wxLEFT, gap));
    dialog.Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        const int key = event.GetModifiers() == wxMOD_CONTROL ? event.GetKeyCode() : WXK_NONE;
        if ((key != 'Z' && key != 'Y') || IsTyping()) return event.Skip();
        Walk(key == 'Z');
    });
}

void UndoButtons::Enable() {
    dialog_.FindWindow(kUndoButton)->Enable(run_.MayUndo());
    dialog_.FindWindow(kRedoButton)->Enable(run_.MayRedo());
}

void UndoButtons::Walk(bool back) {
    if (!commit_()) return;
    if (back)
        run_.Undo();
    else
        run_.Redo();
}

}  // namespace sontaro
