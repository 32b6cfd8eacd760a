#include "simulator/terminal.h"

#include <array>
#include <mutex>
#include <string>
#include <thread>

namespace sontaro::simulator {

struct Terminal::Gate {
    std::mutex mutex;
    LineHandler handle;  // empty: the terminal is gone

    void Read();
    void HandOver(std::string& line);
};

Terminal::Terminal(LineHandler handle) : gate_(std::make_shared<Gate>()) {
    gate_->handle = std::move(handle);
    std::thread([gate = gate_] { gate->Read(); }).detach();
}

Terminal::~Terminal() {
    const std::lock_guard lock(gate_->mutex);
    gate_->handle = nullptr;
}

void Terminal::Gate::Read() {
    constexpr std::size_t kBufferSize = 0x1000;
    constexpr std::size_t kLongestLine = 0x10000;
    std::array<char, kBufferSize> buffer{};
    std::string line;
    for (auto count = ReadInput(buffer); count > 0; count = ReadInput(buffer)) {
        for (const char character : std::span(buffer).first(static_cast<std::size_t>(count))) {
            if (character == '\n')
                HandOver(line);
            else if (line.size() < kLongestLine)
                line += character;
        }
    }
    HandOver(line);
}

void Terminal::Gate::HandOver(std::string& line) {
    const std::lock_guard lock(mutex);
    if (handle) handle(line);
    line.clear();
}

}  // namespace sontaro::simulator
