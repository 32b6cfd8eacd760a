// A player that answers what the test says, over connections that the test counts.
#pragma once

#include <fmt/format.h>

#include <string>

#include "exchange/conversation.h"
#include "support/literals.h"
#include "support/manual_timers.h"

namespace sontaro::test {

/// Writes down what is sent as "command.sub-command.argument; ", with "q" and the qualifier; a
/// request to close all links as "close; ".
class FakePlayerChannel final : public PlayerChannel {
   public:
    Sending Send(const Target& player, const SharedPacket& packet, Boxes boxes) override {
        lastBoxes = boxes;
        whileSending();
        if (refusal) return *refusal;
        if (packet->empty()) {
            log += "close; ";
            return NotSent::kNobodyThere;
        }
        const PacketHeader header = DecodeHeader(*packet);
        payload = std::string(AsText(ByteView(*packet).subspan(kHeaderSize)));
        to = player;
        sent(header);
        return Sending::Over(connection);
    }
    std::string Log() { return std::exchange(log, ""); }

    std::string log;
    std::string payload;  ///< of the last packet
    Target to;
    ConnectionNumber connection = 1;
    std::optional<NotSent> refusal;
    Boxes lastBoxes{};
    std::function<void()> whileSending = [] {};
    std::function<void(const PacketHeader&)> sent = [this](const PacketHeader& header) {
        log += fmt::format("{}.{}.{}{}; ", header.command, header.subCommand, header.argument,
                           header.qualifier == 0 ? "" : "q" + std::to_string(header.qualifier));
    };
};

/// What a conversation stands on, and the answers of its player.
struct ExchangeBench {
    /// A message as the main window forwards it.
    [[nodiscard]] WindowMessage Message(MessageId id, std::uint8_t command, std::uint32_t selector,
                                        std::string_view payload = {}) const {
        Origin origin{player, DevicePacket::Request(command, selector, payload).header,
                      channel.connection};
        return {id, origin.header.argument, ReplyRecord{ToBytes(payload)}, 0, origin};
    }
    Boxes Report(ExchangeNews::Kind kind, std::uint8_t command = 0, std::uint16_t block = 0) {
        Origin origin{player, {}, channel.connection};
        origin.header.command = command;
        origin.header.subCommand = block;
        return hub.Report({kind, origin});
    }
    /// The connection ends; the next one has another number.
    void LoseLink() {
        Report(ExchangeNews::Kind::kLinkEnded);
        ++channel.connection;
    }

    Target player{"127.0.0.2", 9000, 0};
    FakePlayerChannel channel;
    ExchangeHub hub;
    ManualTimers timers;
    ExchangeServices exchange{channel, hub, timers};
};

}  // namespace sontaro::test
