// Where the bytes of videos come from.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/result.h"
#include "batchsend/upload_packets.h"
#include "batchsend/video_set.h"

namespace sontaro {

/// Bytes of a video, behind room for a header.
struct ReadChunk {
    ChunkBuffer buffer;
    bool isEnd = false;   ///< nothing follows
    std::string trouble;  ///< why it could not be read; empty: it could. `buffer` is absent then
};

/// Reads one video after another, ahead of what is asked for. Answers on the thread that asks, at
/// once where they are at hand; those to what has been given up meanwhile do not come.
class VideoSource {
   public:
    using Sizes = std::vector<Result<std::uint64_t>>;
    using Document = Result<std::optional<std::string>>;

    virtual ~VideoSource() = default;
    /// Asks for the sizes of files that can be read, in their order.
    virtual void LookAt(std::vector<std::filesystem::path> files,
                        std::function<void(Sizes)> looked) = 0;
    /// Opens a video in place of the one before, and says how large it is.
    virtual void Open(std::filesystem::path file,
                      std::function<void(Result<std::uint64_t>)> opened) = 0;
    /// The next chunk of the video that is open. One is asked for at a time.
    virtual void Next(std::function<void(ReadChunk)> read) = 0;
    /// The whole of a small file; none when there is no such file. Fails when it cannot be read,
    /// or is longer than a packet.
    virtual void ReadDocument(std::filesystem::path file, std::function<void(Document)> read) = 0;
    /// Gives up everything that has been asked for, and the video that is open.
    virtual void Close() = 0;
};

/// The files of all videos of a page, each once.
[[nodiscard]] std::vector<std::filesystem::path> FilesOf(const VideoSet& set);
/// Has the videos know what has been seen of these files.
void TakeFileSizes(VideoSet& set, const std::vector<std::filesystem::path>& files,
                   const VideoSource::Sizes& sizes);

}  // namespace sontaro
