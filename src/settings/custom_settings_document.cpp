#include "settings/custom_settings_document.h"

#include <utility>

namespace sontaro {

bool CustomSettings::TakeReply(std::string_view text) {
    settings_.Clear();
    return TakeFile(text);
}

bool CustomSettings::TakeFile(std::string_view text) {
    CCustomSettingAnalysor read;
    if (!read.Parse(text) || !read.HasItems()) return false;
    settings_ = std::move(read);
    return true;
}

EditAnswer CustomSettings::Edit(const SettingsEdit& edit) {
    const auto row = settings_.RowWithKey(edit.key);
    if (!row) return {};
    return settings_.UpdateFromGrid(row->group, row->item, row->groupName, row->rowName, edit.text,
                                    row->occurrence);
}

}  // namespace sontaro
