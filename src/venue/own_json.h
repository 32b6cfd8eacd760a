// Reads a file of Sontaro's own, and says where it is not as it has to be.
#pragma once

#include <initializer_list>
#include <optional>

#include "base/local_text.h"
#include "venue/json_text.h"

namespace sontaro {

/// A JSON object that says its format and version. The first trouble is kept, and whatever is read
/// after it means nothing: it has to be asked for at the end.
class OwnJson {
   public:
    /// `text` outlives the reader, and has at most `longest` bytes.
    OwnJson(std::string_view text, std::size_t longest);

    /// Refuses a file of another format than these, or of a later version.
    void ExpectFormat(std::initializer_list<const char*> formats, const LocalText& isOther);

    [[nodiscard]] const Json::Value& Root() const { return root_; }
    /// A member that has to be a list of at most `most` elements; an empty one when it is none.
    [[nodiscard]] const Json::Value& List(const Json::Value& object, const char* key,
                                          std::size_t most);
    enum class Need : std::uint8_t { kRequired, kOptional };
    /// A member that has to be a text; "" when it is none. An optional one may be absent.
    [[nodiscard]] std::string Text(const Json::Value& object, const char* key,
                                   Need need = Need::kRequired);
    /// A member that has to be a whole number up to `most`; 0 when it is none.
    [[nodiscard]] std::uint64_t Number(const Json::Value& object, const char* key,
                                       std::uint64_t most);

    /// Keeps a trouble with `value`, unless there is one.
    void Refuse(const Json::Value& value, std::string why);
    void Refuse(const TextTrouble& trouble);
    /// The first one; none when all is well.
    [[nodiscard]] const std::optional<TextTrouble>& Trouble() const { return trouble_; }

   private:
    const std::string_view text_;
    Json::Value root_;
    std::optional<TextTrouble> trouble_;
};

}  // namespace sontaro
