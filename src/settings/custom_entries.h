// Settings that a player describes itself, within a document of another shape.
#pragma once

#include <json/value.h>

#include <string>
#include <string_view>
#include <vector>

#include "base/settings_rows.h"

namespace sontaro {

/// An array of items as settings/custom_settings.h has them in its groups. "inputType" may also be
/// the number of its keyword. What cannot be read is not shown; what is not edited goes back
/// exactly as it came. Texts are UTF-8.
class CustomEntries {
   public:
    /// Takes over an array in place of the one held; anything else changes nothing.
    void Read(const Json::Value& json);
    /// The array with its current values.
    [[nodiscard]] const Json::Value& ToJson() const { return entries_; }

    /// Appends the rows of the entries, whose keys begin with `path`, by their "keyVal".
    void AddRows(const std::string& path, std::vector<SettingsRow>& rows) const;
    /// Takes over an edit of the row with that key behind the same `path`, or ignores it.
    [[nodiscard]] EditAnswer Edit(const std::string& path, std::string_view key,
                                  const std::string& text);

    bool operator==(const CustomEntries&) const = default;

   private:
    Json::Value entries_ = Json::Value(Json::arrayValue);
};

}  // namespace sontaro
