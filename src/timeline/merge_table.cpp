#include "timeline/merge_table.h"

#include "timeline/timeline_texts.h"

namespace sontaro {

namespace {

enum class Column : std::size_t { kPlayer, kType, kVideo, kCount, kHere };

constexpr TableColumn kColumns[] = {
    {kTimelineHeaders[0], 9},    {kTimelineHeaders[1], 13},
    {kTimelineHeaders[2], 24},   {{"命令数", "Commands"}, 9, CellKind::kNumber},
    {{"合并到", "Goes to"}, 42},
};
constexpr LocalText kSame = {"同名视频", "the same"};

}  // namespace

MergeTable::MergeTable(const GroupOrder& order) {
    for (const SharedGroup& group : order) rows_.push_back({{group, VideoOf(*group)}});
}

std::span<const TableColumn> MergeTable::Columns() const { return kColumns; }

std::string MergeTable::Text(std::size_t row, std::size_t column) const {
    const auto& [group, here] = rows_[row].merged;
    switch (static_cast<Column>(column)) {
        case Column::kPlayer: return PlayerName(group->player);
        case Column::kType: return group->type->text;
        case Column::kVideo: return group->video->text;
        case Column::kCount: return std::to_string(group->nodes.size());
        case Column::kHere: return here == VideoOf(*group) ? Localized(kSame) : VideoName(here);
    }
    return {};
}

std::vector<MergedGroup> MergeTable::Ticked() const {
    std::vector<MergedGroup> ticked;
    for (const Row& row : rows_)
        if (row.isTicked) ticked.push_back(row.merged);
    return ticked;
}

}  // namespace sontaro
