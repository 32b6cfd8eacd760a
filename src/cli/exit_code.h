// What sontaro-cli tells the shell at its end.
#pragma once

namespace sontaro::cli {

enum ExitCode : int {
    kAllWell = 0,
    kSomeFailed =
        1,  ///< some player failed; of `compare` and `check`: something differs or is faulty
    kWrongUse = 2,
    kNobodyFound = 3,
    kTrouble = 4,  ///< of `compare` and `check` alone: they cannot tell
    kInterrupted = 130,
    kOutputClosed = 141,  ///< nobody reads the output any more; as shells tell it of other programs
};

}  // namespace sontaro::cli
