// What the last page's procedure asks of its window, and where it keeps what it knows.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>

#include "batchsend/journal_writer.h"
#include "batchsend/upload_figures.h"

namespace sontaro {

enum class SendPhase : std::uint8_t {
    kIdle,
    kPlanning,  ///< players are asked, and the files looked at
    kStarting,  ///< the files are looked at once more before a run
    kRunning,
    kProving,
};

class SendPageView {
   public:
    virtual ~SendPageView() = default;
    /// Other players or videos are shown.
    virtual void BatchChanged() = 0;
    /// What is told of the run's player at that place has changed.
    virtual void PlayerChanged(std::size_t player) = 0;
    /// What is told of the batch's video at that place has changed.
    virtual void VideoChanged(std::size_t video) = 0;
    /// What may be pressed, a line or a figure has changed.
    virtual void StateChanged() = 0;
    /// Blocks the thread for so long.
    virtual void Pause(std::chrono::milliseconds time) = 0;
};

/// Where the page keeps what it knows, and what it reads time from.
struct SendPlaces {
    std::filesystem::path journals;              ///< a folder
    std::filesystem::path videoTypeFile;         ///< which need not exist
    std::function<UploadFigures::Time()> clock;  ///< never goes back
    JournalWriter::Clock wallClock;
    /// Keeps the control protocol that a player holds, and comes back at once.
    std::function<void(const Target& player, std::string text)> keep = [](const Target&,
                                                                          const std::string&) {};
};

}  // namespace sontaro
