#include "bench/program.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "base/folders.h"

namespace sontaro::bench {

namespace {

/// Nothing at the standard input, and nowhere for the standard output to go.
class NoTerminal {
   public:
    NoTerminal() {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, kNowhere, O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, kNowhere, O_WRONLY, 0);
    }
    ~NoTerminal() { posix_spawn_file_actions_destroy(&actions_); }
    NoTerminal(const NoTerminal&) = delete;
    NoTerminal& operator=(const NoTerminal&) = delete;

    [[nodiscard]] const posix_spawn_file_actions_t* Actions() const { return &actions_; }

   private:
    static constexpr const char* kNowhere = "/dev/null";

    posix_spawn_file_actions_t actions_;
};

}  // namespace

double MegabytesOf(const std::string& process, std::string_view field) {
    std::ifstream status("/proc/" + process + "/status");
    for (std::string word; status >> word;) {
        double kibibytes = 0;
        if (word.starts_with(field) && status >> kibibytes) return kibibytes / 1024;
    }
    throw std::runtime_error("a program ended by itself");
}

Program::Program(const std::vector<std::string>& command) {
    static const std::filesystem::path runtimeFolder = RuntimeFolder();
    std::string session = runtimeFolder / "session-XXXXXX";
    if (!mkdtemp(session.data())) throw std::runtime_error("no folder for a session");
    session_ = session;
    setenv("XDG_RUNTIME_DIR", session.c_str(), 1);
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    const NoTerminal noTerminal;
    if (posix_spawn(&id_, arguments[0], noTerminal.Actions(), nullptr, arguments.data(), environ) !=
        0)
        throw std::runtime_error("cannot start " + command[0]);
}

Program::~Program() {
    kill(id_, SIGTERM);
    waitpid(id_, nullptr, 0);
    std::error_code leftBehind;
    std::filesystem::remove_all(session_, leftBehind);
}

long Program::UsedTicks() const {
    std::ifstream stat("/proc/" + std::to_string(id_) + "/stat");
    std::string word;
    for (int i = 0; i < 13; ++i) stat >> word;
    long user = 0;
    long system = 0;
    stat >> user >> system;
    return user + system;
}

}  // namespace sontaro::bench
