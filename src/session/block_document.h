// The settings of one block as text and as rows.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/result.h"
#include "session/settings_blocks.h"

namespace sontaro {

/// A row with where it stands.
struct PathRow {
    SettingsRow row;
    std::string group;  ///< the headings above it, separated by " / "
};

/// What has become of the values of another document.
struct TakenValues {
    std::vector<std::string> changed;            ///< paths of rows that have other values now
    std::vector<std::string> unknown;            ///< paths that the other document alone has
    std::vector<std::string> missing;            ///< paths that the other document does not have
    std::map<std::string, std::string> refused;  ///< path of a row, and why it keeps its value

    [[nodiscard]] bool IsWhole() const {
        return unknown.empty() && missing.empty() && refused.empty();
    }
};

/// A document of settings: the exact text of a player or a file, which stays until a value is
/// changed, and what it means. A text that is of no use is kept all the same. Texts are UTF-8, as
/// far as the player's were. One thread.
class BlockDocument {
   public:
    enum class Source : std::uint8_t { kPlayer, kFile };

    /// `kind` is a row of `SettingsBlocks`.
    BlockDocument(const SettingsBlockKind& kind, std::string text, Source source);

    [[nodiscard]] const SettingsBlockKind& Kind() const { return *kind_; }
    /// As it has come, or as it is written since a value was changed.
    [[nodiscard]] const std::string& Text() const { return text_; }
    /// Whether the text is a document of the block. Without that there are no rows.
    [[nodiscard]] const Status& Usable() const { return usable_; }
    /// Why it must not be sent as it stands; none when it may. Once a value has been changed, that
    /// is also a choice that there is not, of a row of its own: writing would make it another one.
    [[nodiscard]] std::optional<std::string> RefusalToSend() const;

    /// The rows in groups, in the document's order.
    [[nodiscard]] SettingsRows Rows() const;
    /// The rows in the document's order; `row.key` is the path.
    [[nodiscard]] std::vector<PathRow> PathRows() const;
    /// The rows by their paths.
    [[nodiscard]] std::map<std::string, PathRow> RowsByPath() const;

    /// Gives the row with that path a value as it would be typed in. Fails with a reason for the
    /// user; nothing has changed then. Nothing is taken that a grid would take and warn of: neither
    /// what is not among the choices, nor a number beyond its bounds. A value that the row has
    /// already leaves the text alone.
    [[nodiscard]] Status SetValue(const std::string& path, const std::string& value);

    /// Takes the values of another document of the same block, by path. Of settings that describe
    /// themselves the values alone go into this document, by the keys that the player knows them
    /// by ("keyVal", which stand in place of paths in the answer), as far as they are within the
    /// limits that this document has. What cannot be taken is told.
    [[nodiscard]] TakenValues TakeValues(const BlockDocument& others);

   private:
    [[nodiscard]] Status Edit(const SettingsRow& row, const std::string& value);
    [[nodiscard]] Status EditStrictly(const SettingsRow& row, const std::string& value);
    void FindMisfits();
    [[nodiscard]] std::string WithChanges(const std::string& before) const;
    [[nodiscard]] TakenValues TakeSelects(const BlockDocument& others);

    const SettingsBlockKind* kind_;
    std::string text_;
    std::unique_ptr<SettingsDocument> document_;
    Status usable_;
    Source source_;
    bool isWritten_ = false;         // the text, since a value was changed
    std::set<std::string> misfits_;  // paths of choices that showing them has made others
};

/// A row that two documents differ in; the value of one that only the other has is absent.
struct RowDifference {
    std::string path;
    std::string caption;  ///< the name of the row behind those of its groups
    std::optional<std::string> first;
    std::optional<std::string> second;

    bool operator==(const RowDifference&) const = default;
};

/// What two documents of one block differ in, by path, in the order of the first document and then
/// of the second. Rows that show a value that nothing can be done about count as well.
[[nodiscard]] std::vector<RowDifference> DifferencesBetween(const BlockDocument& first,
                                                            const BlockDocument& second);

}  // namespace sontaro
