#include "venue/venue_file.h"

#include <fmt/printf.h>

#include <algorithm>
#include <charconv>
#include <set>

#include "base/encoding.h"
#include "base/file.h"
#include "base/json.h"
#include "base/path_text.h"
#include "link/socket.h"
#include "venue/own_json.h"

namespace sontaro {

namespace fs = std::filesystem;

namespace {

constexpr const char* kVenueFormat = "sontaro-venue";
constexpr const char* kPlayersFormat = "sontaro-players";
constexpr const char* kLocalAddress = "localAddress";
constexpr const char* kPlayers = "players";
constexpr const char* kBackupFolder = "backupFolder";
constexpr const char* kVenues = "venues";
constexpr const char* kEnding = ".json";

/// More than any venue has.
constexpr std::size_t kMostPlayers = 10'000;
constexpr std::size_t kLongestFile = std::size_t{4} << 20;
constexpr std::string_view kBlanks = " \t\r\v\f";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

constexpr LocalText kIsNoVenue = {"它不是场所文件。", "it is no file of a venue."};
constexpr LocalText kIsNoList = {"它不是播放器列表。", "it is no list of players."};
constexpr LocalText kNoName = {"此处应有播放器的 IP、IP:端口、ID 或备注。",
                               "a player's IP, IP:port, ID or remark has to stand here."};
constexpr LocalText kNoPort = {"“%s”的端口无效（1 到 65535）。",
                               "the port of \"%s\" is none (1 to 65535)."};
constexpr LocalText kTwice = {"“%s”已列出。", "\"%s\" is listed already."};
constexpr LocalText kTooMany = {"播放器过多（最多 %u 台）。", "too many players (%u at most)."};
constexpr LocalText kNoAddress = {"“%s”不是 IP 地址。", "\"%s\" is no IP address."};
constexpr LocalText kNoControl = {"名称中有控制字符。",
                                  "there are control characters in the name."};
constexpr LocalText kNotText = {"文件不是 UTF-8 文本。", "the file is no text in UTF-8."};
constexpr LocalText kNoVenueName = {"“%s”不能作为场所名称。", "no venue can be called \"%s\"."};
constexpr LocalText kAtFault = {"%s：%s", "%s: %s"};

template <class... Values>
std::string Worded(const LocalText& text, const Values&... values) {
    return fmt::sprintf(Localized(text), values...);
}

std::string_view Trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

bool IsControl(char byte) { return static_cast<unsigned char>(byte) < ' ' || byte == '\x7F'; }

/// Nobody means anything else by four numbers with dots between them.
bool LooksLikeAddress(std::string_view text) {
    return std::ranges::count(text, '.') == 3 && !text.starts_with('.') && !text.ends_with('.') &&
           text.find_first_not_of("0123456789.") == std::string_view::npos;
}

/// What of a line is no remark.
std::string_view WithoutRemark(std::string_view line) {
    for (std::size_t at = line.find('#'); at != std::string_view::npos; at = line.find('#', at + 1))
        if (at == 0 || kBlanks.find(line[at - 1]) != std::string_view::npos)
            return line.substr(0, at);
    return line;
}

/// Takes names until there is trouble.
class NameList {
   public:
    void Add(std::string_view text, TextPlace place) {
        if (trouble_) return;
        Result<PlayerName> name = ReadPlayerName(text);
        if (!name) return Refuse(place, name.reason());
        if (!texts_.insert(name->text).second) return Refuse(place, Worded(kTwice, name->text));
        if (names_.size() == kMostPlayers) return Refuse(place, Worded(kTooMany, kMostPlayers));
        name->place = place;
        names_.push_back(std::move(*name));
    }
    void Refuse(TextPlace place, std::string why) {
        if (!trouble_) trouble_ = {place, std::move(why)};
    }

    [[nodiscard]] const std::optional<TextTrouble>& Trouble() const { return trouble_; }
    [[nodiscard]] std::vector<PlayerName> Take() { return std::move(names_); }

   private:
    std::vector<PlayerName> names_;
    std::set<std::string> texts_;
    std::optional<TextTrouble> trouble_;
};

Placed<std::vector<PlayerName>> ReadLines(std::string_view text) {
    NameList names;
    PlaceFinder places(text);
    if (DecodeUtf8(text) != text) return TextTrouble{{}, Localized(kNotText)};
    std::size_t begin = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    while (begin < text.size()) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::string_view name = Trimmed(WithoutRemark(text.substr(begin, end - begin)));
        const auto offset = static_cast<std::size_t>(name.data() - text.data());
        if (!name.empty()) names.Add(name, places.At(offset));
        begin = end + 1;
    }
    if (names.Trouble()) return *names.Trouble();
    return names.Take();
}

std::vector<PlayerName> PlayersIn(OwnJson& json, std::string_view text) {
    NameList names;
    PlaceFinder places(text);
    for (const Json::Value& name : json.List(json.Root(), kPlayers, kMostPlayers)) {
        const TextPlace place = places.At(OffsetOf(name, text));
        if (name.isString())
            names.Add(TextOf(name), place);
        else
            names.Refuse(place, Localized(kNoName));
    }
    if (names.Trouble()) json.Refuse(*names.Trouble());
    return names.Take();
}

template <class T>
Result<T> FromFile(const fs::path& path, Placed<T> (*read)(std::string_view)) {
    const Result<std::string> text = ReadFile(path, kLongestFile + 1);
    if (!text) return Error{text.reason()};
    Placed<T> value = read(*text);
    if (auto* taken = std::get_if<T>(&value)) return std::move(*taken);
    return Error{Worded(kAtFault, TextOfPath(path), std::get<TextTrouble>(value).Told())};
}

}  // namespace

Result<PlayerName> ReadPlayerName(std::string_view text) {
    text = Trimmed(text);
    if (text.empty()) return Error{Localized(kNoName)};
    if (std::ranges::any_of(text, IsControl)) return Error{Localized(kNoControl)};
    PlayerName name{std::string(text)};
    const std::size_t colon = std::min(text.rfind(':'), text.size());
    const std::string ip(text.substr(0, colon));
    if (!ParseIpv4(ip)) {
        if (LooksLikeAddress(ip)) return Error{Worded(kNoAddress, ip)};
        return name;
    }
    name.ip = ip;
    if (colon == text.size()) return name;
    const std::string_view digits = text.substr(colon + 1);
    const char* const end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, name.port);
    if (read.ec != std::errc() || read.ptr != end || name.port == 0)
        return Error{Worded(kNoPort, name.text)};
    return name;
}

Placed<std::vector<PlayerName>> ReadExpectedPlayers(std::string_view text) {
    const std::size_t first = text.find_first_not_of("\xEF\xBB\xBF \t\r\n");
    if (first == std::string_view::npos || text[first] != '{') return ReadLines(text);
    OwnJson json(text, kLongestFile);
    json.ExpectFormat({kPlayersFormat, kVenueFormat}, kIsNoList);
    std::vector<PlayerName> names = PlayersIn(json, text);
    if (json.Trouble()) return *json.Trouble();
    return names;
}

Placed<Venue> ReadVenue(std::string_view text) {
    OwnJson json(text, kLongestFile);
    json.ExpectFormat({kVenueFormat}, kIsNoVenue);
    const Json::Value& root = json.Root();
    Venue venue;
    venue.localAddress = json.Text(root, kLocalAddress, OwnJson::Need::kOptional);
    venue.backupFolder = json.Text(root, kBackupFolder, OwnJson::Need::kOptional);
    if (!json.Trouble() && !venue.localAddress.empty() && !ParseIpv4(venue.localAddress))
        json.Refuse(root[kLocalAddress], Worded(kNoAddress, venue.localAddress));
    if (!json.Trouble() && root.isMember(kPlayers)) venue.players = PlayersIn(json, text);
    if (json.Trouble()) return *json.Trouble();
    return venue;
}

std::optional<fs::path> VenuePath(const fs::path& data, std::string_view name) {
    constexpr std::string_view kNoFileHas = "/\\:*?\"<>|";
    const bool isName = !name.empty() && name.front() != '.' && DecodeUtf8(name) == name &&
                        name.find_first_of(kNoFileHas) == std::string_view::npos &&
                        std::ranges::none_of(name, IsControl);
    if (!isName) return std::nullopt;
    return data / kVenues / PathOfText(std::string(name) + kEnding);
}

Result<Venue> OpenVenue(const fs::path& data, std::string_view name) {
    const auto path = VenuePath(data, name);
    if (!path) return Error{Worded(kNoVenueName, std::string(name))};
    Result<Venue> venue = FromFile<Venue>(*path, ReadVenue);
    if (venue && !venue->backupFolder.empty()) {
        const fs::path folder = path->parent_path() / PathOfText(venue->backupFolder);
        venue->backupFolder = TextOfPath(folder.lexically_normal());
    }
    return venue;
}

Result<std::vector<PlayerName>> OpenExpectedPlayers(const fs::path& path) {
    return FromFile<std::vector<PlayerName>>(path, ReadExpectedPlayers);
}

}  // namespace sontaro
