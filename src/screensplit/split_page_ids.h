// Control numbers of the page of a video wall.
#pragma once

namespace sontaro {

inline constexpr int kSplitHorizontal = 2705;
inline constexpr int kSplitVertical = 2706;
inline constexpr int kSplitAdvanced = 2707;
inline constexpr int kSplitApply = 2708;
inline constexpr int kSplitTabs = 2710;
inline constexpr int kSplitFilter = 2711;
inline constexpr int kSplitGrid = 2712;  ///< of the first of four
inline constexpr int kSplitOverlap = 2716;
inline constexpr int kSplitSameOverlap = 2717;
inline constexpr int kSplitAsFetched = 2718;
inline constexpr int kSplitTakeOver = 2719;
inline constexpr int kSplitLastWall = 2720;
inline constexpr int kSplitRetry = 2721;
inline constexpr int kSplitProgress = 2722;
inline constexpr int kSplitState = 2723;
inline constexpr int kSplitOpen = 2724;
inline constexpr int kSplitSave = 2725;
inline constexpr int kSplitHelp = 2726;

}  // namespace sontaro
