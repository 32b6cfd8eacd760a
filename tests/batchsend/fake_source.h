// Videos without files.
#pragma once

#include <deque>
#include <map>
#include <utility>

#include "batchsend/video_source.h"

namespace sontaro::test {

/// Answers at once, or when the test says so. What is read are zeros.
class FakeSource final : public VideoSource {
   public:
    void LookAt(std::vector<std::filesystem::path> files,
                std::function<void(Sizes)> looked) override {
        Sizes seen;
        for (const auto& file : files) seen.push_back(SizeOf(file.string()));
        Answer([seen, looked = std::move(looked)] { looked(seen); });
    }
    void Open(std::filesystem::path file,
              std::function<void(Result<std::uint64_t>)> opened) override {
        Close();
        name_ = file.string();
        read_ = 0;
        Answer([size = SizeOf(name_), opened = std::move(opened)] { opened(size); });
    }
    void Next(std::function<void(ReadChunk)> read) override {
        const auto chunk = [this] {
            const auto size = SizeOf(name_);
            if (!size) return ReadChunk{nullptr, false, size.reason()};
            const std::uint64_t left = *size > read_ ? *size - read_ : 0;
            const std::uint64_t count = std::min<std::uint64_t>(left, kVideoChunkSize);
            read_ += count;
            return ReadChunk{Buffer(static_cast<std::size_t>(count)), count < kVideoChunkSize, ""};
        };
        Answer([chunk, read = std::move(read)] { read(chunk()); });
    }
    void ReadDocument(std::filesystem::path, std::function<void(Document)> read) override {
        Answer([document = document, read = std::move(read)] { read(document); });
    }
    void Close() override { waiting_.clear(); }

    /// Answers what has been asked for while `holds`.
    void Release() {
        holds = false;
        for (auto answers = std::exchange(waiting_, {}); const auto& answer : answers) answer();
    }

    std::map<std::string, std::uint64_t> sizes;  ///< of the files that there are
    Document document = std::optional<std::string>();
    bool holds = false;

   private:
    [[nodiscard]] Result<std::uint64_t> SizeOf(const std::string& name) const {
        const auto file = sizes.find(name);
        if (file == sizes.end()) return Error{"gone"};
        return file->second;
    }
    void Answer(std::function<void()> answer) {
        if (holds)
            waiting_.push_back(std::move(answer));
        else
            answer();
    }
    [[nodiscard]] ChunkBuffer Buffer(std::size_t size) {
        if (size < kVideoChunkSize) return std::make_shared<Bytes>(kHeaderSize + size);
        if (!whole_) whole_ = std::make_shared<Bytes>(kHeaderSize + size);
        return whole_;
    }

    std::deque<std::function<void()>> waiting_;
    std::string name_;
    std::uint64_t read_ = 0;
    ChunkBuffer whole_;
};

}  // namespace sontaro::test
