// Trying commands of a timeline on the player.
#pragma once

#include <chrono>
#include <deque>
#include <functional>

#include "base/prompts.h"
#include "base/timers.h"
#include "exchange/conversation.h"
#include "timeline/timeline_document.h"

namespace sontaro {

/// The packet by which a player tries a node's command.
[[nodiscard]] SharedPacket TestPacket(const TimeNode& node);

/// What became of the latest command that was tried. That it was sent is all that can be said: the
/// player answers nothing to it.
struct TestReport {
    enum class Outcome { kSent, kNotSent, kNoCommand };
    Outcome outcome{};
    NotSent reason{};  ///< of what was not sent
    TimeNode node;
    std::size_t number = 1;  ///< of `count` that are tried in turn
    std::size_t count = 1;
    std::chrono::system_clock::time_point time;

    /// For the user, with the time of day.
    [[nodiscard]] std::string Told() const;
};

/// Sends nodes alone, at once or in turn. User-interface thread.
class TimelineTests {
   public:
    /// All of it outlives the tests. `reported` is called with every new report and at the end of a
    /// turn.
    TimelineTests(const TimelineDocument& document, Conversation& talk, Prompts& prompts,
                  Timers& timers, std::function<void()> reported);

    /// Sends one node and tells so in a box; one without a command is refused with another.
    void TestOne(NodeId id);
    /// Sends nodes in turn, the first at once, with `gap` between two. One that could not be sent
    /// ends it; one without a command is passed over.
    void TestAll(const NodeIds& ids, std::chrono::milliseconds gap);
    void Stop();

    [[nodiscard]] bool IsRunning() const { return next_.IsRunning(); }
    [[nodiscard]] const std::optional<TestReport>& Last() const { return last_; }

   private:
    [[nodiscard]] TestReport::Outcome Send(NodeId id, std::size_t number, std::size_t count);
    void SendNext();

    const TimelineDocument& document_;
    Conversation& talk_;
    Prompts& prompts_;
    const std::function<void()> reported_;
    std::deque<NodeId> waiting_;
    std::size_t count_ = 0;
    std::chrono::milliseconds gap_{0};
    std::optional<TestReport> last_;
    Timer next_;
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>();
};

}  // namespace sontaro
