// Documents that windows keep, and find again, without waiting for a disk.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "base/messenger.h"
#include "venue/earlier_documents.h"

namespace sontaro {

/// A document that stood on a player once.
struct EarlierState {
    EarlierDocument document;
    std::string text = {};     ///< just as it was
    std::string trouble = {};  ///< why it cannot be read; empty: it can
    /// What was changed after it, up to the next later one; none: that is not known.
    std::optional<BlockComparison> changes = {};
};

/// What is kept of a player's block, the latest first. `present` is what the player holds now, if
/// that is known. Any thread.
[[nodiscard]] std::vector<EarlierState> EarlierStates(const EarlierDocuments& documents,
                                                      const VenuePlayer& player,
                                                      const SettingsBlockKind& kind,
                                                      std::optional<std::string> present);

/// Keeps and lists documents on threads of its own, one after another: a disk that is slow, or
/// never answers, is nobody's trouble. Answers come on the owner's thread, also when whoever asked
/// has gone: what is passed has to see to that. User-interface thread.
class DocumentKeeper {
   public:
    /// How long the end waits for what is still on its way to the disk.
    static constexpr std::chrono::milliseconds kPatience{2000};

    using Kept = std::function<void(const Status&)>;
    using Listed = std::function<void(std::vector<EarlierState>)>;

    /// Both outlive the keeper; the owner also outlives what the group waits for.
    DocumentKeeper(std::filesystem::path folder, UiThread& owner, ThreadGroup& threads);
    ~DocumentKeeper();
    DocumentKeeper(const DocumentKeeper&) = delete;
    DocumentKeeper& operator=(const DocumentKeeper&) = delete;

    /// Keeps what the player holds at this moment. `block` is the one that is read.
    void Keep(const VenuePlayer& player, SettingsBlock block, std::string text, const Kept& kept);
    /// Lists what is kept of the player's block, all that was given to be kept before included.
    void List(const VenuePlayer& player, SettingsBlock block, std::optional<std::string> present,
              const Listed& listed);

   private:
    struct Work;

    [[nodiscard]] bool Do(std::function<void()> job);

    const EarlierDocuments documents_;
    const std::shared_ptr<Messenger> messenger_;
    const bool hasThread_;  // to be told on
    const std::shared_ptr<Work> work_;
};

/// Keeps one block's documents for a window. User-interface thread.
class BlockKeeping {
   public:
    /// `keeper` outlives this object. `changed` is called when there is other trouble than before.
    BlockKeeping(DocumentKeeper& keeper, SettingsBlock block, std::function<void()> changed)
        : keeper_(keeper), block_(block), changed_(std::move(changed)) {}

    /// Keeps what the player holds at this moment, and comes back at once.
    void Keep(const DeviceRecord& player, std::string text);
    /// A sentence that says why the latest of them was not kept; empty: it was.
    [[nodiscard]] const std::string& Trouble() const { return trouble_; }

   private:
    void Ended(const Status& status);

    DocumentKeeper& keeper_;
    const SettingsBlock block_;
    const std::function<void()> changed_;
    std::string trouble_;
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>();
};

}  // namespace sontaro
