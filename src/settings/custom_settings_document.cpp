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

}  // namespace sontaro
