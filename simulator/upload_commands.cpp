#include "simulator/upload_commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>

#include "base/path_text.h"
#include "batchsend/upload_packets.h"

namespace sontaro::simulator {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kSizeLength = 8;
constexpr const char* kUnfinished = ".part";

fs::path PathOf(const PlayerState& state, const StoredVideo& video) {
    return state.videoFolder / std::to_string(video.code) / PathOfText(video.name);
}

fs::path UnfinishedPathOf(const PlayerState& state, const StoredVideo& video) {
    fs::path path = PathOf(state, video);
    path += kUnfinished;
    return path;
}

/// Names are not to lead out of the player's folder.
bool IsName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of("/\\") == std::string_view::npos;
}

std::string TakeAnnouncement(PlayerState& state, const DevicePacket& request) {
    ForgetIncoming(state);
    if (request.header.subCommand != 0) return "an announcement with a number";
    if (request.payload.size() < kSizeLength) return "an announcement without a size";
    IncomingVideo incoming;
    for (std::size_t i = 0; i < kSizeLength; ++i)
        incoming.announced |= std::uint64_t{request.payload[i]} << 8 * i;
    incoming.video.code = request.header.argument;
    incoming.video.name = AsText(ByteView(request.payload).subspan(kSizeLength));
    if (!IsName(incoming.video.name)) return "an announcement without a name";
    if (!state.videoFolder.empty()) {
        std::error_code error;
        const fs::path path = UnfinishedPathOf(state, incoming.video);
        fs::create_directories(path.parent_path(), error);
        std::ofstream(path, std::ios::binary | std::ios::trunc);
    }
    state.incoming = std::move(incoming);
    return "";
}

void Keep(PlayerState& state, const StoredVideo& video) {
    if (!state.videoFolder.empty()) {
        std::error_code error;
        fs::rename(UnfinishedPathOf(state, video), PathOf(state, video), error);
    }
    std::erase_if(state.stored, [&](const StoredVideo& other) {
        return other.code == video.code && other.name == video.name;
    });
    state.stored.push_back(video);
}

/// What is wrong with a chunk, with which `received` bytes are there; empty: nothing.
std::string TroubleOf(const DevicePacket& chunk, const IncomingVideo& incoming,
                      std::uint64_t received) {
    const std::string& name = incoming.video.name;
    const bool isLast = chunk.header.qualifier == static_cast<std::uint8_t>(UploadStep::kLastChunk);
    const std::uint16_t number = ChunkNumber(received);
    if (chunk.header.argument != incoming.video.code)
        return fmt::format("{}: code {} in a chunk", name, chunk.header.argument);
    if (chunk.header.subCommand != number)
        return fmt::format("{}: chunk {} has number {}", name, number, chunk.header.subCommand);
    if (isLast != (chunk.payload.size() < kVideoChunkSize))
        return fmt::format("{}: a chunk of {} bytes {} the last one", name, chunk.payload.size(),
                           isLast ? "is" : "is not");
    if (received > incoming.announced || (isLast && received != incoming.announced))
        return fmt::format("{}: {} bytes where {} were announced", name, received,
                           incoming.announced);
    return "";
}

std::string TakeChunk(PlayerState& state, const DevicePacket& chunk) {
    if (!state.incoming) return "a chunk without an announcement";
    IncomingVideo& incoming = *state.incoming;
    const std::uint64_t received =
        static_cast<std::uint64_t>(incoming.video.size) + chunk.payload.size();
    if (std::string trouble = TroubleOf(chunk, incoming, received); !trouble.empty()) {
        ForgetIncoming(state);
        return trouble;
    }
    if (!state.videoFolder.empty())
        std::ofstream(UnfinishedPathOf(state, incoming.video), std::ios::binary | std::ios::app)
            << AsText(chunk.payload);
    incoming.video.size = static_cast<std::int64_t>(received);
    if (chunk.payload.size() == kVideoChunkSize) return "";
    Keep(state, incoming.video);
    state.incoming.reset();
    return "";
}

}  // namespace

void HandleUpload(PlayerState& state, const DevicePacket& request, Answer& answer) {
    const bool isAnnouncement =
        request.header.qualifier == static_cast<std::uint8_t>(UploadStep::kAnnouncement);
    const std::string trouble =
        isAnnouncement ? TakeAnnouncement(state, request) : TakeChunk(state, request);
    answer.reply.header.qualifier = request.header.qualifier;
    answer.reply.header.subCommand = 0;
    answer.reply.header.argument = request.header.argument;
    if (trouble.empty()) return;
    answer.silent = true;
    answer.note = "wrong upload: " + trouble;
    state.uploadTroubles.push_back(trouble);
}

void HandleMode(PlayerState& state, const DevicePacket&, Answer& answer) {
    answer.reply.header.qualifier = static_cast<std::uint8_t>(state.mode);
    answer.reply.header.subCommand = 0;
}

std::uint32_t FreeMebibytes(const PlayerState& state) {
    constexpr std::int64_t kMebibyte = 1 << 20;
    if (state.diskIsFull) return 0;
    std::int64_t free = state.diskMebibytes;
    for (const StoredVideo& video : state.stored) free -= (video.size + kMebibyte - 1) / kMebibyte;
    return static_cast<std::uint32_t>(std::max<std::int64_t>(free, 0));
}

void ForgetIncoming(PlayerState& state) {
    if (state.incoming && !state.videoFolder.empty()) {
        std::error_code error;
        fs::remove(UnfinishedPathOf(state, state.incoming->video), error);
    }
    state.incoming.reset();
}

void CutNewestVideo(PlayerState& state) {
    StoredVideo& video = state.stored.back();
    if (video.size == 0) return;
    --video.size;
    if (state.videoFolder.empty()) return;
    std::error_code error;
    fs::resize_file(PathOf(state, video), static_cast<std::uintmax_t>(video.size), error);
}

}  // namespace sontaro::simulator
