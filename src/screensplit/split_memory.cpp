#include "screensplit/split_memory.h"

#include <fmt/printf.h>

#include <algorithm>
#include <set>
#include <utility>

#include "settings/own_file.h"

namespace sontaro {

namespace {

constexpr OwnFileKind kFiles = {kWallFormat,
                                {"它不是屏幕分割文件。", "it is no screen split file."}};
constexpr LocalText kOtherScreens = {"它属于另一组播放器，或者内容不完整。",
                                     "it is about another set of players, or not whole."};
constexpr LocalText kUnnamed = {
    "有播放器没有ID，或者ID相同，无法保存。",
    "Players without an ID, or with the same one, cannot be kept in a file."};
constexpr LocalText kLeftOut = {
    "文件中有 %d 项高级参数与播放器的不符，未采用。",
    "The file has been opened, but not all of it: %d of its advanced settings do not fit those of "
    "the players, and have been left out."};

constexpr LocalText kEarlierLeftOut = {
    "当时的 %d 项高级参数与播放器现有的不符，未采用。",
    "Not all of it has been taken: %d of its advanced settings do not fit those of the players, "
    "and have been left out."};
constexpr LocalText kNoEarlierWall = {
    "当时的大屏不是由这些分幕组成的单行或单列，或其重叠、缩放超出可设置的范围，未作任何更改。",
    "The wall of that time is no single row or column of these screens, or has overlaps or zoom "
    "beyond what can be set. Nothing has been changed."};

constexpr const char* kAdvanced = "advanced";
constexpr const char* kRemembered = "screenSplitWalls";
constexpr Json::ArrayIndex kMostRemembered = 32;

constexpr const char* kVertical = "vertical";
constexpr const char* kScreens = "screens";
constexpr const char* kSlots = "slots";
constexpr const char* kSeams = "overlaps";

/// A screen whatever its address: the ID of its player and its output.
using ScreenKey = std::pair<std::string, int>;

ScreenKey KeyOf(const SplitDocument& document, const ScreenName& name) {
    return {document.Devices()[name.device].record.id, name.output};
}

/// In the order of the names.
std::vector<ScreenKey> KeysOf(const SplitDocument& document) {
    std::vector<ScreenKey> keys;
    for (const ScreenName& name : document.Names()) keys.push_back(KeyOf(document, name));
    return keys;
}

/// Empty when they cannot be told apart.
std::set<ScreenKey> SetOf(const std::vector<ScreenKey>& keys) {
    std::set<ScreenKey> set(keys.begin(), keys.end());
    const bool hasUnnamed = std::ranges::any_of(keys, [](auto& key) { return key.first.empty(); });
    return hasUnnamed || set.size() != keys.size() ? std::set<ScreenKey>() : set;
}

bool IsNumbers(const Json::Value& json, Json::ArrayIndex count) {
    return json.isArray() && json.size() == count &&
           std::ranges::all_of(json, [](const Json::Value& number) { return number.isInt(); });
}

/// What is to be known of a screen: [ID, output, left, top, right, bottom].
Json::Value ScreenToJson(const ScreenKey& key, const SplitZoom& zoom) {
    Json::Value json(Json::arrayValue);
    json.append(key.first);
    json.append(key.second);
    for (const std::int32_t pixels : {zoom.left, zoom.top, zoom.right, zoom.bottom})
        json.append(pixels);
    return json;
}

bool IsScreen(const Json::Value& json) {
    if (!json.isArray() || json.size() != 6 || !json[0U].isString()) return false;
    return std::all_of(std::next(json.begin()), json.end(),
                       [](const Json::Value& number) { return number.isInt(); });
}

/// The keys of the screens that `json` has; empty when it is no wall.
std::vector<ScreenKey> KeysIn(const Json::Value& json) {
    std::vector<ScreenKey> keys;
    if (!json.isObject() || !json[kScreens].isArray()) return keys;
    for (const Json::Value& screen : json[kScreens]) {
        if (!IsScreen(screen)) return {};
        keys.emplace_back(screen[0U].asString(), screen[1U].asInt());
    }
    return keys;
}

/// A slot is the place of its screen in "screens", or -1. None when one is not.
std::optional<std::vector<SplitSlot>> SlotsIn(const Json::Value& json,
                                              const std::vector<std::size_t>& places) {
    if (!IsNumbers(json, static_cast<Json::ArrayIndex>(places.size()))) return std::nullopt;
    std::vector<SplitSlot> slots;
    for (const Json::Value& slot : json) {
        const auto place = static_cast<std::size_t>(slot.asInt());
        if (slot.asInt() >= 0 && place >= places.size()) return std::nullopt;
        slots.push_back(slot.asInt() < 0 ? SplitSlot() : SplitSlot(places[place]));
    }
    return slots;
}

/// Takes a wall with the values of advanced settings, and says so when not all of these fit.
bool UseWith(SplitDocument& document, const SplitWall& wall, const CustomEntries& values,
             const LocalText& leftOutText, Prompts& prompts) {
    CustomEntries advanced = document.Advanced();
    const std::size_t leftOut = advanced.TakeValues(values);
    if (const auto refusal = document.UseWall(wall, std::move(advanced))) {
        prompts.Warn(Localized(*refusal));
        return false;
    }
    if (leftOut > 0) prompts.Warn(fmt::sprintf(Localized(leftOutText), leftOut));
    return true;
}

bool IsSeams(const Json::Value& json, std::size_t count) {
    return json.isArray() && json.size() == count &&
           std::ranges::all_of(json, [](const Json::Value& seam) { return IsNumbers(seam, 2); });
}

}  // namespace

std::optional<Json::Value> WallToJson(const SplitDocument& document) {
    const std::vector<ScreenKey> keys = KeysOf(document);
    if (SetOf(keys).empty()) return std::nullopt;
    const SplitWall& wall = document.Wall();
    const SplitArrangement arrangement = document.Applicable();
    Json::Value json(Json::objectValue);
    json[kVertical] = arrangement.direction == SplitDirection::kVertical;
    json[kScreens] = json[kSlots] = json[kSeams] = Json::Value(Json::arrayValue);
    for (std::size_t i = 0; i < keys.size(); ++i)
        json[kScreens].append(ScreenToJson(keys[i], wall.zooms[i]));
    for (const SplitSlot& slot : arrangement.slots)
        json[kSlots].append(slot ? static_cast<int>(*slot) : -1);
    for (const SplitSeam& seam : wall.seams) {
        Json::Value& pixels = json[kSeams].append(Json::Value(Json::arrayValue));
        pixels.append(seam.x);
        pixels.append(seam.y);
    }
    return json;
}

std::optional<SplitWall> WallFromJson(const Json::Value& json, const SplitDocument& document) {
    const std::vector<ScreenKey> ours = KeysOf(document);
    const std::vector<ScreenKey> theirs = KeysIn(json);
    if (theirs.size() != ours.size() || SetOf(ours).empty() || SetOf(ours) != SetOf(theirs))
        return std::nullopt;
    SplitWall wall = PlainWall(ours.size());
    std::vector<std::size_t> places;  // here, of their screens
    for (std::size_t i = 0; i < theirs.size(); ++i) {
        places.push_back(
            static_cast<std::size_t>(std::ranges::find(ours, theirs[i]) - ours.begin()));
        const Json::Value& screen = json[kScreens][static_cast<Json::ArrayIndex>(i)];
        wall.zooms[places[i]] = {screen[2U].asInt(), screen[3U].asInt(), screen[4U].asInt(),
                                 screen[5U].asInt()};
    }
    auto slots = SlotsIn(json[kSlots], places);
    if (!slots || !IsSeams(json[kSeams], wall.seams.size())) return std::nullopt;
    wall.arrangement.slots = std::move(*slots);
    const bool isVertical = json[kVertical].isBool() && json[kVertical].asBool();
    wall.arrangement.direction =
        isVertical ? SplitDirection::kVertical : SplitDirection::kHorizontal;
    for (std::size_t i = 0; i < wall.seams.size(); ++i) {
        const Json::Value& seam = json[kSeams][static_cast<Json::ArrayIndex>(i)];
        wall.seams[i] = {seam[0U].asInt(), seam[1U].asInt()};
    }
    return wall.arrangement.ReusesScreen() ? std::nullopt : std::optional(wall);
}

/// The latest comes first; those of sets that have not been used for long go.
void RememberWall(const Json::Value& wall, JsonFile& preferences) {
    const std::set<ScreenKey> set = SetOf(KeysIn(wall));
    // Only a convenience is lost when it cannot be written.
    static_cast<void>(preferences.Update([&](Json::Value& root) {
        Json::Value walls(Json::arrayValue);
        walls.append(wall);
        if (root[kRemembered].isArray())
            for (const Json::Value& other : root[kRemembered])
                if (walls.size() < kMostRemembered && SetOf(KeysIn(other)) != set)
                    walls.append(other);
        root[kRemembered] = std::move(walls);
    }));
}

std::optional<SplitWall> RememberedWall(const SplitDocument& document,
                                        const JsonFile& preferences) {
    const Json::Value& walls = preferences.Root()[kRemembered];
    if (!walls.isArray()) return std::nullopt;
    for (const Json::Value& json : walls)
        if (auto wall = WallFromJson(json, document)) return wall;
    return std::nullopt;
}

void SaveWallFile(const SplitDocument& document, const std::filesystem::path& path,
                  Prompts& prompts) {
    const std::optional<Json::Value> wall = WallToJson(document);
    if (!wall) return prompts.Warn(Localized(kUnnamed));
    Json::Value content(Json::objectValue);
    content[kWallMember] = *wall;
    content[kAdvanced] = document.Advanced().ToJson();
    SaveOwnFile(kFiles, std::move(content), path, prompts);
}

bool OpenWallFile(SplitDocument& document, const std::filesystem::path& path, Prompts& prompts) {
    const auto content = OpenOwnFile(kFiles, path, prompts);
    if (!content) return false;
    const auto wall = WallFromJson((*content)[kWallMember], document);
    if (!wall) {
        TellFileRefused(path, Localized(kOtherScreens), prompts);
        return false;
    }
    CustomEntries values;
    values.Read((*content)[kAdvanced]);
    return UseWith(document, *wall, values, kLeftOut, prompts);
}

bool OpenEarlierWall(SplitDocument& document, std::string_view text, Prompts& prompts) {
    const auto configuration = SplitConfiguration::Read(text);
    const auto wall = configuration ? document.WallIn(*configuration) : std::nullopt;
    if (wall) return UseWith(document, *wall, configuration->Advanced(), kEarlierLeftOut, prompts);
    prompts.Warn(Localized(kNoEarlierWall));
    return false;
}

}  // namespace sontaro
