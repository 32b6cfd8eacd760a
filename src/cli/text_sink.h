// Where a program's output goes.
#pragma once

#include <string_view>

namespace sontaro::cli {

/// Takes texts in their order, each of them whole. Any thread, one at a time.
class TextSink {
   public:
    virtual ~TextSink() = default;
    /// Writes at once.
    virtual void Write(std::string_view text) = 0;
};

}  // namespace sontaro::cli
