// Programs that run beside a measurement.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace sontaro::bench {

/// Megabytes of memory that a process ("self" or its number) has by `field`, such as "VmRSS", of
/// its state. Fails when the process has ended.
[[nodiscard]] double MegabytesOf(const std::string& process, std::string_view field);

/// A program that runs as long as this object lives, in a session of its own: it finds nothing
/// that another one has left behind. Its input is empty, and what it prints is lost.
class Program {
   public:
    explicit Program(const std::vector<std::string>& command);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Processor time that it has used, in clock ticks.
    [[nodiscard]] long UsedTicks() const;
    [[nodiscard]] double ResidentMegabytes() const {
        return MegabytesOf(std::to_string(id_), "VmRSS");
    }

   private:
    pid_t id_ = 0;
    std::filesystem::path session_;
};

}  // namespace sontaro::bench
