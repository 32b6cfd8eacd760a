// A run over real links, with videos on a disk.
#pragma once

#include "base/window_titles.h"
#include "batchsend/batch_run.h"
#include "batchsend/chunk_reader.h"
#include "batchsend/journal_writer.h"
#include "exchange/plain_loop.h"
#include "exchange/switchboard.h"
#include "support/recording_prompts.h"

namespace sontaro::test {

/// The page without its window; keeps a journal of each run.
struct Uploader : BatchView {
    explicit Uploader(std::filesystem::path folder) : journals(std::move(folder)) {}
    ~Uploader() override { directory.ShutDown(); }

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

    static constexpr const char* kMainWindow = "Upload";

    const std::filesystem::path journals;
    PlainLoop loop;
    WindowDirectory directory{loop};
    RecordingPrompts prompts;
    ThreadGroup threads;
    ExchangeHub hub;
    Switchboard switchboard{kMainWindow, {directory, threads, prompts}, hub};
    WindowDirectory::Registration mainWindow =
        directory.Register(kMainWindow, [this](auto& message) { switchboard.Handle(message); });
    MainWindowChannel channel{directory, kMainWindow};
    ChunkReader source{loop, threads};
    std::optional<JournalWriter> journal;
    BatchRun run{source, *this, {channel, hub, loop}, journals / "none.json"};
    WindowDirectory::Registration page = directory.Register(
        TitleOf(Window::kBatchSend), [this](auto& message) { run.Handle(message); });
};

}  // namespace sontaro::test
