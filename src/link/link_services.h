// What every link needs of its surroundings.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>

#include "base/auto_reset_event.h"
#include "base/prompts.h"
#include "base/thread_group.h"
#include "base/window_directory.h"
#include "link/socket.h"

namespace sontaro {

/// The platform calls of a link's threads. Replaced where a fault of the platform is wanted.
/// The default forwards to the platform; any thread.
class LinkIo {
   public:
    virtual ~LinkIo() = default;
    virtual NetworkStart Start() { return StartNetwork(); }
    virtual WaitResult WaitToSend(AutoResetEvent& event) { return event.Wait(); }
    virtual std::int64_t Send(Socket& socket, ByteView bytes) { return socket.Send(bytes); }
    virtual std::int64_t Receive(Socket& socket, std::span<std::uint8_t> buffer) {
        return socket.Receive(buffer);
    }
    virtual std::int64_t SendTo(Socket& socket, ByteView bytes, const Endpoint& destination) {
        return socket.SendTo(bytes, destination);
    }
    virtual std::int64_t ReceiveFrom(Socket& socket, std::span<std::uint8_t> buffer,
                                     Endpoint& sender) {
        return socket.ReceiveFrom(buffer, sender);
    }
};

/// The directory that events go to, the group that threads belong to and the message boxes; all
/// three outlive every link.
struct LinkServices {
    WindowDirectory& directory;
    ThreadGroup& threads;
    Prompts& prompts;
    std::shared_ptr<LinkIo> io = std::make_shared<LinkIo>();
};

/// One user's share of the platform's socket library, for the life of the object. Says
/// "WSAStartup err" or "WSAStartup Ver err" when there is none; the owner stays usable.
class NetworkSession {
   public:
    explicit NetworkSession(LinkServices& services);
    ~NetworkSession();
    NetworkSession(const NetworkSession&) = delete;
    NetworkSession& operator=(const NetworkSession&) = delete;

   private:
    bool started_ = false;
};

/// Packets that wait for a send thread. A second one pushed before the first is sent does not
/// overwrite it. `Push` and `WaitUntilEmpty` on the user-interface thread, `Take` on the send
/// thread, `Abandon` on any.
template <class Packet>
class Outbox {
   public:
    /// False, and `packet` is not kept, when more than `limit` bytes would be waiting.
    [[nodiscard]] bool Push(Packet packet, std::size_t size, std::size_t limit) {
        const std::lock_guard lock(mutex_);
        if (size > limit || waitingBytes_ > limit - size) return false;
        waitingBytes_ += size;
        packets_.push_back({std::move(packet), size});
        return true;
    }

    /// The next packet; until the one after it is asked for, it counts as being sent.
    std::optional<Packet> Take() {
        const std::lock_guard lock(mutex_);
        sending_ = !packets_.empty();
        if (!sending_) {
            emptied_.notify_all();
            return std::nullopt;
        }
        Packet packet = std::move(packets_.front().packet);
        waitingBytes_ -= packets_.front().size;
        packets_.pop_front();
        return packet;
    }

    /// Gives up what waits: it cannot be sent any more.
    void Abandon() {
        const std::lock_guard lock(mutex_);
        packets_.clear();
        waitingBytes_ = 0;
        sending_ = false;
        emptied_.notify_all();
    }

    /// Waits until everything has been sent or given up, `limit` at most.
    void WaitUntilEmpty(std::chrono::milliseconds limit) {
        std::unique_lock lock(mutex_);
        emptied_.wait_for(lock, limit, [this] { return packets_.empty() && !sending_; });
    }

   private:
    struct Waiting {
        Packet packet;
        std::size_t size;
    };

    std::mutex mutex_;
    std::deque<Waiting> packets_;
    std::size_t waitingBytes_ = 0;
    bool sending_ = false;
    std::condition_variable emptied_;
};

}  // namespace sontaro
