#include "widgets/fade_out.h"

namespace sontaro {

namespace {

constexpr int kStepMilliseconds = 20;
constexpr int kStep = 5;  // 51 steps: one second from opaque to invisible

}  // namespace

void FadeOut::Start(std::function<void()> gone) {
    gone_ = std::move(gone);
    if (!window_.CanSetTransparent()) return gone_();
    timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
        opacity_ -= kStep;
        if (opacity_ > 0) {
            window_.SetTransparent(static_cast<wxByte>(opacity_));
        } else {
            timer_.Stop();
            gone_();
        }
    });
    timer_.Start(kStepMilliseconds);
}

}  // namespace sontaro
