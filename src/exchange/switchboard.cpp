#include "exchange/switchboard.h"

namespace sontaro {

void Switchboard::Handle(WindowMessage& message) {
    if (const auto* event = std::get_if<LinkEvent>(&message.record)) {
        reassembly_.Handle(*event);
        if (event->code == LinkCode::kReceiveEnded)
            router_.LinkEnded({event->ip, event->port, event->deviceTag}, event->connection);
    } else if (auto* request = std::get_if<SendRequest>(&message.record)) {
        links_.Submit(*request);
    }
}

void Switchboard::SendPacket(const Target& target, const DevicePacket& packet) {
    SendRequest request{{target}, std::make_shared<const Bytes>(packet.Serialize())};
    links_.Submit(request);
}

}  // namespace sontaro
