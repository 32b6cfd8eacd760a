#include "batchsend/chunk_reader.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <fstream>
#include <mutex>
#include <utility>

#include "base/file.h"
#include "base/path_text.h"

namespace sontaro {

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kBuffers = 2;
/// A disk that has not answered for so long may never do so.
constexpr std::chrono::milliseconds kPatience{1000};
constexpr const char* kNoThread = "the system has no thread left";

Error CannotRead(const fs::path& file) {
    return Error{"cannot read " + TextOfPath(file.filename())};
}

/// What is no plain file could keep the thread waiting for ever.
Result<std::uint64_t> OpenFile(const fs::path& file, std::ifstream& stream) {
    std::error_code error;
    stream.close();
    stream.clear();
    if (!fs::is_regular_file(file, error)) return CannotRead(file);
    stream.open(file, std::ios::binary);
    const std::uint64_t size = fs::file_size(file, error);
    if (!stream || error) return CannotRead(file);
    return size;
}

VideoSource::Document WholeOf(const fs::path& file) {
    std::error_code error;
    if (fs::status(file, error).type() == fs::file_type::not_found)
        return std::optional<std::string>();
    Result<std::string> text = ReadFile(file, kLongestPayload + 1);
    if (!text || text->size() > kLongestPayload) return CannotRead(file);
    return std::optional(std::move(*text));
}

}  // namespace

/// The thread and what it shares. Answers carry the number of the attempt they belong to, which
/// only the owner's thread changes.
class ChunkReader::Worker : public std::enable_shared_from_this<Worker> {
   public:
    using Job = std::function<void()>;

    explicit Worker(std::shared_ptr<Messenger> messenger) : messenger_(std::move(messenger)) {}

    [[nodiscard]] bool Start() {
        return StartUnawaited([self = shared_from_this()] { self->Run(); });
    }

    // The owner's thread.

    /// Nothing that was asked for before is answered any more.
    Attempt BeginAttempt() {
        const std::optional<ReadChunk> dropped = Forget();
        return attempt_;
    }
    void Add(Job job) {
        {
            const std::lock_guard lock(mutex_);
            jobs_.push_back(std::move(job));
        }
        changed_.notify_one();
    }
    /// The chunk that has been read already; else it is told when it is.
    std::optional<ReadChunk> TakeNext(std::function<void(ReadChunk)>& read) {
        const std::lock_guard lock(mutex_);
        changed_.notify_one();
        if (!ready_) wanted_ = std::move(read);
        return std::exchange(ready_, std::nullopt);
    }
    void Leave() {
        const std::optional<ReadChunk> dropped = Forget();
        const std::lock_guard lock(mutex_);
        left_ = true;
        changed_.notify_one();
    }
    /// Whether the disk has not answered for long.
    [[nodiscard]] bool Hangs() const {
        const std::lock_guard lock(mutex_);
        return busySince_ && Clock::now() - *busySince_ >= kPatience;
    }

    // The worker's own thread.

    void Answer(Attempt attempt, std::function<void()> answer) {
        messenger_->Post([self = shared_from_this(), attempt, answer = std::move(answer)] {
            if (attempt == self->attempt_) answer();
        });
    }
    Result<std::uint64_t> Open(Attempt attempt, const fs::path& file) {
        Result<std::uint64_t> size = OpenFile(file, stream_);
        const std::lock_guard lock(mutex_);
        isOpen_ = size && attempt == attempt_;
        path_ = file;
        return size;
    }

   private:
    /// A buffer that is dropped asks for the lock: what is given up goes after it is free.
    std::optional<ReadChunk> Forget() {
        const std::lock_guard lock(mutex_);
        ++attempt_;
        isOpen_ = false;
        jobs_.clear();
        jobs_.emplace_back([this] { stream_.close(); });
        wanted_ = nullptr;
        changed_.notify_one();
        return std::exchange(ready_, std::nullopt);
    }

    void Run() {
        std::unique_lock lock(mutex_);
        while (!left_) {
            if (!jobs_.empty()) {
                const Job job = std::move(jobs_.front());
                jobs_.pop_front();
                busySince_ = Clock::now();
                lock.unlock();
                job();
                lock.lock();
                busySince_.reset();
            } else if (MayRead()) {
                ReadOne(lock);
            } else {
                changed_.wait(lock);
            }
        }
    }
    [[nodiscard]] bool MayRead() const {
        return isOpen_ && !ready_ && (made_ < kBuffers || !free_.empty());
    }

    void ReadOne(std::unique_lock<std::mutex>& lock) {
        const Attempt attempt = attempt_;
        std::unique_ptr<Bytes> buffer = TakeBuffer();
        busySince_ = Clock::now();
        lock.unlock();
        ReadChunk chunk = ReadInto(std::move(buffer));
        lock.lock();
        busySince_.reset();
        if (attempt == attempt_) {
            isOpen_ = !chunk.isEnd && chunk.trouble.empty();
            if (!wanted_) {
                ready_ = std::move(chunk);
                return;
            }
            const auto read = std::exchange(wanted_, nullptr);
            lock.unlock();
            Answer(attempt, [read, chunk] { read(chunk); });
        } else {
            lock.unlock();
        }
        chunk = {};
        lock.lock();
    }
    std::unique_ptr<Bytes> TakeBuffer() {
        if (free_.empty()) {
            ++made_;
            return nullptr;
        }
        std::unique_ptr<Bytes> buffer = std::move(free_.back());
        free_.pop_back();
        return buffer;
    }

    ReadChunk ReadInto(std::unique_ptr<Bytes> buffer) {
        if (!buffer) buffer = std::make_unique<Bytes>();
        buffer->resize(kHeaderSize + kVideoChunkSize);
        stream_.read(reinterpret_cast<char*>(buffer->data() + kHeaderSize),
                     static_cast<std::streamsize>(kVideoChunkSize));
        const auto count = static_cast<std::size_t>(stream_.gcount());
        buffer->resize(kHeaderSize + count);
        ReadChunk chunk{Shared(std::move(buffer)), stream_.eof(), ""};
        if (stream_.bad() || (stream_.fail() && !stream_.eof()))
            chunk = {nullptr, false, CannotRead(path_).reason};
        return chunk;
    }
    /// Comes back here once nobody has it any more, on whatever thread that is.
    ChunkBuffer Shared(std::unique_ptr<Bytes> buffer) {
        return {buffer.release(), [worker = weak_from_this()](Bytes* bytes) {
                    std::unique_ptr<Bytes> owned(bytes);
                    if (const auto self = worker.lock()) self->GiveBack(std::move(owned));
                }};
    }
    void GiveBack(std::unique_ptr<Bytes> buffer) {
        const std::lock_guard lock(mutex_);
        free_.push_back(std::move(buffer));
        changed_.notify_one();
    }

    const std::shared_ptr<Messenger> messenger_;
    std::ifstream stream_;  // of the worker's thread
    fs::path path_;         // likewise

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    Attempt attempt_ = 0;
    std::optional<Clock::time_point> busySince_;  // with the disk
    std::deque<Job> jobs_;
    bool isOpen_ = false;  // and there is more to read
    std::optional<ReadChunk> ready_;
    std::function<void(ReadChunk)> wanted_;
    std::vector<std::unique_ptr<Bytes>> free_;
    std::size_t made_ = 0;  // buffers
    bool left_ = false;
};

ChunkReader::ChunkReader(UiThread& owner, ThreadGroup& threads)
    : messenger_(std::make_shared<Messenger>(owner)) {
    if (messenger_->Start(threads)) Renew();
}

ChunkReader::~ChunkReader() {
    if (worker_) worker_->Leave();
    messenger_->Leave();
}

void ChunkReader::Renew() {
    if (worker_) worker_->Leave();
    worker_ = std::make_shared<Worker>(messenger_);
    if (!worker_->Start()) worker_.reset();
}

/// What the disk does not answer keeps nobody else waiting.
ChunkReader::Attempt ChunkReader::BeginAttempt() {
    if (worker_ && worker_->Hangs()) Renew();
    return worker_ ? worker_->BeginAttempt() : 0;
}

void ChunkReader::LookAt(std::vector<fs::path> files, std::function<void(Sizes)> looked) {
    const Attempt attempt = BeginAttempt();
    if (!worker_) return looked(Sizes(files.size(), Error{kNoThread}));
    worker_->Add(
        [worker = worker_.get(), attempt, files = std::move(files), looked = std::move(looked)] {
            Sizes sizes;
            for (const fs::path& file : files) {
                std::ifstream stream;
                sizes.push_back(OpenFile(file, stream));
            }
            worker->Answer(attempt, [looked, sizes] { looked(sizes); });
        });
}

void ChunkReader::Open(fs::path file, std::function<void(Result<std::uint64_t>)> opened) {
    const Attempt attempt = BeginAttempt();
    if (!worker_) return opened(Error{kNoThread});
    worker_->Add(
        [worker = worker_.get(), attempt, file = std::move(file), opened = std::move(opened)] {
            const Result<std::uint64_t> size = worker->Open(attempt, file);
            worker->Answer(attempt, [opened, size] { opened(size); });
        });
}

void ChunkReader::Next(std::function<void(ReadChunk)> read) {
    if (!worker_) return;
    if (auto chunk = worker_->TakeNext(read)) read(std::move(*chunk));
}

void ChunkReader::ReadDocument(fs::path file, std::function<void(Document)> read) {
    const Attempt attempt = BeginAttempt();
    if (!worker_) return read(Error{kNoThread});
    worker_->Add([worker = worker_.get(), attempt, file = std::move(file), read = std::move(read)] {
        worker->Answer(attempt, [read, document = WholeOf(file)] { read(document); });
    });
}

void ChunkReader::Close() { BeginAttempt(); }

}  // namespace sontaro
