// Who may press the program's controls in place of a user.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "base/prompts.h"
#include "simulator/player_group.h"

namespace sontaro {

/// A walk through the running program. User-interface thread.
class Walk {
   public:
    virtual ~Walk() = default;
    /// The boxes of a program that walks by itself.
    [[nodiscard]] virtual std::unique_ptr<Prompts> MakePrompts() = 0;
    /// Sets out, once the main window is open; the walk ends the program. `players` outlive it.
    virtual void Start(simulator::PlayerGroup& players) = 0;
    /// Whether it has come to its end.
    [[nodiscard]] virtual bool Succeeded() const = 0;
};

/// Makes the walk that leaves its pictures in a folder.
using WalkMaker = std::function<std::unique_ptr<Walk>(const std::filesystem::path& folder)>;

}  // namespace sontaro
