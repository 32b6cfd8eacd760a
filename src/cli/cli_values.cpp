#include "cli/cli_values.h"

#include <fmt/printf.h>

#include <charconv>

#include "base/encoding.h"
#include "base/hex_command.h"
#include "base/local_text.h"
#include "link/socket.h"

namespace sontaro::cli {

namespace {

constexpr LocalText kNoPort = {
    "没有端口 %s：请输入 232:0 到 232:3、485、tcp:IP:端口、udp:IP:端口 或 dmx512。",
    "there is no port %s: it is 232:0 to 232:3, 485, tcp:IP:PORT, "
    "udp:IP:PORT or dmx512."};
constexpr LocalText kNoBytes = {"%s 不是十六进制字节。", "%s is no hexadecimal bytes."};

bool IsDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::optional<Endpoint> ParseEndpoint(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    const auto address = ParseIpv4(std::string(text.substr(0, colon)));
    const auto port = ParseCount(text.substr(colon + 1), 1, UINT16_MAX);
    if (!address || !port) return std::nullopt;
    return Endpoint{*address, static_cast<std::uint16_t>(*port)};
}

/// The way out, without bytes.
std::optional<TimeNode> ParsePort(std::string_view text) {
    TimeNode node;
    if (text == "485") {
        node.port = kPortRs485;
    } else if (text == "dmx512") {
        node.port = kPortDmx512;
    } else if (text.starts_with("232:")) {
        const auto number = ParseCount(text.substr(4), 0, kPortSerial3 - kPortSerial0);
        if (!number) return std::nullopt;
        node.port = kPortSerial0 + *number;
    } else {
        const bool isTcp = text.starts_with("tcp:");
        if (!isTcp && !text.starts_with("udp:")) return std::nullopt;
        const auto peer = ParseEndpoint(text.substr(4));
        if (!peer) return std::nullopt;
        node.port = isTcp ? kPortTcp : kPortUdp;
        node.ip = FormatIpv4(peer->address);
        node.peerPort = peer->port;
    }
    return node;
}

}  // namespace

std::optional<KeyValue> ParseKeyValue(std::string_view text) {
    if (DecodeUtf8(text) != text) return std::nullopt;
    KeyValue edit;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '=') {
            edit.value = text.substr(i + 1);
            return edit.key.empty() ? std::nullopt : std::optional(edit);
        }
        const bool isEscape =
            text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == '=' || text[i + 1] == '\\');
        if (isEscape) ++i;
        edit.key += text[i];
    }
    return std::nullopt;
}

std::string KeyValueText(const KeyValue& edit) {
    std::string text;
    for (const char letter : edit.key) {
        if (letter == '=' || letter == '\\') text += '\\';
        text += letter;
    }
    return text + '=' + edit.value;
}

std::optional<std::chrono::milliseconds> ParseSeconds(std::string_view text,
                                                      std::chrono::seconds most) {
    constexpr std::size_t kLongest = 12;
    constexpr double kLeast = 0.01;
    if (text.size() > kLongest || text.find_first_not_of("0123456789.") != std::string_view::npos)
        return std::nullopt;
    double seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    if (seconds < kLeast || seconds > static_cast<double>(most.count())) return std::nullopt;
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::duration<double>(seconds));
}

std::optional<int> ParseCount(std::string_view text, int least, int most) {
    int number = 0;
    if (!IsDigits(text)) return std::nullopt;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number < least || number > most) return std::nullopt;
    return number;
}

Result<TimeNode> ParseCommandToSend(const std::string& port,
                                    const std::vector<std::string>& bytes) {
    std::optional<TimeNode> node = ParsePort(port);
    if (!node) return Error{fmt::sprintf(Localized(kNoPort), port)};
    std::string typed;
    for (const std::string& piece : bytes) typed += (typed.empty() ? "" : " ") + piece;
    const auto command = NormalizedHexCommand(typed);
    if (!command || command->empty()) return Error{fmt::sprintf(Localized(kNoBytes), typed)};
    node->command = *command;
    return *node;
}

}  // namespace sontaro::cli
