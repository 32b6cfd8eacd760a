#include "screensplit/wall_text.h"

#include <fmt/format.h>
#include <fmt/printf.h>

#include <algorithm>
#include <utility>

namespace sontaro {

namespace {

using Kind = WallSpot::Kind;
using Lines = std::vector<std::string>;

constexpr const char* kEllipsis = "…";
constexpr LocalText kSeam = {"第 %d 块与第 %d 块重叠 %d 像素",
                             "Screens %d and %d overlap by %d pixels"};
constexpr LocalText kClash = {"与第 %d 块也重叠", "reaches into screen %d as well"};
constexpr LocalText kUnknown = {"分幕 %d", "Screen %d"};
constexpr LocalText kComma = {"，", ", "};

bool Fits(const std::string& text, const TextRoom& room) {
    return room.widthOf(text) <= room.width;
}

Lines AsBlock(std::string line) {
    if (line.empty()) return {};
    return {std::move(line)};
}

Lines FirstThatFits(const std::vector<Lines>& forms, const TextRoom& room) {
    const auto fits = [&](const Lines& lines) {
        return std::ranges::all_of(lines, [&](const auto& line) { return Fits(line, room); });
    };
    const auto form = std::ranges::find_if(forms, fits);
    return form != forms.end() ? *form : Lines();
}

std::string Corner(double x, double y) { return fmt::format("({:.0f}, {:.0f})", x, y); }

/// What a tile has to say in the order in which it stands there, each as it fits the width.
std::vector<Lines> BlocksOf(const WallTile& tile, const TextRoom& room) {
    std::vector<Lines> blocks;
    if (tile.name != nullptr) {
        const Lines& label = tile.name->label;
        const std::string& address = label.front();
        const std::string end =
            fmt::format("{}-{}", address.substr(address.rfind('.') + 1), tile.name->output);
        blocks.push_back(FirstThatFits({{address}, {'.' + end}, {end}}, room));
        for (std::size_t i = 1; i + 1 < label.size(); ++i)
            blocks.push_back(AsBlock(Shortened(label[i], room)));
        blocks.push_back(FirstThatFits({{label.back()}}, room));
    }
    if (tile.number != 0) {
        const WallRect& area = tile.area;
        blocks.push_back(FirstThatFits(
            {{tile.CornersText()},
             {Corner(area.left, area.top), Corner(area.Right() - 1, area.Bottom() - 1)}},
            room));
    }
    return blocks;
}

std::string Joined(const Lines& lines) {
    return fmt::format("{}", fmt::join(lines, Localized(kComma)));
}

Lines LabelOf(const WallTile& tile) {
    if (tile.name != nullptr) return tile.name->label;
    return {fmt::sprintf(Localized(kUnknown), tile.screen + 1)};
}

std::string DescriptionOf(const WallTile& tile) {
    Lines parts = LabelOf(tile);
    if (tile.number == 0) {
        parts.push_back(Localized(kTrayTitle));
        return Joined(parts);
    }
    parts.push_back(tile.CornersText());
    if (tile.clashes) parts.insert(parts.begin(), fmt::sprintf(Localized(kClash), tile.number - 2));
    return fmt::format("{}: {}", tile.number, Joined(parts));
}

}  // namespace

std::string Shortened(std::string text, const TextRoom& room) {
    if (Fits(text, room)) return text;
    constexpr std::size_t kLeastBytes = 3;
    const auto isInner = [](char byte) { return (byte & 0xC0) == 0x80; };
    while (text.size() > kLeastBytes) {
        while (isInner(text.back())) text.pop_back();
        text.pop_back();
        if (Fits(text + kEllipsis, room)) return text + kEllipsis;
    }
    return {};
}

std::vector<std::string> TileLines(const WallTile& tile, const TextRoom& room) {
    const std::vector<Lines> blocks = BlocksOf(tile, room);
    std::vector<bool> isTaken(blocks.size());
    std::size_t left = room.lines;
    const auto take = [&](std::size_t block) {
        if (isTaken[block] || blocks[block].size() > left) return;
        isTaken[block] = true;
        left -= blocks[block].size();
    };
    const std::size_t output = tile.name != nullptr ? tile.name->label.size() - 1 : 0;
    if (tile.name != nullptr) take(0), take(output);
    for (std::size_t i = 0; i < blocks.size(); ++i) take(i);

    Lines lines;
    for (std::size_t i = 0; i < blocks.size(); ++i)
        if (isTaken[i]) lines.insert(lines.end(), blocks[i].begin(), blocks[i].end());
    return lines;
}

std::string DescriptionOf(const WallPicture& picture, const WallSpot& spot) {
    switch (spot.kind) {
        case Kind::kTile: return DescriptionOf(picture.Tiles()[spot.index]);
        case Kind::kUnused: return DescriptionOf(picture.Unused()[spot.index]);
        case Kind::kSeam:
            return fmt::sprintf(Localized(kSeam), spot.index + 1, spot.index + 2,
                                picture.Overlaps()[spot.index].pixels);
        case Kind::kNothing:
        case Kind::kTray: break;
    }
    return {};
}

}  // namespace sontaro
