// The journals of runs, in a folder.
#pragma once

#include <json/value.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>

#include "batchsend/run_journal.h"

namespace sontaro {

/// Most journals that are kept.
inline constexpr std::size_t kMostJournals = 50;

/// Writes the journal of one run, each line as soon as it is known: whatever happens to the
/// program, what stands in the file is true. The journal is known here, too, whatever happens to
/// the file.
class JournalWriter {
   public:
    using Clock = std::function<std::chrono::system_clock::time_point()>;

    /// Begins a file in `folder`, which is made if need be. The oldest journals go, with all that
    /// is kept beside them.
    JournalWriter(const std::filesystem::path& folder, const std::vector<UploadPlayer>& players,
                  Clock clock);

    void Add(const UploadEvent& event);

    /// False as soon as something could not be written.
    [[nodiscard]] bool IsWhole() const { return file_.good(); }
    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    [[nodiscard]] const RunJournal& Journal() const { return journal_; }

   private:
    [[nodiscard]] Json::Value LineOf(const char* event) const;
    void Write(const Json::Value& line);

    const Clock clock_;
    std::filesystem::path path_;
    std::ofstream file_;
    RunJournal journal_;
    std::map<std::size_t, std::chrono::system_clock::time_point> begun_;  // by the video's place
};

/// The journals in `folder`, the latest first.
[[nodiscard]] std::vector<std::filesystem::path> JournalsIn(const std::filesystem::path& folder);

struct LatestJournal {
    std::optional<RunJournal> journal;  ///< the latest that can be read; none: there is none
    bool isLatest = true;               ///< false: there is a later one, which cannot be read
};
[[nodiscard]] LatestJournal LatestJournalIn(const std::filesystem::path& folder);

/// The time, in UTC, that a journal has in its name or in its lines; none when the text is none.
[[nodiscard]] std::optional<std::chrono::system_clock::time_point> TimeIn(std::string_view text);

/// Where something is kept that belongs to a run.
[[nodiscard]] std::filesystem::path BesideJournal(const std::filesystem::path& journal,
                                                  std::string_view name);

}  // namespace sontaro
