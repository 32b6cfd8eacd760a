// Fonts, got ready while the toolkit starts.
#pragma once

#include <thread>

namespace sontaro {

/// Reads the system's font configuration on a thread of its own. The toolkit needs it for the
/// first text; by then it is there. Called before the toolkit starts; join the thread at the end.
[[nodiscard]] std::jthread StartFonts();

}  // namespace sontaro
