// User-visible texts with a number of things, in two languages.
#pragma once

#include <fmt/printf.h>

#include <cstddef>
#include <string>

#include "base/local_text.h"

namespace sontaro {

/// A text with a count, "%d", of which English has a form for one. All forms are UTF-8 literals.
struct CountText {
    const char* chinese;
    const char* one;
    const char* many;
};

/// The form of `text` for so many things, in the language of the process, UTF-8.
[[nodiscard]] inline std::string Counted(const CountText& text, std::size_t count) {
    return fmt::sprintf(Localized({text.chinese, count == 1 ? text.one : text.many}), count);
}

}  // namespace sontaro
