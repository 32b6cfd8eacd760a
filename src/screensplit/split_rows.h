// The four grids of a video wall.
#pragma once

#include "base/settings_rows.h"
#include "screensplit/split_document.h"

namespace sontaro {

inline constexpr LocalText kSortTitle = {"设备分幕排序", "Device screen sort"};
inline constexpr LocalText kSplitTitle = {"设备分割参数", "Device split param"};
inline constexpr LocalText kZoomTitle = {"设备缩放参数", "Device Zoom param"};
inline constexpr LocalText kAdvancedTitle = {"设备高级参数", "Device advanced param"};

/// Which screen stands in which slot.
[[nodiscard]] SettingsRows SortRows(const SplitDocument& document);
/// The screens in the wall with their overlaps.
[[nodiscard]] SettingsRows SplitRows(const SplitDocument& document);
[[nodiscard]] SettingsRows ZoomRows(const SplitDocument& document);
[[nodiscard]] SettingsRows AdvancedRows(const SplitDocument& document);

/// Takes over an edit of any of their rows, or says why not.
[[nodiscard]] EditAnswer EditSplitRow(SplitDocument& document, const SettingsEdit& edit);

}  // namespace sontaro
