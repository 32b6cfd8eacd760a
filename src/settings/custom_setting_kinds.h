// The kinds of settings that a player can describe.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "settings/custom_settings.h"

namespace sontaro {

/// How the items of one kind are read, shown and edited. They write themselves
/// (`CCustomSettingAnalysor::BASE::ToJson`).
struct CustomSettingKind {
    using Item = CCustomSettingAnalysor::Item;
    using Record = std::unique_ptr<CCustomSettingAnalysor::BASE>;

    std::string_view keyword;  ///< "inputType" of its items, as it stands

    /// The record of an item's "select" and "valueRange", without the texts that all items have;
    /// none when "select" is of another type.
    Record (*read)(const Json::Value& select, const Json::Value& range);

    Record (*copy)(const CCustomSettingAnalysor::BASE& record);

    /// Adds the rows that show the item: copies of `row` with what belongs to the kind.
    void (*addRows)(const Item& item, const SettingsRow& row, std::vector<SettingsRow>& rows);

    /// A text for one of those rows.
    struct Edit {
        const std::string& rowName;
        int occurrence = 0;  ///< among the rows with that name
        const std::string& text;
        bool mayBeNegative = false;  ///< a number in it
    };
    /// Takes over an edit. Returns what the row shows then; none when there is no such row or the
    /// text does not fit, and the item is as it was.
    std::optional<std::string> (*edit)(Item& item, const Edit& edit);
};

/// The kind whose items give their group its title.
[[nodiscard]] const CustomSettingKind& TitleKind();

/// The keyword of the kind with that number, from 0; empty when there is none.
[[nodiscard]] std::string_view KeywordAt(int index);

/// Reads any element of a group; without a record when it is not an item of one of the kinds.
[[nodiscard]] CCustomSettingAnalysor::Item ReadCustomSetting(const Json::Value& element);

}  // namespace sontaro
