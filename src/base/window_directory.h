// Windows find one another, and link threads find windows, by their titles.
#pragma once

#include <functional>
#include <list>
#include <memory>
#include <span>
#include <string>

#include "base/ui_thread.h"

namespace sontaro {

struct WindowMessage;

/// The open windows by exact, localised title. Outlives every window and link thread.
class WindowDirectory {
   public:
    using Handler = std::function<void(WindowMessage&)>;

    /// A window's entry; removing it (destruction) closes the window's mailbox.
    class Registration {
       public:
        Registration() = default;
        ~Registration() { Remove(); }
        Registration(Registration&& other) noexcept { *this = std::move(other); }
        Registration& operator=(Registration&& other) noexcept;

       private:
        friend class WindowDirectory;
        void Remove();

        WindowDirectory* directory_ = nullptr;
        const void* entry_ = nullptr;
    };

    explicit WindowDirectory(UiThread& uiThread) : uiThread_(uiThread) {}
    WindowDirectory(const WindowDirectory&) = delete;
    WindowDirectory& operator=(const WindowDirectory&) = delete;

    /// Enters a window; of windows with one title the latest is found. User-interface thread.
    [[nodiscard]] Registration Register(std::string title, Handler handler);

    /// Whether a window with exactly this title is open. User-interface thread.
    [[nodiscard]] bool Find(const std::string& title) const;

    /// Delivers `message` to the window titled `title` and waits until it is handled: on the
    /// user-interface thread a direct call, from any other thread handed to that one. The window
    /// may move the message's record away, and may leave an answer in it. False when there is no
    /// such window or the directory has shut down. What the window's handler throws is thrown to
    /// the caller.
    bool Send(const std::string& title, WindowMessage& message);
    bool Send(const std::string& title, WindowMessage&& message) { return Send(title, message); }

    /// Runs `function` on the user-interface thread and waits; false after `ShutDown`. Any thread.
    bool Call(const std::function<void()>& function) { return uiThread_.Call(function); }

    /// The user-interface thread that the windows live on.
    [[nodiscard]] UiThread& Thread() { return uiThread_; }

    /// Ends delivery from other threads: waiting senders return, later ones are refused at once.
    void ShutDown() { uiThread_.Close(); }

   private:
    struct Entry {
        std::string title;
        std::shared_ptr<const Handler> handler;  // shared: a handler may remove its own entry
    };

    [[nodiscard]] const Entry* FindEntry(const std::string& title) const;

    UiThread& uiThread_;
    std::list<Entry> entries_;  // latest first
};

}  // namespace sontaro
