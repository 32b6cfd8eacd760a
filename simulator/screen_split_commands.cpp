#include "simulator/screen_split_commands.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/json.h"
#include "link/crc16.h"
#include "screensplit/split_device.h"

namespace sontaro::simulator {

namespace {

constexpr std::uint8_t kScreenSplitForm = 1;  // the qualifier of command 54

// Sizes without the checksum.
constexpr std::size_t kLongBlock = std::tuple_size_v<ParameterBlock>;
constexpr std::size_t kShortBlock = 6515;
constexpr std::size_t kChecksumSize = 2;

void SetWord(Bytes& bytes, std::size_t offset, int word) {
    bytes[offset] = static_cast<std::uint8_t>(word);
    bytes[offset + 1] = static_cast<std::uint8_t>(word >> 8);
}

int WordAt(const Bytes& bytes, std::size_t offset) {
    return bytes[offset] | bytes[offset + 1] << 8;
}

/// Writes the checksum of everything before the last two bytes into these, low-order byte first.
void Seal(Bytes& payload) {
    const std::size_t size = payload.size() - kChecksumSize;
    SetWord(payload, size, Crc16Modbus(ByteView(payload).first(size)));
}

const Json::Value& Member(const Json::Value& object, const char* key) {
    return object.isObject() ? object[key] : Json::Value::nullSingleton();
}

int NumberOf(const Json::Value& object, const char* key) {
    const Json::Value& number = Member(object, key);
    return number.isInt() ? number.asInt() : 0;
}

std::string ChannelText(const Json::Value& channel) {
    const int screen = NumberOf(channel, "screenID");
    if (NumberOf(channel, "enable") == 0) return fmt::format("screen {} not used", screen);
    return fmt::format("screen {} at {},{}", screen, NumberOf(channel, "leftTopX"),
                       NumberOf(channel, "leftTopY"));
}

}  // namespace

/// A pattern whose period no power of two divides shows bytes that get lost or swapped.
void HandleParameterBlock(PlayerState& state, const DevicePacket& request, Answer& answer) {
    constexpr std::size_t kPatternPeriod = 251;
    if (request.header.qualifier != kScreenSplitForm) {
        answer = NotSupported(request);
        return;
    }
    const Screens& screens = state.screens;
    Bytes& payload = answer.reply.payload;
    payload.resize((screens.shortBlock ? kShortBlock : kLongBlock) + kChecksumSize);
    for (std::size_t i = 0; i < payload.size(); ++i)
        payload[i] = static_cast<std::uint8_t>(i % kPatternPeriod);
    SetWord(payload, SplitDeviceParams::kWidth, screens.width);
    SetWord(payload, SplitDeviceParams::kHeight, screens.height);
    SetWord(payload, SplitDeviceParams::kCorrectionCount, screens.corrections);
    SetWord(payload, SplitDeviceParams::kScreenCount, screens.outputs);
    Seal(payload);
    answer.reply.header.qualifier = kScreenSplitForm;
    answer.content = Content::kParameterBlock;
}

void HandleWall(PlayerState& state, const DevicePacket& request, Answer& answer) {
    if (request.header.argument != 0 || !request.payload.empty()) {
        answer = NotSupported(request);
        return;
    }
    const ByteView bytes = AsBytes(state.wall);
    answer.reply.payload.assign(bytes.begin(), bytes.end());
    answer.content = Content::kDocument;
}

void HandleNewWall(PlayerState& state, const DevicePacket& request, Answer& answer) {
    const std::string_view text = AsText(request.payload);
    const Result<Json::Value> json = ParseJson(text);
    answer.content = Content::kSaved;
    answer.silent = !json || !json->isObject();
    if (answer.silent) return;
    state.wall = text;
    answer.note = WallText(text);
}

void SpoilParameterBlock(Answer& answer, const FaultScript& faults) {
    if (answer.content != Content::kParameterBlock) return;
    Bytes& payload = answer.reply.payload;
    if (faults.noCorrection) {
        SetWord(payload, SplitDeviceParams::kCorrectionCount, 0);
        SetWord(payload, SplitDeviceParams::kScreenCount, 0);
    }
    if (faults.otherResolution) {
        SetWord(payload, SplitDeviceParams::kWidth, WordAt(payload, SplitDeviceParams::kWidth) / 2);
        SetWord(payload, SplitDeviceParams::kHeight,
                WordAt(payload, SplitDeviceParams::kHeight) / 2);
    }
    Seal(payload);
    if (faults.badChecksum) payload.back() ^= 0xFF;
    if (faults.emptyBlock) payload.clear();
}

std::string WallText(std::string_view configuration) {
    const Result<Json::Value> json = ParseJson(configuration);
    if (!json) return "no wall";
    const Json::Value& channels = Member(Member(*json, "configData"), "channelShowArea");
    std::int64_t width = 0;  // of whatever numbers there are
    std::int64_t height = 0;
    std::string places;
    for (const Json::Value& channel : channels) {
        places += (places.empty() ? ": " : "; ") + ChannelText(channel);
        if (NumberOf(channel, "enable") == 0) continue;
        width = std::max(width, std::int64_t{NumberOf(channel, "rightBottomX")} + 1);
        height = std::max(height, std::int64_t{NumberOf(channel, "rightBottomY")} + 1);
    }
    return fmt::format("wall of {} x {}", width, height) + places;
}

}  // namespace sontaro::simulator
