#include "controlprotocol/serial_learner.h"

#include <algorithm>

#include "base/hex_command.h"

namespace sontaro {

SerialLineState SerialLearner::Hear(const SerialData& serial, const LearningChance& chance) const {
    using Kind = SerialLineState::Kind;
    const std::size_t count = std::min<std::size_t>(serial.count, serial.bytes.size());
    std::string command = HexCommandOf(ByteView(serial.bytes).first(count));
    const Kind kind = chance.tooLate     ? Kind::kTooLate
                      : !enabled_        ? Kind::kNotLearning
                      : !chance.category ? Kind::kNobodys
                      : chance.editing   ? Kind::kEditing
                                         : Kind::kLearned;
    return {kind, std::move(command), chance.category.value_or(0)};
}

}  // namespace sontaro
