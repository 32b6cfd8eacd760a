#include "session/packet_stream.h"

#include <algorithm>
#include <utility>

namespace sontaro {

namespace {

/// Whether a packet may begin like this: the magic and a command other than 0, as far as they are
/// there.
bool MayBeginPacket(ByteView bytes) {
    const auto magic = EncodeHeader({});
    constexpr std::size_t kMagicSize = sizeof(PacketHeader::magic);
    const ByteView begin = bytes.first(std::min(bytes.size(), kMagicSize));
    return std::ranges::equal(begin, ByteView(magic).first(begin.size())) &&
           (bytes.size() <= kMagicSize || bytes[kMagicSize] != kCommandNone);
}

}  // namespace

LinkTrouble PacketStream::Take(ByteView piece, std::vector<DevicePacket>& packets) {
    while (trouble_ == LinkTrouble::kNone && !piece.empty()) {
        const std::size_t count = std::min(piece.size(), wanted_ - collected_.size());
        collected_.insert(collected_.end(), piece.begin(),
                          piece.begin() + static_cast<std::ptrdiff_t>(count));
        piece = piece.subspan(count);
        if (!header_) trouble_ = TakeHeader();
        if (!header_ || collected_.size() < wanted_) continue;
        packets.push_back({*header_, std::exchange(collected_, {})});
        header_.reset();
        wanted_ = kHeaderSize;
    }
    return trouble_;
}

/// Looks at what there is of a header, which becomes one once it is whole.
LinkTrouble PacketStream::TakeHeader() {
    if (!MayBeginPacket(collected_)) return LinkTrouble::kGarbage;
    if (collected_.size() < kHeaderSize) return LinkTrouble::kNone;
    const PacketHeader header = DecodeHeader(collected_);
    if (header.payloadLength > kLongestPayload) return LinkTrouble::kTooLong;
    header_ = header;
    wanted_ = header.payloadLength;
    collected_.clear();
    return LinkTrouble::kNone;
}

}  // namespace sontaro
