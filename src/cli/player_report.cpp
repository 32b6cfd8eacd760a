#include "cli/player_report.h"

#include <algorithm>
#include <sstream>

namespace sontaro::cli {

namespace {

/// Readers of documents say what is wrong on several lines, with marks before them.
std::string OnOneLine(const std::string& text) {
    std::string line;
    std::istringstream lines(text);
    for (std::string part; std::getline(lines, part);) {
        part.erase(0, std::min(part.find_first_not_of("* \t\r"), part.size()));
        if (!part.empty()) line += (line.empty() ? "" : " ") + part;
    }
    return line;
}

}  // namespace

Failure FailureOf(const SessionEnd& end, const std::string& part) {
    return {WordFor(end), Told(end), WordFor(end.trouble), end.code, part};
}

Failure FailureOf(const char* word, const std::string& text, const std::string& part) {
    return {word, OnOneLine(text), "", 0, part};
}

std::string NameOf(const DeviceRecord& player) {
    std::string name = player.ip;
    for (const std::string& text : {player.id, player.remarks})
        if (!text.empty()) name += (name.empty() ? "" : " ") + text;
    return name;
}

Json::Value ObjectOf(const DeviceRecord& player) {
    Json::Value object(Json::objectValue);
    if (!player.ip.empty()) object["ip"] = player.ip;
    if (player.tcpPort != 0) object["port"] = player.tcpPort;
    if (!player.id.empty()) object["id"] = player.id;
    if (!player.mac.empty()) object["mac"] = player.mac;
    if (!player.remarks.empty()) object["remark"] = player.remarks;
    return object;
}

Json::Value ObjectOf(const DeviceRecord& player, const Failure& failure) {
    Json::Value object = ObjectOf(player);
    Json::Value& error = object["error"] = Json::Value(Json::objectValue);
    error["end"] = failure.word;
    error["text"] = failure.text;
    if (!failure.link.empty()) error["link"] = failure.link;
    if (failure.code != 0) error["code"] = failure.code;
    if (!failure.part.empty()) error["part"] = failure.part;
    return object;
}

void AddPlayer(Json::Value& object, const DeviceRecord& player) {
    const Json::Value known = ObjectOf(player);
    for (const std::string& key : known.getMemberNames()) object[key] = known[key];
}

void Tell(Output& output, const DeviceRecord& player, const Failure& failure) {
    if (output.IsJson()) return output.Object(ObjectOf(player, failure));
    const std::string part = failure.part.empty() ? "" : failure.part + ": ";
    output.Remark(NameOf(player) + ": " + part + failure.text);
}

ReportTeller::ReportTeller(Output& output, std::vector<std::string> headings)
    : output_(output), table_([&] {
          headings.insert(headings.begin(), {"IP", "ID"});
          return std::move(headings);
      }()) {}

void ReportTeller::Take(const DeviceRecord& player, PlayerReport& report) {
    for (Json::Value& object : report.objects) {
        AddPlayer(object, player);
        if (output_.IsJson()) output_.Object(object);
    }
    for (auto& row : report.rows) {
        row.insert(row.begin(), {player.ip, player.id});
        table_.Add(std::move(row));
    }
    if (!output_.IsJson())
        for (const std::string& line : report.lines) output_.Line(line);
    for (const std::string& remark : report.remarks) output_.Remark(NameOf(player) + ": " + remark);
    for (const Failure& failure : report.failures) Tell(output_, player, failure);
    isWhole_ = isWhole_ && report.failures.empty();
}

void ReportTeller::End() {
    if (!output_.IsJson()) output_.Table(table_);
}

}  // namespace sontaro::cli
