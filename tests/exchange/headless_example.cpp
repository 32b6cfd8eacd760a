// A program without windows that finds a player, changes a text of its overlay, and is told how
// each request ended, by a sound player and by faulty ones. Exits with 0 when all of it went as it
// has to.
#include <cstdio>
#include <cstring>

#include "base/json.h"
#include "base/window_titles.h"
#include "devices/device_record.h"
#include "exchange/conversation.h"
#include "exchange/plain_loop.h"
#include "exchange/player_requests.h"
#include "exchange/switchboard.h"
#include "link/discovery.h"
#include "simulator/player_group.h"
#include "support/recording_prompts.h"
#include "support/test_network.h"

using namespace sontaro;
using namespace std::chrono_literals;

namespace {

constexpr const char* kMainWindow = "Headless";
constexpr const char* kScan = "Headless scan";
constexpr const char* kEnds[] = {"confirmed",  "refused",   "not supported", "not sent",
                                 "link ended", "timed out", "cancelled"};

/// What the program's main window would be, without one.
struct Program {
    ~Program() { directory.ShutDown(); }

    /// Asks and waits; how it ended, and what the player has answered.
    const char* Ask(const Target& player, Request request, std::string* answer = nullptr) {
        const char* end = nullptr;
        MainWindowChannel channel(directory, kMainWindow);
        Conversation talk({channel, hub, loop}, player, {});
        const auto window = [&](WindowMessage& message) { talk.Take(message); };
        const auto overlay = directory.Register(TitleOf(Window::kOsd), window);
        const auto remote = directory.Register(TitleOf(Window::kVideoControl), window);
        request.limit = 1500ms;
        talk.Ask(std::move(request), [&](const Ended& ended) {
            end = kEnds[static_cast<int>(ended.how)];
            if (answer && ended.reply) *answer = AsText(PayloadOf(*ended.reply));
        });
        static_cast<void>(loop.RunUntil([&] { return end != nullptr; }, 5s));
        switchboard.Links().CloseAll();
        return end ? end : "never told";
    }

    /// The first player that answers a broadcast from `local`.
    Target Find(const std::string& local) {
        std::optional<DeviceRecord> found;
        const auto window = directory.Register(kScan, [&](WindowMessage& message) {
            if (const auto* event = std::get_if<UdpEvent>(&message.record))
                if (!found) found = ParseDiscoveryReply(event->bytes);
        });
        CUDPServer socket(kScan, {directory, threads, prompts});
        if (socket.Open(local))
            SendDiscovery(socket, kBroadcastAddress, DiscoveryRequest(kBroadcastAddress));
        static_cast<void>(loop.RunUntil([&] { return found.has_value(); }, 5s));
        return found ? Target{found->ip, found->tcpPort, 0} : Target{};
    }

    PlainLoop loop;
    WindowDirectory directory{loop};
    test::RecordingPrompts prompts;
    ThreadGroup threads;
    ExchangeHub hub;
    Switchboard switchboard{kMainWindow, {directory, threads, prompts}, hub};
    WindowDirectory::Registration registration = directory.Register(
        kMainWindow, [this](WindowMessage& message) { switchboard.Handle(message); });
};

bool Expect(const char* what, const char* end, const char* expected) {
    std::printf("%-40s %s\n", what, end);
    return std::strcmp(end, expected) == 0;
}

/// The overlay with another text in its first line.
std::string Changed(const std::string& overlay) {
    Json::Value document = *ParseJson(overlay);
    document["data"][0]["texts"][0] = "Welcome";
    return WriteJson(document);
}

}  // namespace

int main() {
    const test::TestNetwork network;
    simulator::LineUpOptions options;
    options.baseAddress = network.Player(0);
    simulator::PlayerGroup players(*simulator::LineUp(options));
    if (!players.Start()) return 1;
    Program program;
    const Target player = program.Find(FormatIpv4(network.Local()));
    std::string overlay;
    bool good = Expect("read the overlay", program.Ask(player, ReadSettings(kBlockOsd), &overlay),
                       "confirmed");
    const auto write = [&] { return WriteSettings(kBlockOsd, Changed(overlay)); };
    good &= Expect("change a text", program.Ask(player, write()), "confirmed");
    good &= players.Player(0).State().osd.find("Welcome") != std::string::npos;
    const auto nowhere = R"({"cmdId":6,"layoutName":"nowhere"})";
    good &= Expect("a layout that there is not", program.Ask(player, AskVideoCommand(6, nowhere)),
                   "refused");
    const std::pair<const char*, const char*> faults[] = {{"refuse", "not sent"},
                                                          {"silent", "timed out"},
                                                          {"not-supported", "not supported"},
                                                          {"drop", "link ended"},
                                                          {"no-ack", "timed out"}};
    for (const auto& [fault, end] : faults) {
        players.Player(0).SetFaults(*simulator::ParseFaultScript(fault));
        good &= Expect(fault, program.Ask(player, write()), end);
    }
    return good ? 0 : 1;
}
