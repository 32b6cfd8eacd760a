// What a player is asked before its control protocol.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "settings/settings_run.h"

namespace sontaro {

/// Who opens the editor decides how it asks for the names that a player has.
enum class ProtocolVariant : std::uint16_t { kCurrent = 0, kOlder = 1 };

/// Asks for both parts of a player's data, for its names, and for its control protocol, each when
/// the one before has been answered. In the older form for the names and the protocol alone.
class AskingChain {
   public:
    enum class Step { kData, kSecondPart, kNames, kProtocol };

    explicit AskingChain(ProtocolVariant variant) : variant_(variant) {}

    /// Begins anew; `ended` is told how the question for the protocol ended, or the one that broke
    /// the chain.
    void Start(AskCall ask, Conversation::EndedCall ended);

    /// What is being asked for.
    [[nodiscard]] Step CurrentStep() const { return step_; }
    /// The names that the player has sent last; kept for later use, as are its two parts of data.
    [[nodiscard]] const std::vector<std::string>& Names() const { return names_; }
    [[nodiscard]] const std::array<Bytes, 2>& PlayerData() const { return playerData_; }

   private:
    void Ask(Step step);
    [[nodiscard]] Request RequestOf(Step step) const;
    void Take(Ended& ended);

    const ProtocolVariant variant_;
    AskCall ask_;
    Conversation::EndedCall ended_;
    Step step_ = Step::kData;
    std::array<Bytes, 2> playerData_;
    std::vector<std::string> names_;
};

}  // namespace sontaro
