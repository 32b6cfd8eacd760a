#include "widgets/fade_out.h"

namespace sontaro {

namespace {

constexpr unsigned kMilliseconds = 1000;

}  // namespace

// The system's own animation of windows: blended, then hidden.
void FadeOut::Start(std::function<void()> gone) {
    gone_ = std::move(gone);
    window_.HideWithEffect(wxSHOW_EFFECT_BLEND, kMilliseconds);
    gone_();
}

}  // namespace sontaro
