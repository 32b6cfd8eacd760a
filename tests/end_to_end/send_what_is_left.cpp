// Sends what the last journal says is left, or everything when there is none, and writes a journal.
// Usage: send_what_is_left JOURNALS VIDEOS IP...: every file in VIDEOS to every player at port
// 9000. Says for each player, as the journal has it, how many videos have arrived. Exits with 0
// when nothing is left.
#include <fmt/core.h>

#include <algorithm>

#include "base/path_text.h"
#include "base/program_arguments.h"
#include "batchsend/uploader.h"

namespace {

using namespace sontaro;

constexpr std::uint16_t kPort = 9000;

std::vector<UploadPlayer> Everything(const std::vector<std::string>& arguments) {
    std::vector<UploadVideo> videos;
    for (const auto& entry : std::filesystem::directory_iterator(PathOfText(arguments[1])))
        videos.push_back({entry.path(), TextOfPath(entry.path().filename()), 7});
    std::vector<UploadPlayer> players;
    for (std::size_t i = 2; i < arguments.size(); ++i)
        players.push_back({{arguments[i], kPort, 0}, videos});
    return players;
}

void Tell(const RunJournal& journal) {
    using Outcome = JournalEntry::Outcome;
    for (std::size_t i = 0; i < journal.players.size(); ++i) {
        const auto& videos = journal.entries[i];
        fmt::print("{} {}/{} status {}\n", journal.players[i].target.ip,
                   std::ranges::count(videos, Outcome::kDone, &JournalEntry::outcome),
                   videos.size(), static_cast<int>(journal.statuses[i]));
    }
}

}  // namespace

int main() {
    const std::vector<std::string> arguments = ProgramArguments();
    if (arguments.size() < 3) return 2;
    const std::filesystem::path journals = PathOfText(arguments[0]);
    const auto last = LatestJournalIn(journals).journal;
    const auto left = last ? FailedIn(*last) : Everything(arguments);
    if (left.empty()) return 0;
    test::Uploader(journals).Send(left);
    const RunJournal journal = *LatestJournalIn(journals).journal;
    Tell(journal);
    return FailedIn(journal).empty() ? 0 : 3;
}
