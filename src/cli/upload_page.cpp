#include "cli/upload_page.h"

#include <fmt/printf.h>

#include <thread>

#include "base/path_text.h"

namespace sontaro::cli {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kStep{200};  // in which progress is told, and the wish to end is heard
constexpr double kWhole = 100;

constexpr LocalText kUnreadable = {"无法读取 %s。", "%s cannot be read."};
constexpr LocalText kTooMany = {"文件太多（超过 %d 个）。",
                                "there are too many files (more than %d)."};
constexpr LocalText kNoFiles = {"没有文件。", "there are no files."};

SendPlaces PlacesIn(const std::filesystem::path& data) {
    const std::filesystem::path folder = data / "Uploads";
    return {folder,
            folder / "VideoTypeProtocol.Json",  // which there never is: names stay as they are
            [] {
                return std::chrono::duration_cast<UploadFigures::Time>(
                    std::chrono::steady_clock::now().time_since_epoch());
            },
            std::chrono::system_clock::now};
}

}  // namespace

UploadPage::UploadPage(const Surroundings& surroundings, milliseconds connectLimit)
    : surroundings_(surroundings),
      links_(
          loop_, hub_, [this](WindowMessage& message) { page_.Handle(message); }, connectLimit),
      source_(loop_, threads_),
      walk_(loop_, threads_),
      page_(source_, *this, prompts_, {links_, hub_, loop_}, PlacesIn(surroundings.data)) {
    links_.CloseOnNotSupported();
}

UploadPage::~UploadPage() {
    page_.Leave();
    loop_.Close();  // whoever waits to tell something is let go
}

Result<std::vector<std::string>> UploadPage::FilesIn(const std::vector<std::string>& paths) {
    std::vector<std::filesystem::path> chosen;
    for (const std::string& path : paths) {
        std::error_code error;
        chosen.push_back(std::filesystem::absolute(PathOfText(path), error));
        if (error || !std::filesystem::exists(chosen.back(), error))
            return Error{fmt::sprintf(Localized(kUnreadable), path)};
    }
    std::optional<FoundFiles> found;
    walk_.Begin(std::move(chosen), [&](FoundFiles files) { found = std::move(files); });
    Serve([&] { return found.has_value() || surroundings_.stop.stop_requested(); });
    walk_.GiveUp();
    if (!found || found->files.empty()) return Error{Localized(kNoFiles)};
    if (!found->unreadable.empty())
        return Error{fmt::sprintf(Localized(kUnreadable), found->unreadable.front())};
    if (!found->isWhole) return Error{fmt::sprintf(Localized(kTooMany), FolderWalk::kMostFiles)};
    std::vector<std::string> files;
    for (const FoundFile& file : found->files) files.push_back(TextOfPath(file.path));
    return files;
}

void UploadPage::Plan(VideoSet set) {
    page_.Enter(std::move(set));
    Serve([this] { return page_.Phase() == SendPhase::kIdle; });
}

void UploadPage::Send() {
    page_.Start();
    RunAndProve();
}

bool UploadPage::SendAgain() {
    page_.Enter({});
    if (!page_.MaySendFailed()) return false;
    page_.SendFailed();
    RunAndProve();
    return true;
}

/// The page goes on to the proof by itself once the run is over, unless it was stopped.
void UploadPage::RunAndProve() {
    Serve([this] { return !page_.IsRunning(); });
    if (surroundings_.stop.stop_requested()) return;
    bool hasProved = false;
    Serve([&] {
        hasProved = hasProved || page_.Phase() == SendPhase::kProving;
        return hasProved && page_.Phase() == SendPhase::kIdle;
    });
}

void UploadPage::Serve(const std::function<bool()>& isOver) {
    while (!loop_.RunUntil(isOver, kStep)) {
        TellProgress();
        if (!surroundings_.stop.stop_requested()) continue;
        page_.Leave();
        return;
    }
}

void UploadPage::TellProgress() {
    if (page_.IsRunning())
        surroundings_.output.Progress(fmt::sprintf("%.0f%%  %s  %s",
                                                   page_.Figures().Run().Share() * kWhole,
                                                   page_.LineText(), page_.PaceText()));
    else
        surroundings_.output.Progress(page_.SummaryText());
}

void UploadPage::Pause(milliseconds time) { std::this_thread::sleep_for(time); }

}  // namespace sontaro::cli
