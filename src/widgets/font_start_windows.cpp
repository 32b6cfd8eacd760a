#include "widgets/font_start.h"

namespace sontaro {

// The system keeps its fonts ready.
std::jthread StartFonts() { return {}; }

}  // namespace sontaro
