// The configuration of a video wall as players hold it.
#pragma once

#include <json/value.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "screensplit/split_wall.h"
#include "settings/custom_entries.h"

namespace sontaro {

/// A document that a player has sent (settings block 12), from which the one for all players (block
/// 13) is made. What is not known in it goes back as it came.
class SplitConfiguration {
   public:
    /// Fails on anything that is no JSON object.
    [[nodiscard]] static Result<SplitConfiguration> Read(std::string_view text);

    /// The document with these screens, every one of `size`, and these advanced settings.
    [[nodiscard]] Json::Value With(const std::vector<SplitScreen>& screens, SplitSize size,
                                   const CustomEntries& advanced) const;
    /// The document as it was read.
    [[nodiscard]] const Json::Value& Whole() const { return whole_; }
    /// The document as it was read but for these advanced settings.
    [[nodiscard]] Json::Value WholeWith(const CustomEntries& advanced) const;

    /// The settings that the user may edit; as they were read.
    [[nodiscard]] const CustomEntries& Advanced() const { return advanced_; }
    /// The screens that the document itself has, in its order. What cannot be read is 0.
    [[nodiscard]] const std::vector<SplitScreen>& Screens() const { return screens_; }
    /// Whether the advanced and the fixed settings of both are the same.
    [[nodiscard]] bool HasSettingsOf(const SplitConfiguration& other) const {
        return advanced_ == other.advanced_ && fixed_ == other.fixed_;
    }

   private:
    Json::Value whole_;
    Json::Value others_;  // without what is written anew
    Json::Value fixed_ = Json::Value(Json::arrayValue);
    CustomEntries advanced_;
    std::vector<SplitScreen> screens_;
};

/// The wall of `count` screens that `screens` make; none when they are no single row or column of
/// these. One that is only one screen long has the direction that is given. Overlaps and zoom may
/// be beyond what can be set.
[[nodiscard]] std::optional<SplitWall> WallOf(const std::vector<SplitScreen>& screens,
                                              std::size_t count, SplitDirection direction);

}  // namespace sontaro
