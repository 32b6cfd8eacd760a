#include "widgets/message_prompts.h"

#include <wx/msgdlg.h>

#include "base/window_titles.h"
#include "widgets/common_texts.h"
#include "widgets/front_dialog.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

int Show(const std::string& text, long style) {
    wxGenericMessageDialog box(FrontDialog(), ToWx(text), ToWx(ApplicationTitle()), style);
    if ((style & wxYES_NO) != 0) {
        box.SetYesNoLabels(ButtonLabel(kYesText, 'Y'), ButtonLabel(kNoText, 'N'));
    } else {
        box.SetOKLabel(ButtonLabel(kOkText, 'O'));
    }
    return box.ShowModal();
}

}  // namespace

void MessagePrompts::Inform(const std::string& text) { Show(text, wxOK | wxICON_INFORMATION); }

void MessagePrompts::Warn(const std::string& text) { Show(text, wxOK | wxICON_QUESTION); }

bool MessagePrompts::Confirm(const std::string& text) {
    return Show(text, wxYES_NO | wxNO_DEFAULT | wxICON_QUESTION) == wxID_YES;
}

}  // namespace sontaro
