// Numbers by which the controls of the remote control are found.
#pragma once

namespace sontaro {

/// Control numbers of the remote control; those of its buttons stand in `kVideoButtons`.
inline constexpr int kVolumeSlider = 2111;
inline constexpr int kProgressBar = 2115;
inline constexpr int kPositionText = 2116;
inline constexpr int kTitleText = 2118;
inline constexpr int kUsbLabel = 2122;
inline constexpr int kUsbVideo = 2125;
inline constexpr int kFolderChoice = 2131;
inline constexpr int kLayoutChoice = 2132;
inline constexpr int kVideoChoice = 2133;

}  // namespace sontaro
