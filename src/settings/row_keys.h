// Keys of rows from names that a document gives.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace sontaro {

/// Makes parts of keys from names that may be empty, repeated, or anything else.
class RowKeys {
   public:
    /// The name as the part of a key, which no other call has given: "rate", and "rate#1" when it
    /// comes again; "#0" for an empty one. What keys are made with is escaped.
    [[nodiscard]] std::string Next(std::string_view name);

   private:
    std::unordered_map<std::string, int> seen_;
};

}  // namespace sontaro
