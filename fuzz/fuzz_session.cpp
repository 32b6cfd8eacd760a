// What a session takes in: the bytes of a connection in pieces of any size, documents of every
// block with values for their rows, and ranges of addresses.
#include <algorithm>
#include <cstdlib>

#include "exchange/player_requests.h"
#include "exchange/reply_router.h"
#include "session/block_document.h"
#include "session/packet_stream.h"
#include "session/player_calls.h"
#include "session/player_search.h"

namespace sontaro {
namespace {

void Expect(bool holds) {
    if (!holds) std::abort();
}

/// Whatever a reply becomes, requests can say whether it is theirs.
void Judge(const DevicePacket& packet) {
    if (KindOf(packet.header) != ReplyKind::kForwarded) return;
    NowPlaying playing;
    for (const WindowMessage& message : MessagesOf({packet.header, packet.payload, {}, 1})) {
        TakeReport(message, playing);
        for (const SettingsBlockKind& kind : SettingsBlocks())
            static_cast<void>(ReadSettings(kind.readBlock).judge(message));
        static_cast<void>(AskCaptions().judge(message));
        static_cast<void>(FreeSpaceIn(message, 0));
        static_cast<void>(ModeIn(message));
    }
}

/// The bytes of all packets.
Bytes Joined(const std::vector<DevicePacket>& packets) {
    Bytes all;
    for (const DevicePacket& packet : packets) {
        const Bytes bytes = packet.Serialize();
        all.insert(all.end(), bytes.begin(), bytes.end());
    }
    return all;
}

/// However they are cut, the same packets come of the same bytes, which are all there was to them.
void FeedStream(ByteView input) {
    std::vector<DevicePacket> whole;
    PacketStream atOnce;
    const LinkTrouble trouble = atOnce.Take(input, whole);
    std::vector<DevicePacket> cut;
    PacketStream inPieces;
    std::size_t size = 1;
    for (ByteView rest = input; !rest.empty(); rest = rest.subspan(size)) {
        size = std::min<std::size_t>(1 + rest.front() % 23, rest.size());
        static_cast<void>(inPieces.Take(rest.first(size), cut));
    }
    const Bytes bytes = Joined(whole);
    Expect(inPieces.Take({}, cut) == trouble && Joined(cut) == bytes);
    Expect(inPieces.IsWithinPacket() == atOnce.IsWithinPacket());
    Expect(bytes.size() <= input.size() && std::ranges::equal(bytes, input.first(bytes.size())));
    for (const DevicePacket& packet : whole) Judge(packet);
}

/// The text up to the next zero byte, which is taken off the input.
std::string NextText(ByteView& input) {
    const auto end = std::ranges::find(input, 0);
    std::string text(AsText({input.begin(), end}));
    input = {end == input.end() ? end : end + 1, input.end()};
    return text;
}

/// A document, a path and a value, and another document of the block.
void ReadDocument(const SettingsBlockKind& kind, ByteView input) {
    using Source = BlockDocument::Source;
    const std::string text = NextText(input);
    BlockDocument document(kind, text, Source::kPlayer);
    Expect(document.Text() == text);
    const std::string path = NextText(input);
    const std::string value = NextText(input);
    if (!document.SetValue(path, value)) Expect(document.Text() == text);
    const std::vector<PathRow> rows = document.PathRows();
    for (std::size_t i = 0; i < std::min<std::size_t>(rows.size(), 8); ++i)
        static_cast<void>(document.SetValue(rows[i].row.key, value));
    if (document.Usable())
        Expect(BlockDocument(kind, document.Text(), Source::kPlayer).Usable().ok());
    const BlockDocument other(kind, NextText(input), Source::kFile);
    static_cast<void>(DifferencesBetween(document, other));
    const TakenValues taken = document.TakeValues(other);
    Expect(!taken.IsWhole() || (document.Usable() && other.Usable()));
    static_cast<void>(document.RefusalToSend());
}

/// The first byte says what the others are.
void Run(ByteView input) {
    if (input.empty()) return;
    const auto blocks = SettingsBlocks();
    const std::size_t choice = input.front() % (blocks.size() + 2);
    input = input.subspan(1);
    if (choice < blocks.size()) return ReadDocument(blocks[choice], input);
    if (choice == blocks.size()) return FeedStream(input);
    const auto addresses = AddressesIn(AsText(input));
    if (addresses) Expect(!addresses->empty() && std::ranges::is_sorted(*addresses));
}

}  // namespace
}  // namespace sontaro

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sontaro::Run({data, size});
    return 0;
}
