#include "batchsend/run_journal.h"

#include <fmt/printf.h>
#include <json/value.h>

#include <algorithm>
#include <array>
#include <limits>

#include "base/csv_text.h"
#include "base/json.h"
#include "base/local_text.h"
#include "base/path_text.h"

namespace sontaro {

using namespace journal_key;

namespace {

using Kind = UploadEvent::Kind;
using Outcome = JournalEntry::Outcome;

constexpr std::pair<Kind, const char*> kEventNames[] = {
    {Kind::kLeftOut, "left-out"},   {Kind::kVideoBegun, "begun"},   {Kind::kVideoDone, "done"},
    {Kind::kVideoFailed, "failed"}, {Kind::kPlayerEnded, "player"}, {Kind::kRunEnded, "end"},
};

constexpr LocalText kHeaders[] = {
    {"播放器", "Player"}, {"文件", "File"},       {"发送名称", "Name as sent"},
    {"代码", "Code"},     {"大小", "Size"},       {"结果", "Result"},
    {"秒", "Seconds"},    {"字节/秒", "Bytes/s"}, {"时间(UTC)", "Time (UTC)"},
    {"备注", "Remarks"},
};
/// In the order of `Outcome`.
constexpr LocalText kOutcomes[] = {
    {"未开始", "not begun"}, {"中断", "cut off"},    {"完成", "OK"},
    {"失败", "failed"},      {"未发送", "left out"},
};

std::optional<std::uint64_t> NumberIn(const Json::Value& json, const char* key) {
    const Json::Value& number = json[key];
    if (!number.isUInt64()) return std::nullopt;
    return number.asUInt64();
}

/// A port or a code.
std::optional<std::uint16_t> ShortIn(const Json::Value& json, const char* key) {
    const auto number = NumberIn(json, key);
    if (!number || *number > std::numeric_limits<std::uint16_t>::max()) return std::nullopt;
    return static_cast<std::uint16_t>(*number);
}

bool ReadVideo(const Json::Value& json, UploadVideo& video) {
    if (!json.isObject()) return false;
    const auto code = ShortIn(json, kCode);
    video = {PathOfText(TextOf(json[kPath])), TextOf(json[kName]), code.value_or(0),
             ShortIn(json, kCategory)};
    return code.has_value();
}

bool ReadPlayer(const Json::Value& json, UploadPlayer& player) {
    if (!json.isObject() || !json[kVideos].isArray()) return false;
    const auto port = ShortIn(json, kPort);
    player.target = {TextOf(json[kIp]), port.value_or(0), 0};
    player.videos.resize(json[kVideos].size());
    for (Json::ArrayIndex i = 0; i < json[kVideos].size(); ++i)
        if (!ReadVideo(json[kVideos][i], player.videos[i])) return false;
    return port.has_value();
}

void TakePlayerEnd(const Json::Value& line, std::size_t player, RunJournal& journal) {
    const auto status = NumberIn(line, kStatus);
    if (status && *status <= static_cast<std::uint64_t>(UploadStatus::kDone))
        journal.statuses[player] = static_cast<UploadStatus>(*status);
}

Outcome OutcomeOf(Kind kind) {
    switch (kind) {
        case Kind::kVideoBegun: return Outcome::kInFlight;
        case Kind::kVideoDone: return Outcome::kDone;
        case Kind::kLeftOut: return Outcome::kLeftOut;
        default: return Outcome::kFailed;
    }
}

/// An earlier attempt of the same run may have told of it already.
void TakeVideo(const Json::Value& line, Kind kind, RunJournal::Place place, RunJournal& journal) {
    JournalEntry& entry = journal.entries[place.player][place.video];
    entry.outcome = OutcomeOf(kind);
    entry.time = TextOf(line[kTime]);
    entry.note = TextOf(line[kNote]);
    if (const auto bytes = NumberIn(line, kBytes)) entry.bytes = *bytes;
    if (line[kSeconds].isNumeric()) entry.seconds = line[kSeconds].asDouble();
    if (kind == Kind::kVideoBegun) journal.inFlight = place;
    if (kind == Kind::kVideoDone && journal.inFlight == place) journal.inFlight.reset();
}

std::string_view TakeText(std::string_view& rest) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return line;
}

std::vector<std::string> CsvCells(const UploadPlayer& player, const UploadVideo& video,
                                  const JournalEntry& entry) {
    const bool isDone = entry.outcome == Outcome::kDone && entry.seconds > 0;
    const double speed = isDone ? static_cast<double>(entry.bytes) / entry.seconds : 0;
    return {player.target.ip,
            TextOfPath(video.path),
            video.name,
            std::to_string(video.code),
            std::to_string(entry.bytes),
            Localized(kOutcomes[static_cast<std::size_t>(entry.outcome)]),
            isDone ? fmt::sprintf("%.1f", entry.seconds) : "",
            isDone ? fmt::sprintf("%.0f", speed) : "",
            entry.time,
            entry.note};
}

}  // namespace

const char* journal_key::NameOf(Kind kind) {
    const auto* name = std::ranges::find(kEventNames, kind, &std::pair<Kind, const char*>::first);
    return name == std::end(kEventNames) ? nullptr : name->second;
}

bool RunJournal::Begin(const Json::Value& line) {
    const bool isOurs = line.isObject() && line[kEvent] == kRun && line[kFormat] == kFormatName &&
                        line[kVersion].isInt() && line[kVersion].asInt() <= kThisVersion &&
                        line[kPlayers].isArray();
    if (!isOurs) return false;
    time = TextOf(line[kTime]);
    players.resize(line[kPlayers].size());
    for (Json::ArrayIndex i = 0; i < line[kPlayers].size(); ++i)
        if (!ReadPlayer(line[kPlayers][i], players[i])) return false;
    for (const UploadPlayer& player : players) entries.emplace_back(player.videos.size());
    statuses.resize(players.size());
    return true;
}

void RunJournal::Take(const Json::Value& line) {
    if (!line.isObject() || !line[kEvent].isString()) return;
    const std::string name = TextOf(line[kEvent]);
    const auto* event =
        std::ranges::find_if(kEventNames, [&](const auto& known) { return name == known.second; });
    if (event == std::end(kEventNames)) return;
    const Kind kind = event->first;
    hasEnded = kind == Kind::kRunEnded && TextOf(line[kNote]).empty();
    if (kind == Kind::kRunEnded) return;
    const auto player = NumberIn(line, kPlayer);
    if (!player || *player >= players.size()) return;
    if (kind == Kind::kPlayerEnded) return TakePlayerEnd(line, *player, *this);
    const auto video = NumberIn(line, kVideo);
    if (!video || *video >= entries[*player].size()) return;
    TakeVideo(line, kind, {*player, *video}, *this);
}

double RunJournal::Speed() const {
    double bytes = 0;
    double seconds = 0;
    for (const auto& player : entries)
        for (const JournalEntry& entry : player) {
            if (entry.outcome != Outcome::kDone) continue;
            bytes += static_cast<double>(entry.bytes);
            seconds += entry.seconds;
        }
    return seconds > 0 ? bytes / seconds : 0;
}

Result<RunJournal> ReadJournal(std::string_view text) {
    RunJournal journal;
    const auto first = ParseJson(TakeText(text));
    if (!first || !journal.Begin(*first)) return Error{"the text is no journal of a run"};
    while (!text.empty())
        if (const auto line = ParseJson(TakeText(text))) journal.Take(*line);
    return journal;
}

std::vector<UploadPlayer> FailedIn(const RunJournal& journal) {
    std::vector<UploadPlayer> failed;
    for (std::size_t i = 0; i < journal.players.size(); ++i) {
        const UploadPlayer& player = journal.players[i];
        UploadPlayer rest{player.target, {}};
        for (std::size_t video = 0; video < player.videos.size(); ++video)
            if (journal.entries[i][video].outcome != Outcome::kDone)
                rest.videos.push_back(player.videos[video]);
        if (rest.videos.empty() && journal.statuses[i] == UploadStatus::kDone) continue;
        const bool isFirst = journal.inFlight && journal.inFlight->player == i;
        if (isFirst) {
            const UploadVideo& first = player.videos[journal.inFlight->video];
            const auto place = std::ranges::find(rest.videos, first);
            std::rotate(rest.videos.begin(), place, std::next(place));
        }
        failed.insert(isFirst ? failed.begin() : failed.end(), std::move(rest));
    }
    return failed;
}

std::string JournalCsv(const RunJournal& journal) {
    std::string csv(kCsvBegin);
    std::vector<std::string> headers;
    for (const LocalText& header : kHeaders) headers.push_back(Localized(header));
    AddCsvRow(csv, headers);
    for (std::size_t i = 0; i < journal.players.size(); ++i) {
        const UploadPlayer& player = journal.players[i];
        for (std::size_t video = 0; video < player.videos.size(); ++video)
            AddCsvRow(csv, CsvCells(player, player.videos[video], journal.entries[i][video]));
    }
    return csv;
}

}  // namespace sontaro
