// Time that is moved by hand.
#pragma once

#include <map>

#include "base/timers.h"

namespace sontaro::test {

/// Calls what is due when the test says that time has gone by, in the order of the times.
class ManualTimers final : public Timers {
   public:
    Id After(std::chrono::milliseconds delay, std::function<void()> call) override {
        calls_.emplace(now_ + delay, std::pair{++lastId_, std::move(call)});
        return lastId_;
    }
    void Cancel(Id id) override {
        std::erase_if(calls_, [id](const auto& entry) { return entry.second.first == id; });
    }

    void Advance(std::chrono::milliseconds time) {
        const auto end = now_ + time;
        while (!calls_.empty() && calls_.begin()->first <= end) {
            now_ = calls_.begin()->first;
            const auto call = std::move(calls_.begin()->second.second);
            calls_.erase(calls_.begin());
            call();
        }
        now_ = end;
    }
    /// How many calls are to come.
    [[nodiscard]] std::size_t Waiting() const { return calls_.size(); }

   private:
    std::chrono::milliseconds now_{0};
    std::multimap<std::chrono::milliseconds, std::pair<Id, std::function<void()>>> calls_;
    Id lastId_ = 0;
};

}  // namespace sontaro::test
