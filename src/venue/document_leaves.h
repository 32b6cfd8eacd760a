// The single values of a document, whatever rows show of it.
#pragma once

#include <json/value.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "session/settings_blocks.h"

namespace sontaro {

/// A value that holds no others, or the whole value of a setting that describes itself.
struct DocumentLeaf {
    /// Where it stands, as rows have it: members and places, and keys where elements have some
    /// ("data/0/speed", "VScreenSize/2/width"; "light/rate/valueRange" in settings that describe
    /// themselves).
    std::string path;
    std::string item;  ///< path of the setting that it describes; empty: of none
    const Json::Value* value = nullptr;

    /// Whether it is the value that the rows of its item show.
    [[nodiscard]] bool IsSelect() const;
    /// Whether it is of the title of a group.
    [[nodiscard]] bool IsOfTitle() const;
};

/// The leaves of a block's document, in its order; they live as long as it does.
[[nodiscard]] std::vector<DocumentLeaf> LeavesOf(const SettingsBlockKind& kind,
                                                 const Json::Value& document);

/// The same value; numbers are that whatever they are written as.
[[nodiscard]] bool IsSameLeaf(const Json::Value& first, const Json::Value& second);

/// A leaf as people read it.
[[nodiscard]] std::string LeafText(const Json::Value& value);

/// Whether `path` is `key`, or leads on from it.
[[nodiscard]] bool IsUnder(std::string_view path, std::string_view key);

/// Gives every leaf of `document` for which `isWanted` holds the value of the leaf with the same
/// path in `others`, where there is one.
void TakeLeaves(const SettingsBlockKind& kind, Json::Value& document, const Json::Value& others,
                const std::function<bool(const DocumentLeaf&)>& isWanted);

}  // namespace sontaro
