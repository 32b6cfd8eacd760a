// The size of a window whose contents come and go.
#pragma once

#include <wx/toplevel.h>

#include <string>

#include "base/json_file.h"

namespace sontaro {

/// Keeps a window as small as its contents allow, and never smaller. A width or a height that the
/// user has chosen stays as long as the contents fit in. User-interface thread.
class FittedSize {
   public:
    /// `window`, which fits its contents as they are at first, gets the size and the place that
    /// are remembered in the preferences as `name`. Both outlive this object.
    FittedSize(wxTopLevelWindow& window, std::string name, JsonFile& preferences);

    /// The contents have changed. True when the window grows: it will lay them out then, for which
    /// there is no room yet.
    bool Fit();

    /// Notes the place and the size that the user has chosen; the window is about to go.
    void Remember();

   private:
    void Note();

    wxTopLevelWindow& window_;
    const std::string name_;
    JsonFile& preferences_;
    const wxSize initial_;
    wxSize shown_;                   // as set here
    wxSize before_;                  // the one before: its events may still come
    wxSize chosen_ = wxDefaultSize;  // by the user, as far as he has
};

}  // namespace sontaro
