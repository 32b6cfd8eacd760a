// A small JSON document of the user's that Sontaro keeps.
#pragma once

#include <json/value.h>

#include <filesystem>
#include <functional>

#include "base/result.h"

namespace sontaro {

/// A JSON object in a file that other processes may be keeping, too: every change is made to what
/// stands in the file at that moment. What Sontaro does not know in it is kept. User-interface
/// thread.
class JsonFile {
   public:
    /// Reads the file. Without a file, or with one that is no JSON object, the object is empty.
    explicit JsonFile(std::filesystem::path path);

    /// The object as it was last read or written.
    [[nodiscard]] const Json::Value& Root() const { return root_; }

    /// Reads the file again. Without a file, or with one that is no JSON object, the object stays
    /// as it is.
    void Reload();

    /// Reads the file again, has `change` alter the object and writes it, while no other process
    /// can; waits up to a second for one that does. When that fails, neither the file nor the
    /// object has changed. A file that is no JSON object is first renamed (".damaged" appended), so
    /// that nothing in it is lost.
    [[nodiscard]] Status Update(const std::function<void(Json::Value&)>& change);

   private:
    [[nodiscard]] Status SetDamagedAside();

    std::filesystem::path path_;
    Json::Value root_{Json::objectValue};
    bool damaged_ = false;  // what was last read was no JSON object
};

}  // namespace sontaro
