#include "bench/bare_upload.h"

#include <array>
#include <fstream>
#include <memory>
#include <semaphore>
#include <stdexcept>
#include <thread>

#include "batchsend/upload_packets.h"
#include "bench/stopwatch.h"

namespace sontaro::bench {

namespace {

using namespace std::chrono_literals;
using Videos = std::vector<std::filesystem::path>;

constexpr std::uint16_t kCode = 7;

bool IsLast(const Bytes& chunk) { return chunk.size() < kHeaderSize + kVideoChunkSize; }

/// The chunks of all videos, one after another.
class Chunks {
   public:
    virtual ~Chunks() = default;
    [[nodiscard]] virtual const ChunkBuffer& Take() = 0;
    /// The one that was taken has gone out.
    virtual void GiveBack() = 0;
};

class Reader {
   public:
    explicit Reader(const Videos& videos) : videos_(videos) { OpenNext(); }

    /// Behind room for a header.
    void ReadInto(Bytes& chunk) {
        chunk.resize(kHeaderSize + kVideoChunkSize);
        file_.read(reinterpret_cast<char*>(chunk.data() + kHeaderSize), kVideoChunkSize);
        chunk.resize(kHeaderSize + static_cast<std::size_t>(file_.gcount()));
        if (IsLast(chunk)) OpenNext();
    }
    [[nodiscard]] bool IsAtEnd() const { return next_ > videos_.size(); }

   private:
    void OpenNext() {
        if (next_ < videos_.size()) file_ = std::ifstream(videos_[next_], std::ios::binary);
        ++next_;
    }

    const Videos& videos_;
    std::size_t next_ = 0;
    std::ifstream file_;
};

class ChunksInTurn : public Chunks {
   public:
    explicit ChunksInTurn(const Videos& videos) : reader_(videos) {}

    [[nodiscard]] const ChunkBuffer& Take() override {
        reader_.ReadInto(*buffer_);
        return buffer_;
    }
    void GiveBack() override {}

   private:
    Reader reader_;
    const ChunkBuffer buffer_ = std::make_shared<Bytes>();
};

/// Read on a thread, into the one of two buffers that is not on its way.
class ChunksAhead : public Chunks {
   public:
    explicit ChunksAhead(const Videos& videos)
        : reader_(videos), thread_([this](const std::stop_token& stop) { Run(stop); }) {}
    ~ChunksAhead() override {
        thread_.request_stop();
        free_.release();
    }

    [[nodiscard]] const ChunkBuffer& Take() override {
        read_.acquire();
        return buffers_[taken_++ % kBuffers];
    }
    void GiveBack() override { free_.release(); }

   private:
    static constexpr std::size_t kBuffers = 2;

    void Run(const std::stop_token& stop) {
        for (std::size_t i = 0; !reader_.IsAtEnd(); ++i) {
            free_.acquire();
            if (stop.stop_requested()) return;
            reader_.ReadInto(*buffers_[i % kBuffers]);
            read_.release();
        }
    }

    Reader reader_;
    const std::array<ChunkBuffer, kBuffers> buffers_ = {std::make_shared<Bytes>(),
                                                        std::make_shared<Bytes>()};
    std::counting_semaphore<> free_{kBuffers};
    std::counting_semaphore<> read_{0};
    std::size_t taken_ = 0;
    std::jthread thread_;
};

class BareLink {
   public:
    explicit BareLink(const Endpoint& player) {
        socket_.SetLinkOptions();
        if (!socket_.Connect(player, 1s))
            throw std::runtime_error("the bare socket does not connect");
    }

    void Send(const Bytes& packet) {
        if (socket_.Send(packet) != static_cast<std::int64_t>(packet.size()))
            throw std::runtime_error("a bare send was cut short");
    }
    void AwaitAcknowledgement() {
        std::array<std::uint8_t, kHeaderSize> reply{};
        for (std::size_t received = 0; received < reply.size();) {
            const std::int64_t count = socket_.Receive(std::span(reply).subspan(received));
            if (count <= 0) throw std::runtime_error("a bare packet is not acknowledged");
            received += static_cast<std::size_t>(count);
        }
    }

   private:
    Socket socket_ = Socket::Tcp();
};

void SendVideo(BareLink& link, const std::filesystem::path& video, Chunks& chunks) {
    link.Send(*VideoAnnouncement(video.filename().string(), file_size(video), kCode));
    link.AwaitAcknowledgement();
    std::uint64_t sent = 0;
    for (bool isLast = false; !isLast;) {
        const ChunkBuffer& chunk = chunks.Take();
        isLast = IsLast(*chunk);
        sent += chunk->size() - kHeaderSize;
        link.Send(*VideoChunk(chunk, ChunkNumber(sent), kCode,
                              isLast ? UploadStep::kLastChunk : UploadStep::kChunk));
        chunks.GiveBack();
        link.AwaitAcknowledgement();
    }
}

}  // namespace

double SecondsOfBareUpload(const Endpoint& player, const Videos& videos, Reading reading) {
    BareLink link(player);
    const Stopwatch stopwatch;
    std::unique_ptr<Chunks> chunks = std::make_unique<ChunksInTurn>(videos);
    if (reading == Reading::kAhead) chunks = std::make_unique<ChunksAhead>(videos);
    for (const std::filesystem::path& video : videos) SendVideo(link, video, *chunks);
    return stopwatch.Seconds();
}

}  // namespace sontaro::bench
