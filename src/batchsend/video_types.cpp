#include "batchsend/video_types.h"

#include <algorithm>

#include "base/file.h"
#include "base/json.h"
#include "settings/record_table.h"

namespace sontaro {

namespace fs = std::filesystem;

namespace {

constexpr const char* kVideoType = "VideoType";
constexpr const char* kTypeName = "TypeName";

struct NamedType {
    std::string name;
};
struct NamedTypes {
    std::array<NamedType, kVideoCategories> types;
};

constexpr auto kType = Rows<NamedType>({
    {kTypeName, kAt<&NamedType::name>},
});
constexpr auto kDocument = Rows<NamedTypes>({
    {kVideoType, kRecordAt<&NamedTypes::types, kType>},
});

void DropNames(Json::Value& document) {
    Json::Value& types = document[kVideoType];
    if (!types.isArray()) return;
    for (Json::Value& type : types)
        if (type.isObject()) type.removeMember(kTypeName);
}

std::string Below(const std::string& path, const std::string& key) {
    return path.empty() ? key : path + '/' + key;
}

// NOLINTNEXTLINE(misc-no-recursion): values hold values, which the reader limits
void Compare(const Json::Value& before, const Json::Value& after, const std::string& path,
             std::vector<std::string>& differences) {
    if (before == after) return;
    if (before.isObject() && after.isObject()) {
        for (const std::string& key : before.getMemberNames())
            Compare(before[key], after[key], Below(path, key), differences);
        for (const std::string& key : after.getMemberNames())
            if (!before.isMember(key)) differences.push_back(Below(path, key));
    } else if (before.isArray() && after.isArray() && before.size() == after.size()) {
        for (Json::ArrayIndex i = 0; i < before.size(); ++i)
            Compare(before[i], after[i], Below(path, std::to_string(i)), differences);
    } else {
        differences.push_back(path);
    }
}

}  // namespace

Result<CategoryNames> ReadCategoryNames(std::string_view text) {
    Result<Json::Value> json = ParseJson(text);
    if (!json) return Error{json.reason()};
    if (!json->isObject() || !(*json)[kVideoType].isArray())
        return Error{"there are no video categories in it"};
    NamedTypes document;
    kSchemaOf<kDocument>.Read(std::move(*json), Source::kPlayer, document);
    CategoryNames names;
    std::ranges::transform(document.types, names.begin(), &NamedType::name);
    return names;
}

std::string VideoTypeDocument(const CategoryNames& names) {
    NamedTypes document;
    std::ranges::transform(names, document.types.begin(),
                           [](const std::string& name) { return NamedType{name}; });
    return WriteJson(kSchemaOf<kDocument>.ToJson(document));
}

Result<VideoTypeFile> KeepVideoTypes(const fs::path& path, const VideoSet& set,
                                     const std::optional<CategoryNames>& players, bool isWanted) {
    if (isWanted && players) {
        const Status written = WriteFileAtomically(path, VideoTypeDocument(NamesIn(set, *players)));
        if (!written) return Error{written.reason()};
        return VideoTypeFile::kWritten;
    }
    std::error_code error;
    fs::remove(path, error);
    if (error) return Error{error.message()};
    return isWanted ? VideoTypeFile::kNamesUnknown : VideoTypeFile::kRemoved;
}

Result<std::vector<std::string>> DifferencesBesidesNames(std::string_view before,
                                                         std::string_view after) {
    Result<Json::Value> first = ParseJson(before);
    Result<Json::Value> second = ParseJson(after);
    if (!first || !first->isObject() || !second || !second->isObject())
        return Error{"a control protocol is no JSON object"};
    DropNames(*first);
    DropNames(*second);
    std::vector<std::string> differences;
    Compare(*first, *second, "", differences);
    return differences;
}

}  // namespace sontaro
