// The values that fields hold: one at a time, whatever their type.
#pragma once

#include <optional>
#include <string>

#include "base/settings_rows.h"
#include "settings/record_fields.h"

namespace sontaro {

/// Gives the value what a new record holds.
void ResetValue(const Field& field, ValueRef value);

/// Takes the value in `json`; false when that is of another type or more than the value can hold.
[[nodiscard]] bool ReadValue(const Field& field, const Json::Value& json, ValueRef value);

/// Whether `json`, which has not been taken, is a whole number beyond what the value can hold.
[[nodiscard]] bool IsRaw(const Json::Value& json, ValueRef value);

[[nodiscard]] Json::Value ValueToJson(const Field& field, ValueRef value);

/// Makes a number that stands for a choice stand for one that there is: `raw` where it is there,
/// else the value itself.
void ClampValue(const Field& field, ValueRef value, const Json::Value* raw);

/// The row that shows the value. `number` goes into the label; `raw`, where it is there, is shown
/// in the place of the value, which cannot hold it.
[[nodiscard]] SettingsRow RowOfValue(const Field& field, std::string key, int number,
                                     ValueRef value, const Json::Value* raw);

/// Gives the value what the user has entered, or refuses it.
[[nodiscard]] EditAnswer EnterValue(const Field& field, const std::string& text, ValueRef value);

/// Whether a value is a text with more bytes than may be sent.
[[nodiscard]] bool IsTooLong(const Field& field, ValueRef value);

}  // namespace sontaro
