#include "venue/earlier_documents.h"

#include <fmt/printf.h>

#include <algorithm>
#include <functional>

#include "base/file.h"
#include "base/file_lock.h"
#include "base/folders.h"
#include "base/path_text.h"
#include "base/private_files.h"
#include "venue/folder_name.h"
#include "venue/sha256.h"
#include "venue/utc_time.h"

namespace sontaro {

namespace fs = std::filesystem;
using namespace std::chrono;

namespace {

constexpr const char* kLock = ".lock";
constexpr const char* kEnding = ".json";
constexpr const char* kNewEnding = ".new";
constexpr char kBeforeSum = '-';
constexpr seconds kPatience{1};

constexpr LocalText kInUse = {"“%s”正被另一个程序使用。", "\"%s\" is in use by another process."};
constexpr LocalText kNotKept = {"无法保存播放器现有的文档（%s）：%s",
                                "the player's present document cannot be kept (%s): %s"};
constexpr LocalText kOtherFile = {"文件“%s”已被更改。", "the file \"%s\" is not what was written."};

/// What the name of a kept document says: "20261121T203000Z-SUM.json".
struct KeptName {
    sys_seconds time;
    std::string sum;
};

std::string NameOf(sys_seconds time, const std::string& sum) {
    return TimeName(time) + kBeforeSum + sum + kEnding;
}

std::optional<KeptName> ReadName(const fs::path& file) {
    const std::string name = TextOfPath(file.filename());
    const std::size_t mark = std::min(name.find(kBeforeSum), name.size());
    const auto time = TimeOfName(name.substr(0, mark));
    if (!time || !name.ends_with(kEnding) || name.size() < mark + 1 + 2 * Sha256::kBytes)
        return std::nullopt;
    std::string sum = name.substr(mark + 1, 2 * Sha256::kBytes);
    if (!IsSha256Text(sum) || name != NameOf(*time, sum)) return std::nullopt;
    return KeptName{*time, std::move(sum)};
}

std::vector<fs::path> FoldersIn(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> folders;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code unknown;
        if (!IsLink(entry->path()) && entry->is_directory(unknown))
            folders.push_back(entry->path());
    }
    return folders;
}

/// The documents that stand in a folder, the latest first.
std::vector<EarlierDocument> DocumentsIn(const fs::path& folder) {
    std::error_code error;
    std::vector<EarlierDocument> documents;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const auto name = ReadName(entry->path());
        std::error_code unknown;
        if (!name || IsLink(entry->path()) || !entry->is_regular_file(unknown)) continue;
        const std::uintmax_t bytes = entry->file_size(unknown);
        if (!unknown) documents.push_back({entry->path(), name->time, bytes});
    }
    std::ranges::sort(documents, std::greater(), [](const EarlierDocument& document) {
        return std::pair(document.time, TextOfPath(document.file));
    });
    return documents;
}

/// What killed processes have left of documents that they were writing.
void RemoveHalfWritten(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> files;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const fs::path& file = entry->path();
        if (file.extension() == kNewEnding && IsSha256Text(TextOfPath(file.stem())))
            files.push_back(file);
    }
    for (const fs::path& file : files) fs::remove(file, error);
}

Error NotKept(const fs::path& folder, const std::string& why) {
    return {fmt::sprintf(Localized(kNotKept), TextOfPath(folder), why)};
}

/// Later than all that is kept, also after the clock has been set back.
sys_seconds TimeAfter(const std::vector<EarlierDocument>& documents, system_clock::time_point now) {
    const sys_seconds time = floor<seconds>(now);
    return documents.empty() ? time : std::max(time, documents.front().time + seconds(1));
}

}  // namespace

fs::path EarlierDocuments::FolderOf(const VenuePlayer& player,
                                    const SettingsBlockKind& kind) const {
    return folder_ / PathOfText(FolderNameOf({player.id, player.mac})) / kind.name;
}

Status EarlierDocuments::Keep(const VenuePlayer& player, const SettingsBlockKind& kind,
                              std::string_view text, system_clock::time_point now) {
    const fs::path folder = FolderOf(player, kind);
    for (const fs::path& made : {folder_, folder.parent_path(), folder})
        if (const Status done = MakePrivateFolder(made); !done) return NotKept(made, done.reason());
    const auto lock = FileLock::Take(folder_ / kLock, kPatience);
    if (!lock) return NotKept(folder_, lock.reason());
    if (!*lock) return Error{fmt::sprintf(Localized(kInUse), TextOfPath(folder_))};
    RemoveHalfWritten(folder);
    if (const Status put = Put(folder, text, now); !put) return NotKept(folder, put.reason());
    RemoveOldest(folder);
    return Done{};
}

Status EarlierDocuments::Put(const fs::path& folder, std::string_view text,
                             system_clock::time_point now) {
    const std::vector<EarlierDocument> kept = DocumentsIn(folder);
    const std::string sum = Sha256Text(text);
    const fs::path file = folder / NameOf(TimeAfter(kept, now), sum);
    const auto same = std::ranges::find_if(kept, [&](const EarlierDocument& document) {
        return ReadName(document.file)->sum == sum && document.bytes == text.size();
    });
    if (same != kept.end()) return MoveOver(same->file, file);
    const fs::path written = folder / (sum + kNewEnding);
    if (Status done = WritePrivateFile(written, text); !done) return done;
    Status moved = MoveOver(written, file);
    std::error_code leftBehind;
    if (!moved) fs::remove(written, leftBehind);
    return moved;
}

void EarlierDocuments::RemoveOldest(const fs::path& folder) const {
    std::error_code error;
    const std::vector<EarlierDocument> ofBlock = DocumentsIn(folder);
    for (std::size_t i = kMostOfBlock; i < ofBlock.size(); ++i) fs::remove(ofBlock[i].file, error);
    std::vector<EarlierDocument> all;
    for (const fs::path& player : FoldersIn(folder_))
        for (const fs::path& block : FoldersIn(player))
            std::ranges::move(DocumentsIn(block), std::back_inserter(all));
    std::ranges::sort(all, std::greater(), &EarlierDocument::time);
    std::uint64_t bytes = 0;
    for (const EarlierDocument& document : all) {
        bytes += document.bytes;
        if (bytes > mostBytes_ && document.file != ofBlock.front().file)
            fs::remove(document.file, error);
    }
}

std::vector<EarlierDocument> EarlierDocuments::List(const VenuePlayer& player,
                                                    const SettingsBlockKind& kind) const {
    return DocumentsIn(FolderOf(player, kind));
}

Result<std::string> EarlierDocuments::Read(const EarlierDocument& document) {
    const auto name = ReadName(document.file);
    const auto limit = static_cast<std::size_t>(document.bytes) + 1;
    Result<std::string> text = ReadFile(document.file, limit);
    if (text && (!name || Sha256Text(*text) != name->sum))
        return Error{fmt::sprintf(Localized(kOtherFile), TextOfPath(document.file))};
    return text;
}

Result<BlockComparison> EarlierDocuments::ChangesSince(const EarlierDocument& document,
                                                       const SettingsBlockKind& kind,
                                                       const std::string& later) {
    const Result<std::string> text = Read(document);
    if (!text) return Error{text.reason()};
    return CompareTexts(kind, *text, later);
}

VenuePlayer OwnerOfDocuments(const DeviceRecord& player) {
    VenuePlayer owner = VenuePlayerOf(player);
    if (owner.id.empty()) owner.id = player.ip;
    return owner;
}

fs::path EarlierDocumentsFolder(const fs::path& data) { return data / "earlier"; }

}  // namespace sontaro
