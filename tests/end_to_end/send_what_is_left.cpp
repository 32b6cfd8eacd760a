// Sends what the last journal says is left, or everything when there is none, and writes a journal.
// Usage: send_what_is_left JOURNALS VIDEOS IP...: every file in VIDEOS to every player at port
// 9000. Exits with 0 when nothing is left.
#include <algorithm>

#include "base/path_text.h"
#include "base/program_arguments.h"
#include "base/window_titles.h"
#include "batchsend/batch_run.h"
#include "batchsend/chunk_reader.h"
#include "batchsend/journal_writer.h"
#include "exchange/plain_loop.h"
#include "exchange/switchboard.h"
#include "support/recording_prompts.h"

namespace {

using namespace sontaro;

constexpr const char* kMainWindow = "Upload";
constexpr std::uint16_t kPort = 9000;

class Uploader : public BatchView {
   public:
    explicit Uploader(std::filesystem::path journals) : journals_(std::move(journals)) {}
    ~Uploader() override { directory_.ShutDown(); }

    void Send(const std::vector<UploadPlayer>& players) {
        journal_.emplace(journals_, players, std::chrono::system_clock::now);
        run_.SetPlayers(players);
        run_.Start();
        static_cast<void>(
            loop_.RunUntil([this] { return !run_.IsRunning(); }, std::chrono::minutes(1)));
    }
    void RowChanged(std::size_t) override {}
    void StateChanged() override {}
    void Heard(const UploadEvent& event) override { journal_->Add(event); }
    void Pause(std::chrono::milliseconds) override {}

   private:
    const std::filesystem::path journals_;
    PlainLoop loop_;
    WindowDirectory directory_{loop_};
    test::RecordingPrompts prompts_;
    ThreadGroup threads_;
    ExchangeHub hub_;
    Switchboard switchboard_{kMainWindow, {directory_, threads_, prompts_}, hub_};
    WindowDirectory::Registration mainWindow_ =
        directory_.Register(kMainWindow, [this](auto& message) { switchboard_.Handle(message); });
    MainWindowChannel channel_{directory_, kMainWindow};
    ChunkReader source_{loop_, threads_};
    std::optional<JournalWriter> journal_;
    BatchRun run_{source_, *this, {channel_, hub_, loop_}, journals_ / "none.json"};
    WindowDirectory::Registration page_ = directory_.Register(
        TitleOf(Window::kBatchSend), [this](auto& message) { run_.Handle(message); });
};

std::vector<UploadPlayer> Everything(const std::vector<std::string>& arguments) {
    std::vector<UploadVideo> videos;
    for (const auto& entry : std::filesystem::directory_iterator(PathOfText(arguments[1])))
        videos.push_back({entry.path(), TextOfPath(entry.path().filename()), 7});
    std::vector<UploadPlayer> players;
    for (std::size_t i = 2; i < arguments.size(); ++i)
        players.push_back({{arguments[i], kPort, 0}, videos});
    return players;
}

}  // namespace

int main() {
    const std::vector<std::string> arguments = ProgramArguments();
    if (arguments.size() < 3) return 2;
    const std::filesystem::path journals = PathOfText(arguments[0]);
    const auto last = LastJournal(journals);
    const auto left = last ? FailedIn(*last) : Everything(arguments);
    if (left.empty()) return 0;
    Uploader(journals).Send(left);
    return FailedIn(*LastJournal(journals)).empty() ? 0 : 3;
}
