// Every key of the control protocol, with what is to be said of it: for the document and its rows.
#pragma once

#include <tuple>

#include "controlprotocol/control_protocol_document.h"
#include "settings/record_fields.h"

namespace sontaro {

// The fields of each kind of record, in the order of the rows.
[[nodiscard]] FieldGroups<SongSystem> GroupsOf(const SongSystem&);
[[nodiscard]] FieldGroups<SerialSettings> GroupsOf(const SerialSettings&);
[[nodiscard]] FieldGroups<VideoCategory> GroupsOf(const VideoCategory&);
[[nodiscard]] FieldGroups<AudioCategory> GroupsOf(const AudioCategory&);
[[nodiscard]] FieldGroups<ScreenLayout> GroupsOf(const ScreenLayout&);
[[nodiscard]] FieldGroups<Projector> GroupsOf(const Projector&);
[[nodiscard]] FieldGroups<ProjectorCommands> GroupsOf(const ProjectorCommands&);

/// A member of the root object: a record, or an array of records.
template <class Value>
struct Section {
    const char* key;
    Value ControlProtocolModel::*member;
    std::size_t grid;   ///< that shows it
    LocalText heading;  ///< over the groups of an array; empty: they stand by themselves
};
template <class Value>
Section(const char*, Value ControlProtocolModel::*, std::size_t, LocalText) -> Section<Value>;

inline constexpr std::tuple kSections = {
    Section{"KtvDev", &ControlProtocolModel::songSystem, 0, InBoth("")},
    Section{"Serial", &ControlProtocolModel::serial, 1, InBoth("")},
    Section{"VideoType", &ControlProtocolModel::videoTypes, 2, {"视频类别配置", "Video Type"}},
    Section{"AudioType", &ControlProtocolModel::audioTypes, 2, InBoth("音频类别配置")},
    Section{"LayOut", &ControlProtocolModel::layouts, 3, InBoth("")},
    Section{"Projector", &ControlProtocolModel::projectors, 4, InBoth("")},
};

/// Calls `visit(section, value)` for every section of `model`, in order.
template <class Model, class Visit>
void VisitSections(Model& model, const Visit& visit) {
    const auto visitAll = [&](const auto&... section) {
        (visit(section, model.*section.member), ...);
    };
    std::apply(visitAll, kSections);
}

/// Calls `visit(key, parts)` for every array of records within `record`.
template <class Record, class Visit>
void VisitParts(Record& record, const Visit& visit) {
    if constexpr (std::is_same_v<std::remove_const_t<Record>, Projector>)
        visit("Cmd", record.commands);
}

}  // namespace sontaro
