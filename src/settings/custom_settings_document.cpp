#include "settings/custom_settings_document.h"

#include <algorithm>
#include <utility>

namespace sontaro {

bool CustomSettings::Take(std::string_view text) {
    CCustomSettingAnalysor read;
    if (!read.Parse(text) || !read.HasItems()) return false;
    settings_ = std::move(read);
    return true;
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
    const auto row = settings_.RowWithKey(edit.key);
    if (!row) return {};
    return settings_.UpdateFromGrid(row->group, row->item, row->groupName, row->rowName, edit.text,
                                    row->occurrence);
}

}  // namespace sontaro
