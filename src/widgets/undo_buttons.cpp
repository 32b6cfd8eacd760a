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

UndoButtons::UndoButtons(wxWindow& owner, wxSizer& foot, UndoActions actions,
                         std::function<bool()> commit)
    : owner_(owner), actions_(std::move(actions)), commit_(std::move(commit)) {
    wxWindow* const ok = owner.FindWindow(wxID_OK);
    const auto add = [&](int id, const LocalText& text, char key, const char* tip, bool back) {
        auto* button = new wxButton(&owner, id, ButtonLabel(text, key));
        button->SetToolTip(tip);
        if (ok != nullptr) button->MoveBeforeInTabOrder(ok);
        button->Bind(wxEVT_BUTTON, [this, back](wxCommandEvent&) { Walk(back); });
        return button;
    };
    const int gap = owner.FromDIP(8);
    foot.Insert(kPlace, add(kUndoButton, kUndoText, 'U', "Ctrl+Z", true),
                wxSizerFlags().Border(wxLEFT, 2 * gap));
    foot.Insert(kPlace + 1, add(kRedoButton, kRedoText, 'R', "Ctrl+Y", false),
                wxSizerFlags().Border(wxLEFT, gap));
    wxGetTopLevelParent(&owner)->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        const int key = event.GetModifiers() == wxMOD_CONTROL ? event.GetKeyCode() : WXK_NONE;
        if ((key != 'Z' && key != 'Y') || !owner_.IsShown() || IsTyping()) return event.Skip();
        Walk(key == 'Z');
    });
}

UndoButtons::UndoButtons(wxWindow& owner, wxSizer& foot, SettingsRun& run,
                         std::function<bool()> commit)
    : UndoButtons(owner, foot,
                  {[&run] { return run.MayUndo(); }, [&run] { return run.MayRedo(); },
                   [&run] { run.Undo(); }, [&run] { run.Redo(); }},
                  std::move(commit)) {}

void UndoButtons::Enable() {
    owner_.FindWindow(kUndoButton)->Enable(actions_.mayUndo());
    owner_.FindWindow(kRedoButton)->Enable(actions_.mayRedo());
}

void UndoButtons::Walk(bool back) {
    if (!commit_()) return;
    if (back ? actions_.mayUndo() : actions_.mayRedo()) (back ? actions_.undo : actions_.redo)();
}

}  // namespace sontaro
