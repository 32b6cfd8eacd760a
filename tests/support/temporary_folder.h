// A folder that goes with the test.
#pragma once

#include <atomic>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "base/path_text.h"
#include "support/platform.h"

namespace sontaro::test {

/// Its name is one that no code page but UTF-8 has whole: every path in a test meets it.
class TemporaryFolder {
   public:
    TemporaryFolder() {
        static std::atomic<int> number = 0;
        const std::string name = "sontaro-测试é-" + std::to_string(ProcessNumber()) + "-";
        path_ =
            std::filesystem::temp_directory_path() / PathOfText(name + std::to_string(number++));
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~TemporaryFolder() {
        std::error_code leftBehind;
        std::filesystem::remove_all(path_, leftBehind);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] std::filesystem::path operator/(const std::string& name) const {
        return path_ / PathOfText(name);
    }
    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

    /// Writes a file, in folders that need not exist, and returns its path.
    std::filesystem::path Write(const std::string& name, const std::string& content) const {
        std::filesystem::path path = *this / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
    [[nodiscard]] std::string Read(const std::string& name) const {
        std::ostringstream content;
        content << std::ifstream(*this / name, std::ios::binary).rdbuf();
        return content.str();
    }

   private:
    std::filesystem::path path_;
};

}  // namespace sontaro::test
