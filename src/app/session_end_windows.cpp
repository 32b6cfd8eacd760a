#include "app/session_end.h"

namespace sontaro {

// Left to the toolkit, the question would close the main window, and the end destroy dialogs that
// are still running.
void OnSessionEnd(wxApp& app, std::function<void()> ended) {
    app.Bind(wxEVT_QUERY_END_SESSION, [](wxCloseEvent&) { /* no veto: the session may end */ });
    app.Bind(wxEVT_END_SESSION, [ended = std::move(ended)](wxCloseEvent&) { ended(); });
}

}  // namespace sontaro
