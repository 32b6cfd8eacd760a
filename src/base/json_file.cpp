#include "base/json_file.h"

#include "base/file.h"
#include "base/json.h"

namespace sontaro {

namespace fs = std::filesystem;

JsonFile::JsonFile(fs::path path) : path_(std::move(path)) {
    std::error_code error;
    if (!fs::exists(path_, error)) return;
    const Result<std::string> text = ReadFile(path_);
    const Result<Json::Value> value = text ? ParseJson(*text) : Error{text.reason()};
    damaged_ = !value || !value->isObject();
    if (!damaged_) root_ = *value;
}

Status JsonFile::Save() {
    if (damaged_) {
        fs::path aside = path_;
        aside += ".damaged";
        std::error_code error;
        fs::rename(path_, aside, error);
        if (error) return Error{error.message()};
        damaged_ = false;
    }
    return WriteFileAtomically(path_, WriteJson(root_));
}

}  // namespace sontaro
