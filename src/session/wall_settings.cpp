#include "session/wall_settings.h"

#include "base/json.h"
#include "screensplit/advanced_params.h"
#include "screensplit/split_rows.h"
#include "settings/row_keys.h"

namespace sontaro {

namespace {

constexpr const char* kData = "configData";
constexpr const char* kScreenId = "screenID";
constexpr const char* kFixedPath = "fixedParam";

/// More than any wall has: what is sent instead of one must not take long to show.
constexpr Json::ArrayIndex kMostScreens = 64;

struct ScreenList {
    const char* key;
    LocalText title;
};

constexpr ScreenList kScreenLists[] = {
    {"VScreenSize", {"屏幕尺寸与缩放", "Sizes and zoom of the screens"}},
    {"channelShowArea", {"通道显示区域", "Areas of the channels"}},
};

constexpr LocalText kScreenTitle = {"屏幕 ", "Screen "};
constexpr LocalText kFixedTitle = {"设备固定参数", "Device fixed param"};

/// A group for each screen, whose numbers are rows.
SettingsGroup RowsOf(const ScreenList& list, const Json::Value& screens) {
    SettingsGroup group{list.key, Localized(list.title), {}};
    if (!screens.isArray()) return group;
    RowKeys keys;
    for (Json::ArrayIndex i = 0; i < screens.size() && i < kMostScreens; ++i) {
        const Json::Value& screen = screens[i];
        if (!screen.isObject()) continue;
        const std::string id = screen[kScreenId].isInt() ? screen[kScreenId].asString() : "";
        SettingsGroup& shown = group.groups.emplace_back();
        shown.key = std::string(list.key) + '/' + keys.Next(id);
        shown.name = Localized(kScreenTitle) + id;
        RowKeys members;
        for (const std::string& member : screen.getMemberNames())
            if (screen[member].isIntegral() && member != kScreenId)
                shown.rows.push_back({shown.key + '/' + members.Next(member), RowKind::kReadOnly,
                                      member, screen[member].asString()});
    }
    return group;
}

SettingsGroup RowsOf(const char* path, const LocalText& title, const CustomEntries& entries) {
    SettingsGroup group{path, Localized(title), {}};
    entries.AddRows(path, group.rows);
    return group;
}

}  // namespace

Status WallSettings::Take(std::string_view text) {
    Result<SplitConfiguration> read = SplitConfiguration::Read(text);
    if (!read) return Error{read.reason()};
    configuration_ = std::move(*read);
    advanced_ = configuration_->Advanced();
    return Done{};
}

std::string WallSettings::Write() const {
    return configuration_ ? WriteJson(configuration_->WholeWith(advanced_)) : std::string();
}

SettingsRows WallSettings::Rows() const {
    if (!configuration_) return {};
    SettingsRows rows;
    const Json::Value& data = configuration_->Whole()[kData];
    if (data.isObject())
        for (const ScreenList& list : kScreenLists) rows.push_back(RowsOf(list, data[list.key]));
    CustomEntries fixed;
    if (data.isObject()) fixed.Read(data[kFixedPath]);
    rows.push_back(RowsOf(kFixedPath, kFixedTitle, fixed));
    for (SettingsRow& row : rows.back().rows) row.kind = RowKind::kReadOnly;
    rows.push_back(RowsOf(kAdvancedPath, kAdvancedTitle, advanced_));
    return rows;
}

EditAnswer WallSettings::Edit(const SettingsEdit& edit) {
    if (!edit.key.starts_with(std::string(kAdvancedPath) + '/')) return {};
    return EditAdvancedParam(advanced_, edit);
}

}  // namespace sontaro
