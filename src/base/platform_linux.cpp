// What base/ asks of the operating system, on Linux.
#include <iconv.h>
#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "base/encoding.h"
#include "base/folders.h"
#include "base/local_text.h"
#include "base/path_text.h"
#include "base/program_arguments.h"
#include "base/system_version.h"

namespace sontaro {

namespace {

namespace fs = std::filesystem;

std::string Environment(const char* name) {
    const char* value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nothing sets one
    return value ? value : "";
}

fs::path HomeFolder() {
    if (const std::string home = Environment("HOME"); !home.empty()) return home;
    const passwd* user = getpwuid(getuid());  // NOLINT(concurrency-mt-unsafe): the only call
    return user ? user->pw_dir : "/";
}

/// An XDG base directory: the variable when it is an absolute path, else `fallback` under home.
fs::path XdgFolder(const char* variable, const char* fallback) {
    const fs::path named = Environment(variable);
    return named.is_absolute() ? named : HomeFolder() / fallback;
}

/// Turns UTF-8 into GBK with the euro sign at 0x80, as code page 936 is. A system without that code
/// page turns nothing.
class GbkConverter {
   public:
    GbkConverter() : converter_(iconv_open("GBK", "UTF-8")) {}
    ~GbkConverter() {
        if (IsOpen()) iconv_close(converter_);
    }
    GbkConverter(const GbkConverter&) = delete;
    GbkConverter& operator=(const GbkConverter&) = delete;

    [[nodiscard]] std::string Convert(std::string text) const {
        std::array<char, 16> converted{};
        char* from = text.data();
        char* into = converted.data();
        std::size_t fromLeft = text.size();
        std::size_t intoLeft = converted.size();
        if (!IsOpen() || iconv(converter_, &from, &fromLeft, &into, &intoLeft) != 0) return "";
        return {converted.data(), into};
    }

   private:
    [[nodiscard]] bool IsOpen() const { return reinterpret_cast<std::intptr_t>(converter_) != -1; }

    iconv_t converter_;
};

}  // namespace

std::string LegacyCharacter(std::string_view character) {
    thread_local const GbkConverter converter;
    return converter.Convert(std::string(character));
}

Language SystemLanguage() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const std::string value = Environment(name); !value.empty())
            return LanguageOfLocale(value);
    }
    return Language::kEnglish;
}

SystemVersion ReadSystemVersion() {
    utsname system{};
    SystemVersion version;
    if (uname(&system) == 0) {
        std::istringstream release(system.release);
        char dot = 0;
        release >> version.major >> dot >> version.minor >> dot >> version.build;
    }
    return version;
}

std::vector<std::string> ProgramArguments() {
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    std::string argument;
    std::getline(file, argument, '\0');  // the program's name
    std::vector<std::string> arguments;
    while (std::getline(file, argument, '\0')) arguments.push_back(argument);
    return arguments;
}

std::vector<std::string> ProgramArguments(int count, char** values) {
    return count > 0 ? std::vector<std::string>(values + 1, values + count)
                     : std::vector<std::string>();
}

fs::path ExecutableFolder() {
    std::error_code error;
    const fs::path executable = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::current_path(error) : executable.parent_path();
}

fs::path UserDataFolder() { return XdgFolder("XDG_DATA_HOME", ".local/share") / "sontaro"; }

fs::path ConfigFolder() { return XdgFolder("XDG_CONFIG_HOME", ".config") / "sontaro"; }

fs::path RuntimeFolder() { return XdgFolder("XDG_RUNTIME_DIR", ".cache"); }

bool IsWritableFolder(const fs::path& folder) { return access(folder.c_str(), W_OK | X_OK) == 0; }

bool IsHidden(const fs::path& path) { return TextOfPath(path.filename()).starts_with('.'); }

bool IsLink(const fs::path& path) {
    std::error_code error;
    return fs::is_symlink(path, error);
}

}  // namespace sontaro
