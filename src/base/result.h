// A value, or the reason why there is none.
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace sontaro {

/// Why an operation failed, for a developer or a log line; dialogs make the user's text.
struct Error {
    std::string reason;
};

/// What a function returns that can fail and has a value to give.
template <class T>
class [[nodiscard]] Result {
   public:
    Result(T value) : state_(std::move(value)) {}
    Result(Error error) : state_(std::move(error)) {}

    [[nodiscard]] bool ok() const { return std::holds_alternative<T>(state_); }
    explicit operator bool() const { return ok(); }

    /// The value; only when `ok()`.
    T& operator*() { return std::get<T>(state_); }
    const T& operator*() const { return std::get<T>(state_); }
    T* operator->() { return &std::get<T>(state_); }
    const T* operator->() const { return &std::get<T>(state_); }

    /// The reason; only when not `ok()`.
    [[nodiscard]] const std::string& reason() const { return std::get<Error>(state_).reason; }

   private:
    std::variant<T, Error> state_;
};

/// The value of operations that only succeed or fail.
struct Done {};
using Status = Result<Done>;

}  // namespace sontaro
