// The parameter page of the video set without its window.
#pragma once

#include "batchsend/folder_walk.h"
#include "batchsend/heard_names.h"
#include "batchsend/player_inquiry.h"
#include "batchsend/set_page_view.h"
#include "batchsend/set_problems.h"
#include "batchsend/shown_link.h"

namespace sontaro {

/// Asks the players what they are, and puts together what they get. One player is shown, or what
/// all of them get; to that list of videos everything is done. What is entered is remembered soon.
/// User-interface thread.
class SetPageRun {
   public:
    using Ids = std::vector<std::uint32_t>;
    using Paths = std::vector<std::filesystem::path>;
    /// A player's place; none: all players.
    using Place = std::optional<std::size_t>;

    /// `set` becomes what was remembered.
    SetPageRun(VideoSet& set, SetPageView& view, SetPageServices services);

    /// The page is entered with these players, in this order: begins to ask them.
    void Enter(std::vector<DeviceRecord> players);
    /// The page is left: nothing is waited for any more.
    void Leave();
    /// Readies what the next page needs. False when something has to be changed first; the user has
    /// been told.
    [[nodiscard]] bool GoOn();
    /// Takes a message that the main window forwards.
    void Handle(WindowMessage& message);

    [[nodiscard]] bool IsEntered() const { return isEntered_; }

    // The players.
    [[nodiscard]] const VideoSet& Set() const { return set_; }
    [[nodiscard]] const std::vector<DeviceRecord>& Players() const { return players_; }
    [[nodiscard]] const PlayerInquiry& Inquiry() const { return inquiry_; }
    void Show(Place player);
    [[nodiscard]] Place Shown() const { return shown_; }
    /// Asks the player that is shown once more, or all of them.
    void AskAgain();
    [[nodiscard]] bool MayAskAgain() const;

    // The videos that are shown.
    [[nodiscard]] const Elements<SetVideo>& Videos() const;
    /// Looks for the files among `chosen` and below the folders among it, and adds those that are
    /// not there yet: those that lie loose in `slot` and first, those of a folder's sub-folders in
    /// the category of their name.
    void Add(Paths chosen, std::uint32_t slot);
    [[nodiscard]] bool IsSearching() const { return walk_.IsLooking() || !found_.empty(); }
    void GiveUpSearch();
    void Remove(const Ids& ids);
    void MoveUp(const Ids& ids);
    void MoveDown(const Ids& ids);
    void PutInto(std::uint32_t slot, const Ids& ids);
    void SetCode(std::uint32_t code, const Ids& ids);
    void RemoveNumbers(bool wanted, const Ids& ids);

    // The categories.
    [[nodiscard]] const HeardNames& Heard() const { return heard_; }
    /// The name of a slot as the user has it.
    [[nodiscard]] std::string NameOf(std::size_t slot) const;
    void SetAliases(const std::array<CategoryAlias, kVideoCategories>& aliases);
    /// Takes a step that may block. Provisional names settle behind it, not meanwhile.
    void WhileNamesStay(const std::function<void()>& step);
    void WriteNames(bool wanted);

    void Open(const std::filesystem::path& path);
    void Save(const std::filesystem::path& path) const;

    [[nodiscard]] bool IsLookingAtFiles() const { return isLooking_; }
    [[nodiscard]] const std::vector<SetProblem>& Problems() const { return problems_; }

   private:
    /// What has been found for a player, or for all.
    struct Found {
        FoundFiles files;
        Place player;
        std::uint32_t slot = 0;
    };

    [[nodiscard]] Elements<SetVideo>& VideosOf(Place player);
    [[nodiscard]] Target TargetOf(std::size_t player) const;
    void Ask();
    void PlayerAnswers(std::size_t player);
    void TakeFound();
    void Take(const Found& found);
    void SettleCategories();
    void SettleByWhatIsTold();
    void LookAtFiles();
    void TakeSizes(const Paths& files, const VideoSource::Sizes& sizes);
    void Changed();
    void Edited();
    void Keep();
    void Check();
    void Remember();

    VideoSet& set_;
    SetPageView& view_;
    const SetPageServices services_;
    std::vector<DeviceRecord> players_;
    std::vector<std::optional<std::uint64_t>> free_;  // bytes on the players' disks
    HeardNames heard_;
    std::vector<SetProblem> problems_;
    std::vector<Found> found_;  // to be added once the names of categories are known
    Place shown_;
    int stays_ = 0;  // steps for which names stay
    bool isEntered_ = false;
    bool isLooking_ = false;
    FolderWalk walk_;
    PlayerInquiry inquiry_;
    ShownLink link_;
    Timer remember_;
};

}  // namespace sontaro
