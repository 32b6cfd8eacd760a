// A small JSON document of the user's that Sontaro keeps.
#pragma once

#include <json/value.h>

#include <filesystem>

#include "base/result.h"

namespace sontaro {

/// A JSON object in a file: read once, written back whole after a change. What Sontaro does not
/// know in it is kept. User-interface thread.
class JsonFile {
   public:
    /// Reads the file. Without a file, or with one that is no JSON object, the object is empty.
    explicit JsonFile(std::filesystem::path path);

    /// The object; change it, then `Save`.
    [[nodiscard]] Json::Value& Root() { return root_; }
    [[nodiscard]] const Json::Value& Root() const { return root_; }

    /// Writes the object. A file that could not be understood when it was read is first renamed
    /// (".damaged" appended), so that nothing in it is lost.
    [[nodiscard]] Status Save();

   private:
    std::filesystem::path path_;
    Json::Value root_{Json::objectValue};
    bool damaged_ = false;
};

}  // namespace sontaro
