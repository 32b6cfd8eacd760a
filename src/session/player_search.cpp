#include "session/player_search.h"

#include <fmt/printf.h>

#include <algorithm>
#include <atomic>
#include <charconv>
#include <filesystem>
#include <memory>
#include <thread>

#include "base/local_text.h"
#include "base/thread_group.h"
#include "devices/scan_run.h"
#include "exchange/plain_loop.h"
#include "link/discovery.h"
#include "link/local_adapters.h"

namespace sontaro {

namespace {

using namespace std::chrono_literals;

constexpr LocalText kNoAddress = {"本机没有可用于查找的地址。",
                                  "This machine has no address to search from."};
constexpr LocalText kNotBound = {"无法从本机地址 %s 查找。",
                                 "It is not possible to search from the local address %s."};

/// Between two requests: a hundred a second.
constexpr auto kSlot = 10ms;
/// From one port of a player to the other one.
constexpr std::size_t kSlotsBetweenPorts = 2;
constexpr auto kAfterError = 10ms;
constexpr auto kBetweenShutdowns = 1ms;

/// A bound socket and the thread that hands what comes over to the loop.
class SearchSocket {
   public:
    using Heard = std::function<void(ByteView)>;

    SearchSocket(PlainLoop& loop, Heard heard) : loop_(loop), heard_(std::move(heard)) {}
    SearchSocket(const SearchSocket&) = delete;
    SearchSocket& operator=(const SearchSocket&) = delete;
    /// A thread that is just about to receive is not woken on every system.
    ~SearchSocket() {
        ended_ = true;
        while (receiving_) {
            socket_.Shutdown();
            std::this_thread::sleep_for(kBetweenShutdowns);
        }
        thread_.Join();
    }

    [[nodiscard]] bool Open(const Ipv4Address& local) {
        socket_ = Socket::Udp();
        if (!socket_.IsOpen() || !socket_.SetDiscoveryOptions() || !socket_.Bind({local, 0}))
            return false;
        receiving_ = true;
        const bool started = thread_.Start([this] {
            Receive();
            receiving_ = false;
        });
        if (!started) receiving_ = false;
        return started;
    }
    bool Send(const Endpoint& destination, const Bytes& request) {
        return socket_.SendTo(request, destination) == static_cast<std::int64_t>(request.size());
    }

   private:
    void Receive() {
        constexpr std::size_t kLongestDatagram = 65'536;
        Bytes buffer(kLongestDatagram);
        while (!ended_) {
            Endpoint sender;
            const std::int64_t count = socket_.ReceiveFrom(buffer, sender);
            if (count <= 0) {  // an error may be the news that a request has reached nobody
                std::this_thread::sleep_for(kAfterError);
                continue;
            }
            const ByteView datagram(buffer.data(), static_cast<std::size_t>(count));
            if (!loop_.Call([&] { heard_(datagram); })) return;
        }
    }

    PlainLoop& loop_;
    const Heard heard_;
    Socket socket_;
    std::atomic<bool> ended_ = false;
    std::atomic<bool> receiving_ = false;
    ThreadGroup thread_;
};

/// One search, which has the list of a scan.
class Search : private ScanActions {
   public:
    explicit Search(const FindPlan& plan)
        : plan_(plan), started_(StartNetwork() == NetworkStart::kReady) {}
    ~Search() override {
        loop_.Close();
        sockets_.clear();
        if (started_) StopNetwork();
    }
    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;

    Result<std::vector<DeviceRecord>> Run() {
        if (const Status opened = OpenSockets(); !opened) return Error{opened.reason()};
        for (int round = 0; round < plan_.rounds && !IsOver(); ++round) RunRound();
        if (plan_.asked.empty() && IsOver())
            static_cast<void>(loop_.RunUntil([this] { return plan_.stop.stop_requested(); },
                                             plan_.timeForNamesakes));
        std::vector<DeviceRecord> found = list_.Devices();
        SortDevices(found, DeviceColumn::kIp, true);
        return found;
    }

   private:
    struct Question {
        SearchSocket* socket = nullptr;
        Ipv4Address address;
    };

    bool SendRequest() override { return false; }
    void StartTimer() override {}
    void StopTimer() override {}
    void DevicesChanged() override {}

    [[nodiscard]] std::vector<std::string> LocalAddresses() const {
        if (!plan_.localAddresses.empty()) return plan_.localAddresses;
        if (!plan_.asked.empty()) return {"0.0.0.0"};
        std::vector<std::string> addresses;
        for (const LocalAdapter& adapter : ScanAddresses()) addresses.push_back(adapter.ip);
        return addresses;
    }

    [[nodiscard]] Status OpenSockets() {
        Status opened = Error{Localized(kNoAddress)};
        for (const std::string& local : LocalAddresses()) {
            const std::optional<Ipv4Address> address = ParseIpv4(local);
            auto socket = std::make_unique<SearchSocket>(
                loop_, [this](ByteView datagram) { list_.Receive(datagram); });
            if (address && socket->Open(*address))
                sockets_.push_back(std::move(socket));
            else if (sockets_.empty())
                opened = Error{fmt::sprintf(Localized(kNotBound), local)};
        }
        return sockets_.empty() ? opened : Done{};
    }

    /// Whom there is still something to be heard of.
    [[nodiscard]] std::vector<Question> Questions() const {
        std::vector<Ipv4Address> addresses;
        if (plan_.asked.empty()) addresses.push_back(kBroadcastAddress);
        for (const Ipv4Address& address : plan_.asked)
            if (!HasAnswered(address)) addresses.push_back(address);
        std::vector<Question> questions;
        for (const auto& socket : sockets_)
            for (const Ipv4Address& address : addresses)
                questions.push_back({socket.get(), address});
        return questions;
    }

    void RunRound() {
        const auto end = PlainLoop::Clock::now() + plan_.roundTime;
        list_.Tick();
        const std::vector<Question> questions = Questions();
        for (std::size_t slot = 0; slot < questions.size() + kSlotsBetweenPorts; ++slot) {
            if (slot < questions.size()) Ask(questions[slot], kDiscoveryPorts[0]);
            if (slot >= kSlotsBetweenPorts)
                Ask(questions[slot - kSlotsBetweenPorts], kDiscoveryPorts[1]);
            if (Wait(kSlot)) return;
        }
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - PlainLoop::Clock::now());
        static_cast<void>(Wait(std::max<std::chrono::milliseconds>(left, kSlot)));
    }

    /// What cannot be sent now is sent in the next round.
    static void Ask(const Question& question, std::uint16_t port) {
        static_cast<void>(
            question.socket->Send({question.address, port}, DiscoveryRequest(question.address)));
    }

    /// Listens; true when the search is over.
    [[nodiscard]] bool Wait(std::chrono::milliseconds time) {
        return loop_.RunUntil([this] { return IsOver(); }, time);
    }

    [[nodiscard]] bool IsOver() const {
        if (plan_.stop.stop_requested() || plan_.isEnough(list_.Devices())) return true;
        return !plan_.asked.empty() &&
               std::ranges::all_of(plan_.asked, [this](const Ipv4Address& address) {
                   return HasAnswered(address);
               });
    }

    [[nodiscard]] bool HasAnswered(const Ipv4Address& address) const {
        const std::string ip = FormatIpv4(address);
        return std::ranges::find(list_.Devices(), ip, &DeviceRecord::ip) != list_.Devices().end();
    }

    const FindPlan& plan_;
    const bool started_;
    const DeviceRemarks noRemarks_{std::filesystem::path()};
    PlainLoop loop_;
    ScanRun list_{*this, plan_.remarks ? *plan_.remarks : noRemarks_, ScanStyle{}};
    std::vector<std::unique_ptr<SearchSocket>> sockets_;
    const std::stop_callback<std::function<void()>> stop_{plan_.stop, [this] { loop_.Wake(); }};
};

/// The number that `text` is, up to `most`.
std::optional<std::uint32_t> NumberIn(std::string_view text, std::uint32_t most) {
    std::uint32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    const bool isNumber = read.ec == std::errc() && read.ptr == end && !text.empty();
    return isNumber && number <= most ? std::optional(number) : std::nullopt;
}

std::uint32_t NumberOf(const Ipv4Address& address) {
    std::uint32_t number = 0;
    for (const std::uint8_t octet : address.octets) number = number << 8 | octet;
    return number;
}

std::vector<Ipv4Address> AddressesFrom(std::uint64_t first, std::uint64_t last) {
    std::vector<Ipv4Address> addresses;
    for (std::uint64_t number = first; number <= last; ++number) {
        Ipv4Address& address = addresses.emplace_back();
        for (std::size_t i = 0; i < address.octets.size(); ++i)
            address.octets[i] = static_cast<std::uint8_t>(number >> (24 - 8 * i));
    }
    return addresses;
}

}  // namespace

Result<std::vector<DeviceRecord>> FindPlayers(const FindPlan& plan) { return Search(plan).Run(); }

std::optional<std::vector<Ipv4Address>> AddressesIn(std::string_view range) {
    constexpr std::uint32_t kBits = 32;
    constexpr std::uint32_t kMostFreeBits = 16;
    constexpr std::uint32_t kLastOctet = 255;
    const std::size_t separator = std::min(range.find_first_of("/-"), range.size());
    const auto address = ParseIpv4(std::string(range.substr(0, separator)));
    if (!address) return std::nullopt;
    if (separator == range.size()) return std::vector{*address};
    const bool isNetwork = range[separator] == '/';
    const std::string_view behind = range.substr(separator + 1);
    const auto number = NumberIn(behind, isNetwork ? kBits : kLastOctet);
    if (!number) return std::nullopt;
    if (!isNetwork) {
        if (*number < address->octets[3]) return std::nullopt;
        return AddressesFrom(NumberOf(*address), NumberOf(*address) - address->octets[3] + *number);
    }
    const std::uint32_t freeBits = kBits - *number;
    if (freeBits > kMostFreeBits) return std::nullopt;
    const std::uint64_t count = std::uint64_t{1} << freeBits;
    const std::uint64_t first = NumberOf(*address) & ~(count - 1);
    const std::uint64_t edge = count > 2 ? 1 : 0;
    return AddressesFrom(first + edge, first + count - 1 - edge);
}

}  // namespace sontaro
