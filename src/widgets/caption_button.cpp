#include "widgets/caption_button.h"

#include <algorithm>

#include "widgets/fonts.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr int kWidestInLetters = 11;
constexpr std::size_t kLongestTooltip = 300;
constexpr std::size_t kLongestMeasured = 300;  // wider than any screen's share of a button

/// As much of `text` as `width` has room for, with an ellipsis where something is missing.
wxString Cut(const wxWindow& window, const wxString& text, int width) {
    const auto fits = [&](const wxString& part) { return window.GetTextExtent(part).x <= width; };
    if (text.length() <= kLongestMeasured && fits(text)) return text;
    const wxString ellipsis = wxString::FromUTF8("…");
    std::size_t length = 0;
    for (std::size_t tooLong = std::min(text.length(), kLongestMeasured); tooLong - length > 1;) {
        const std::size_t middle = (length + tooLong) / 2;
        (fits(text.substr(0, middle) + ellipsis) ? length : tooLong) = middle;
    }
    return text.substr(0, length) + ellipsis;
}

}  // namespace

wxString OneLine(const wxString& text) {
    constexpr wxUint32 kDelete = 0x7F;
    constexpr wxUint32 kLineSeparator = 0x2028;
    constexpr wxUint32 kParagraphSeparator = 0x2029;
    wxString line;
    for (const wxUniChar letter : text) {
        const wxUint32 code = letter.GetValue();
        const bool breaks =
            code < ' ' || code == kDelete || code == kLineSeparator || code == kParagraphSeparator;
        line += breaks ? wxUniChar(' ') : letter;
    }
    return line;
}

wxString TooltipText(const wxString& text) {
    if (text.length() <= kLongestTooltip) return text;
    return text.substr(0, kLongestTooltip) + wxString::FromUTF8("…");
}

CaptionButton::CaptionButton(wxWindow* parent, int id, const std::string& caption,
                             const wxBitmapBundle& icon)
    : wxButton(parent, id, ToWx(caption)) {
    if (icon.IsOk()) SetBitmap(icon);
    SetCaption(caption);
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        ShowCut();
    });
}

void CaptionButton::SetCaption(const std::string& caption) {
    caption_ = OneLine(ToWx(caption));
    const wxString label = Cut(*this, caption_, kWidestInLetters * LetterWidth(*this));
    SetLabelText(label);
    SetMinSize(wxDefaultSize);
    const wxSize best = GetBestSize();
    frame_ = best.x - GetTextExtent(label).x;
    SetMinSize(best);
    ShowCut();
}

void CaptionButton::ShowCut() {
    const wxString label = Cut(*this, caption_, std::max(0, GetSize().x - frame_));
    if (label != GetLabelText()) SetLabelText(label);
    if (label == caption_)
        UnsetToolTip();
    else
        SetToolTip(TooltipText(caption_));
}

}  // namespace sontaro
