#include "screensplit/split_layout.h"

namespace sontaro {

namespace {

void PlaceFirst(SplitChannel& channel, SplitSize size) {
    channel.leftTopX = channel.leftTopY = channel.leftBottomX = channel.rightTopY = 0;
    channel.rightTopX = channel.rightBottomX = size.width - 1;
    channel.leftBottomY = channel.rightBottomY = size.height - 1;
}

void PlaceBeside(SplitChannel& channel, const SplitChannel& previous, std::int32_t width) {
    channel.leftTopX = previous.rightTopX - channel.overlapX + 1;
    channel.leftBottomX = previous.rightBottomX - channel.overlapX + 1;
    channel.rightTopX = channel.leftTopX + width - 1;
    channel.rightBottomX = channel.leftBottomX + width - 1;
    channel.leftTopY = previous.leftTopY;
    channel.rightTopY = previous.rightTopY;
    channel.leftBottomY = previous.leftBottomY;
    channel.rightBottomY = previous.rightBottomY;
}

void PlaceBelow(SplitChannel& channel, const SplitChannel& previous, std::int32_t height) {
    channel.leftTopY = previous.leftBottomY - channel.overlapY + 1;
    channel.rightTopY = previous.rightBottomY - channel.overlapY + 1;
    channel.leftBottomY = channel.leftTopY + height - 1;
    channel.rightBottomY = channel.rightTopY + height - 1;
    channel.leftTopX = previous.leftTopX;
    channel.rightTopX = previous.rightTopX;
    channel.leftBottomX = previous.leftBottomX;
    channel.rightBottomX = previous.rightBottomX;
}

}  // namespace

void LayOut(std::span<SplitScreen> screens, SplitDirection direction, SplitSize size) {
    const SplitChannel* previous = nullptr;
    for (SplitScreen& screen : screens) {
        if (!screen.enabled) continue;
        for (SplitChannel& channel : screen.channels) {
            if (!previous)
                PlaceFirst(channel, size);
            else if (direction == SplitDirection::kHorizontal)
                PlaceBeside(channel, *previous, size.width);
            else
                PlaceBelow(channel, *previous, size.height);
            previous = &channel;
        }
    }
}

}  // namespace sontaro
