// A run over real links, with videos on a disk.
#pragma once

#include "batchsend/batch_run.h"
#include "batchsend/journal_writer.h"
#include "batchsend/sending_surroundings.h"

namespace sontaro::test {

/// The page without its window; keeps a journal of each run.
struct Uploader : SendingSurroundings, BatchView {
    explicit Uploader(std::filesystem::path folder) : journals(std::move(folder)) {}

    /// False when the run does not come to its end.
    bool Send(const std::vector<UploadPlayer>& players) {
        journal.emplace(journals, players, std::chrono::system_clock::now);
        run.SetPlayers(players);
        run.Start();
        return loop.RunUntil([this] { return !run.IsRunning(); }, std::chrono::minutes(1));
    }
    void RowChanged(std::size_t) override {}
    void StateChanged() override {}
    void Heard(const UploadEvent& event) override { journal->Add(event); }
    void Pause(std::chrono::milliseconds) override {}

    const std::filesystem::path journals;
    std::optional<JournalWriter> journal;
    BatchRun run{source, *this, Exchange(), journals / "none.json"};
    WindowDirectory::Registration page = directory.Register(
        TitleOf(Window::kBatchSend), [this](auto& message) { run.Handle(message); });
};

}  // namespace sontaro::test
