#include "batchsend/video_source.h"

#include <map>
#include <set>

#include "base/path_text.h"

namespace sontaro {

std::vector<std::filesystem::path> FilesOf(const VideoSet& set) {
    std::set<std::string> paths;
    const auto note = [&](const Elements<SetVideo>& videos) {
        for (const SetVideo& video : videos) paths.insert(video.path);
    };
    note(set.videos);
    for (const SetPlayer& player : set.players) note(player.videos);
    std::vector<std::filesystem::path> files;
    for (const std::string& path : paths) files.push_back(PathOfText(path));
    return files;
}

void TakeFileSizes(VideoSet& set, const std::vector<std::filesystem::path>& files,
                   const VideoSource::Sizes& sizes) {
    std::map<std::string, const Result<std::uint64_t>*> known;
    for (std::size_t i = 0; i < files.size(); ++i) known[TextOfPath(files[i])] = &sizes[i];
    const auto take = [&](Elements<SetVideo>& videos) {
        for (std::size_t i = 0; i < videos.size(); ++i) {
            const auto size = known.find(videos[i].path);
            if (size == known.end()) continue;
            const bool isReadable = size->second->ok();
            videos[i].trouble = isReadable ? "" : videos[i].path;
            if (isReadable) videos[i].size = static_cast<std::int64_t>(**size->second);
        }
    };
    take(set.videos);
    for (std::size_t i = 0; i < set.players.size(); ++i) take(set.players[i].videos);
}

}  // namespace sontaro
