#include <windows.h>

#include "simulator/terminal.h"

namespace sontaro::simulator {

void EnsureInput() {}  // handles are not numbered anew here

std::int64_t ReadInput(std::span<char> buffer) {
    DWORD count = 0;
    const BOOL read = ReadFile(GetStdHandle(STD_INPUT_HANDLE), buffer.data(),
                               static_cast<DWORD>(buffer.size()), &count, nullptr);
    return read ? static_cast<std::int64_t>(count) : -1;
}

}  // namespace sontaro::simulator
