// One running program per user and title.
#pragma once

#include <wx/ipc.h>  // first: the next one needs its settings
#include <wx/snglinst.h>

#include <functional>
#include <memory>
#include <string>

namespace sontaro {

/// Holds the right to be the only instance with this title for as long as it lives.
class SingleInstance {
   public:
    /// Claims the right for `title`; `raise` is called on the user-interface thread whenever a
    /// later start asks this one to come forward.
    SingleInstance(const std::string& title, std::function<void()> raise);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Whether another instance has the right.
    [[nodiscard]] bool IsAnotherRunning() const { return checker_.IsAnotherRunning(); }

    /// Asks the other instance to come forward.
    void RaiseOther() const;

   private:
    wxString service_;
    wxSingleInstanceChecker checker_;
    std::unique_ptr<wxServer> server_;
};

}  // namespace sontaro
