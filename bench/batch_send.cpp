#include <fmt/core.h>
#include <malloc.h>
#include <unistd.h>
#include <wx/dialog.h>
#include <wx/evtloop.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/timer.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "base/window_titles.h"
#include "batchsend/batch_run.h"
#include "batchsend/chunk_reader.h"
#include "bench/bare_upload.h"
#include "bench/figures.h"
#include "bench/no_prompts.h"
#include "bench/program.h"
#include "bench/slow_disk.h"
#include "bench/stopwatch.h"
#include "exchange/switchboard.h"
#include "widgets/text_progress.h"
#include "widgets/ui_gate.h"
#include "widgets/wx_text.h"

namespace sontaro::bench {

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr int kRepetitions = 5;
constexpr int kVideos = 10;
constexpr std::uintmax_t kVideoSize = 40'000'000;
constexpr std::uintmax_t kLongVideoSize = 2'000'000'000;
constexpr std::size_t kChunks = kVideos * (kVideoSize / kVideoChunkSize + 1);
constexpr std::size_t kSlowVideos = 5;  // of them, where disk and network are slow
constexpr double kDiskSpeed = 150e6;    // bytes a second
constexpr int kNetworkSpeed = 110'000'000;
constexpr std::uint16_t kPort = 9000;
constexpr std::uint16_t kCode = 7;
constexpr const char* kMainWindow = "Batch send";

/// Files without content, which take no room on the disk. They are read from memory once they have
/// been read.
class Videos {
   public:
    Videos() {
        std::string folder = fs::temp_directory_path() / "sontaro-bench-XXXXXX";
        if (!mkdtemp(folder.data())) throw std::runtime_error("no folder for videos");
        folder_ = folder;
        for (int i = 0; i < kVideos; ++i)
            all.push_back(Make(fmt::format("视频 {}.mp4", i), kVideoSize));
        longOne.push_back(Make("long.mp4", kLongVideoSize));
    }
    ~Videos() {
        std::error_code leftBehind;
        fs::remove_all(folder_, leftBehind);
    }
    Videos(const Videos&) = delete;
    Videos& operator=(const Videos&) = delete;

    std::vector<fs::path> all, longOne;

   private:
    [[nodiscard]] fs::path Make(const std::string& name, std::uintmax_t size) const {
        const fs::path path = folder_ / name;
        std::ofstream(path).close();
        fs::resize_file(path, size);
        return path;
    }

    fs::path folder_;
};

/// Two simulated players in a process of their own, which count what they are sent. The second one
/// has a slow network.
class Players {
   public:
    Players() {
        for (const Endpoint& player : {fast, slow}) AwaitListening(player);
    }

    const Endpoint fast = At(2);
    const Endpoint slow = At(3);

   private:
    /// Of this process alone.
    static Endpoint At(std::uint8_t number) {
        const auto process = static_cast<unsigned>(getpid());
        return {{{127, static_cast<std::uint8_t>(1 + process / 256 % 254),
                  static_cast<std::uint8_t>(process % 256), number}},
                kPort};
    }
    static void AwaitListening(const Endpoint& player) {
        constexpr double kPatienceSeconds = 10;
        for (const Stopwatch stopwatch; !Socket::Tcp().Connect(player, 1s);) {
            if (stopwatch.Seconds() > kPatienceSeconds)
                throw std::runtime_error("the simulated players do not start");
            std::this_thread::sleep_for(5ms);
        }
    }

    const Program program_{{PLAYER_PROGRAM, "--count", "2", "--base-address",
                            FormatIpv4(fast.address), "--port", std::to_string(kPort), "--spacing",
                            "0", "--fault", fmt::format("2:slow={}", kNetworkSpeed)}};
};

/// How late a timer of 10 ms is at most.
class LateTimer : public wxTimer {
   public:
    void Begin() {
        longest_ = 0;
        stopwatch_ = {};
        Start(kInterval);
    }
    /// In milliseconds.
    double End() {
        Notify();
        Stop();
        return longest_;
    }

   private:
    static constexpr int kInterval = 10;

    void Notify() override {
        longest_ = std::max(longest_, stopwatch_.Seconds() * 1e3 - kInterval);
        stopwatch_ = {};
    }

    double longest_ = 0;
    Stopwatch stopwatch_;
};

/// What an upload has come to, from the first announcement on.
struct Upload {
    double seconds = 0;       ///< until the last acknowledgement
    double milliseconds = 0;  ///< that the window had to wait for at most
    double megabytes = 0;     ///< of memory, more than before the start
};

/// The memory that nobody uses is given back, and the peak is that of now.
void ForgetPeak() {
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << '5' << std::flush;
}

/// A window that shows an upload over real links.
class UploadPage : public BatchView {
   public:
    UploadPage() {
        auto* column = new wxBoxSizer(wxVERTICAL);
        column->Add(progress_, wxSizerFlags().Expand().Border());
        column->Add(line_, wxSizerFlags().Expand().Border());
        dialog_.SetSizerAndFit(column);
        dialog_.Show();
    }
    ~UploadPage() override { directory_.ShutDown(); }
    UploadPage(const UploadPage&) = delete;
    UploadPage& operator=(const UploadPage&) = delete;

    Upload Send(const Endpoint& player, const std::vector<fs::path>& videos) {
        UploadPlayer target{{FormatIpv4(player.address), player.port, 0}, {}};
        for (const fs::path& video : videos)
            target.videos.push_back({video, video.filename().string(), kCode});
        run_.SetPlayers({target});
        upload_.reset();
        ForgetPeak();
        const double before = MegabytesOf("self", "VmRSS");
        run_.Start();
        loop_.Run();
        if (run_.Rows()[0].status != UploadStatus::kDone || !upload_)
            throw std::runtime_error("an upload fails: " + StatusText(run_.Rows()[0]));
        upload_->megabytes = MegabytesOf("self", "VmHWM") - before;
        return *upload_;
    }

   private:
    void RowChanged(std::size_t) override {}
    void StateChanged() override {
        progress_->SetPercent(run_.Percent());
        line_->SetLabel(ToWx(LineText(run_.Line())));
    }
    void Heard(const UploadEvent& event) override {
        using Kind = UploadEvent::Kind;
        if (event.kind == Kind::kVideoBegun && !upload_) {
            upload_.emplace();
            stopwatch_ = {};
            late_.Begin();
        }
        if (event.kind == Kind::kVideoDone && upload_) upload_->seconds = stopwatch_.Seconds();
        if (event.kind == Kind::kPlayerEnded && upload_) upload_->milliseconds = late_.End();
        if (event.kind == Kind::kRunEnded) loop_.ScheduleExit();
    }
    void Pause(std::chrono::milliseconds) override {}

    wxGUIEventLoop loop_;
    wxDialog dialog_{nullptr, wxID_ANY, kMainWindow};
    TextProgress* progress_ = new TextProgress(&dialog_, wxID_ANY);
    wxStaticText* line_ = new wxStaticText(&dialog_, wxID_ANY, "");
    LateTimer late_;
    Stopwatch stopwatch_;
    std::optional<Upload> upload_;

    UiGate gate_;
    WindowDirectory directory_{gate_};
    NoPrompts prompts_;
    ThreadGroup threads_;
    ExchangeHub hub_;
    Switchboard switchboard_{kMainWindow, {directory_, threads_, prompts_}, hub_};
    const WindowDirectory::Registration mainWindow_ =
        directory_.Register(kMainWindow, [this](auto& message) { switchboard_.Handle(message); });
    MainWindowChannel channel_{directory_, kMainWindow};
    ChunkReader source_{gate_, threads_};
    BatchRun run_{source_, *this, {channel_, hub_, gate_}, "no document"};
    const WindowDirectory::Registration page_ = directory_.Register(
        TitleOf(Window::kBatchSend), [this](auto& message) { run_.Handle(message); });
};

/// Milliseconds a chunk, and the delays of a timer meanwhile.
std::vector<Figure> FastUploads(UploadPage& page, const Players& players, const Videos& videos) {
    std::vector<double> delays;
    const Comparison time = CompareInTurn(
        kRepetitions,
        [&] {
            const Upload upload = page.Send(players.fast, videos.all);
            delays.push_back(upload.milliseconds);
            return upload.seconds * 1e3 / kChunks;
        },
        [&] {
            return SecondsOfBareUpload(players.fast, videos.all, Reading::kAhead) * 1e3 / kChunks;
        });
    const double longest = *std::ranges::max_element(delays);
    return {
        {"batch_send_chunk", time.ours - time.baseline, Goal::kAtMost, 1.0,
         fmt::format("upload {:.2f} ms a chunk, bare loop {:.2f} ms", time.ours, time.baseline)},
        {"batch_send_delay", longest, Goal::kAtMost, 30,
         fmt::format("ms that a timer was late at most, in the middle one of {} uploads {:.1f}",
                     delays.size(), Median(delays))}};
}

/// Against a loop that does not read ahead, between a disk and a network of everyday.
Figure SlowUploads(UploadPage& page, const Players& players, const Videos& videos) {
    const std::vector<fs::path> some(videos.all.begin(), videos.all.begin() + kSlowVideos);
    const SlowDisk disk(kDiskSpeed);
    const auto speed = [](double seconds) { return kSlowVideos * kVideoSize / seconds / 1e6; };
    const Comparison speeds = CompareInTurn(
        kRepetitions, [&] { return speed(page.Send(players.slow, some).seconds); },
        [&] { return speed(SecondsOfBareUpload(players.slow, some, Reading::kInTurn)); });
    return {"batch_send_ahead", speeds.ratio, Goal::kAtLeast, 1.55,
            fmt::format("upload {:.1f} MB/s, bare loop in turn {:.1f} MB/s", speeds.ours,
                        speeds.baseline)};
}

/// In windows that have not sent anything yet: buffers are kept.
Figure Memory(const Players& players, const Videos& videos) {
    const double one = UploadPage().Send(players.fast, {videos.all[0]}).megabytes;
    const double longOne = UploadPage().Send(players.fast, videos.longOne).megabytes;
    return {
        "batch_send_memory", std::max(one, longOne), Goal::kAtMost, 26,
        fmt::format("MB more: {:.1f} for a video of 40 MB, {:.1f} for one of 2 GB", one, longOne)};
}

}  // namespace

std::vector<Figure> BatchSends() {
    const Videos videos;
    const Players players;
    std::vector<Figure> figures = {Memory(players, videos)};
    UploadPage page;
    std::ranges::copy(FastUploads(page, players, videos), std::back_inserter(figures));
    figures.push_back(SlowUploads(page, players, videos));
    return figures;
}

}  // namespace sontaro::bench
