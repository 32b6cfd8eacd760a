#include "simulator/player_commands.h"

#include <algorithm>
#include <optional>

#include "simulator/screen_split_commands.h"
#include "simulator/settings_commands.h"
#include "simulator/timeline_commands.h"
#include "simulator/upload_commands.h"
#include "simulator/video_commands.h"
#include "simulator/video_list_commands.h"

namespace sontaro::simulator {

namespace {

/// Changes the state and fills in the reply, whose command and sub-command are set already and
/// whose payload length is set afterwards.
using Handler = void (*)(PlayerState& state, const DevicePacket& request, Answer& answer);

struct CommandRow {
    Command command{};
    std::optional<std::uint16_t> block;  ///< the sub-command it is for; none: every one
    Handler handle = nullptr;
};

/// The argument is the index of the part. A period that no power of two divides shows pieces of
/// the block that get lost or swapped.
void HandlePlayerData(PlayerState& state, const DevicePacket& request, Answer& answer) {
    constexpr std::size_t kPatternPeriod = 251;
    constexpr std::uint16_t kSecondPart = 32767;
    constexpr std::size_t kFreeSpaceOffset = 4;
    answer.reply.header.argument = request.header.argument;
    if (request.header.argument == kSecondPart) answer.content = Content::kSecondPart;
    answer.reply.payload.resize(kPlayerDataSize);
    for (std::size_t i = 0; i < kPlayerDataSize; ++i)
        answer.reply.payload[i] = static_cast<std::uint8_t>(i % kPatternPeriod);
    const std::uint32_t free = FreeMebibytes(state);
    for (std::size_t i = 0; i < sizeof free; ++i)
        answer.reply.payload[kFreeSpaceOffset + i] = static_cast<std::uint8_t>(free >> 8 * i);
}

void HandleNameList(PlayerState& state, const DevicePacket&, Answer& answer) {
    for (const std::string& layout : state.layouts) {
        const std::string entry = layout + '?';
        const ByteView bytes = AsBytes(entry);
        answer.reply.payload.insert(answer.reply.payload.end(), bytes.begin(), bytes.end());
    }
}

void HandleLayoutState(PlayerState& state, const DevicePacket& request, Answer& answer) {
    answer.reply.header.argument = state.layoutLocked ? 1 : 0;
    HandleNameList(state, request, answer);
}

void HandleSerialData(PlayerState& state, const DevicePacket&, Answer& answer) {
    if (state.serialBytes.empty()) return;
    answer.reply.payload = std::move(state.serialBytes.front());
    state.serialBytes.pop_front();
}

void HandleCloseLinks(PlayerState&, const DevicePacket&, Answer&) {}

template <Document kDocument>
void HandleSchema(PlayerState& state, const DevicePacket& request, Answer& answer) {
    HandleSchema(state, kDocument, request, answer);
}

/// Players differ in what they answer to this form.
void HandleNamesOrVideos(PlayerState& state, const DevicePacket& request, Answer& answer) {
    if (state.olderNames)
        HandleNameList(state, request, answer);
    else
        HandleVideoList(state, request, answer);
}

constexpr CommandRow kCommands[] = {
    {kCommandSettings, kBlockControlProtocol, HandleControlProtocol},
    {kCommandSettings, kBlockOsd, HandleOsd},
    {kCommandSettings, kBlockScreenSplitRead, HandleWall},
    {kCommandSettings, kBlockScreenSplitWrite, HandleNewWall},
    {kCommandSettings, kBlockExtendedSerialPort, HandleSchema<&PlayerState::serialPort>},
    {kCommandSettings, kBlockSubtitles, HandleSchema<&PlayerState::subtitles>},
    {kCommandSettings, kBlockTouchAction, HandleSchema<&PlayerState::touchAction>},
    {kCommandSettings, kBlockCave, HandleSchema<&PlayerState::cave>},
    {kCommandSettings, kBlockPlayerControl, HandlePlayerControl},
    {kCommandPlayerState, 0, HandleVideoList},
    {kCommandPlayerState, 1, HandleNamesOrVideos},
    {kCommandSettings, kBlockPlayerTimeline, HandleTimeline},
    {kCommandPlayerData, std::nullopt, HandlePlayerData},
    {kCommandUpload, std::nullopt, HandleUpload},
    {kCommandDeviceModes, std::nullopt, HandleMode},
    {kCommandCloseLinks, std::nullopt, HandleCloseLinks},
    {kCommandSerialData, std::nullopt, HandleSerialData},
    {kCommandLayoutState, std::nullopt, HandleLayoutState},
    {kCommandParameterBlock, std::nullopt, HandleParameterBlock},
    {kCommandVideo, std::nullopt, HandleVideoCommand},
};

}  // namespace

Answer HandleRequest(PlayerState& state, const DevicePacket& request) {
    const PacketHeader& asked = request.header;
    const auto row = std::ranges::find_if(kCommands, [&](const CommandRow& candidate) {
        return candidate.command == asked.command &&
               candidate.block.value_or(asked.subCommand) == asked.subCommand;
    });
    if (row == std::end(kCommands)) return NotSupported(request);
    Answer answer;
    PacketHeader& header = answer.reply.header;
    header.command = asked.command | kReplyBit;
    header.subCommand = asked.subCommand;
    row->handle(state, request, answer);
    header.payloadLength = static_cast<std::uint32_t>(answer.reply.payload.size());
    return answer;
}

Answer NotSupported(const DevicePacket& request) {
    Answer answer;
    answer.reply.header.command = request.header.command | kReplyBit | kNotSupportedBit;
    answer.reply.header.subCommand = request.header.subCommand;
    answer.reply.header.argument = request.header.argument;
    return answer;
}

Answer Refused(const DevicePacket& request) {
    constexpr std::uint16_t kRefusal = 255;
    Answer answer;
    answer.reply.header.command = request.header.command | kReplyBit;
    answer.reply.header.subCommand = request.header.subCommand;
    answer.reply.header.argument = kRefusal;
    return answer;
}

}  // namespace sontaro::simulator
