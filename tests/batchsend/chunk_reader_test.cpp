#include "batchsend/chunk_reader.h"

#include <gmock/gmock.h>

#ifdef __linux__
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#endif

#include "support/literals.h"
#include "support/manual_ui_thread.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;

/// Asks the reader and serves its thread until the answer is there.
struct Reading : testing::Test {
    ~Reading() override {
        reader.reset();
        ui.Close();  // the thread may wait for it
    }
    Result<std::uint64_t> Open(const std::filesystem::path& file) {
        std::optional<Result<std::uint64_t>> size;
        reader->Open(file, [&](const auto& answer) { size = answer; });
        EXPECT_TRUE(ui.PumpUntil([&] { return size.has_value(); }));
        return *size;
    }
    ReadChunk Next(std::chrono::milliseconds limit = 20s) {
        reader->Next([this](ReadChunk chunk) { read = std::move(chunk); });
        static_cast<void>(ui.PumpUntil([&] { return read.has_value(); }, limit));
        return std::exchange(read, std::nullopt).value_or(ReadChunk{nullptr, false, "none"});
    }
    static std::string_view Content(const ReadChunk& chunk) {
        return AsText(ByteView(*chunk.buffer).subspan(kHeaderSize));
    }
    std::filesystem::path Write(std::size_t size) {
        return folder.Write("视频.mp4", std::string(AsText(Pattern(size))));
    }

    TemporaryFolder folder;
    ManualUiThread ui;
    ThreadGroup threads;
    std::optional<ReadChunk> read;
    std::unique_ptr<ChunkReader> reader = std::make_unique<ChunkReader>(ui, threads);
};

TEST_F(Reading, HasTwoBuffersHoweverLongTheVideoIs) {
    const std::filesystem::path file = folder.Write("long", "");
    std::filesystem::resize_file(file, 5'000'000'000);
    ASSERT_EQ(*Open(file), 5'000'000'000U);
    ReadChunk first = Next();
    const ReadChunk second = Next();
    ASSERT_TRUE(first.buffer && second.buffer && first.buffer != second.buffer);
    const Bytes* const reused = first.buffer.get();
    EXPECT_EQ(Next(20ms).trouble, "none");
    first = {};
    EXPECT_TRUE(ui.PumpUntil([&] { return read.has_value(); }));
    reader.reset();
    EXPECT_TRUE(read->buffer.get() == reused && Content(*read) == Content(second));
}

TEST_F(Reading, SaysWhatCannotBeRead) {
    EXPECT_EQ(Open(folder / "none.mp4").reason(), "cannot read none.mp4");
    EXPECT_FALSE(Open(folder.Path()).ok());
    std::optional<VideoSource::Document> document;
    reader->ReadDocument(folder.Path(), [&](const auto& answer) { document = answer; });
    ASSERT_TRUE(ui.PumpUntil([&] { return document.has_value(); }));
    EXPECT_FALSE(document->ok());
}

TEST_F(Reading, AnswersNothingThatHasBeenGivenUp) {
    const std::filesystem::path file = Write(3 * kVideoChunkSize);
    const auto fail = [](const auto&) { FAIL(); };
    reader->LookAt({file}, fail);
    reader->Open(file, fail);
    ui.AwaitCaller();
    EXPECT_EQ(*Open(folder.Write("b", "seven b")), 7U);
    EXPECT_EQ(Content(Next()), "seven b");
    ASSERT_TRUE(Open(file));
    Next();  // and the next one is being read
    EXPECT_EQ(*Open(folder / "b"), 7U);
    EXPECT_EQ(Content(Next()), "seven b");
    reader->Open(file, fail);
    ui.AwaitCaller();
    reader.reset();
}

#ifdef __linux__
/// Whoever opens the file waits until this one has gone.
struct HeldFile {
    explicit HeldFile(const std::filesystem::path& path) : file(open(path.c_str(), O_RDWR)) {
        static_cast<void>(signal(SIGIO, SIG_IGN));
        EXPECT_EQ(fcntl(file, F_SETLEASE, F_WRLCK), 0);
    }
    ~HeldFile() { close(file); }
    int file;
};

TEST_F(Reading, ServesTheNextVideoAndEndsWhateverADiskDoes) {
    const HeldFile held(folder.Write("held", "1"));
    reader->Open(folder / "held", [](const auto&) { FAIL(); });
    std::this_thread::sleep_for(1100ms);
    EXPECT_EQ(*Open(folder.Write("b", "seven b")), 7U);
    reader->Open(folder / "held", [](const auto&) { FAIL(); });
    reader.reset();
    threads.Join();
}
#endif

}  // namespace
}  // namespace sontaro::test
