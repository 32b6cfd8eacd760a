// Videos from disks, read while others are on their way.
#pragma once

#include <memory>

#include "base/thread_group.h"
#include "base/ui_thread.h"
#include "batchsend/video_source.h"

namespace sontaro {

/// Reads on a thread of its own, always one chunk further than has been asked for, into two buffers
/// that are reused once their packet is on no way any more. Nobody waits for that thread: it ends
/// by itself after the reader has gone, and the group waits for it at exit. The thread of the user
/// interface.
class ChunkReader : public VideoSource {
   public:
    /// Both outlive the thread. Where no thread can be had, everything is as if it could not be
    /// read.
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

    std::shared_ptr<Worker> worker_;
};

}  // namespace sontaro
