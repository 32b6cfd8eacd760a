// The way a window leaves.
#pragma once

#include <wx/timer.h>
#include <wx/toplevel.h>

#include <functional>

namespace sontaro {

/// Makes a window fade within a second. Used on the user-interface thread.
class FadeOut {
   public:
    /// `window` outlives this object.
    explicit FadeOut(wxTopLevelWindow& window) : window_(window) {}

    /// Lets the window fade, at once where the desktop cannot show it, and then calls `gone`, in
    /// which this object may end.
    void Start(std::function<void()> gone);

    /// Whether the window is leaving.
    [[nodiscard]] bool HasStarted() const { return gone_ != nullptr; }

   private:
    wxTopLevelWindow& window_;
    std::function<void()> gone_;
    wxTimer timer_;
    int opacity_ = 255;
};

}  // namespace sontaro
