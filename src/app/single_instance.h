// One running program per user and title.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace sontaro {

/// Holds the right to be the only instance with this title for as long as it lives. On Windows the
/// right is a named mutex, on Linux a lock file.
class SingleInstance {
   public:
    /// Claims the right for `title`. Where a window cannot be brought forward by another process,
    /// `raise` is called on the user-interface thread whenever a later start asks for it.
    SingleInstance(const std::string& title, std::function<void()> raise);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Whether another instance has the right.
    [[nodiscard]] bool IsAnotherRunning() const;

    /// Brings the other instance's window, and what is open over it, to the front.
    void RaiseOther() const;

   private:
    class Claim;

    std::unique_ptr<Claim> claim_;
};

}  // namespace sontaro
