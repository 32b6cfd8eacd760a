#include <fontconfig/fontconfig.h>

#include "widgets/font_start.h"

namespace sontaro {

// Failure shows when the toolkit asks for the same itself.
std::jthread StartFonts() {
    return std::jthread([] { FcInit(); });
}

}  // namespace sontaro
