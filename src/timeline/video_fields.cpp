#include "timeline/video_fields.h"

#include <wx/choice.h>

#include <algorithm>

#include "timeline/timeline_texts.h"
#include "widgets/toolkit_quirks.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr int kFieldLetters = 46;

template <class Named>
std::vector<std::string> NamesOf(const std::vector<Named>& listed) {
    std::vector<std::string> names;
    names.reserve(listed.size());
    for (const Named& one : listed) names.push_back(one.name);
    return names;
}

}  // namespace

void VideoOffer::Changed() {
    for (VideoFields* fields : fields_) fields->ListChanged();
}

VideoFields::VideoFields(wxWindow* parent, int firstId, VideoOffer& offer, Names names)
    : offer_(offer), names_(names) {
    player_ = new wxChoice(parent, firstId);
    type_ = new NameChoice(parent, firstId + 1, kFieldLetters);
    video_ = new NameChoice(parent, firstId + 2, kFieldLetters);
    OfferPlayers(0);
    BindEvents();
    offer_.fields_.push_back(this);
}

VideoFields::~VideoFields() { std::erase(offer_.fields_, this); }

void VideoFields::BindEvents() {
    IgnoreWheel(*player_);
    const auto onEvent = [this](wxControl& control, const auto& event, VideoPart part,
                                bool isChosen) {
        control.Bind(event, [this, part, isChosen](wxCommandEvent& happened) {
            happened.Skip();
            Entered(part, isChosen);
        });
    };
    onEvent(*player_, wxEVT_CHOICE, VideoPart::kPlayer, true);
    onEvent(*type_, wxEVT_COMBOBOX, VideoPart::kType, true);
    onEvent(*type_, wxEVT_TEXT, VideoPart::kType, false);
    onEvent(*video_, wxEVT_COMBOBOX, VideoPart::kVideo, true);
    onEvent(*video_, wxEVT_TEXT, VideoPart::kVideo, false);
}

void VideoFields::Entered(VideoPart part, bool isChosen) {
    const bool replaces = isChosen && names_ == Names::kReplaced;
    if (part == VideoPart::kPlayer) replaces ? ChooseOffered() : OfferCategories();
    if (part == VideoPart::kType) replaces ? ChooseOfferedVideo() : OfferVideos();
    entered_(part);
}

void VideoFields::Show(const VideoKey& video) {
    shownPlayer_ = video.player;
    chooses_ = false;
    OfferPlayers(video.player);
    type_->ChangeValue(ToWx(video.typeName));
    video_->ChangeValue(ToWx(video.videoName));
    OfferCategories();
}

VideoKey VideoFields::Video() const {
    return {ChosenPlayer(), FromWx(type_->GetValue()), FromWx(video_->GetValue())};
}

void VideoFields::ListChanged() {
    OfferPlayers(ChosenPlayer());
    OfferCategories();
    if (chooses_ && type_->GetValue().empty()) ChooseOffered();
}

std::int64_t VideoFields::ChosenPlayer() const {
    return players_[static_cast<std::size_t>(player_->GetSelection())];
}

const std::vector<ListedCategory>& VideoFields::Categories() const {
    static const std::vector<ListedCategory> none;
    const std::int64_t player = ChosenPlayer();
    const bool isListed = offer_.List() && player >= 0 && player < std::int64_t{kListedScreens};
    return isListed ? offer_.List()->screens[static_cast<std::size_t>(player)] : none;
}

/// Before the list has come nobody knows how many players there are.
void VideoFields::OfferPlayers(std::int64_t chosen) {
    const int count = offer_.List() ? offer_.List()->players : kMostListedPlayers;
    players_.clear();
    for (int player = 0; player < count; ++player) players_.push_back(player);
    for (const std::int64_t own : {shownPlayer_, chosen})
        if (std::ranges::find(players_, own) == players_.end()) players_.push_back(own);
    wxArrayString names;
    for (const std::int64_t player : players_) names.Add(ToWx(PlayerName(player)));
    player_->Set(names);
    player_->SetSelection(static_cast<int>(std::ranges::find(players_, chosen) - players_.begin()));
}

void VideoFields::OfferCategories() {
    type_->Offer(NamesOf(Categories()));
    OfferVideos();
}

void VideoFields::OfferVideos() {
    const std::vector<ListedCategory>& categories = Categories();
    const auto category =
        std::ranges::find(categories, FromWx(type_->GetValue()), &ListedCategory::name);
    video_->Offer(category == categories.end() ? std::vector<std::string>()
                                               : NamesOf(category->videos));
}

void VideoFields::ChooseOffered() {
    chooses_ = true;
    OfferCategories();
    type_->ChooseOffered();
    ChooseOfferedVideo();
}

void VideoFields::ChooseOfferedVideo() {
    OfferVideos();
    video_->ChooseOffered();
}

}  // namespace sontaro
