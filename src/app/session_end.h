// The end of the desktop session.
#pragma once

#include <wx/app.h>

#include <functional>

namespace sontaro {

/// Calls `ended`, on the user-interface thread, when the system ends the program. What it does not
/// write before it returns may never be written. Called once, with the running `app`.
/// Source: on Windows the end of the session, to which the program never objects; elsewhere
/// SIGTERM, which a session manager sends: the first one, a second one kills.
void OnSessionEnd(wxApp& app, std::function<void()> ended);

}  // namespace sontaro
