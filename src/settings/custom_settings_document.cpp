#include "settings/custom_settings_document.h"

#include <algorithm>
#include <utility>

#include "settings/custom_item_rows.h"

namespace sontaro {

Status CustomSettings::Take(std::string_view text) {
    CCustomSettingAnalysor read;
    if (!read.Parse(text)) return Error{"the text is no JSON"};
    if (!read.HasItems()) return Error{"there is no setting in it"};
    settings_ = std::move(read);
    return Done{};
}

std::vector<std::string> CustomSettings::Keys() const {
    std::vector<std::string> keys;
    for (const CCustomSettingAnalysor::Group& group : settings_.Groups())
        for (const CCustomSettingAnalysor::Item& item : group.items)
            keys.push_back(item.record->key);
    std::ranges::sort(keys);
    return keys;
}

EditAnswer CustomSettings::Edit(const SettingsEdit& edit) {
    RowKeys keys;
    for (int index = 0; const CCustomSettingAnalysor::Group& group : settings_.Groups()) {
        const std::string prefix = KeyOfCustomGroup(group, keys) + '/';
        if (edit.key.starts_with(prefix)) return EditIn(group, index, prefix, edit);
        ++index;
    }
    return {};
}

/// `group` has the number `index`; the keys of its items begin with `prefix`.
EditAnswer CustomSettings::EditIn(const CCustomSettingAnalysor::Group& group, int index,
                                  const std::string& prefix, const SettingsEdit& edit) {
    RowKeys keys;
    for (int place = 0; const CCustomSettingAnalysor::Item& item : group.items) {
        const std::string itemKey = prefix + keys.Next(item.record->key);
        if (const auto row = NameOfCustomRow(item, itemKey, edit.key))
            return settings_.UpdateFromGrid(index, place, group.title->value, row->rowName,
                                            edit.text, row->occurrence);
        ++place;
    }
    return {};
}

}  // namespace sontaro
