// Folders that are named after players.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace sontaro {

/// Who a folder belongs to.
struct FolderOwner {
    std::string id;   ///< any bytes
    std::string mac;  ///< in capitals ("02:00:7F:00:00:02"); empty: the ID is enough

    bool operator==(const FolderOwner&) const = default;
};

/// The name of a player's folder, UTF-8. It is valid on Linux and Windows, and no two players have
/// the same, even where capitals count for nothing: "PLAYER1", "Player1+1f" (which letters are
/// small), "%2F.%2E", "%43ON", "PLAYER1@02007F000002". It never begins with a dot.
[[nodiscard]] std::string FolderNameOf(const FolderOwner& owner);

/// Who the folder of that name belongs to; none when no player's is called so. A system may have
/// changed the case of its letters.
[[nodiscard]] std::optional<FolderOwner> OwnerOfFolder(std::string_view name);

}  // namespace sontaro
