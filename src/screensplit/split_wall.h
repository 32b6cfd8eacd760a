// What the user decides about a video wall: order, direction, overlaps and zoom.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/local_text.h"
#include "screensplit/split_device.h"
#include "screensplit/split_layout.h"

namespace sontaro {

/// What stands in a slot that is not used.
inline constexpr LocalText kInvalidSlot = {"无效", "Invalid"};

/// One output of a player.
struct ScreenName {
    std::string text;        ///< "192.168.1.21-1Screen"
    std::size_t device = 0;  ///< its place among the devices
    int output = 1;          ///< from 1
    /// What is written on the screen in a picture: its player's address, remark and ID as far as
    /// there are any, and its output.
    std::vector<std::string> label = {};

    bool operator==(const ScreenName&) const = default;
};

/// The outputs of the devices in their order.
[[nodiscard]] std::vector<ScreenName> ScreenNames(const std::vector<SplitDevice>& devices);

/// Which screen stands in a slot, by its place among the names; none in one that is not used.
using SplitSlot = std::optional<std::size_t>;

/// The slot that a text stands for, the word for unused ones in either language; no slot when it is
/// none of them.
[[nodiscard]] std::optional<SplitSlot> SlotOf(const std::string& text,
                                              const std::vector<ScreenName>& names);
[[nodiscard]] std::string SlotText(const SplitSlot& slot, const std::vector<ScreenName>& names);

/// Which screens follow one another, and how.
struct SplitArrangement {
    std::vector<SplitSlot> slots;  ///< as many as there are screens
    SplitDirection direction = SplitDirection::kHorizontal;

    /// The screens of the slots that are used, in their order.
    [[nodiscard]] std::vector<std::size_t> Order() const;
    /// Whether a screen stands in two slots.
    [[nodiscard]] bool ReusesScreen() const;

    bool operator==(const SplitArrangement&) const = default;
};

/// `slots` with the screens of `order` in place of theirs: unused slots stay where they are, as far
/// as there are as many.
[[nodiscard]] std::vector<SplitSlot> WithOrder(std::vector<SplitSlot> slots,
                                               const std::vector<std::size_t>& order);

/// The overlaps of a picture with the one before it, for either direction.
struct SplitSeam {
    std::int32_t x = 0;
    std::int32_t y = 0;

    bool operator==(const SplitSeam&) const = default;
};

/// A wall as it has been arranged. Overlaps belong to the seams, counted from the wall's beginning,
/// zoom belongs to the screens.
struct SplitWall {
    SplitArrangement arrangement;
    std::vector<SplitSeam> seams;  ///< one for every screen but the first in the wall
    std::vector<SplitZoom> zooms;  ///< one for every screen

    /// The screens in the order of the slots, then those that are not used, with all their corners.
    [[nodiscard]] std::vector<SplitScreen> Screens(SplitSize size) const;

    bool operator==(const SplitWall&) const = default;
};

/// So many screens one beside another in the order of their names.
[[nodiscard]] SplitWall PlainWall(std::size_t screens);

/// Most pixels of an overlap in that direction.
[[nodiscard]] std::int32_t MostOverlap(SplitDirection direction, SplitSize size);
/// Most pixels that are cut off at either side, and at top and bottom.
[[nodiscard]] SplitSize MostZoom(SplitSize size);
/// `wall` with every overlap and zoom within its limits.
[[nodiscard]] SplitWall WithinLimits(SplitWall wall, SplitSize size);

}  // namespace sontaro
