#include "screensplit/split_wall.h"

#include <fmt/printf.h>

#include <algorithm>

namespace sontaro {

namespace {

constexpr LocalText kFirstOutput = {"-1幕", "-1Screen"};
constexpr LocalText kSecondOutput = {"-2幕", "-2Screen"};

constexpr LocalText kOutput = {"输出 %d", "Output %d"};

ScreenName NameOf(const DeviceRecord& record, std::size_t device, int output) {
    ScreenName name{record.ip + Localized(output == 1 ? kFirstOutput : kSecondOutput), device,
                    output};
    for (const std::string& text : {record.ip, record.remarks, record.id})
        if (!text.empty()) name.label.push_back(text);
    name.label.push_back(fmt::sprintf(Localized(kOutput), output));
    return name;
}

std::int32_t Limited(std::int32_t value, std::int32_t most) { return std::clamp(value, 0, most); }

}  // namespace

std::vector<ScreenName> ScreenNames(const std::vector<SplitDevice>& devices) {
    std::vector<ScreenName> names;
    for (std::size_t i = 0; i < devices.size(); ++i)
        for (int output = 1; output <= devices[i].params.Outputs(); ++output)
            names.push_back(NameOf(devices[i].record, i, output));
    return names;
}

std::optional<SplitSlot> SlotOf(const std::string& text, const std::vector<ScreenName>& names) {
    if (text == kInvalidSlot.chinese || text == kInvalidSlot.english) return SplitSlot();
    const auto name = std::ranges::find(names, text, &ScreenName::text);
    if (name == names.end()) return std::nullopt;
    return SplitSlot(static_cast<std::size_t>(name - names.begin()));
}

std::string SlotText(const SplitSlot& slot, const std::vector<ScreenName>& names) {
    return slot ? names[*slot].text : Localized(kInvalidSlot);
}

std::vector<std::size_t> SplitArrangement::Order() const {
    std::vector<std::size_t> order;
    for (const SplitSlot& slot : slots)
        if (slot) order.push_back(*slot);
    return order;
}

bool SplitArrangement::ReusesScreen() const {
    std::vector<std::size_t> order = Order();
    std::ranges::sort(order);
    return std::ranges::adjacent_find(order) != order.end();
}

std::vector<SplitSlot> WithOrder(std::vector<SplitSlot> slots,
                                 const std::vector<std::size_t>& order) {
    auto used = static_cast<std::size_t>(std::ranges::count_if(slots, &SplitSlot::has_value));
    for (auto slot = slots.rbegin(); used > order.size() && slot != slots.rend(); ++slot)
        if (*slot) slot->reset(), --used;
    for (auto slot = slots.begin(); used < order.size() && slot != slots.end(); ++slot)
        if (!*slot) slot->emplace(), ++used;
    auto next = order.begin();
    for (SplitSlot& slot : slots)
        if (slot) slot = *next++;
    return slots;
}

std::vector<SplitScreen> SplitWall::Screens(SplitSize size) const {
    std::vector<SplitScreen> screens;
    std::vector<bool> isUsed(zooms.size());
    screens.reserve(zooms.size());
    for (const std::size_t screen : arrangement.Order()) {
        SplitChannel channel;
        const SplitSeam seam = screens.empty() ? SplitSeam() : seams[screens.size() - 1];
        channel.overlapX = seam.x;
        channel.overlapY = seam.y;
        screens.push_back({screen, true, {channel}, zooms[screen]});
        isUsed[screen] = true;
    }
    for (std::size_t screen = 0; screen < zooms.size(); ++screen)
        if (!isUsed[screen]) screens.push_back({screen, false, {SplitChannel()}});
    LayOut(screens, arrangement.direction, size);
    return screens;
}

SplitWall PlainWall(std::size_t screens) {
    SplitWall wall;
    for (std::size_t i = 0; i < screens; ++i) wall.arrangement.slots.emplace_back(i);
    wall.seams.resize(screens > 0 ? screens - 1 : 0);
    wall.zooms.resize(screens);
    return wall;
}

std::int32_t MostOverlap(SplitDirection direction, SplitSize size) {
    const bool isHorizontal = direction == SplitDirection::kHorizontal;
    return std::max(0, (isHorizontal ? size.width : size.height) - 1);
}

SplitSize MostZoom(SplitSize size) {
    return {std::max(0, size.width / 2 - 1), std::max(0, size.height / 2 - 1)};
}

SplitWall WithinLimits(SplitWall wall, SplitSize size) {
    const SplitSize most = MostZoom(size);
    for (SplitSeam& seam : wall.seams)
        seam = {Limited(seam.x, MostOverlap(SplitDirection::kHorizontal, size)),
                Limited(seam.y, MostOverlap(SplitDirection::kVertical, size))};
    for (SplitZoom& zoom : wall.zooms)
        zoom = {Limited(zoom.left, most.width), Limited(zoom.top, most.height),
                Limited(zoom.right, most.width), Limited(zoom.bottom, most.height)};
    return wall;
}

}  // namespace sontaro
