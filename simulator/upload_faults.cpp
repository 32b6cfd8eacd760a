#include "simulator/upload_faults.h"

#include <utility>

#include "batchsend/upload_packets.h"
#include "simulator/upload_commands.h"

namespace sontaro::simulator {

namespace {

bool IsOf(UploadStep step, const DevicePacket& request) {
    return request.header.command == kCommandUpload &&
           request.header.qualifier == static_cast<std::uint8_t>(step);
}

bool IsChunk(const DevicePacket& request) {
    return IsOf(UploadStep::kChunk, request) || IsOf(UploadStep::kLastChunk, request);
}

/// A disk that was full stays full, whatever is forgotten of it.
bool IsDiskFull(const DevicePacket& request, const FaultScript& faults, const PlayerState& state) {
    constexpr unsigned kMebibyteBits = 20;
    if (!faults.diskFull || state.diskIsFull) return faults.diskFull.has_value();
    std::uint64_t held =
        state.incoming ? static_cast<std::uint64_t>(state.incoming->video.size) : 0;
    for (const StoredVideo& video : state.stored) held += static_cast<std::uint64_t>(video.size);
    const std::uint64_t room = std::uint64_t{*faults.diskFull} << kMebibyteBits;
    return held >= room || (IsChunk(request) && held + request.payload.size() > room);
}

Answer Silence(std::string note) {
    Answer answer;
    answer.silent = true;
    answer.note = std::move(note);
    return answer;
}

}  // namespace

std::optional<Answer> UploadFaults::AnswerTo(const DevicePacket& request, const FaultScript& faults,
                                             PlayerState& state) {
    state.diskIsFull = IsDiskFull(request, faults, state);
    if (!IsChunk(request)) return std::nullopt;
    if (++chunks_ == faults.restartAt) {
        Answer answer = Silence("restarts in the middle of an upload");
        answer.restarts = true;
        return answer;
    }
    if (state.diskIsFull) return Silence("the disk is full");
    return std::nullopt;
}

void UploadFaults::Spoil(const DevicePacket& request, const FaultScript& faults, PlayerState& state,
                         Answer& answer) {
    if (request.header.command == kCommandPlayerData) {
        if (faults.noSecondQuery && request.header.argument == 1) answer.silent = true;
        return;
    }
    if (request.header.command != kCommandUpload) return;
    if (faults.storeShort && IsOf(UploadStep::kLastChunk, request) && !answer.silent)
        CutNewestVideo(state);
    const std::uint16_t number = request.header.subCommand;  // 0: an announcement
    answer.endsConnection = faults.loseChunk == number;
    if (faults.unacknowledged != number) return;
    if (std::exchange(withheld_, withheld_ + 1) > 0 && faults.withholdsOnce) return;
    answer.silent = true;
}

}  // namespace sontaro::simulator
