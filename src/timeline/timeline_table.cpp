#include "timeline/timeline_table.h"

#include "timeline/timeline_texts.h"

namespace sontaro {

namespace {

struct ColumnLook {
    int characters;
    CellKind kind;
};
constexpr std::array<ColumnLook, kTimelineColumns> kLooks = {{
    {9, CellKind::kText},
    {13, CellKind::kText},
    {20, CellKind::kText},
    {10, CellKind::kNumber},
    {9, CellKind::kText},
    {9, CellKind::kText},
    {15, CellKind::kText},
    {9, CellKind::kNumber},
    {24, CellKind::kText},
    {7, CellKind::kButton},
}};

constexpr auto kColumns = [] {
    std::array<TableColumn, kTimelineColumns> columns{};
    for (std::size_t column = 0; column < kTimelineColumns; ++column)
        columns[column] = {kTimelineHeaders[column], kLooks[column].characters,
                           kLooks[column].kind};
    return columns;
}();

}  // namespace

std::span<const TableColumn> TimelineTable::Columns() const { return kColumns; }

const TimeNode& TimelineTable::NodeOfRow(std::size_t row) const {
    const TimelineDocument::State state = document_.CurrentState();
    if (!latest_ || latest_->state != state || latest_->row != row)
        latest_ = {state, row, document_.NodeAt(row)};
    return latest_->node;
}

std::string TimelineTable::Text(std::size_t row, std::size_t column) const {
    const TimeNode& node = NodeOfRow(row);
    const auto shown = static_cast<TimelineColumn>(column);
    const bool hasPeerPort = node.peerPort != 0 || IsNetworkPort(node.port);
    return shown == TimelineColumn::kPeerPort && !hasPeerPort ? "" : CellText(node, shown);
}

void TimelineTable::SetTicked(std::size_t row, bool ticked) {
    if (ticked)
        ticked_.insert(document_.IdAt(row));
    else
        ticked_.erase(document_.IdAt(row));
}

std::string TimelineTable::CellCaution(std::size_t row, std::size_t column) const {
    return sontaro::CellCaution(NodeOfRow(row), static_cast<TimelineColumn>(column)).value_or("");
}

std::string TimelineTable::RowCaution(std::size_t row) const {
    std::string caution;
    for (std::size_t column = 0; column < kTimelineColumns && caution.empty(); ++column)
        caution = CellCaution(row, column);
    return caution;
}

NodeIds TimelineTable::Ticked() const {
    if (ticked_.empty()) return {};
    return document_.Existing(NodeIds(ticked_.begin(), ticked_.end()));
}

}  // namespace sontaro
