// JSON texts in the players' dialect.
#pragma once

#include <json/value.h>

#include <string>
#include <string_view>

#include "base/result.h"

namespace sontaro {

/// The document in `text` (UTF-8), comments dropped. Fails on anything that is not JSON, nesting
/// beyond jsoncpp's limit included; never throws.
[[nodiscard]] Result<Json::Value> ParseJson(std::string_view text);

/// `value` as jsoncpp's default writer prints it: the form that players read.
[[nodiscard]] std::string WriteJson(const Json::Value& value);

/// `value` on one line, without a line end: for files that grow line by line.
[[nodiscard]] std::string WriteJsonLine(const Json::Value& value);

/// The text of a string value in valid UTF-8; a player's broken characters become U+FFFD.
[[nodiscard]] std::string TextOf(const Json::Value& value);

/// `value` with all its texts and keys in valid UTF-8: as it is after it was written and read.
[[nodiscard]] Json::Value WithValidTexts(const Json::Value& value);

}  // namespace sontaro
