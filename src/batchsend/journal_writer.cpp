#include "batchsend/journal_writer.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "base/file.h"
#include "base/json.h"
#include "base/path_text.h"

namespace sontaro {

namespace fs = std::filesystem;
using namespace journal_key;
using namespace std::chrono;

namespace {

constexpr const char* kEnding = ".jsonl";

std::string TimeText(system_clock::time_point time) {
    return fmt::format("{:%Y-%m-%dT%H:%M:%SZ}", fmt::gmtime(system_clock::to_time_t(time)));
}

/// In the order of time as they are in that of letters.
std::string FileName(system_clock::time_point time) {
    const auto part = duration_cast<milliseconds>(time.time_since_epoch()).count() % 1000;
    return fmt::format("{:%Y%m%d-%H%M%S}-{:03}", fmt::gmtime(system_clock::to_time_t(time)), part) +
           kEnding;
}

/// Later than every other one, also after the clock has been set back.
fs::path FreePath(const fs::path& folder, system_clock::time_point time) {
    std::error_code error;
    for (const fs::path& journal : JournalsIn(folder))
        if (const auto other = TimeIn(TextOfPath(journal.stem())))
            time = std::max(time, *other + milliseconds(1));
    fs::path path = folder / FileName(time);
    while (fs::exists(path, error)) path = folder / FileName(time += milliseconds(1));
    return path;
}

void RemoveWithAllBeside(const fs::path& journal) {
    std::error_code error;
    const std::string stem = TextOfPath(journal.stem());
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(journal.parent_path(), error))
        if (TextOfPath(entry.path().filename()).starts_with(stem)) files.push_back(entry.path());
    for (const fs::path& file : files) fs::remove(file, error);
}

Json::Value ToJson(const UploadPlayer& player) {
    Json::Value json(Json::objectValue);
    json[kIp] = player.target.ip;
    json[kPort] = player.target.port;
    Json::Value& videos = json[kVideos] = Json::Value(Json::arrayValue);
    for (const UploadVideo& video : player.videos) {
        Json::Value& added = videos.append(Json::Value(Json::objectValue));
        added[kPath] = TextOfPath(video.path);
        added[kName] = video.name;
        added[kCode] = video.code;
        if (video.category) added[kCategory] = *video.category;
    }
    return json;
}

}  // namespace

std::optional<system_clock::time_point> TimeIn(std::string_view text) {
    std::string digits;
    std::ranges::copy_if(text, std::back_inserter(digits),
                         [](char letter) { return letter >= '0' && letter <= '9'; });
    constexpr std::size_t kDigits[] = {14, 17};  // down to seconds, or to milliseconds
    if (std::ranges::find(kDigits, digits.size()) == std::end(kDigits)) return std::nullopt;
    digits.resize(kDigits[1], '0');
    const auto number = [&](std::size_t at, std::size_t count) {
        return std::stoi(digits.substr(at, count));
    };
    const year_month_day date{year(number(0, 4)), month(static_cast<unsigned>(number(4, 2))),
                              day(static_cast<unsigned>(number(6, 2)))};
    constexpr year kFirst{1970};  // systems know local times from here on
    constexpr year kLast{2999};
    if (!date.ok() || date.year() < kFirst || date.year() > kLast) return std::nullopt;
    return sys_days(date) + hours(number(8, 2)) + minutes(number(10, 2)) + seconds(number(12, 2)) +
           milliseconds(number(14, 3));
}

JournalWriter::JournalWriter(const fs::path& folder, const std::vector<UploadPlayer>& players,
                             Clock clock)
    : clock_(std::move(clock)) {
    std::error_code error;
    fs::create_directories(folder, error);
    const std::vector<fs::path> earlier = JournalsIn(folder);
    for (std::size_t i = kMostJournals - 1; i < earlier.size(); ++i)
        RemoveWithAllBeside(earlier[i]);
    path_ = FreePath(folder, clock_());
    file_.open(path_, std::ios::binary | std::ios::app);
    Json::Value line = LineOf(kRun);
    line[kFormat] = kFormatName;
    line[kVersion] = kThisVersion;
    line[kPlayers] = Json::Value(Json::arrayValue);
    for (const UploadPlayer& player : players) line[kPlayers].append(ToJson(player));
    static_cast<void>(journal_.Begin(line));  // as it has just been made
    Write(line);
}

void JournalWriter::Add(const UploadEvent& event) {
    using Kind = UploadEvent::Kind;
    const char* name = NameOf(event.kind);
    if (!name) return;
    Json::Value line = LineOf(name);
    if (event.kind != Kind::kRunEnded) line[kPlayer] = Json::UInt64(event.player);
    if (event.kind == Kind::kPlayerEnded)
        line[kStatus] = static_cast<Json::UInt>(event.status);
    else if (event.kind != Kind::kRunEnded)
        line[kVideo] = Json::UInt64(event.video);
    if (event.kind == Kind::kVideoBegun) begun_[event.video] = clock_();
    if (event.kind == Kind::kVideoBegun || event.kind == Kind::kVideoDone)
        line[kBytes] = Json::UInt64(event.bytes);
    if (event.kind == Kind::kVideoDone)
        line[kSeconds] = duration<double>(clock_() - begun_[event.video]).count();
    if (const std::string note = NoteText(event.note); !note.empty()) line[kNote] = note;
    journal_.Take(line);
    Write(line);
}

Json::Value JournalWriter::LineOf(const char* event) const {
    Json::Value line(Json::objectValue);
    line[kEvent] = event;
    line[kTime] = TimeText(clock_());
    return line;
}

void JournalWriter::Write(const Json::Value& line) {
    file_ << WriteJsonLine(line) << '\n' << std::flush;
}

std::vector<fs::path> JournalsIn(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> journals;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error))
        if (entry.path().extension() == kEnding) journals.push_back(entry.path());
    std::ranges::sort(journals, std::greater());
    return journals;
}

LatestJournal LatestJournalIn(const fs::path& folder) {
    LatestJournal latest;
    for (const fs::path& path : JournalsIn(folder)) {
        const Result<std::string> text = ReadFile(path);
        Result<RunJournal> journal = text ? ReadJournal(*text) : Error{text.reason()};
        if (journal) {
            latest.journal = std::move(*journal);
            break;
        }
        latest.isLatest = false;
    }
    return latest;
}

fs::path BesideJournal(const fs::path& journal, std::string_view name) {
    fs::path path = journal;
    path.replace_extension();
    path += PathOfText("." + std::string(name));
    return path;
}

}  // namespace sontaro
