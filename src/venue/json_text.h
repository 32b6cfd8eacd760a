// JSON texts that people write, and what is wrong with them in which line.
#pragma once

#include <json/value.h>

#include <string>
#include <string_view>
#include <variant>

namespace sontaro {

/// A place in a text, counted from 1; columns count characters. 0: not known.
struct TextPlace {
    std::size_t line = 0;
    std::size_t column = 0;

    bool operator==(const TextPlace&) const = default;
};

/// Why a text is not taken.
struct TextTrouble {
    TextPlace place;
    std::string why;  ///< a sentence for the user, in the language of the process

    /// The sentence with its place.
    [[nodiscard]] std::string Told() const;
};

/// What was read from a text, or why it is not taken.
template <class T>
using Placed = std::variant<T, TextTrouble>;

/// Finds places in a text, which outlives it. Bytes that are asked for one behind the other cost
/// one walk through the text.
class PlaceFinder {
   public:
    explicit PlaceFinder(std::string_view text);
    /// The place of the byte at `offset`.
    [[nodiscard]] TextPlace At(std::size_t offset);

   private:
    std::string_view text_;
    std::size_t reached_;  // byte whose place is `place_`
    TextPlace place_;
};

/// The document in `text`, whose values know where they stand in it (see `PlaceOf`). A byte order
/// mark ahead is passed over. Keys that an object has twice are trouble, as is anything behind the
/// document. Never throws.
[[nodiscard]] Placed<Json::Value> ReadJsonText(std::string_view text);

/// The byte at which a value of such a document begins in its `text`.
[[nodiscard]] std::size_t OffsetOf(const Json::Value& value, std::string_view text);
/// Its place; a `PlaceFinder` is for those of many.
[[nodiscard]] TextPlace PlaceOf(const Json::Value& value, std::string_view text);

}  // namespace sontaro
