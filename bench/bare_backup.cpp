#include "bench/bare_backup.h"

#include <unistd.h>

#include <atomic>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "bench/stopwatch.h"
#include "exchange/player_requests.h"
#include "session/settings_blocks.h"

namespace sontaro::bench {

namespace {

using namespace std::chrono_literals;

void ReceiveAll(Socket& socket, std::span<std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const std::int64_t count = socket.Receive(bytes);
        if (count <= 0) throw std::runtime_error("a bare question is not answered");
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

SharedPacket QuestionFor(const SettingsBlockKind& kind) {
    return kind.readBlock == kBlockScreenSplitRead ? ReadScreenSplit().packet
                                                   : ReadSettings(kind.readBlock).packet;
}

void BackUp(const Endpoint& player, const std::filesystem::path& folder) {
    Socket socket = Socket::Tcp();
    socket.SetLinkOptions();
    if (!socket.Connect(player, 1s)) throw std::runtime_error("the bare socket does not connect");
    std::filesystem::create_directories(folder);
    for (const SettingsBlockKind& kind : SettingsBlocks()) {
        const SharedPacket question = QuestionFor(kind);
        if (socket.Send(*question) != static_cast<std::int64_t>(question->size()))
            throw std::runtime_error("a bare send was cut short");
        Bytes header(kHeaderSize);
        ReceiveAll(socket, header);
        Bytes document(DecodeHeader(header).payloadLength);
        ReceiveAll(socket, document);
        std::ofstream(folder / (std::string(kind.name) + ".json"), std::ios::binary)
            << AsText(document);
    }
}

}  // namespace

double SecondsOfBareBackup(const std::vector<Endpoint>& players,
                           const std::filesystem::path& folder, std::size_t parallel) {
    const Stopwatch stopwatch;
    std::atomic<std::size_t> next = 0;
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < parallel; ++i)
        threads.emplace_back([&] {
            for (std::size_t place = next++; place < players.size(); place = next++)
                BackUp(players[place], folder / std::to_string(place));
        });
    threads.clear();
    sync();
    return stopwatch.Seconds();
}

}  // namespace sontaro::bench
