#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <thread>

#include "simulator/terminal.h"

namespace sontaro::simulator {

namespace {

/// Has reading from the background of a terminal fail instead of stopping the program.
void BlockStopping() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTTIN);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

/// Whether it is worth trying again after reading has failed so.
bool IsLater(int error) {
    return error == EAGAIN || (error == EIO && tcgetpgrp(STDIN_FILENO) != -1);
}

}  // namespace

void EnsureInput() {
    if (fcntl(STDIN_FILENO, F_GETFD) == -1) static_cast<void>(open("/dev/null", O_RDONLY));
}

std::int64_t ReadInput(std::span<char> buffer) {
    constexpr std::chrono::milliseconds kPause{500};
    BlockStopping();
    for (;;) {
        const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count >= 0) return count;
        if (IsLater(errno))
            std::this_thread::sleep_for(kPause);
        else if (errno != EINTR)
            return count;
    }
}

}  // namespace sontaro::simulator
