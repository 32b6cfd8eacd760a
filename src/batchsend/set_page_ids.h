// Control numbers of the parameter page of the video set.
#pragma once

namespace sontaro {

inline constexpr int kSetPlayers = 2601;
inline constexpr int kSetAskAgain = 2602;
inline constexpr int kSetFilter = 2603;
inline constexpr int kSetVideos = 2604;
inline constexpr int kSetAddFiles = 2605;
inline constexpr int kSetAddFolder = 2606;
inline constexpr int kSetRemove = 2607;
inline constexpr int kSetUp = 2608;
inline constexpr int kSetDown = 2609;
inline constexpr int kSetCategory = 2610;
inline constexpr int kSetCode = 2611;
inline constexpr int kSetRemoveNumbers = 2612;
inline constexpr int kSetCategories = 2613;
inline constexpr int kSetWriteNames = 2614;
inline constexpr int kSetOpen = 2615;
inline constexpr int kSetSave = 2616;
inline constexpr int kSetTotals = 2617;
inline constexpr int kSetProblem = 2618;
inline constexpr int kSetGiveUp = 2619;
inline constexpr int kSetAliases = 2620;        ///< in the dialog of the categories
inline constexpr int kSetAliasesFilter = 2621;  ///< likewise

}  // namespace sontaro
