// The user-interface thread as the core knows it.
#pragma once

#include <functional>

namespace sontaro {

/// Runs functions on the user-interface thread.
class UiThread {
   public:
    virtual ~UiThread() = default;

    /// Runs `function` on the user-interface thread and waits until it has run; on that thread
    /// itself it is a plain call. An exception of `function` is thrown to the caller. False when
    /// the user interface has closed and `function` did not run. Any thread.
    virtual bool Call(const std::function<void()>& function) = 0;

    /// Ends the service: waiting and later calls from other threads return false.
    virtual void Close() = 0;
};

}  // namespace sontaro
