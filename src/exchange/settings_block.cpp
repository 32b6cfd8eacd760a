#include "exchange/settings_block.h"

#include <algorithm>
#include <iterator>

namespace sontaro {

namespace {

using Confirmation = SettingsBlockFacts::Confirmation;

// clang-format off
constexpr SettingsBlockFacts kBlocks[] = {
    {kBlockControlProtocol,    MessageId::kControlProtocol,    1, Confirmation::kNoDocument},
    {kBlockOsd,                MessageId::kOsd,                0, Confirmation::kAnyDocument},
    {kBlockExtendedSerialPort, MessageId::kExtendedSerialPort, 1, Confirmation::kArgument},
    {kBlockSubtitles,          MessageId::kSubtitles,          1, Confirmation::kArgument},
    {kBlockTouchAction,        MessageId::kTouchAction,        1, Confirmation::kArgument},
    {kBlockCave,               MessageId::kCave,               1, Confirmation::kArgument},
    {kBlockPlayerControl,      MessageId::kPlayerControl,      1, Confirmation::kArgument},
    {kBlockPlayerTimeline,     MessageId::kPlayerControl,      1, Confirmation::kArgument},
};
// clang-format on

}  // namespace

const SettingsBlockFacts& FactsOf(SettingsBlock block) {
    const auto* facts = std::ranges::find(kBlocks, block, &SettingsBlockFacts::block);
    return facts == std::end(kBlocks) ? kBlocks[0] : *facts;
}

}  // namespace sontaro
