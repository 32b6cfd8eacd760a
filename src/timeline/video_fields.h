// The fields that choose a video of a player.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "timeline/time_node.h"
#include "videolist/video_list.h"
#include "widgets/name_choice.h"

class wxChoice;
class wxWindow;

namespace sontaro {

class VideoFields;

/// The player's videos, and the fields that offer them at the moment. User-interface thread.
class VideoOffer {
   public:
    /// `list` has no value until the videos have come; it outlives this object.
    explicit VideoOffer(const std::optional<VideoList>& list) : list_(list) {}

    [[nodiscard]] const std::optional<VideoList>& List() const { return list_; }
    /// Another list has come: all fields offer what it has.
    void Changed();

   private:
    friend class VideoFields;

    const std::optional<VideoList>& list_;
    std::vector<VideoFields*> fields_;
};

enum class VideoPart { kPlayer, kType, kVideo };

/// Three drop-downs: categories and videos are offered as the chosen player has them, any others
/// can be typed, and what is shown stays on offer. User-interface thread.
class VideoFields {
   public:
    /// What becomes of names that another player, or another category, does not have.
    enum class Names { kReplaced, kKept };

    /// Makes the controls `firstId` (player), the category's and the video's in `parent`, for their
    /// owner to lay out. `offer` outlives them.
    VideoFields(wxWindow* parent, int firstId, VideoOffer& offer, Names names);
    ~VideoFields();
    VideoFields(const VideoFields&) = delete;
    VideoFields& operator=(const VideoFields&) = delete;

    /// Has `entered` called whenever the user has entered or chosen something.
    void Listen(std::function<void(VideoPart)> entered) { entered_ = std::move(entered); }

    void Show(const VideoKey& video);
    [[nodiscard]] VideoKey Video() const;
    /// Has names stand there that the player has, the first where those entered are not among them.
    void ChooseOffered();

    [[nodiscard]] wxChoice* Player() const { return player_; }
    [[nodiscard]] NameChoice* Type() const { return type_; }
    [[nodiscard]] NameChoice* Title() const { return video_; }

   private:
    friend class VideoOffer;

    void BindEvents();
    void Entered(VideoPart part, bool isChosen);
    void ListChanged();
    [[nodiscard]] std::int64_t ChosenPlayer() const;
    [[nodiscard]] const std::vector<ListedCategory>& Categories() const;
    void OfferPlayers(std::int64_t chosen);
    void OfferCategories();
    void OfferVideos();
    void ChooseOfferedVideo();

    VideoOffer& offer_;
    const Names names_;
    std::function<void(VideoPart)> entered_ = [](VideoPart) {};
    std::int64_t shownPlayer_ = 0;
    bool chooses_ = false;               // names on offer, as soon as there are any
    std::vector<std::int64_t> players_;  // as they are offered
    wxChoice* player_ = nullptr;
    NameChoice* type_ = nullptr;
    NameChoice* video_ = nullptr;
};

}  // namespace sontaro
