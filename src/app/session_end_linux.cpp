#include <csignal>

#include "app/session_end.h"

namespace sontaro {

namespace {

std::function<void()>& SessionEnded() {
    static std::function<void()> ended;
    return ended;
}

}  // namespace

// The toolkit calls the handler from its event loop, not from within the signal.
void OnSessionEnd(wxApp& app, std::function<void()> ended) {
    SessionEnded() = std::move(ended);
    app.SetSignalHandler(SIGTERM, [](int signal) {
        std::signal(signal, SIG_DFL);
        SessionEnded()();
    });
}

}  // namespace sontaro
