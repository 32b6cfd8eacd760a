// The upload to one player: queries, videos, categories.
#pragma once

#include <deque>
#include <optional>
#include <utility>
#include <vector>

#include "batchsend/upload_owner.h"
#include "batchsend/video_source.h"
#include "exchange/conversation.h"

namespace sontaro {

/// Asks a player for its free space and sends it one video after another, each as an announcement
/// and chunks, and at last the document of the categories. What is not answered within 30 s is
/// repeated four times. User-interface thread.
class PlayerUpload {
   public:
    /// All references outlive the upload. `row` has a plan; videos that the player has confirmed
    /// are not sent again. `document` need not exist.
    PlayerUpload(UploadRow& row, VideoSource& source, const ExchangeServices& exchange,
                 std::filesystem::path document, UploadOwner& owner);
    ~PlayerUpload();
    PlayerUpload(const PlayerUpload&) = delete;
    PlayerUpload& operator=(const PlayerUpload&) = delete;

    void Begin();
    /// A second has gone by.
    void Tick();
    /// Takes a message that the main window forwards.
    void Handle(WindowMessage& message);

    /// The connection that the upload goes over, or has gone over last; 0: none yet.
    [[nodiscard]] ConnectionNumber Connection() const { return connection_; }
    [[nodiscard]] const UploadLine& Line() const { return line_; }
    [[nodiscard]] double Percent() const;  ///< of the video that is being sent
    [[nodiscard]] int SilentSeconds() const { return silence_; }  ///< since the last answer
    /// The places of the videos that have been announced and are not confirmed.
    [[nodiscard]] std::vector<std::size_t> VideosInFlight() const;

   private:
    enum class Step : std::uint8_t {
        kFirstQuery,
        kSecondQuery,
        kAnnounced,
        kChunks,
        kVideoSent,
        kDocument,
        kLateAnswers,  // all is confirmed; what has been repeated is still to be acknowledged
    };
    /// How far the player has come: the video in the plan, from 1 (0: the queries), and its steps
    /// and bytes. Only what goes beyond makes the upload patient again.
    using Point = std::pair<std::size_t, std::uint64_t>;
    /// The video that the source has open, and its size once that is known.
    struct Opening {
        std::size_t position = 0;
        std::optional<Result<std::uint64_t>> size = {};
    };
    /// A video whose last chunk has been acknowledged, as it seems.
    struct Unproven {
        std::size_t position = 0;
        std::uint64_t bytes = 0;
        std::size_t packets = 0;  // that it takes the acknowledgements of
    };
    using TakeReply = void (PlayerUpload::*)(const WindowMessage&);

    void Query();
    void TakeFirstAnswer(const WindowMessage& reply);
    void TakeSecondAnswer(const WindowMessage& reply);
    void Announce(std::size_t position);
    void BeginVideo();
    void Open(std::size_t position);
    void SendAnnouncement();
    void TakeAcknowledgement(const WindowMessage& reply);
    void ReadNext();
    void SendChunk(ReadChunk chunk);
    void AnnounceChanged();
    void BeginDocument();
    void TakeDocumentAnswer(const WindowMessage& reply);
    void Complete();
    void LearnEcho(bool isSame, UploadStep step);
    void Prove(std::size_t answers);
    void Repeat();
    void TalkAnew();
    void Ask(Request request, TakeReply take);
    void Upload(const SharedPacket& packet, UploadStep step);
    void NoteFailure(const Ended& ended);
    [[nodiscard]] UploadStep AwaitedStep() const;
    [[nodiscard]] std::size_t Place() const { return row_.plan[position_].place; }
    void Say(UploadNote note);
    void Reached(Point point);
    void Finish(UploadStatus status, UploadNote note = {});

    UploadRow& row_;
    VideoSource& source_;
    const ExchangeServices exchange_;
    const std::filesystem::path document_;
    UploadOwner& owner_;
    std::unique_ptr<Conversation> talk_;
    ConnectionNumber connection_ = 0;
    Step step_ = Step::kFirstQuery;
    Point farthest_;
    int seconds_ = 0;  // of the step
    int repeats_ = 0;
    int silence_ = 0;
    std::size_t position_ = 0;  // of the video in flight, in the plan
    std::optional<Opening> opening_;
    bool isAnnounced_ = false;
    std::uint64_t announced_ = 0;  // bytes of the video
    std::uint64_t sent_ = 0;
    bool hasChanged_ = false;  // its size, since it was announced first
    std::size_t packets_ = 0;  // of command 20 that have gone over this connection
    std::size_t answers_ = 0;  // acknowledgements that have come over it, at most as many
    std::deque<Unproven> unproven_;
    bool hasRepeated_ = false;  // over this connection
    UploadLine line_;
};

}  // namespace sontaro
