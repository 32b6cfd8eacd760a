#include "venue/earlier_table.h"

#include <fmt/chrono.h>
#include <fmt/printf.h>

#include <algorithm>

namespace sontaro {

namespace {

constexpr TableColumn kStateColumns[] = {
    {{"被覆盖的时间", "Written over"}, 20, CellKind::kText},
    {{"更改数", "Changes"}, 8, CellKind::kNumber},
    {{"之后的更改", "What was changed after it"}, 82, CellKind::kText},
};
constexpr TableColumn kChangeColumns[] = {
    {{"设置", "Setting"}, 44, CellKind::kText},
    {{"当时", "Then"}, 33, CellKind::kText},
    {{"之后", "Afterwards"}, 33, CellKind::kText},
};
constexpr LocalText kWhole = {"整个文档", "the whole document"};
constexpr LocalText kMissing = {"（无）", "(none)"};
constexpr LocalText kUnknown = {"尚未读取播放器现有的设置，无法比较。",
                                "What the player holds now has not been read: there is nothing to "
                                "compare with."};
constexpr LocalText kSame = {"与之后的设置相同。", "The settings after it are the same."};
constexpr LocalText kOtherForm = {"与之后的设置值相同，仅写法不同。",
                                  "The settings after it have the same values in another form."};
constexpr LocalText kMore = {"另有 %d 处更改未列出。", "%d more changes are not listed."};
constexpr LocalText kChange = {"%s：%s → %s", "%s: %s → %s"};
constexpr LocalText kBetween = {"；", "; "};
constexpr std::size_t kMostNamed = 3;

std::string NameOf(const RowDifference& row) {
    if (!row.caption.empty()) return row.caption;
    return row.path.empty() ? Localized(kWhole) : row.path;
}

std::string ValueText(const std::optional<std::string>& value) {
    return value ? *value : Localized(kMissing);
}

std::string LocalTimeText(std::chrono::sys_seconds time) {
    return fmt::format("{:%Y-%m-%d %H:%M:%S}",
                       fmt::localtime(std::chrono::system_clock::to_time_t(time)));
}

/// The first of them in a line; a document that differs as a whole has no values to be shown.
std::string FirstOf(const BlockComparison& changes) {
    std::string text;
    const std::size_t count = std::min(changes.differences.size(), kMostNamed);
    for (std::size_t i = 0; i < count; ++i) {
        const RowDifference& row = changes.differences[i];
        if (i > 0) text += Localized(kBetween);
        text += row.path.empty() ? NameOf(row)
                                 : fmt::sprintf(Localized(kChange), NameOf(row),
                                                ValueText(row.first), ValueText(row.second));
    }
    return changes.differences.size() > count ? text + Localized(kBetween) + "…" : text;
}

}  // namespace

std::span<const TableColumn> EarlierTable::Columns() const { return kStateColumns; }

std::string EarlierTable::Text(std::size_t row, std::size_t column) const {
    const EarlierState& state = states_[row];
    if (column == 0) return LocalTimeText(state.document.time);
    if (!state.trouble.empty()) return column == 1 ? "" : state.trouble;
    if (!state.changes) return "";
    const BlockComparison& changes = *state.changes;
    if (column == 1) return std::to_string(changes.differences.size() + changes.notListed);
    return FirstOf(changes);
}

void LaterChangesTable::Show(const std::optional<BlockComparison>& changes) {
    rows_ = changes ? changes->differences : std::vector<RowDifference>();
}

std::span<const TableColumn> LaterChangesTable::Columns() const { return kChangeColumns; }

std::string LaterChangesTable::Text(std::size_t row, std::size_t column) const {
    const RowDifference& change = rows_[row];
    if (column == 0) return NameOf(change);
    return ValueText(column == 1 ? change.first : change.second);
}

std::string TextBesideChanges(const EarlierState& state) {
    if (!state.trouble.empty()) return state.trouble;
    if (!state.changes) return Localized(kUnknown);
    if (state.changes->isOtherForm) return Localized(kOtherForm);
    if (state.changes->differences.empty()) return Localized(kSame);
    const std::size_t more = state.changes->notListed;
    return more == 0 ? "" : fmt::sprintf(Localized(kMore), more);
}

}  // namespace sontaro
