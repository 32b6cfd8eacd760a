#include "widgets/modal_dialogs.h"

#include <wx/dialog.h>

namespace sontaro {

namespace {

constexpr int kStepMilliseconds = 10;

}  // namespace

void ModalDialogs::EndAll(std::function<void()> ended) {
    for (wxWindow* window : wxTopLevelWindows) {
        wxCommandEvent keep(kKeepEvent);
        window->ProcessWindowEventLocally(keep);
    }
    if (ended_) return;
    ended_ = std::move(ended);
    timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { EndInnermost(); });
    timer_.Start(kStepMilliseconds);
}

/// Some dialogs are announced twice, by their own class and by its base.
int ModalDialogs::Enter(wxDialog* dialog) {
    if (ended_) return wxID_CANCEL;
    if (open_.empty() || open_.back() != dialog) open_.push_back(dialog);
    return wxID_NONE;
}

void ModalDialogs::Exit(wxDialog* dialog) {
    if (!open_.empty() && open_.back() == dialog) open_.pop_back();
}

/// A dialog that has been ended stays in the list until its own loop, which may be the one that
/// runs this, has returned.
void ModalDialogs::EndInnermost() {
    if (open_.empty()) {
        timer_.Stop();
        ended_();
    } else if (open_.back()->IsModal()) {
        open_.back()->EndModal(wxID_CANCEL);
    } else {
        CloseSystemBox();
    }
}

}  // namespace sontaro
