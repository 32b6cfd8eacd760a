#include "session/timeline_settings.h"

#include "settings/row_keys.h"
#include "timeline/node_checks.h"
#include "timeline/time_text.h"
#include "timeline/timeline_texts.h"

namespace sontaro {

namespace {

/// Ways out of a player as they stand in keys: the same in every language.
std::string PortWord(const TimeNode& node) {
    if (!IsTimelinePort(node.port)) return std::to_string(node.port);
    std::string word = kTimelinePortNames[static_cast<std::size_t>(node.port)].english;
    if (IsNetworkPort(node.port)) word += ' ' + node.ip + ':' + std::to_string(node.peerPort);
    return word;
}

std::string CaptionOf(const TimeNode& node) {
    std::string caption = AxisText(node.time) + ' ' + Localized(PortName(node.port));
    if (IsNetworkPort(node.port)) caption += ' ' + node.ip + ':' + std::to_string(node.peerPort);
    return caption;
}

std::string KeyOf(const NodeGroup& group) {
    const auto part = [](const std::string& name) { return RowKeys().Next(name); };
    return std::to_string(group.player) + '/' + part(group.type->text) + '/' +
           part(group.video->text);
}

/// Calls `visit(place of the group, node, id, key)` for every command, in the document's order.
template <class Visit>
void VisitNodes(const GroupOrder& order, const Visit& visit) {
    for (std::size_t place = 0; const SharedGroup& group : order) {
        const std::string path = KeyOf(*group) + '/';
        RowKeys keys;
        for (const GroupNode& stored : group->nodes) {
            const TimeNode node = NodeOf(*group, stored);
            visit(place, node, stored.id,
                  path + keys.Next(std::to_string(node.time) + ' ' + PortWord(node)));
        }
        ++place;
    }
}

}  // namespace

Status TimelineSettings::TakeReply(std::string_view text) {
    if (!text.empty()) return timeline_.Take(text, TimelineSource::kPlayer);
    timeline_.Replace({});
    return Done{};
}

SettingsRows TimelineSettings::Rows() const {
    SettingsRows rows;
    for (const SharedGroup& group : timeline_.Order())
        rows.push_back(
            {KeyOf(*group), VideoName({group->player, group->type->text, group->video->text}), {}});
    VisitNodes(timeline_.Order(),
               [&](std::size_t group, const TimeNode& node, NodeId, std::string key) {
                   rows[group].rows.push_back(
                       {std::move(key), RowKind::kHexCommand, CaptionOf(node), node.command});
               });
    return rows;
}

EditAnswer TimelineSettings::Edit(const SettingsEdit& edit) {
    TimelineChange change;
    EditAnswer answer;
    VisitNodes(timeline_.Order(),
               [&](std::size_t, const TimeNode& node, NodeId id, const std::string& key) {
                   if (key != edit.key) return;
                   NodeEntry entry = EntryOf(node);
                   entry.command = edit.text;
                   if (const std::optional<LocalText> refusal = RefusalOf(entry)) {
                       answer = {EditAnswer::Outcome::kRefused, Localized(*refusal)};
                       return;
                   }
                   change.replaced.push_back({id, NodeOf(entry, &node)});
                   answer = {EditAnswer::Outcome::kAccepted, change.replaced.back().node.command};
               });
    if (!change.IsEmpty()) timeline_.Apply(change);
    return answer;
}

std::shared_ptr<const SettingsDocument> TimelineSettings::Keep() const {
    auto kept = std::make_shared<TimelineSettings>();
    kept->PutBack(*this);
    return kept;
}

/// What has been written can be read.
void TimelineSettings::PutBack(const SettingsDocument& kept) {
    static_cast<void>(timeline_.Take(kept.Write(), TimelineSource::kPlayer));
}

std::optional<LocalText> TimelineSettings::RefusalToSend() const {
    if (timeline_.IsTooLong()) return kTooManyCommands;
    return std::nullopt;
}

}  // namespace sontaro
