#include "widgets/fitted_size.h"

#include <wx/gdicmn.h>
#include <wx/sizer.h>

#include "widgets/window_memory.h"

namespace sontaro {

FittedSize::FittedSize(wxTopLevelWindow& window, std::string name, JsonFile& preferences)
    : window_(window),
      name_(std::move(name)),
      preferences_(preferences),
      initial_(window.GetSize()),
      shown_(initial_),
      before_(initial_) {
    RestoreWindow(window_, nullptr, name_, preferences_);
    Note();
    window_.Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        Note();
    });
}

/// What is of another size than set here has been given it by the user.
void FittedSize::Note() {
    if (window_.IsMaximized()) return;
    const wxSize size = window_.GetSize();
    if (size.x != shown_.x && size.x != before_.x) chosen_.x = size.x;
    if (size.y != shown_.y && size.y != before_.y) chosen_.y = size.y;
}

bool FittedSize::Fit() {
    const wxSize screen = wxGetClientDisplayRect().GetSize();
    wxSize least = window_.GetSizer()->ComputeFittingWindowSize(&window_);
    least.DecTo(screen);
    window_.SetMinSize(least);
    if (window_.IsMaximized()) return false;
    wxSize size = least;
    size.IncTo(chosen_);
    size.DecTo(screen);
    before_ = shown_;
    shown_ = size;
    const wxSize now = window_.GetSize();
    window_.SetSize(size);
    return size.x > now.x || size.y > now.y;
}

void FittedSize::Remember() {
    wxSize size = initial_;
    if (chosen_.x != wxDefaultCoord) size.x = chosen_.x;
    if (chosen_.y != wxDefaultCoord) size.y = chosen_.y;
    window_.SetMinSize(wxDefaultSize);
    if (!window_.IsMaximized()) window_.SetSize(size);
    RememberWindow(window_, nullptr, name_, preferences_);
}

}  // namespace sontaro
