// The values of arguments and options.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "timeline/time_node.h"

namespace sontaro::cli {

/// What a row is to be: KEY=VALUE.
struct KeyValue {
    std::string key;  ///< a path
    std::string value;

    bool operator==(const KeyValue&) const = default;
};
/// The first "=" ends the key; one within it, or a backslash, has a backslash before it. None
/// without a key, without "=", and for what is no UTF-8.
[[nodiscard]] std::optional<KeyValue> ParseKeyValue(std::string_view text);
/// That text.
[[nodiscard]] std::string KeyValueText(const KeyValue& edit);

/// Seconds, such as "5" or "0.5", of at least a hundredth and at most `most`.
[[nodiscard]] std::optional<std::chrono::milliseconds> ParseSeconds(std::string_view text,
                                                                    std::chrono::seconds most);
/// A whole number within these bounds, digits alone.
[[nodiscard]] std::optional<int> ParseCount(std::string_view text, int least, int most);

/// The node of a timeline that goes out at once over that port - "232:0", "485", "tcp:IP:PORT",
/// "udp:IP:PORT" or "dmx512" - with these bytes, which may be in several pieces. Fails with a text
/// for the user.
[[nodiscard]] Result<TimeNode> ParseCommandToSend(const std::string& port,
                                                  const std::vector<std::string>& bytes);

}  // namespace sontaro::cli
