// What a document of Sontaro's or a player's is, and what is wrong with it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "session/settings_blocks.h"
#include "venue/json_text.h"

namespace sontaro {

enum class FileKind : std::uint8_t {
    kUnknown,
    kSettings,        ///< a document of a settings block that has rows
    kOwnDescription,  ///< settings that a player describes itself: of which block is not to be seen
    kTimeline,
    kManifest,
    kVenue,
    kPlayers,  ///< a list of expected players
    kRemarks,
    kVideoSet,
    kVideoWall,
    kJournal,
};

/// The kind in a word for programs: "settings", "own-description", "timeline", ...
[[nodiscard]] const char* WordFor(FileKind kind);
/// The kind in words, for the user.
[[nodiscard]] std::string Told(FileKind kind);

struct CheckFinding {
    enum class Weight : std::uint8_t {
        kFault,   ///< it is refused, or does not mean what it says
        kRemark,  ///< odd, but nothing is lost by it
    };
    Weight weight = Weight::kFault;
    TextPlace place = {};
    std::string path = {};  ///< of the value; empty: of the whole document
    std::string what;       ///< a sentence for the user
};

struct DocumentCheck {
    FileKind kind = FileKind::kUnknown;
    const SettingsBlockKind* block = nullptr;  ///< of a settings document, if it can be seen
    std::vector<CheckFinding> findings = {};   ///< the most in front, at most `kMostFindings`
    std::size_t notListed = 0;

    [[nodiscard]] bool IsSound() const;
};

inline constexpr std::size_t kMostFindings = 1000;

/// Looks at a document. With `block` it has to be one of that block.
[[nodiscard]] DocumentCheck CheckDocument(std::string_view text,
                                          const SettingsBlockKind* block = nullptr);

}  // namespace sontaro
