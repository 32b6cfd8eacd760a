// The tour as the program knows it.
#pragma once

#include "app/walk.h"

namespace sontaro {

/// The walk that presses everything and leaves its pictures in `folder`.
[[nodiscard]] std::unique_ptr<Walk> MakeTourWalk(const std::filesystem::path& folder);

}  // namespace sontaro
