// What an upload reads of anything: a page's file, a journal, categories, a player's mode.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "base/json.h"
#include "batchsend/run_journal.h"
#include "batchsend/set_problems.h"
#include "batchsend/upload_packets.h"
#include "batchsend/video_types.h"

namespace sontaro {
namespace {

void Expect(bool holds) {
    if (!holds) std::abort();
}

/// What is kept is opened as it was, whatever it was read from.
void OpenPage(std::string_view text) {
    const Result<Json::Value> json = ParseJson(text);
    if (!json) return;
    const std::optional<VideoSet> set = VideoSetFromJson(*json);
    if (!set) return;
    for (const SetVideo& video : set->videos) {
        Expect(video.category < kVideoCategories && video.code <= 65'535);
        Expect(video.Name().size() <= video.path.size());
    }
    const std::vector<std::optional<std::uint64_t>> free(set->players.size(), 1000);
    for (const SetProblem& problem : ProblemsOf(*set, free)) Expect(!problem.Told().empty());
    const auto again = ParseJson(WriteJson(VideoSetToJson(*set)));
    Expect(again && VideoSetFromJson(*again) == set);
}

void ReadRun(std::string_view text) {
    const Result<RunJournal> journal = ReadJournal(text);
    if (!journal) return;
    std::size_t videos = 0, failed = 0;
    for (const UploadPlayer& player : journal->players) videos += player.videos.size();
    for (const UploadPlayer& player : FailedIn(*journal)) failed += player.videos.size();
    Expect(failed <= videos && journal->Speed() >= 0);
    Expect(JournalCsv(*journal).size() > videos);
}

void ReadCategories(std::string_view text) {
    const Result<CategoryNames> names = ReadCategoryNames(text);
    if (!names) return;
    Expect(*ReadCategoryNames(VideoTypeDocument(*names)) == *names);
    Expect(DifferencesBesidesNames(text, text)->empty());
    Expect(DifferencesBesidesNames(text, VideoTypeDocument(*names)).ok());
}

void ReadMode(ByteView bytes) {
    auto modes = std::make_unique<DeviceModes>();
    std::memcpy(modes.get(), bytes.data(), std::min(bytes.size(), sizeof(DeviceModes)));
    WindowMessage message{MessageId::kDeviceModes, 1, std::move(modes)};
    Expect(ModeIn(message) <= PlayerMode::kSlave);
}

void Run(ByteView input) {
    OpenPage(AsText(input));
    ReadRun(AsText(input));
    ReadCategories(AsText(input));
    if (!input.empty()) ReadMode(input);
}

}  // namespace
}  // namespace sontaro

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sontaro::Run({data, size});
    return 0;
}
