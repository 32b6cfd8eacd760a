// A player that exists only in software, for tests and demonstrations.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "base/result.h"
#include "base/thread_group.h"
#include "simulator/packet_history.h"
#include "simulator/player_options.h"
#include "simulator/timeline_playback.h"
#include "simulator/upload_faults.h"

namespace sontaro::simulator {

/// Listens on TCP and for discovery requests to its own address; broadcasts reach it through
/// `HearRequest`. `Start` and `Stop` are called by one thread, everything else by any.
class SimulatedPlayer final : private ConnectionOwner {
   public:
    explicit SimulatedPlayer(PlayerOptions options);
    ~SimulatedPlayer() override { Stop(); }
    SimulatedPlayer(const SimulatedPlayer&) = delete;
    SimulatedPlayer& operator=(const SimulatedPlayer&) = delete;

    /// Starts listening. Fails when the address or port cannot be had or the file is unusable.
    Status Start();
    /// Ends every connection and thread. The player can be started again, on the same port.
    void Stop();

    /// Address and TCP port; the port is known after the first start.
    [[nodiscard]] Endpoint Address() const;
    [[nodiscard]] const PlayerIdentity& Identity() const { return options_.identity; }

    /// A copy of the state at this moment.
    [[nodiscard]] PlayerState State() override;
    /// Changes the state as if by the player's own menu. `change` must not call the player.
    void ChangeState(const std::function<void(PlayerState&)>& change);
    /// Has the player's serial port receive `bytes`, 1 to 1023, for the next keep-alive that finds
    /// none before them. False, and nothing happens, for another number, or while a thousand such
    /// sequences wait.
    bool AddSerialBytes(Bytes bytes);

    /// The requests received on every connection, in order. A request is entered when it has been
    /// served: what it changes is visible in `State` by then.
    [[nodiscard]] std::vector<DevicePacket> ReceivedPackets() const { return history_.Copy(); }
    void ForgetPackets() { history_.Clear(); }
    /// The first request received, before or within `limit`, that `matches`.
    [[nodiscard]] std::optional<DevicePacket> WaitForPacket(const PacketPredicate& matches,
                                                            std::chrono::milliseconds limit) const {
        return history_.WaitFor(matches, limit);
    }

    /// Changes the faults; connections stay, and what is being sent goes out as it began.
    void SetFaults(const FaultScript& faults);
    /// Ends every connection orderly, in the middle of a packet if need be.
    void DropConnections();
    [[nodiscard]] std::size_t ConnectionCount() const;
    /// Waits until there are `count` connections; false when there are not after `limit`.
    [[nodiscard]] bool WaitForConnectionCount(std::size_t count,
                                              std::chrono::milliseconds limit) const;

    /// Answers a datagram from `sender` when it is a discovery request that the player hears.
    void HearRequest(ByteView datagram, const Endpoint& sender);

   private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] FaultScript Faults() const override;
    [[nodiscard]] std::optional<Answer> Serve(const DevicePacket& request) override;
    [[nodiscard]] Answer AnswerTo(const DevicePacket& request, const FaultScript& faults,
                                  PlayerState& state);
    void Answered(const DevicePacket& reply) override;
    void Note(std::string_view event) override;

    Status Load();
    Status Open();
    Status StartThreads();
    void AcceptConnections();
    void Welcome(Socket socket);
    void Remove(const std::shared_ptr<Connection>& connection);
    void ListenForRequests(const std::shared_ptr<Socket>& socket);
    void ListenOrRefuse(std::unique_lock<std::mutex>& lock);
    void CloseListener(std::unique_lock<std::mutex>& lock);
    void RestartAtOnce();
    void RunRestarts();
    void Leave(std::unique_lock<std::mutex>& lock);
    void Return(std::unique_lock<std::mutex>& lock);
    void RunTimeline();
    void Print(std::string_view command);
    void AdvanceToNow();
    Status Save();

    const PlayerOptions options_;
    const std::string name_;  // the address, for the log
    PacketHistory history_;

    mutable std::mutex mutex_;  // guards everything below
    mutable std::condition_variable changed_;
    bool running_ = false;
    std::uint16_t port_;
    PlayerState state_;
    TimelinePlayback timeline_;
    Clock::time_point stateTime_ = Clock::now();  // of `state_.position`
    Clock::time_point startTime_;
    std::size_t serialEvents_ = 0;  // of the script that have come since then
    std::string savedState_;
    FaultScript faults_;
    UploadFaults uploadFaults_;
    bool away_ = false;                                 // because of a restart
    std::optional<Clock::time_point> nextRestartStep_;  // to leave, or to return when away
    std::chrono::milliseconds absence_{0};              // that the restart takes
    std::shared_ptr<Socket> listener_;                  // absent while connections are refused
    std::vector<std::shared_ptr<Socket>> discovery_;    // one per port; absent while stopped
    std::vector<std::shared_ptr<Connection>> connections_;

    ThreadGroup threads_;
};

}  // namespace sontaro::simulator
