// A progress bar that says how far it is.
#pragma once

#include <wx/control.h>
#include <wx/settings.h>

namespace sontaro {

/// Shows a share in percent as a bar, and in its middle as a text such as "42.0%", which is also
/// its label. A text that finds no room is printed smaller. Has no keyboard. User-interface thread.
class TextProgress : public wxControl {
   public:
    TextProgress(wxWindow* parent, int id);

    /// From 0 to 100; what is beyond counts as these. Draws only when something looks different.
    void SetPercent(double percent);

    [[nodiscard]] bool AcceptsFocus() const override { return false; }

   protected:
    [[nodiscard]] wxSize DoGetBestClientSize() const override;

   private:
    void Paint();
    void PaintPart(wxDC& canvas, const wxRect& part, wxSystemColour ground,
                   wxSystemColour ink) const;
    void FitFont(wxDC& canvas, const wxSize& room) const;
    /// Pixels of the bar; all of them at 100 percent alone.
    [[nodiscard]] int FilledWidth() const;

    double percent_ = 0;
};

}  // namespace sontaro
