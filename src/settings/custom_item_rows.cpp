#include "settings/custom_item_rows.h"

#include <algorithm>

#include "base/local_text.h"

namespace sontaro {

namespace {

using Document = CCustomSettingAnalysor;

constexpr LocalText kNoSigns = {"不接受负数，原值保持不变。",
                                "Negative numbers are not accepted. The value stays as it was."};

}  // namespace

std::string KeyOfCustomGroup(const Document::Group& group, RowKeys& keys) {
    return keys.Next(group.title->key.empty() ? group.title->value : group.title->key);
}

void AddCustomRows(const Document::Item& item, std::string key, std::vector<SettingsRow>& rows) {
    SettingsRow row;
    row.key = std::move(key);
    row.name = item.record->label;
    row.help = item.record->remarks;
    item.kind->addRows(item, row, rows);
}

std::optional<CustomRowName> NameOfCustomRow(const Document::Item& item, const std::string& itemKey,
                                             std::string_view rowKey) {
    if (!rowKey.starts_with(itemKey)) return std::nullopt;
    std::vector<SettingsRow> rows;
    AddCustomRows(item, itemKey, rows);
    const auto row = std::ranges::find(rows, rowKey, &SettingsRow::key);
    if (row == rows.end()) return std::nullopt;
    const auto alike = std::ranges::count(rows.begin(), row, row->name, &SettingsRow::name);
    return CustomRowName{row->name, static_cast<int>(alike)};
}

EditAnswer EditCustomItem(Document::Item& item, const CustomSettingKind::Edit& edit) {
    const std::optional<std::string> shown = item.kind->edit(item, edit);
    if (!shown)
        return {EditAnswer::Outcome::kIgnored,
                edit.text.starts_with('-') ? Localized(kNoSigns) : ""};
    std::vector<SettingsRow> rows;
    AddCustomRows(item, "", rows);
    return {EditAnswer::Outcome::kAccepted, *shown, rows.front().caution};
}

}  // namespace sontaro
