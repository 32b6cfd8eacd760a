// The toolkit, for what is measured in its windows.
#pragma once

#include <wx/app.h>
#include <wx/init.h>

#include <stdexcept>

namespace sontaro::bench {

/// Starts the toolkit, once in a process; the event loop runs when a measurement lets it. Fails
/// without a display.
class Toolkit {
   public:
    Toolkit() {
        if (!started_ || !wxTheApp->CallOnInit()) throw std::runtime_error("there is no display");
    }

   private:
    static bool SetApp() {
        wxApp::SetInstance(new wxApp);
        return true;
    }

    const bool app_ = SetApp();
    const wxInitializer started_;
};

}  // namespace sontaro::bench
