// Descriptions of settings as simulated players give them.
#pragma once

#include <cstddef>
#include <string>

namespace sontaro::simulator {

/// The settings that a simulated player describes at first: every kind of setting, bounds in
/// either order, and items that a tool has to pass over.
[[nodiscard]] std::string SampleSchema();

/// A description of `items` settings in groups of a hundred, the usable items of the sample in
/// turn.
[[nodiscard]] std::string LargeSchema(std::size_t items);

}  // namespace sontaro::simulator
