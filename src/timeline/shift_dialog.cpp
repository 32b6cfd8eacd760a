#include "timeline/shift_dialog.h"

#include <fmt/printf.h>
#include <wx/dialog.h>
#include <wx/textctrl.h>

#include "timeline/time_text.h"
#include "widgets/fonts.h"
#include "widgets/form_rows.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr LocalText kTitle = {"平移时间", "Shift by"};
constexpr LocalText kSeconds = {"将 %d 条命令移动的秒数，负数表示提前：",
                                "Seconds to move %d commands by; negative is earlier:"};
constexpr LocalText kNoSeconds = {"请输入秒数，最多三位小数，例如 -2.5。",
                                  "Type seconds with up to three decimals, such as -2.5."};
constexpr int kCharacters = 20;

}  // namespace

std::optional<std::int64_t> AskForShift(wxWindow* parent, std::size_t count, Prompts& prompts) {
    wxDialog dialog(parent, wxID_ANY, ToWx(kTitle));
    UseLanguageFont(dialog);
    const int gap = dialog.FromDIP(10);
    auto* column = new wxBoxSizer(wxVERTICAL);
    const std::string caption = fmt::sprintf(Localized(kSeconds), count);
    column->Add(new wxStaticText(&dialog, wxID_ANY, ToWx(caption)),
                wxSizerFlags().Border(wxALL, gap));
    auto* text = new wxTextCtrl(&dialog, kShiftSeconds, "", wxDefaultPosition,
                                wxSize(kCharacters * LetterWidth(dialog), wxDefaultCoord));
    column->Add(text, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, gap));
    column->Add(MakeOkCancelRow(&dialog), wxSizerFlags().Expand().Border(wxALL, gap));
    std::optional<std::int64_t> shift;
    dialog.Bind(
        wxEVT_BUTTON,
        [&](wxCommandEvent&) {
            shift = MillisecondsOfSeconds(FromWx(text->GetValue()));
            if (!shift) return prompts.Warn(Localized(kNoSeconds));
            dialog.EndModal(wxID_OK);
        },
        wxID_OK);
    dialog.SetSizerAndFit(column);
    dialog.CentreOnParent();
    text->SetFocus();
    return dialog.ShowModal() == wxID_OK ? shift : std::nullopt;
}

}  // namespace sontaro
