// The rows of settings that a player describes: their keys, and edits of them.
#pragma once

#include "settings/custom_setting_kinds.h"
#include "settings/row_keys.h"

namespace sontaro {

/// The key of a group: that of its title, or the title itself where it has none.
[[nodiscard]] std::string KeyOfCustomGroup(const CCustomSettingAnalysor::Group& group,
                                           RowKeys& keys);

/// Adds the rows that show an item. `key` is the item's own; those of multiples add to it.
void AddCustomRows(const CCustomSettingAnalysor::Item& item, std::string key,
                   std::vector<SettingsRow>& rows);

/// The row of an item with the key `itemKey` that has the key `rowKey`, as edits name it; none when
/// it is another item's.
struct CustomRowName {
    std::string rowName;
    int occurrence = 0;
};
[[nodiscard]] std::optional<CustomRowName> NameOfCustomRow(const CCustomSettingAnalysor::Item& item,
                                                           const std::string& itemKey,
                                                           std::string_view rowKey);

/// Takes over an edit of one of an item's rows, or ignores it.
[[nodiscard]] EditAnswer EditCustomItem(CCustomSettingAnalysor::Item& item,
                                        const CustomSettingKind::Edit& edit);

}  // namespace sontaro
