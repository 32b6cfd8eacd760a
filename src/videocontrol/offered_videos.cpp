#include "videocontrol/offered_videos.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace sontaro {

namespace {

/// Appends names that are not there yet.
class UniqueNames {
   public:
    void Add(const std::string& name) {
        if (!name.empty() && seen_.insert(name).second) names_.push_back(name);
    }
    [[nodiscard]] std::vector<std::string> Take() { return std::move(names_); }

   private:
    std::unordered_set<std::string> seen_;
    std::vector<std::string> names_;
};

}  // namespace

OfferedVideos::Folder& OfferedVideos::FolderNamed(const std::string& name) {
    const auto folder = std::ranges::find(folders_, name, &Folder::name);
    return folder != folders_.end() ? *folder : folders_.emplace_back(Folder{name, {}});
}

void OfferedVideos::Take(const VideoList& list) {
    folders_.clear();
    std::unordered_map<std::string, std::size_t> places;  // there may be very many
    for (const auto& screen : list.screens)
        for (const ListedCategory& category : screen) {
            const auto [place, isNew] = places.try_emplace(category.name, folders_.size());
            if (isNew) folders_.push_back({category.name, {}});
            std::vector<std::string>& videos = folders_[place->second].videos;
            for (const ListedVideo& video : category.videos) videos.push_back(video.name);
        }
}

bool OfferedVideos::Add(const std::string& folder, const std::string& video) {
    const bool isNewFolder = std::ranges::find(folders_, folder, &Folder::name) == folders_.end();
    std::vector<std::string>& videos = FolderNamed(folder).videos;
    const bool isNewVideo = !video.empty() && std::ranges::find(videos, video) == videos.end();
    if (isNewVideo) videos.push_back(video);
    return isNewFolder || isNewVideo;
}

std::vector<std::string> OfferedVideos::Folders() const {
    UniqueNames names;
    for (const Folder& folder : folders_) names.Add(folder.name);
    return names.Take();
}

std::vector<std::string> OfferedVideos::VideosIn(const std::string& folder) const {
    const bool isThere =
        !folder.empty() && std::ranges::find(folders_, folder, &Folder::name) != folders_.end();
    UniqueNames names;
    for (const Folder& each : folders_)
        if (!isThere || each.name == folder)
            for (const std::string& video : each.videos) names.Add(video);
    return names.Take();
}

}  // namespace sontaro
