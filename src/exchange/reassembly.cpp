#include "exchange/reassembly.h"

namespace sontaro {

namespace {

/// Whether a packet begins here: the magic and a command other than 0.
bool StartsPacket(ByteView chunk) {
    return chunk.size() > 4 && chunk[0] == 0x5A && chunk[1] == 0x5A && chunk[2] == 0x5A &&
           chunk[3] == 0xA5 && chunk[4] != 0;
}

}  // namespace

void Reassembly::Handle(const LinkEvent& event) {
    const auto code = static_cast<std::uint16_t>(event.code);
    if (event.code == LinkCode::kReceived) {
        if (Completes(event.bytes)) Deliver(event);
    } else if (code >= 1 && code <= 8) {
        Discard();
    }
}

/// Whether a packet is whole with this chunk. While a whole one is being handled, chunks that start
/// none are dropped.
bool Reassembly::Completes(ByteView chunk) {
    if (StartsPacket(chunk)) {
        received_ = 0;
        payload_.clear();
        state_ = State::kHeader;
    }
    if (state_ == State::kHeader)
        TakeHeader(chunk);
    else if (state_ == State::kPayload)
        TakePayload(chunk);
    else
        return false;
    return state_ == State::kComplete;
}

void Reassembly::TakeHeader(ByteView chunk) {
    if (chunk.size() < kHeaderSize) return;
    header_ = DecodeHeader(chunk);
    Append(chunk.subspan(kHeaderSize));
    state_ = received_ == header_.payloadLength ? State::kComplete : State::kPayload;
}

void Reassembly::TakePayload(ByteView chunk) {
    if (received_ > header_.payloadLength) {
        Discard();  // an overshooting chunk was kept until now; it and this one are lost
        return;
    }
    Append(chunk);
    if (received_ == header_.payloadLength) state_ = State::kComplete;
}

/// Memory grows with what arrives, never by what a header announces.
void Reassembly::Append(ByteView chunk) {
    received_ += chunk.size();
    if (received_ <= kLargestPayload) payload_.insert(payload_.end(), chunk.begin(), chunk.end());
}

void Reassembly::Discard() {
    state_ = State::kIdle;
    received_ = 0;
    payload_.clear();
}

void Reassembly::Deliver(const LinkEvent& event) {
    Bytes payload = std::move(payload_);  // the handler may let other chunks in
    if (payload.size() == received_)
        handler_({header_, payload, {event.ip, event.port, event.deviceTag}, event.connection});
    Discard();
    payload.clear();
    payload_ = std::move(payload);  // keeps its memory for the next packet
}

}  // namespace sontaro
