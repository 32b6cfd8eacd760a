// Settings that a player describes itself, within a document of another shape.
#pragma once

#include <json/value.h>

#include <string>
#include <string_view>
#include <vector>

#include "settings/custom_settings.h"

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

    /// Appends the rows of the entries, whose keys begin with `path`, by their "keyVal". What would
    /// be more than thousands of rows and choices is left out, and cannot be edited.
    void AddRows(const std::string& path, std::vector<SettingsRow>& rows) const;
    /// How many entries are left out because there are too many.
    [[nodiscard]] std::size_t HiddenCount() const;
    /// Takes over an edit of the row with that key behind the same `path`, or ignores it.
    [[nodiscard]] EditAnswer Edit(const std::string& path, std::string_view key,
                                  const std::string& text, bool mayBeNegative = false);
    /// The entry that has the row with that key; without a record when there is none.
    [[nodiscard]] CCustomSettingAnalysor::Item ItemOf(const std::string& path,
                                                      std::string_view key) const;
    /// Those that are not as they are, at the same place, in `before`.
    [[nodiscard]] CustomEntries ChangedSince(const CustomEntries& before) const;
    /// Gives every entry the value of the next one in `others` with the same key, type and limits.
    /// Returns how many of those have found no entry, or are beyond its limits.
    std::size_t TakeValues(const CustomEntries& others);

    bool operator==(const CustomEntries&) const = default;

   private:
    Json::Value entries_ = Json::Value(Json::arrayValue);
};

}  // namespace sontaro
