// Documents that several figures are measured with.
#pragma once

#include <fmt/core.h>

#include "controlprotocol/control_protocol_document.h"

namespace sontaro::bench {

/// A control protocol with something in every slot.
inline ControlProtocolModel FullControlProtocol() {
    ControlProtocolModel model;
    const auto fill = [](auto& slots) {
        for (int number = 1; auto& slot : slots) {
            slot.name = fmt::format("迪斯科 {}", number);
            slot.sendCommand = fmt::format("A501{:02X}", number);
            slot.receiveCommand = fmt::format("5A01{:02X}FF", number++);
        }
    };
    fill(model.videoTypes);
    fill(model.audioTypes);
    fill(model.layouts);
    for (int number = 1; Projector & projector : model.projectors) {
        projector.ip = fmt::format("192.168.84.{}", number++);
        projector.port = 4352;
        for (ProjectorCommands& commands : projector.commands) commands = {"02505731", "02505730"};
    }
    return model;
}

}  // namespace sontaro::bench
