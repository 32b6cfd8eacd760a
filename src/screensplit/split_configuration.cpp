#include "screensplit/split_configuration.h"

#include <algorithm>
#include <utility>

#include "base/json.h"

namespace sontaro {

namespace {

using Json::StaticString;

constexpr const char* kVersion = "ver";
constexpr const char* kData = "configData";
constexpr const char* kSizes = "VScreenSize";
constexpr const char* kAreas = "channelShowArea";
constexpr const char* kFixed = "fixedParam";
constexpr const char* kAdvanced = "varParam";
constexpr const char* kScreenId = "screenID";
constexpr const char* kEnable = "enable";
constexpr const char* kWidth = "width";
constexpr const char* kHeight = "height";
constexpr const char* kChannelId = "channelID";

/// More than any wall has: what is sent instead of one must not take long to read.
constexpr std::size_t kMostScreens = 64;

template <class Record>
struct NumberMember {
    const char* key;
    std::int32_t Record::*number;
};

constexpr NumberMember<SplitZoom> kZoom[] = {{"leftZoom", &SplitZoom::left},
                                             {"topZoom", &SplitZoom::top},
                                             {"rightZoom", &SplitZoom::right},
                                             {"bottomZoom", &SplitZoom::bottom}};

constexpr NumberMember<SplitChannel> kCorners[] = {
    {"leftTopX", &SplitChannel::leftTopX},         {"leftTopY", &SplitChannel::leftTopY},
    {"rightTopX", &SplitChannel::rightTopX},       {"rightTopY", &SplitChannel::rightTopY},
    {"leftBottomX", &SplitChannel::leftBottomX},   {"leftBottomY", &SplitChannel::leftBottomY},
    {"rightBottomX", &SplitChannel::rightBottomX}, {"rightBottomY", &SplitChannel::rightBottomY}};

/// 0 where there is no such number.
std::int32_t NumberIn(const Json::Value& json, const char* key) {
    const Json::Value& number = json[key];
    return number.isInt() ? number.asInt() : 0;
}

// To fill one object again and append copies of it is a good deal faster than to make each anew.

void FillSize(Json::Value& json, const SplitScreen& screen, SplitSize size) {
    json[StaticString(kScreenId)] = static_cast<Json::Int>(screen.screen);
    json[StaticString(kEnable)] = screen.enabled ? 1 : 0;
    json[StaticString(kWidth)] = size.width;
    json[StaticString(kHeight)] = size.height;
    for (const auto& [key, number] : kZoom) json[StaticString(key)] = screen.zoom.*number;
}

void FillArea(Json::Value& json, const SplitScreen& screen, const SplitChannel& channel) {
    json[StaticString(kScreenId)] = static_cast<Json::Int>(screen.screen);
    json[StaticString(kEnable)] = screen.enabled ? 1 : 0;
    json[StaticString(kChannelId)] = channel.channelId;
    for (const auto& [key, number] : kCorners) json[StaticString(key)] = channel.*number;
}

/// None when it does not say which screen it is about.
std::optional<std::size_t> ScreenOf(const Json::Value& json) {
    if (!json.isObject() || !json[kScreenId].isInt() || json[kScreenId].asInt() < 0) return {};
    return static_cast<std::size_t>(json[kScreenId].asInt());
}

SplitChannel ReadArea(const Json::Value& json) {
    SplitChannel channel;
    channel.channelId = NumberIn(json, kChannelId);
    for (const auto& [key, number] : kCorners) channel.*number = NumberIn(json, key);
    return channel;
}

/// Every screen has the channels that name it.
std::vector<SplitScreen> ReadScreens(const Json::Value& sizes, const Json::Value& areas) {
    std::vector<SplitScreen> screens;
    if (sizes.isArray())
        for (const Json::Value& json : sizes) {
            const std::optional<std::size_t> id = ScreenOf(json);
            if (!id || screens.size() == kMostScreens) continue;
            SplitScreen& screen = screens.emplace_back();
            screen.screen = *id;
            screen.enabled = NumberIn(json, kEnable) != 0;
            for (const auto& [key, number] : kZoom) screen.zoom.*number = NumberIn(json, key);
        }
    if (areas.isArray())
        for (const Json::Value& json : areas) {
            const std::optional<std::size_t> id = ScreenOf(json);
            const auto screen =
                id ? std::ranges::find(screens, *id, &SplitScreen::screen) : screens.end();
            if (screen != screens.end()) screen->channels.push_back(ReadArea(json));
        }
    return screens;
}

/// The overlaps of a channel with the one before it, as their corners have them.
SplitSeam SeamBetween(const SplitChannel& previous, const SplitChannel& channel,
                      SplitDirection direction) {
    if (direction == SplitDirection::kHorizontal)
        return {previous.rightTopX - channel.leftTopX + 1, 0};
    return {0, previous.leftBottomY - channel.leftTopY + 1};
}

/// Whether no number is so large that the layout could not be reckoned with.
bool IsOfThisWorld(const SplitChannel& channel) {
    constexpr std::int32_t kFarthest = 1 << 24;
    return std::ranges::all_of(kCorners, [&](const auto& corner) {
        return channel.*corner.number >= -kFarthest && channel.*corner.number <= kFarthest;
    });
}

bool HasCornersOf(const SplitChannel& channel, const SplitChannel& other) {
    return std::ranges::all_of(kCorners, [&](const auto& corner) {
        return channel.*corner.number == other.*corner.number;
    });
}

}  // namespace

Result<SplitConfiguration> SplitConfiguration::Read(std::string_view text) {
    const Result<Json::Value> root = ParseJson(text);
    if (!root) return Error{root.reason()};
    if (!root->isObject()) return Error{"no object"};
    SplitConfiguration read;
    read.whole_ = WithValidTexts(*root);
    read.others_ = read.whole_;
    if (!read.others_[kVersion].isNumeric()) read.others_[kVersion] = 0U;
    Json::Value& data = read.others_[kData];
    if (!data.isObject()) data = Json::Value(Json::objectValue);
    if (data[kFixed].isArray()) read.fixed_ = data[kFixed];
    read.advanced_.Read(data[kAdvanced]);
    read.screens_ = ReadScreens(data[kSizes], data[kAreas]);
    for (const char* written : {kSizes, kAreas, kFixed, kAdvanced}) data.removeMember(written);
    return read;
}

Json::Value SplitConfiguration::With(const std::vector<SplitScreen>& screens, SplitSize size,
                                     const CustomEntries& advanced) const {
    Json::Value sizes(Json::arrayValue);
    Json::Value areas(Json::arrayValue);
    Json::Value filled[2];
    for (const SplitScreen& screen : screens) {
        FillSize(filled[0], screen, size);
        sizes.append(filled[0]);
        for (const SplitChannel& channel : screen.channels) {
            FillArea(filled[1], screen, channel);
            areas.append(filled[1]);
        }
    }
    Json::Value root = others_;
    Json::Value& data = root[kData];
    data[StaticString(kSizes)] = std::move(sizes);
    data[StaticString(kAreas)] = std::move(areas);
    data[StaticString(kFixed)] = fixed_;
    data[StaticString(kAdvanced)] = advanced.ToJson();
    return root;
}

Json::Value SplitConfiguration::WholeWith(const CustomEntries& advanced) const {
    Json::Value root = whole_;
    if (!(advanced == advanced_)) root[kData][StaticString(kAdvanced)] = advanced.ToJson();
    return root;
}

std::optional<SplitWall> WallOf(const std::vector<SplitScreen>& screens, std::size_t count,
                                SplitDirection direction) {
    std::vector<SplitScreen> used;
    SplitWall wall = PlainWall(count);
    for (const SplitScreen& screen : screens) {
        if (screen.screen >= count) return std::nullopt;
        wall.zooms[screen.screen] = screen.zoom;
        if (!screen.enabled) continue;
        if (screen.channels.size() != 1 || !IsOfThisWorld(screen.channels[0])) return std::nullopt;
        used.push_back(screen);
    }
    if (used.empty() || screens.size() > count) return std::nullopt;
    const SplitChannel first = used[0].channels[0];
    if (used.size() > 1)
        direction = used[1].channels[0].leftTopY == first.leftTopY ? SplitDirection::kHorizontal
                                                                   : SplitDirection::kVertical;
    std::vector<SplitSlot> slots(count);
    for (std::size_t i = 0; i < used.size(); ++i) {
        slots[i] = used[i].screen;
        if (i > 0)
            wall.seams[i - 1] =
                SeamBetween(used[i - 1].channels[0], used[i].channels[0], direction);
    }
    wall.arrangement = {std::move(slots), direction};
    if (wall.arrangement.ReusesScreen()) return std::nullopt;
    const SplitSize size{first.rightTopX - first.leftTopX + 1,
                         first.leftBottomY - first.leftTopY + 1};
    const std::vector<SplitScreen> laidOut = wall.Screens(size);
    for (std::size_t i = 0; i < used.size(); ++i)
        if (!HasCornersOf(laidOut[i].channels[0], used[i].channels[0])) return std::nullopt;
    return wall;
}

}  // namespace sontaro
