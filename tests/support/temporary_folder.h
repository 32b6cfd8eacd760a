// A folder that goes with the test.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace sontaro::test {

class TemporaryFolder {
   public:
    TemporaryFolder() {
        std::string name = std::filesystem::temp_directory_path() / "sontaro-test-XXXXXX";
        path_ = mkdtemp(name.data());
    }
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] std::filesystem::path operator/(const std::string& name) const {
        return path_ / name;
    }
    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

    /// Writes a file, in folders that need not exist, and returns its path.
    std::filesystem::path Write(const std::string& name, const std::string& content) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name, std::ios::binary) << content;
        return path_ / name;
    }
    [[nodiscard]] std::string Read(const std::string& name) const {
        std::ostringstream content;
        content << std::ifstream(path_ / name, std::ios::binary).rdbuf();
        return content.str();
    }

   private:
    std::filesystem::path path_;
};

}  // namespace sontaro::test
