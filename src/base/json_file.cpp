#include "base/json_file.h"

#include "base/file.h"
#include "base/file_lock.h"
#include "base/json.h"
#include "base/path_text.h"

namespace sontaro {

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::seconds kPatience{1};

fs::path WithEnding(fs::path path, const char* ending) {
    path += ending;
    return path;
}

}  // namespace

JsonFile::JsonFile(fs::path path) : path_(std::move(path)) { Reload(); }

void JsonFile::Reload() {
    std::error_code error;
    damaged_ = false;
    if (!fs::exists(path_, error)) return;
    const Result<std::string> text = ReadFile(path_);
    const Result<Json::Value> value = text ? ParseJson(*text) : Error{text.reason()};
    damaged_ = !value || !value->isObject();
    if (!damaged_) root_ = *value;
}

Status JsonFile::Update(const std::function<void(Json::Value&)>& change) {
    std::error_code error;
    fs::create_directories(path_.parent_path(), error);
    // The file itself is replaced with every change: a lock on it would go with the old one.
    const auto lock = FileLock::Take(WithEnding(path_, ".lock"), kPatience);
    if (!lock) return Error{lock.reason()};
    if (!*lock) return Error{TextOfPath(path_.filename()) + " is in use"};
    Reload();
    if (Status aside = SetDamagedAside(); !aside) return aside;
    Json::Value changed = root_;
    change(changed);
    Status written = WriteFileAtomically(path_, WriteJson(changed));
    if (written) root_ = std::move(changed);
    return written;
}

Status JsonFile::SetDamagedAside() {
    if (!damaged_) return Done{};
    std::error_code error;
    fs::rename(path_, WithEnding(path_, ".damaged"), error);
    if (error) return Error{error.message()};
    damaged_ = false;
    return Done{};
}

}  // namespace sontaro
