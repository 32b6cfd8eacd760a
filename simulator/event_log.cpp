#include "simulator/event_log.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <json/writer.h>

#include <algorithm>

#include "base/encoding.h"
#include "base/json.h"

namespace sontaro::simulator {

namespace {

/// The start of a text that is too long for a line, and how long it is.
std::string Shortened(std::string text) {
    constexpr std::size_t kLongest = 1000;
    if (text.size() <= kLongest) return text;
    std::size_t end = kLongest;
    while ((static_cast<std::uint8_t>(text[end]) & 0xC0) == 0x80) --end;
    return fmt::format("{} ... ({} bytes)", text.substr(0, end), text.size());
}

std::string OnOneLine(const Json::Value& json) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["emitUTF8"] = true;
    return Shortened(DecodeUtf8(Json::writeString(builder, json)));
}

std::string DescribePayload(const Bytes& payload) {
    constexpr std::size_t kShownBytes = 16;
    const Result<Json::Value> json = ParseJson(AsText(payload));
    if (json && (json->isObject() || json->isArray())) return OnOneLine(*json);
    const ByteView shown = ByteView(payload).first(std::min(payload.size(), kShownBytes));
    return fmt::format("{} bytes: {:02X}{}", payload.size(), fmt::join(shown, " "),
                       payload.size() > kShownBytes ? " ..." : "");
}

}  // namespace

void EventLog::Write(std::string_view player, std::string_view event) {
    const std::lock_guard lock(mutex_);
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start_;
    out_ << fmt::format("{:.3f} {} {}\n", elapsed.count(), player, event) << std::flush;
}

std::string Describe(const DevicePacket& packet) {
    const PacketHeader& header = packet.header;
    std::string text =
        fmt::format("{} sub {} arg {}", header.command, header.subCommand, header.argument);
    if (header.qualifier != 0) text += fmt::format(" qualifier {}", header.qualifier);
    if (!packet.payload.empty()) text += ' ' + DescribePayload(packet.payload);
    return text;
}

}  // namespace sontaro::simulator
