// What stood on players before it was written over.
#pragma once

#include <chrono>
#include <filesystem>
#include <vector>

#include "base/result.h"
#include "venue/compare.h"

namespace sontaro {

/// A document that was kept.
struct EarlierDocument {
    std::filesystem::path file;
    std::chrono::sys_seconds time;  ///< when it stood on the player last
    std::uint64_t bytes = 0;
};

/// Documents in a folder of the data folder, by player and block. Other processes may be keeping
/// some there, too. Files are the user's alone. Whatever is wrong with the folder is an error that
/// is returned, and changes nothing. Any thread.
class EarlierDocuments {
   public:
    static constexpr std::size_t kMostOfBlock = 20;
    static constexpr std::uint64_t kMostBytes = std::uint64_t{200} << 20;

    /// `mostBytes` is of all that is kept together.
    explicit EarlierDocuments(std::filesystem::path folder, std::uint64_t mostBytes = kMostBytes)
        : folder_(std::move(folder)), mostBytes_(mostBytes) {}

    /// Keeps the player's present document, which is about to be written over. One that is kept
    /// already gets the new time. The oldest go where there are too many.
    [[nodiscard]] Status Keep(
        const VenuePlayer& player, const SettingsBlockKind& kind, std::string_view text,
        std::chrono::system_clock::time_point now = std::chrono::system_clock::now());

    /// What is kept of a player's block, the latest first; empty as well when there is no folder.
    [[nodiscard]] std::vector<EarlierDocument> List(const VenuePlayer& player,
                                                    const SettingsBlockKind& kind) const;

    /// The text, just as it was. Fails when the file is not what was written.
    [[nodiscard]] static Result<std::string> Read(const EarlierDocument& document);

    /// What has changed from a kept document to a later text.
    [[nodiscard]] static Result<BlockComparison> ChangesSince(const EarlierDocument& document,
                                                              const SettingsBlockKind& kind,
                                                              const std::string& later);

   private:
    [[nodiscard]] static Status Put(const std::filesystem::path& folder, std::string_view text,
                                    std::chrono::system_clock::time_point now);
    void RemoveOldest(const std::filesystem::path& folder) const;
    [[nodiscard]] std::filesystem::path FolderOf(const VenuePlayer& player,
                                                 const SettingsBlockKind& kind) const;

    std::filesystem::path folder_;
    std::uint64_t mostBytes_;
};

/// By whom documents are kept: a player that has not said who it is has its address for a name.
[[nodiscard]] VenuePlayer OwnerOfDocuments(const DeviceRecord& player);

/// Where the user's earlier documents are in a data folder.
[[nodiscard]] std::filesystem::path EarlierDocumentsFolder(const std::filesystem::path& data);

}  // namespace sontaro
