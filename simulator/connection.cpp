#include "simulator/connection.h"

#include <algorithm>
#include <cstdint>
#include <random>

#include "simulator/video_commands.h"

namespace sontaro::simulator {

namespace {

constexpr std::size_t kReceiveBufferSize = 0x10000;
constexpr std::uint32_t kOversizeLength = 0xFFFFFFF0;
constexpr std::chrono::milliseconds kPauseBetweenPieces{1};
constexpr std::size_t kReadsInASecond = 50;  // at least, of a slow player: it hears of ends

/// Bytes of piece number `piece`. A long packet is not cut finely to its end: that would last.
std::size_t PieceSize(std::size_t cut, std::size_t piece) {
    constexpr std::size_t kFinePieces = 64;
    constexpr std::size_t kCoarseSize = 1460;
    if (cut == 0) return SIZE_MAX;
    return piece < kFinePieces ? cut : std::max(cut, kCoarseSize);
}

/// The same bytes in every run; they do not begin like a packet.
Bytes Garbage() {
    constexpr std::size_t kSize = 32;
    std::minstd_rand random;
    Bytes bytes(kSize);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random() >> 8);
    return bytes;
}

/// What a player that reads so many bytes in a second, or as many as come (0), takes in one go.
std::size_t BytesAtOnce(std::size_t speed) {
    if (speed == 0) return kReceiveBufferSize;
    return std::clamp<std::size_t>(speed / kReadsInASecond, 1, kReceiveBufferSize);
}

bool operator==(const DevicePacket& left, const DevicePacket& right) {
    return left.header == right.header && left.payload == right.payload;
}

}  // namespace

Connection::Connection(Socket socket, ConnectionOwner& owner, Pacing pacing)
    : socket_(std::move(socket)), owner_(owner), pacing_(pacing) {
    socket_.SendAtOnce();
}

void Connection::Receive() {
    Bytes buffer(kReceiveBufferSize);
    PacketParser parser;
    for (;;) {
        const std::size_t speed = owner_.Faults().slow;
        const std::int64_t count = socket_.Receive(std::span(buffer).first(BytesAtOnce(speed)));
        if (count < 0 && IsTransientReceiveError(LastSocketError())) continue;
        if (count <= 0) break;
        const auto size = static_cast<std::size_t>(count);
        if (!AwaitRead(size, speed) || !ServeAll(ByteView(buffer).first(size), parser)) break;
    }
    Leave();
}

/// Waits as long as reading so many bytes takes a slow player; false when the connection ends
/// before. What a wait is too long shortens the next one.
bool Connection::AwaitRead(std::size_t bytes, std::size_t speed) {
    constexpr std::chrono::milliseconds kSlack{1};
    if (speed == 0) return true;
    const std::chrono::duration<double> time(static_cast<double>(bytes) /
                                             static_cast<double>(speed));
    readUntil_ = std::max(readUntil_, Clock::now() - kSlack) +
                 std::chrono::duration_cast<Clock::duration>(time);
    return PauseUntil(readUntil_);
}

bool Connection::ServeAll(ByteView bytes, PacketParser& parser) {
    for (;;) {
        const Result<const DevicePacket*> request = parser.Take(bytes);
        if (!request) {
            owner_.Note("closes the connection: " + request.reason());
            socket_.Shutdown();
            return false;
        }
        if (!*request) return true;
        if (!ServeOne(**request)) return false;
    }
}

bool Connection::ServeOne(const DevicePacket& request) {
    std::optional<Answer> answer = owner_.Serve(request);
    if (answer && answer->endsConnection) {
        socket_.Shutdown();
        return false;
    }
    if (answer && !Queue(std::move(*answer))) return false;
    if (!owner_.Faults().drop) return true;
    socket_.ResetOnClose();
    return false;
}

/// Hands an answer to the sending thread; false when the connection has ended.
bool Connection::Queue(Answer answer) {
    const std::lock_guard lock(mutex_);
    queue_.push_back({std::move(answer.reply), true});
    if (answer.startPushes && !nextReport_) nextReport_ = Clock::now();
    changed_.notify_all();
    return !ended_;
}

/// Lets both threads go. The socket stays as it is, so that a reset is still a reset.
void Connection::Leave() {
    const std::lock_guard lock(mutex_);
    ended_ = true;
    changed_.notify_all();
}

void Connection::End() {
    Leave();
    socket_.Shutdown();
}

void Connection::Transmit() {
    for (auto outgoing = Next(); outgoing && Deliver(*outgoing);) outgoing = Next();
}

std::optional<Connection::Outgoing> Connection::Next() {
    std::unique_lock lock(mutex_);
    while (!ended_ && queue_.empty()) {
        if (!nextReport_) {
            changed_.wait(lock);
        } else if (Clock::now() < *nextReport_) {
            changed_.wait_until(lock, *nextReport_);
        } else {
            nextReport_ = Clock::now() + pacing_.pushInterval;
            lock.unlock();
            QueueReports();
            lock.lock();
        }
    }
    if (ended_) return std::nullopt;
    Outgoing outgoing = std::move(queue_.front());
    queue_.pop_front();
    return outgoing;
}

/// The list of videos is repeated now and then: a report can get lost on its way.
void Connection::QueueReports() {
    constexpr int kReportsBetweenLists = 5;
    const PlayerState state = owner_.State();
    DevicePacket usbVideos = UsbVideosPacket(state);
    const bool usbChanged = !reportedUsbVideos_ || !(*reportedUsbVideos_ == usbVideos);
    const bool usbDue = reports_++ % kReportsBetweenLists == 0;
    const std::lock_guard lock(mutex_);
    queue_.push_back({PositionPacket(state)});
    if (usbChanged || usbDue) queue_.push_back({usbVideos});
    reportedUsbVideos_ = std::move(usbVideos);
}

bool Connection::Deliver(const Outgoing& outgoing) {
    const FaultScript faults = owner_.Faults();
    if (faults.silent) return true;
    DevicePacket packet = outgoing.packet;
    if (outgoing.isReply) {
        const bool isOfUpload = packet.header.command == (kCommandUpload | kReplyBit);
        const auto more = isOfUpload ? faults.acknowledgementDelay : std::chrono::milliseconds(0);
        if (!PauseUntil(Clock::now() + faults.delay + more)) return false;
        if (faults.garbage && !SendPacket(Garbage(), faults)) return false;
        if (faults.oversize) packet.header.payloadLength = kOversizeLength;
    }
    if (!SendPacket(packet.Serialize(), faults)) return false;
    if (outgoing.isReply) owner_.Answered(packet);
    if (outgoing.isReply && faults.hangUp) End();
    return true;
}

bool Connection::SendPacket(ByteView bytes, const FaultScript& faults) {
    bool alive = PauseUntil(lastSent_ + pacing_.spacing);
    for (std::size_t piece = 0; alive && !bytes.empty(); ++piece) {
        const std::size_t size = std::min(bytes.size(), PieceSize(faults.cut, piece));
        alive = (piece == 0 || PauseUntil(Clock::now() + kPauseBetweenPieces)) &&
                SendPiece(bytes.first(size), faults);
        bytes = bytes.subspan(size);
    }
    lastSent_ = Clock::now();
    return alive;
}

bool Connection::SendPiece(ByteView piece, const FaultScript& faults) {
    const std::size_t limit = faults.closeAfter.value_or(SIZE_MAX);
    piece = piece.first(std::min(piece.size(), limit - std::min(limit, sentBytes_)));
    while (!piece.empty()) {
        const std::int64_t count = socket_.Send(piece);
        if (count <= 0) return false;
        sentBytes_ += static_cast<std::size_t>(count);
        piece = piece.subspan(static_cast<std::size_t>(count));
    }
    if (sentBytes_ < limit) return true;
    owner_.Note("closes the connection as its faults have it");
    End();
    return false;
}

/// Waits until `time`; false when the connection ends before.
bool Connection::PauseUntil(Clock::time_point time) {
    std::unique_lock lock(mutex_);
    return !changed_.wait_until(lock, time, [this] { return ended_; });
}

}  // namespace sontaro::simulator
