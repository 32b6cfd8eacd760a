// The names that the remote control offers.
#pragma once

#include <string>
#include <vector>

#include "videolist/video_list.h"

namespace sontaro {

/// Folders and their videos, each name once: what the player lists, of all its screens together,
/// and what it has been seen playing. Texts are UTF-8.
class OfferedVideos {
   public:
    /// Offers what is listed in place of all that was offered.
    void Take(const VideoList& list);
    /// The player plays this; an empty name is none. False when it has been offered already.
    bool Add(const std::string& folder, const std::string& video);

    [[nodiscard]] std::vector<std::string> Folders() const;
    /// The videos of the folder, or of all folders when there is none with that name.
    [[nodiscard]] std::vector<std::string> VideosIn(const std::string& folder) const;

   private:
    struct Folder {
        std::string name;  // empty: the videos' folder is not known
        std::vector<std::string> videos;
    };

    [[nodiscard]] Folder& FolderNamed(const std::string& name);

    std::vector<Folder> folders_;
};

}  // namespace sontaro
