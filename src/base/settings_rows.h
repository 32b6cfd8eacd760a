// Settings as rows of a grid, whatever document they come from.
#pragma once

#include <string>
#include <vector>

namespace sontaro {

/// What a row holds and how it is edited. Which texts it takes, its document decides.
enum class RowKind {
    kText,
    kWholeNumber,  ///< digits alone
    kDecimal,      ///< digits and points
    kHexCommand,   ///< bytes as pairs of hexadecimal digits
    kChoice,       ///< one of the choices
    kYesNo,        ///< kRowYes or kRowNo
    kColour,       ///< "#RRGGBB", or empty for the player's default colour
    kReadOnly,
};

/// One row. Texts are UTF-8.
struct SettingsRow {
    /// A path that stays the row's own when its place changes ("VideoType/6/SendCmd"): no other
    /// row or group of its grid has it.
    std::string key;
    RowKind kind = RowKind::kText;
    std::string name;
    std::string value;
    std::string help = {};                  ///< what is explained while the row is chosen
    std::vector<std::string> choices = {};  ///< of a choice, each once
    bool takesHeld = false;    ///< of a choice: takes what the player holds, listed or not
    std::string caution = {};  ///< what is odd about the value, which is marked; empty: nothing

    bool operator==(const SettingsRow&) const = default;
};

/// Rows under a heading, then sub-groups.
struct SettingsGroup {
    std::string key;  ///< as a row has one
    std::string name;
    std::vector<SettingsRow> rows;
    std::vector<SettingsGroup> groups = {};

    bool operator==(const SettingsGroup&) const = default;
};

using SettingsRows = std::vector<SettingsGroup>;

/// Calls `visit` with every row.
template <class Visit>
// NOLINTNEXTLINE(misc-no-recursion): groups stand within groups
void VisitRows(const SettingsRows& groups, const Visit& visit) {
    for (const SettingsGroup& group : groups) {
        for (const SettingsRow& row : group.rows) visit(row);
        VisitRows(group.groups, visit);
    }
}

/// Values of a yes/no row.
inline constexpr const char* kRowYes = "1";
inline constexpr const char* kRowNo = "0";

/// The user has given a row another value.
struct SettingsEdit {
    std::string key;   ///< of the row
    std::string text;  ///< as it was typed, or one of the choices
};

/// What becomes of an edit.
struct EditAnswer {
    enum class Outcome {
        kAccepted,  ///< `text` is what the row shows from now on
        kRefused,   ///< the row keeps its value, and `text` is told in a message box
        kIgnored,   ///< the row keeps its value, and a hint says that it does: `text` if there is
                    ///< one
    };
    Outcome outcome = Outcome::kIgnored;
    std::string text = {};
    std::string caution = {};  ///< of an accepted one: what is odd about the value

    bool operator==(const EditAnswer&) const = default;
};

}  // namespace sontaro
