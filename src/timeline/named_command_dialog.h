// The choice of a command by its name.
#pragma once

#include "timeline/command_names.h"

class wxWindow;

namespace sontaro {

/// Control numbers of the dialog, besides OK and Cancel.
inline constexpr int kNamedCommandFilter = 3201;
inline constexpr int kNamedCommandList = 3202;
inline constexpr int kNamesOfPlayer = 3203;
inline constexpr int kNamesOfFile = 3204;

/// Shows the named commands, modally; asks the player for them when nothing has been asked yet.
/// None when the user leaves without OK.
[[nodiscard]] std::optional<NamedCommand> AskForNamedCommand(wxWindow* parent, CommandNames& names,
                                                             Prompts& prompts);

}  // namespace sontaro
