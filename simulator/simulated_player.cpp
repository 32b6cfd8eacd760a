#include "simulator/simulated_player.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "base/file.h"
#include "base/path_text.h"
#include "link/discovery.h"
#include "simulator/playback.h"
#include "simulator/settings_commands.h"
#include "simulator/timeline_commands.h"
#include "simulator/upload_commands.h"
#include "timeline/time_text.h"

namespace sontaro::simulator {

namespace {

constexpr std::uint8_t kLoopbackNetwork = 127;
constexpr std::size_t kLongestDatagram = 0x10000;

/// How long so much of a video takes; a little more, so that it has gone by then.
std::chrono::milliseconds WallTime(std::chrono::microseconds ofVideo, double speed) {
    constexpr std::chrono::milliseconds kLongest{60'000};
    const std::chrono::duration<double, std::milli> time = ofVideo / std::max(speed, 1e-3);
    return std::min(std::chrono::ceil<std::chrono::milliseconds>(time), kLongest);
}

std::string Format(const Endpoint& endpoint) {
    return fmt::format("{}:{}", FormatIpv4(endpoint.address), endpoint.port);
}

}  // namespace

SimulatedPlayer::SimulatedPlayer(PlayerOptions options)
    : options_(std::move(options)),
      name_(FormatIpv4(options_.address)),
      port_(options_.port),
      state_(options_.state),
      timeline_(
          options_.player,
          [this](const TimeNode& node) { Print(SecondsText(node.time) + ' ' + LogText(node)); }),
      faults_(options_.faults) {}

Status SimulatedPlayer::Start() {
    Stop();
    if (options_.address.octets[0] != kLoopbackNetwork)
        return Error{name_ + " is not an address within 127.0.0.0/8"};
    if (StartNetwork() != NetworkStart::kReady) return Error{"there is no network"};
    {
        const std::lock_guard lock(mutex_);
        running_ = true;
        away_ = false;
        nextRestartStep_.reset();
        stateTime_ = startTime_ = Clock::now();
        serialEvents_ = 0;
    }
    Status started = Load();
    if (started && options_.schema)
        ChangeState([&](PlayerState& state) { SetSchemas(state, *options_.schema); });
    if (started)
        ChangeState([&](PlayerState& state) {
            state.screens = options_.screens;
            state.videoFolder = options_.videoFolder;
        });
    if (started && options_.olderNames)
        ChangeState([](PlayerState& state) { state.olderNames = true; });
    if (started) started = Open();
    if (started) started = StartThreads();
    if (!started) Stop();
    return started;
}

void SimulatedPlayer::Stop() {
    {
        std::unique_lock lock(mutex_);
        if (!running_) return;
        running_ = false;
        CloseListener(lock);
        for (const auto& socket : discovery_) socket->Shutdown();
        for (const auto& connection : connections_) connection->End();
        changed_.notify_all();
    }
    threads_.Join();
    const std::lock_guard lock(mutex_);
    discovery_.clear();
    StopNetwork();
}

/// Takes the state from the file, and makes the file when there is none.
Status SimulatedPlayer::Load() {
    const std::lock_guard lock(mutex_);
    std::error_code error;
    if (options_.file.empty()) return Done{};
    if (!std::filesystem::exists(options_.file, error)) return Save();
    const Result<std::string> text = ReadFile(options_.file);
    if (!text) return Error{text.reason()};
    const Result<PlayerState> state = ReadState(*text);
    if (!state)
        return Error{TextOfPath(options_.file.filename()) + " holds no state: " + state.reason()};
    state_ = *state;
    savedState_ = *text;
    return Done{};
}

Status SimulatedPlayer::Open() {
    const std::lock_guard lock(mutex_);
    const auto listener = std::make_shared<Socket>(Socket::ListenAt({options_.address, port_}));
    if (!listener->IsOpen())
        return Error{"cannot listen at " + Format({options_.address, port_}) + " (is it in use?)"};
    port_ = listener->Local().port;
    if (!faults_.refuse) listener_ = listener;
    for (const std::uint16_t port : kDiscoveryPorts) {
        const auto socket = std::make_shared<Socket>(Socket::Udp());
        const Endpoint local{options_.address, port};
        if (!socket->ShareLoopbackAddress() || !socket->Bind(local))
            return Error{"cannot listen for discovery at " + Format(local)};
        discovery_.push_back(socket);
    }
    return Done{};
}

Status SimulatedPlayer::StartThreads() {
    bool started = threads_.Start([this] { AcceptConnections(); }) &&
                   threads_.Start([this] { RunRestarts(); }) &&
                   threads_.Start([this] { RunTimeline(); });
    for (const auto& socket : discovery_)
        started = started && threads_.Start([this, socket] { ListenForRequests(socket); });
    if (!started) return Error{"the system has no thread left"};
    return Done{};
}

void SimulatedPlayer::AcceptConnections() {
    constexpr std::chrono::milliseconds kPauseAfterFailure{10};
    std::unique_lock lock(mutex_);
    while (running_) {
        if (!listener_) {
            changed_.wait(lock);
            continue;
        }
        const std::shared_ptr<Socket> listener = listener_;
        lock.unlock();
        Socket socket = listener->Accept();
        const bool accepted = socket.IsOpen();
        if (accepted) Welcome(std::move(socket));
        lock.lock();
        if (!accepted && running_ && listener == listener_)
            changed_.wait_for(lock, kPauseAfterFailure);
    }
}

void SimulatedPlayer::Welcome(Socket socket) {
    ConnectionOwner& owner = *this;
    const auto connection = std::make_shared<Connection>(std::move(socket), owner, options_.pacing);
    {
        const std::lock_guard lock(mutex_);
        if (!running_ || away_) return;
        connections_.push_back(connection);
        changed_.notify_all();
    }
    Note("connected");
    const bool started = threads_.Start([connection] { connection->Transmit(); }) &&
                         threads_.Start([this, connection] {
                             connection->Receive();
                             Remove(connection);
                         });
    if (started) return;
    connection->End();
    Remove(connection);
}

void SimulatedPlayer::Remove(const std::shared_ptr<Connection>& connection) {
    Note("disconnected");
    const std::lock_guard lock(mutex_);
    std::erase(connections_, connection);
    if (connections_.empty()) ForgetIncoming(state_);
    changed_.notify_all();
}

void SimulatedPlayer::ListenForRequests(const std::shared_ptr<Socket>& socket) {
    Bytes buffer(kLongestDatagram);
    Endpoint sender;
    for (;;) {
        const std::int64_t count = socket->ReceiveFrom(buffer, sender);
        {
            const std::lock_guard lock(mutex_);
            if (!running_) return;
        }
        if (count > 0) HearRequest(ByteView(buffer).first(static_cast<std::size_t>(count)), sender);
    }
}

void SimulatedPlayer::HearRequest(ByteView datagram, const Endpoint& sender) {
    if (!IsDiscoveryRequest(datagram)) return;
    if (!IsWithinEarshot(options_.address, sender.address)) return;
    std::shared_ptr<Socket> socket;
    {
        const std::lock_guard lock(mutex_);
        if (!running_ || away_ || discovery_.empty()) return;
        socket = discovery_.front();
    }
    Note(fmt::format("discovery request from {}, {} bytes", Format(sender), datagram.size()));
    socket->SendTo(DiscoveryReply(options_.identity, Address()), sender);
}

Endpoint SimulatedPlayer::Address() const {
    const std::lock_guard lock(mutex_);
    return {options_.address, port_};
}

PlayerState SimulatedPlayer::State() {
    const std::lock_guard lock(mutex_);
    AdvanceToNow();
    return state_;
}

void SimulatedPlayer::ChangeState(const std::function<void(PlayerState&)>& change) {
    const std::lock_guard lock(mutex_);
    AdvanceToNow();
    change(state_);
    if (const Status saved = Save(); !saved) Note(saved.reason());
    changed_.notify_all();
}

bool SimulatedPlayer::AddSerialBytes(Bytes bytes) {
    constexpr std::size_t kMostWaiting = 1000;
    if (bytes.empty() || bytes.size() > kMostSerialBytes) return false;
    bool added = false;
    ChangeState([&](PlayerState& state) {
        added = state.serialBytes.size() < kMostWaiting;
        if (added) state.serialBytes.push_back(std::move(bytes));
    });
    return added;
}

std::optional<Answer> SimulatedPlayer::Serve(const DevicePacket& request) {
    Note("received " + Describe(request));
    const FaultScript faults = Faults();
    std::optional<Answer> answer = FaultyAnswer(request, faults);
    if (!answer && !faults.silent && !faults.drop)
        ChangeState([&](PlayerState& state) { answer = AnswerTo(request, faults, state); });
    if (answer) Spoil(*answer, faults);
    if (answer && !answer->note.empty()) Print(answer->note);
    if (options_.remembersRequests) history_.Add(request);
    return answer && answer->silent ? std::nullopt : answer;
}

/// Within a change of the state.
Answer SimulatedPlayer::AnswerTo(const DevicePacket& request, const FaultScript& faults,
                                 PlayerState& state) {
    if (auto faulty = uploadFaults_.AnswerTo(request, faults, state)) {
        if (faulty->restarts) RestartAtOnce();
        return *std::move(faulty);
    }
    Answer answer = HandleRequest(state, request);
    uploadFaults_.Spoil(request, faults, state, answer);
    return answer;
}

FaultScript SimulatedPlayer::Faults() const {
    const std::lock_guard lock(mutex_);
    return faults_;
}

void SimulatedPlayer::SetFaults(const FaultScript& faults) {
    std::unique_lock lock(mutex_);
    faults_ = faults;
    uploadFaults_ = {};
    if (running_) ListenOrRefuse(lock);
}

void SimulatedPlayer::DropConnections() {
    const std::lock_guard lock(mutex_);
    for (const auto& connection : connections_) connection->End();
}

std::size_t SimulatedPlayer::ConnectionCount() const {
    const std::lock_guard lock(mutex_);
    return connections_.size();
}

bool SimulatedPlayer::WaitForConnectionCount(std::size_t count,
                                             std::chrono::milliseconds limit) const {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, limit, [&] { return connections_.size() == count; });
}

void SimulatedPlayer::AdvanceToNow() {
    const Clock::time_point now = Clock::now();
    const std::chrono::duration<double, std::micro> elapsed = now - stateTime_;
    const std::chrono::microseconds played(std::llround(elapsed.count() * options_.speed));
    stateTime_ = now;
    if (!running_) return;
    timeline_.Advance(state_, played);
    const auto& script = options_.serialScript;
    for (; serialEvents_ < script.size(); ++serialEvents_) {
        if (now < startTime_ + script[serialEvents_].time) return;
        state_.serialBytes.push_back(script[serialEvents_].bytes);
    }
}

/// The body of a thread: lets time go by at every moment that has a command.
void SimulatedPlayer::RunTimeline() {
    std::unique_lock lock(mutex_);
    while (running_) {
        AdvanceToNow();
        if (const auto next = timeline_.UntilNext(state_))
            changed_.wait_for(lock, WallTime(*next, options_.speed));
        else
            changed_.wait(lock);
    }
}

void SimulatedPlayer::Print(std::string_view command) {
    Note(command);
    options_.printed(command);
}

/// Writes the file when there is anything new to write.
Status SimulatedPlayer::Save() {
    if (!running_ || options_.file.empty()) return Done{};
    std::string text = WriteState(state_);
    if (text == savedState_) return Done{};
    Status saved = WriteFileAtomically(options_.file, text);
    if (saved) savedState_ = std::move(text);
    return saved;
}

void SimulatedPlayer::Note(std::string_view event) {
    if (options_.log != nullptr) options_.log->Write(name_, event);
}

}  // namespace sontaro::simulator
