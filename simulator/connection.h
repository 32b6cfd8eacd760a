// One TCP connection to a simulated player.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <string_view>

#include "link/socket.h"
#include "simulator/fault_script.h"
#include "simulator/packet_parser.h"
#include "simulator/player_commands.h"

namespace sontaro::simulator {

/// What a connection asks of the player it belongs to. Called from the connection's two threads.
class ConnectionOwner {
   public:
    virtual ~ConnectionOwner() = default;

    /// The faults in force.
    [[nodiscard]] virtual FaultScript Faults() const = 0;
    /// The player's state at this moment.
    [[nodiscard]] virtual PlayerState State() = 0;
    /// Serves a request that has arrived whole; none when nothing is to be answered.
    [[nodiscard]] virtual std::optional<Answer> Serve(const DevicePacket& request) = 0;
    /// A reply has gone out.
    virtual void Answered(const DevicePacket& reply) = 0;
    /// Writes an event to the player's log.
    virtual void Note(std::string_view event) = 0;
};

/// The times of a connection.
struct Pacing {
    /// Least time between two packets: the tool takes packets that arrive together for one.
    std::chrono::milliseconds spacing{40};
    std::chrono::milliseconds pushInterval{1000};  ///< between two reports of the position
};

/// Reads requests on one thread; sends replies and reports, in the faulty ways that the player's
/// script has, on another. The socket closes with the object.
class Connection {
   public:
    /// `owner` outlives both threads.
    Connection(Socket socket, ConnectionOwner& owner, Pacing pacing);

    /// The body of the receiving thread; returns when the connection has ended.
    void Receive();
    /// The body of the sending thread; returns soon after the connection has ended.
    void Transmit();
    /// Ends the connection orderly, whatever its threads are doing. Any thread.
    void End();

   private:
    using Clock = std::chrono::steady_clock;

    struct Outgoing {
        DevicePacket packet;
        bool isReply = false;
    };

    [[nodiscard]] bool AwaitRead(std::size_t bytes, std::size_t speed);
    [[nodiscard]] bool ServeAll(ByteView bytes, PacketParser& parser);
    [[nodiscard]] bool ServeOne(const DevicePacket& request);
    [[nodiscard]] bool Queue(Answer answer);
    void Leave();

    [[nodiscard]] std::optional<Outgoing> Next();
    void QueueReports();
    [[nodiscard]] bool Deliver(const Outgoing& outgoing);
    [[nodiscard]] bool SendPacket(ByteView bytes, const FaultScript& faults);
    [[nodiscard]] bool SendPiece(ByteView piece, const FaultScript& faults);
    [[nodiscard]] bool PauseUntil(Clock::time_point time);

    Socket socket_;
    ConnectionOwner& owner_;
    const Pacing pacing_;

    std::mutex mutex_;
    std::condition_variable changed_;
    bool ended_ = false;
    std::deque<Outgoing> queue_;
    std::optional<Clock::time_point> nextReport_;

    Clock::time_point readUntil_{};  // of the receiving thread

    // The sending thread's own.
    Clock::time_point lastSent_{};
    std::size_t sentBytes_ = 0;
    std::optional<DevicePacket> reportedUsbVideos_;
    int reports_ = 0;
};

}  // namespace sontaro::simulator
