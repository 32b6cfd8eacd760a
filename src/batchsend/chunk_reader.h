// Videos from disks, read while others are on their way.
#pragma once

#include <memory>

#include "base/messenger.h"
#include "batchsend/video_source.h"

namespace sontaro {

/// Reads on a thread of its own, always one chunk further than has been asked for, into two buffers
/// that are reused once their packet is on no way any more. Nobody waits for that thread, not even
/// at exit: a disk may never answer. One that has not for a second is left to itself, and another
/// thread does what is asked for next. The thread of the user interface.
class ChunkReader : public VideoSource {
   public:
    /// Both outlive the reader; the owner also outlives what the group waits for. Where no thread
    /// can be had, everything is as if it could not be read.
    ChunkReader(UiThread& owner, ThreadGroup& threads);
    ~ChunkReader() override;
    ChunkReader(const ChunkReader&) = delete;
    ChunkReader& operator=(const ChunkReader&) = delete;

    void LookAt(std::vector<std::filesystem::path> files,
                std::function<void(Sizes)> looked) override;
    void Open(std::filesystem::path file,
              std::function<void(Result<std::uint64_t>)> opened) override;
    void Next(std::function<void(ReadChunk)> read) override;
    void ReadDocument(std::filesystem::path file, std::function<void(Document)> read) override;
    void Close() override;

   private:
    class Worker;
    using Attempt = std::uint64_t;

    void Renew();
    Attempt BeginAttempt();

    const std::shared_ptr<Messenger> messenger_;
    std::shared_ptr<Worker> worker_;
};

}  // namespace sontaro
