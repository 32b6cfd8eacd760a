// A video list of anything.
#include <cstdlib>

#include "base/bytes.h"
#include "base/encoding.h"
#include "videolist/video_list.h"

namespace sontaro {
namespace {

void Expect(bool holds) {
    if (!holds) std::abort();
}

void Run(std::string_view text) {
    const Result<VideoList> list = ReadVideoList(text);
    if (!list) return Expect(!list.reason().empty());
    Expect(list->players >= 1 && list->players <= kMostListedPlayers);
    for (const auto& screen : list->screens)
        for (const ListedCategory& category : screen) {
            Expect(DecodeUtf8(category.name) == category.name);
            for (const ListedVideo& video : category.videos)
                Expect(DecodeUtf8(video.name) == video.name);
        }
}

}  // namespace
}  // namespace sontaro

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sontaro::Run(sontaro::AsText({data, size}));
    return 0;
}
