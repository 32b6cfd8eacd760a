// Every key of the control protocol, with all that is to be said of it.
#pragma once

#include "controlprotocol/control_protocol_document.h"
#include "settings/record_schema.h"

namespace sontaro {

[[nodiscard]] const RecordSchema<ControlProtocolModel>& ControlProtocolSchema();

}  // namespace sontaro
