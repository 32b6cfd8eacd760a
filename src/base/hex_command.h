// Commands of serial lines as hexadecimal text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/bytes.h"

namespace sontaro {

/// The digits above 9: documents differ in them.
enum class LetterCase { kUpper, kLower };

/// Whether `text` is pairs of hexadecimal digits of either case and nothing else. The empty text
/// is: it means that there is no command.
[[nodiscard]] bool IsHexCommand(std::string_view text);

/// What a user has typed as a document keeps it: without blanks, its digits in `letters`; none when
/// that is no command.
[[nodiscard]] std::optional<std::string> NormalizedHexCommand(
    std::string_view text, LetterCase letters = LetterCase::kUpper);

/// A command as it is written down: `text` with its digits in `letters` when it is a command, as it
/// stands when it is none.
[[nodiscard]] std::string HexCommandIn(LetterCase letters, std::string_view text);

/// Two digits a byte, in their order.
[[nodiscard]] std::string HexCommandOf(ByteView bytes, LetterCase letters = LetterCase::kUpper);

/// The bytes of a command; none when `text` is no command.
[[nodiscard]] std::optional<Bytes> BytesOfHexCommand(std::string_view text);

}  // namespace sontaro
