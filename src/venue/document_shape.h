// Which keys a document has, wherever its lists have how many elements.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace Json {
class Value;
}

namespace sontaro {

/// What keys the second of two documents has more or fewer than the first one. Elements of a list
/// are all alike ("VideoType/*/SendCmd"), and a list that is empty in either lacks nothing.
struct ShapeDifference {
    std::vector<std::string> added;    ///< that the second alone has
    std::vector<std::string> missing;  ///< that the first alone has
    /// Those of the second with values of another type than in the first, and the user's text for
    /// that.
    std::map<std::string, std::string> otherTypes;
};

/// A first document that is no object, such as that of a player without settings, has every key.
[[nodiscard]] ShapeDifference CompareShapes(const Json::Value& first, const Json::Value& second);

/// Adds those members of `present` with keys among `missing` that `target` lacks, place by place.
/// `key` is that of both.
void AddMissing(const Json::Value& present, const std::vector<std::string>& missing,
                Json::Value& target, const std::string& key = {});

}  // namespace sontaro
