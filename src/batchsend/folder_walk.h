// The files below folders, looked for aside.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/messenger.h"

namespace sontaro {

struct FoundFile {
    std::filesystem::path path;
    /// The name of the folder in which it lies right below the one that was chosen, UTF-8; empty:
    /// it lies in that one itself, or was chosen alone.
    std::string category = {};

    bool operator==(const FoundFile&) const = default;
};

struct FoundFiles {
    std::vector<FoundFile> files;
    std::vector<std::string> unreadable;  ///< what could not be looked at, UTF-8
    bool isWhole = true;                  ///< there were no more than are looked for
};

/// Looks for files on threads of their own, which nobody waits for, not even at exit: a disk may
/// never answer. All regular files count that are not hidden: what players can show differs from
/// one to the next and grows with their firmware, so that a list of endings would leave out videos
/// without a word. Links to files count, those to folders are not followed. User-interface thread.
class FolderWalk {
   public:
    /// Most files that one search finds.
    static constexpr std::size_t kMostFiles = 20'000;

    /// Both outlive the walk; the owner also outlives what the group waits for.
    FolderWalk(UiThread& owner, ThreadGroup& threads);
    ~FolderWalk();
    FolderWalk(const FolderWalk&) = delete;
    FolderWalk& operator=(const FolderWalk&) = delete;

    /// Looks for the files among `chosen` and below the folders among it, whatever other search
    /// goes on. `found` is told of them once: those chosen alone as they came, those of a folder
    /// sorted by name, numbers in names by their value, the ones in the folder itself first.
    void Begin(std::vector<std::filesystem::path> chosen, std::function<void(FoundFiles)> found);
    /// Nothing that is being looked for is told any more.
    void GiveUp();
    [[nodiscard]] bool IsLooking() const { return !searches_.empty(); }

   private:
    struct Search;

    void Tell(const std::shared_ptr<Search>& search);

    const std::shared_ptr<Messenger> messenger_;
    const bool hasThread_;  // to be told on
    std::vector<std::shared_ptr<Search>> searches_;
};

/// Whether a name comes before another one as people sort them: whatever the case of Latin letters,
/// and numbers by their value.
[[nodiscard]] bool ComesBefore(std::string_view name, std::string_view other);

}  // namespace sontaro
