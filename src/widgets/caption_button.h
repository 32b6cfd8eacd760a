// A button whose text is not ours.
#pragma once

#include <wx/bmpbndl.h>
#include <wx/button.h>

#include <string>

namespace sontaro {

/// `text` on one line: what is no printable character, line ends and tabs among them, is a blank.
[[nodiscard]] wxString OneLine(const wxString& text);

/// As much of `text` as a tooltip takes.
[[nodiscard]] wxString TooltipText(const wxString& text);

/// Shows a caption that somebody else has written, of any length and with any characters, on one
/// line and without mnemonics. It asks for no more than a moderate width, shows as much of the
/// caption as it has room for, and the rest in a tooltip.
class CaptionButton : public wxButton {
   public:
    CaptionButton(wxWindow* parent, int id, const std::string& caption, const wxBitmapBundle& icon);

    /// Shows another caption. The button's minimal size changes; its sizer is to be laid out.
    void SetCaption(const std::string& caption);

   private:
    void ShowCut();

    wxString caption_;  // on one line
    int frame_ = 0;     // width of everything beside the text
};

}  // namespace sontaro
