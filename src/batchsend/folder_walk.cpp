#include "batchsend/folder_walk.h"

#include <algorithm>
#include <atomic>
#include <tuple>
#include <utility>

#include "base/filter_text.h"
#include "base/folders.h"
#include "base/path_text.h"

namespace sontaro {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kDigits = "0123456789";

bool IsDigit(char character) { return kDigits.find(character) != std::string_view::npos; }

/// Takes the number off the start of a text: without its leading zeros, of any length.
std::string_view TakeNumber(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_not_of(kDigits), text.size());
    std::string_view number = text.substr(0, end);
    text.remove_prefix(end);
    number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
    return number;
}

std::string_view TakeCharacter(std::string_view& text) {
    const std::string_view character = text.substr(0, 1);
    text.remove_prefix(1);
    return character;
}

/// What lies in a folder comes before what lies in the folders below it.
bool IsAheadOf(const FoundFile& file, const FoundFile& other) {
    const auto key = [](const FoundFile& one) {
        return std::pair(TextOfPath(one.path.parent_path()), TextOfPath(one.path.filename()));
    };
    if (file.category != other.category) return ComesBefore(file.category, other.category);
    const auto [folder, name] = key(file);
    const auto [otherFolder, otherName] = key(other);
    return folder == otherFolder ? ComesBefore(name, otherName) : ComesBefore(folder, otherFolder);
}

}  // namespace

/// What a thread has for itself, but for the mark by which it is given up.
struct FolderWalk::Search {
    /// Some systems have names that are no text.
    void Run() {
        for (const fs::path& path : chosen) {
            try {
                LookAt(path);
            } catch (const fs::filesystem_error&) {
                files.unreadable.push_back(TextOfPath(path));
            }
        }
    }
    void LookAt(const fs::path& path) {
        std::error_code error;
        const fs::file_status status = fs::status(path, error);
        if (fs::is_directory(status)) {
            const std::size_t first = files.files.size();
            Enter(path, "");
            std::sort(files.files.begin() + static_cast<std::ptrdiff_t>(first), files.files.end(),
                      IsAheadOf);
        } else if (fs::is_regular_file(status)) {
            Add(path, "");
        } else {
            files.unreadable.push_back(TextOfPath(path));
        }
    }
    // NOLINTNEXTLINE(misc-no-recursion): folders lie within folders, and links are not followed
    void Enter(const fs::path& folder, const std::string& category) {
        std::error_code error;
        fs::directory_iterator entry(folder, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            if (isGivenUp || !files.isWhole) return;
            if (IsHidden(entry->path())) continue;
            std::error_code odd;
            if (entry->is_directory(odd)) {
                if (IsLink(entry->path())) continue;
                const bool isTop = category.empty();
                Enter(entry->path(), isTop ? TextOfPath(entry->path().filename()) : category);
            } else if (entry->is_regular_file(odd)) {
                Add(entry->path(), category);
            }
        }
        if (error) files.unreadable.push_back(TextOfPath(folder));
    }
    void Add(const fs::path& file, const std::string& category) {
        files.isWhole = files.files.size() < kMostFiles;
        if (files.isWhole) files.files.push_back({file, category});
    }

    std::vector<fs::path> chosen;
    std::function<void(FoundFiles)> found;
    FoundFiles files;
    std::atomic<bool> isGivenUp = false;
};

FolderWalk::FolderWalk(UiThread& owner, ThreadGroup& threads)
    : messenger_(std::make_shared<Messenger>(owner)), hasThread_(messenger_->Start(threads)) {}

FolderWalk::~FolderWalk() {
    GiveUp();
    messenger_->Leave();
}

void FolderWalk::Begin(std::vector<fs::path> chosen, std::function<void(FoundFiles)> found) {
    auto search = std::make_shared<Search>();
    search->chosen = std::move(chosen);
    search->found = std::move(found);
    searches_.push_back(search);
    const bool isStarted = hasThread_ && StartUnawaited([this, search, messenger = messenger_] {
                               search->Run();
                               messenger->Post([this, search] {
                                   if (!search->isGivenUp)
                                       Tell(search);  // else this object may have gone
                               });
                           });
    if (isStarted) return;
    for (const fs::path& path : search->chosen)
        search->files.unreadable.push_back(TextOfPath(path));
    Tell(search);
}

void FolderWalk::Tell(const std::shared_ptr<Search>& search) {
    std::erase(searches_, search);
    search->found(std::move(search->files));
}

void FolderWalk::GiveUp() {
    for (const auto& search : std::exchange(searches_, {})) search->isGivenUp = true;
}

bool ComesBefore(std::string_view name, std::string_view other) {
    const std::string lower = LowerCase(std::string(name));
    const std::string lowerOther = LowerCase(std::string(other));
    std::string_view rest = lower;
    std::string_view otherRest = lowerOther;
    while (!rest.empty() && !otherRest.empty()) {
        const bool areNumbers = IsDigit(rest.front()) && IsDigit(otherRest.front());
        const std::string_view part = areNumbers ? TakeNumber(rest) : TakeCharacter(rest);
        const std::string_view otherPart =
            areNumbers ? TakeNumber(otherRest) : TakeCharacter(otherRest);
        if (part.size() != otherPart.size()) return part.size() < otherPart.size();
        if (part != otherPart) return part < otherPart;
    }
    if (rest.empty() != otherRest.empty()) return rest.empty();
    return name < other;  // they differ in zeros or letters' case alone
}

}  // namespace sontaro
