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
    files.reserve(paths.size());
    for (const std::string& path : paths) files.push_back(PathOfText(path));
    return files;
}

void TakeFileSizes(VideoSet& set, const std::vector<std::filesystem::path>& files,
                   const VideoSource::Sizes& sizes) {
    std::map<std::string, const Result<std::uint64_t>*> known;
    for (std::size_t i = 0; i < files.size(); ++i) known[TextOfPath(files[i])] = &sizes[i];
    const auto take = [&](Elements<SetVideo>& videos) {
        for (SetVideo& video : videos) {
            const auto size = known.find(video.path);
            if (size == known.end()) continue;
            const bool isReadable = size->second->ok();
            video.trouble = isReadable ? "" : video.path;
            if (isReadable) video.size = static_cast<std::int64_t>(**size->second);
        }
    };
    take(set.videos);
    for (SetPlayer& player : set.players) take(player.videos);
}

}  // namespace sontaro
