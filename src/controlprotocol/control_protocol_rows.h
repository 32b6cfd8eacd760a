// The control protocol as rows of five grids.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "controlprotocol/control_protocol_document.h"

namespace sontaro {

/// Song-selection system; serial port and commands; video and audio categories; layouts;
/// projectors.
inline constexpr std::size_t kControlProtocolGrids = 5;
inline constexpr std::size_t kCategoryGrid = 2;

using ControlProtocolGrids = std::array<SettingsRows, kControlProtocolGrids>;

/// The rows of every grid. A number that stands for a choice there is not is clamped in the model
/// as well as in the rows.
[[nodiscard]] ControlProtocolGrids ControlProtocolRows(ControlProtocolModel& model);

/// One of those rows by its key; none when there is none.
[[nodiscard]] std::optional<SettingsRow> ControlProtocolRow(const ControlProtocolModel& model,
                                                            std::string_view key);

/// Takes over an edit of one of those rows, or says why not.
[[nodiscard]] EditAnswer EditControlProtocol(ControlProtocolModel& model, const SettingsEdit& edit);

/// The video category, from 0, that `group` of the grid of categories shows; none for others.
[[nodiscard]] std::optional<int> VideoCategoryIn(const SettingsGroup& group);

/// The edit that gives the video category the command that switches to it.
[[nodiscard]] SettingsEdit SwitchCommandEdit(int category, const std::string& command);

}  // namespace sontaro
