// What the timeline's dialog does to nodes.
#include <fmt/printf.h>

#include "timeline/change_nodes_dialog.h"
#include "timeline/checks_panel.h"
#include "timeline/copy_video_dialog.h"
#include "timeline/player_time_add.h"
#include "timeline/player_time_control.h"
#include "timeline/shift_dialog.h"
#include "timeline/timeline_edits.h"
#include "timeline/timeline_texts.h"
#include "widgets/number_field.h"
#include "widgets/table.h"

namespace sontaro {

namespace {

constexpr LocalText kTickToTest = {"请先勾选要测试的命令。",
                                   "Tick the commands to be tested first."};
constexpr LocalText kTickToChange = {"请先勾选要更改的命令。",
                                     "Tick the commands to be changed first."};
constexpr LocalText kNotShifted = {
    "其中有命令会移到视频开始之前或超出范围，未作任何更改。",
    "One of the commands would come before the beginning of its video, or too late. Nothing has "
    "been moved."};
constexpr LocalText kTickFirst = {"先勾选再删除！", "Check before deleting!"};
constexpr LocalText kDeleteQuestion = {"【真的要删除吗?】", "Do you really want to delete it?"};

std::optional<NodeId> EqualNode(const TimelineDocument& document, const TimeNode& node) {
    for (std::size_t row = 0; row < document.NodeCount(); ++row)
        if (document.NodeAt(row) == node) return document.IdAt(row);
    return std::nullopt;
}

}  // namespace

void CPlayerTimeControl::AddNode() {
    if (const auto node = AskForNode(nullptr)) Changed(document_.Insert(*node));
}

/// The player may answer meanwhile. A node that was added before is then another one that equals
/// it; when it is gone, what was entered is not lost.
void CPlayerTimeControl::EditNode(std::size_t row) {
    const NodeId id = document_.IdAt(row);
    const TimeNode before = document_.NodeAt(row);
    const auto node = AskForNode(&before);
    if (!node || *node == before) return;
    const auto edited = document_.Find(id) ? std::optional(id) : EqualNode(document_, before);
    if (!edited) return Changed(document_.Insert(*node));
    document_.Apply({{}, {{*edited, *node}}, {}});
    Changed(*edited);
}

std::optional<TimeNode> CPlayerTimeControl::AskForNode(const TimeNode* edited) {
    CPlayerTimeAdd editor(this, Services().Messages(), videoOffer_, commandNames_, edited);
    return editor.ShowModal() == wxID_OK ? std::optional(editor.Node()) : std::nullopt;
}

void CPlayerTimeControl::TestNode(std::size_t row) { run_.Tests().TestOne(document_.IdAt(row)); }

void CPlayerTimeControl::TestTickedOrStop() {
    if (run_.Tests().IsRunning()) return run_.Tests().Stop();
    const NodeIds ticked = rows_.Ticked();
    if (ticked.empty()) return Services().Messages().Warn(Localized(kTickToTest));
    run_.Tests().TestAll(ticked, std::chrono::milliseconds(gap_->Number()));
}

void CPlayerTimeControl::DeleteTicked() {
    const NodeIds ticked = rows_.Ticked();
    if (ticked.empty()) return Services().Messages().Warn(Localized(kTickFirst));
    std::string question = Localized(kDeleteQuestion);
    if (const std::size_t hidden = HiddenOf(ticked))
        question += '\n' + fmt::sprintf(Localized(kSomeHidden), hidden);
    if (!Services().Messages().Confirm(question)) return;
    DeleteNodes(document_, ticked);
    Changed(std::nullopt);
}

std::size_t CPlayerTimeControl::HiddenOf(const NodeIds& ids) const {
    std::size_t hidden = 0;
    std::size_t next = 0;  // of `ids`, which are in the order of the rows
    for (std::size_t row = 0; next < ids.size() && row < document_.NodeCount(); ++row) {
        if (document_.IdAt(row) != ids[next]) continue;
        if (!table_->IsListed(row)) ++hidden;
        ++next;
    }
    return hidden;
}

/// The copies are ticked in place of the originals, so that the next thing is done to them.
void CPlayerTimeControl::DuplicateChosen() {
    const NodeIds originals = Chosen();
    if (originals.empty()) return;
    const NodeIds copies = DuplicateNodes(document_, originals);
    if (!rows_.Ticked().empty()) rows_.TickOnly(copies);
    Changed(copies.front());
}

void CPlayerTimeControl::ShiftChosen() {
    const NodeIds chosen = Chosen();
    if (chosen.empty()) return;
    const auto shift = AskForShift(this, chosen.size(), Services().Messages());
    if (!shift || *shift == 0) return;
    if (!ShiftNodes(document_, chosen, *shift))
        return Services().Messages().Warn(Localized(kNotShifted));
    Changed(std::nullopt);
}

void CPlayerTimeControl::ChangeTicked() {
    const NodeIds ticked = rows_.Ticked();
    if (ticked.empty()) return Services().Messages().Warn(Localized(kTickToChange));
    if (AskAndChangeNodes(this, document_, ticked, HiddenOf(ticked), videoOffer_,
                          Services().Messages()))
        Changed(ticked.front());
}

/// The chosen row says whose commands, at first.
void CPlayerTimeControl::CopyVideo() {
    const std::size_t row = table_->ChosenRow().value_or(0);
    if (row >= document_.NodeCount()) return;
    const VideoKey source = VideoOf(*document_.Order()[document_.PlaceOf(row).group]);
    Added(AskAndCopyVideo(this, document_, source, videoOffer_, Services().Messages()));
}

/// They are ticked in place of others, so that the next thing is done to them.
void CPlayerTimeControl::Added(const NodeIds& nodes) {
    if (nodes.empty()) return;
    rows_.TickOnly(nodes);
    Changed(nodes.front());
}

/// The ticked nodes, or those of the chosen rows where none is ticked.
NodeIds CPlayerTimeControl::Chosen() const {
    NodeIds ids = rows_.Ticked();
    if (!ids.empty()) return ids;
    for (const std::size_t row : table_->ChosenRows()) ids.push_back(document_.IdAt(row));
    return ids;
}

void CPlayerTimeControl::UndoOrRedo(bool undo) {
    if (undo ? document_.Undo() : document_.Redo()) Changed(std::nullopt);
}

/// `chosen` is the node to be shown, if there is one.
void CPlayerTimeControl::Changed(std::optional<NodeId> chosen) {
    table_->RowsChanged();
    const auto row = chosen ? document_.RowOf(*chosen) : std::nullopt;
    if (row) table_->Choose(*row);
    checks_->CheckSoon();
    run_.Changed();
}

/// Also where the filter hides its row.
void CPlayerTimeControl::Choose(NodeId node) {
    const auto row = document_.RowOf(node);
    if (!row) return;
    table_->Choose(*row);
    ShowChosen();
}

}  // namespace sontaro
