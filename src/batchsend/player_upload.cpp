#include "batchsend/player_upload.h"

#include <utility>

#include "base/path_text.h"
#include "exchange/player_requests.h"

namespace sontaro {

namespace {

constexpr int kStepSeconds = 30;
constexpr int kMostRepeats = 4;

/// One half of the player's data, which tells the free space.
Request AskFreeSpace(std::uint16_t part) {
    Request request = AskPlayerData(part);
    request.judge = [part](const WindowMessage& message) {
        return Verdict{FreeSpaceIn(message, part) ? Verdict::Kind::kReply
                                                  : Verdict::Kind::kNotMine};
    };
    return request;
}

}  // namespace

PlayerUpload::PlayerUpload(UploadRow& row, VideoSource& source, const ExchangeServices& exchange,
                           std::filesystem::path document, UploadOwner& owner)
    : row_(row),
      source_(source),
      exchange_(exchange),
      document_(std::move(document)),
      owner_(owner) {}

PlayerUpload::~PlayerUpload() { source_.Close(); }

void PlayerUpload::Begin() {
    TalkAnew();
    Query();
}

void PlayerUpload::Tick() {
    ++silence_;
    owner_.Changed();
    if (++seconds_ < kStepSeconds) return;
    seconds_ = 0;
    if (step_ == Step::kLateAnswers) return Finish(UploadStatus::kDone);
    if (repeats_ == kMostRepeats) return Finish(UploadStatus::kTimedOut, row_.note);
    ++repeats_;
    Repeat();
}

void PlayerUpload::Handle(WindowMessage& message) {
    const Origin& origin = message.origin;
    const bool isMine =
        origin.sender.ip == row_.player.target.ip && origin.connection == connection_;
    if (isMine && IsAcknowledgement(message) && answers_ < packets_) ++answers_;
    if (talk_) Prove(answers_);
    if (talk_) talk_->Take(message);
    if (talk_ && step_ == Step::kLateAnswers && answers_ == packets_) Finish(UploadStatus::kDone);
}

double PlayerUpload::Percent() const {
    if (announced_ == 0) return step_ >= Step::kVideoSent && !row_.plan.empty() ? 100 : 0;
    return 100 * static_cast<double>(sent_) / static_cast<double>(announced_);
}

std::vector<std::size_t> PlayerUpload::VideosInFlight() const {
    std::vector<std::size_t> places;
    for (const Unproven& video : unproven_) places.push_back(row_.plan[video.position].place);
    if (isAnnounced_) places.push_back(Place());
    return places;
}

/// A fresh conversation owes nothing: an acknowledgement counts for what was sent last, whatever
/// it was meant for, unless the player says so.
void PlayerUpload::TalkAnew() {
    talk_ = std::make_unique<Conversation>(exchange_, row_.player.target, Conversation::Listener{},
                                           Boxes::kMuted);
}

/// Time is counted by `Tick` alone. What went over an earlier connection is not answered over
/// another one, and chunks belong to the one over which their video was announced.
void PlayerUpload::Ask(Request request, TakeReply take) {
    request.limit = std::chrono::milliseconds(0);
    seconds_ = 0;
    talk_->Ask(std::move(request), [this, take](const Ended& ended) {
        if (ended.how != End::kReply) return NoteFailure(ended);
        silence_ = 0;
        (this->*take)(*ended.reply);
    });
    const ConnectionNumber connection = talk_->Connection();
    if (connection == 0 || connection == connection_) return;
    connection_ = connection;
    packets_ = answers_ = 0;
    hasRepeated_ = false;
    const bool sendsChunk = step_ == Step::kChunks || step_ == Step::kVideoSent;
    if (sendsChunk || !unproven_.empty())
        Finish(UploadStatus::kNetworkFailure, {UploadNote::Kind::kLinkLost});
}

void PlayerUpload::NoteFailure(const Ended& ended) {
    switch (ended.how) {
        case End::kNotSent: return Say({UploadNote::Kind::kNotSent, "", ended.reason});
        case End::kNotSupported: return Say({UploadNote::Kind::kNotSupported});
        case End::kRefused: return Say({UploadNote::Kind::kRefused});
        default: return;  // who ends it or hears of the link's end says more
    }
}

void PlayerUpload::Say(UploadNote note) {
    row_.note = std::move(note);
    owner_.Changed();
}

void PlayerUpload::Reached(Point point) {
    row_.note = {};
    if (point <= farthest_) return;
    farthest_ = point;
    repeats_ = 0;
}

void PlayerUpload::Finish(UploadStatus status, UploadNote note) {
    if (status == UploadStatus::kDone) Prove(packets_);
    talk_.reset();
    source_.Close();
    owner_.Ended(status, std::move(note));
}

void PlayerUpload::Query() {
    step_ = Step::kFirstQuery;
    Ask(AskFreeSpace(0), &PlayerUpload::TakeFirstAnswer);
}

void PlayerUpload::TakeFirstAnswer(const WindowMessage&) {
    Reached({0, 1});
    step_ = Step::kSecondQuery;
    Ask(AskFreeSpace(1), &PlayerUpload::TakeSecondAnswer);
}

void PlayerUpload::TakeSecondAnswer(const WindowMessage& reply) {
    Reached({0, 2});
    if (FreeSpaceIn(reply, 1) <= row_.BytesLeft()) return Finish(UploadStatus::kDiskTooSmall);
    row_.sent = row_.confirmed;
    Announce(row_.confirmed);
}

void PlayerUpload::Announce(std::size_t position) {
    position_ = position;
    isAnnounced_ = hasChanged_ = false;
    if (position == row_.plan.size()) return BeginDocument();
    line_ = {UploadLine::Kind::kSending, row_.VideoAt(position).name};
    BeginVideo();
}

void PlayerUpload::BeginVideo() {
    step_ = Step::kAnnounced;
    announced_ = sent_ = 0;
    seconds_ = 0;
    owner_.Changed();
    SendAnnouncement();
}

void PlayerUpload::Open(std::size_t position) {
    opening_ = Opening{position};
    source_.Open(row_.VideoAt(position).path, [this, position](const Result<std::uint64_t>& size) {
        opening_ = Opening{position, size};
        if (position == position_ && step_ == Step::kAnnounced) SendAnnouncement();
    });
}

/// The video may have been opened already, while the one before was on its way.
void PlayerUpload::SendAnnouncement() {
    if (!opening_ || opening_->position != position_) return Open(position_);
    if (!opening_->size) return;
    const UploadVideo& video = row_.VideoAt(position_);
    if (!*opening_->size || **opening_->size > kLongestVideo) {
        opening_.reset();
        return Say({UploadNote::Kind::kUnreadable, TextOfPath(video.path)});
    }
    isAnnounced_ = true;
    announced_ = row_.plan[position_].size = **opening_->size;
    owner_.Heard({UploadEvent::Kind::kVideoBegun, 0, Place(), announced_});
    Upload(VideoAnnouncement(video.name, announced_, video.code), UploadStep::kAnnouncement);
}

void PlayerUpload::Upload(const SharedPacket& packet, UploadStep step) {
    const auto judge = [this, step](const WindowMessage& message) {
        const bool isStale =
            row_.echoes.value_or(false) && QualifierOf(message) != static_cast<std::uint8_t>(step);
        const bool isMine = IsAcknowledgement(message) && !isStale;
        return Verdict{isMine ? Verdict::Kind::kReply : Verdict::Kind::kNotMine};
    };
    Ask({packet, judge}, &PlayerUpload::TakeAcknowledgement);
    if (talk_ && talk_->IsAsking()) ++packets_;
}

UploadStep PlayerUpload::AwaitedStep() const {
    if (step_ == Step::kAnnounced) return UploadStep::kAnnouncement;
    return step_ == Step::kVideoSent ? UploadStep::kLastChunk : UploadStep::kChunk;
}

void PlayerUpload::TakeAcknowledgement(const WindowMessage& reply) {
    const UploadStep step = AwaitedStep();
    LearnEcho(QualifierOf(reply) == static_cast<std::uint8_t>(step), step);
    const bool isWhole = step == UploadStep::kLastChunk;
    Reached(isWhole ? Point{position_ + 2, 0} : Point{position_ + 1, 1 + sent_});
    owner_.Heard({UploadEvent::Kind::kAcknowledged, 0, Place(), sent_});
    if (!isWhole) return ReadNext();
    unproven_.push_back({position_, sent_, packets_});
    Prove(answers_);
    Announce(position_ + 1);
}

/// A player may always send the same qualifier, which now and then is that of the packet: once it
/// was another one where nothing had been sent twice, it tells nothing.
void PlayerUpload::LearnEcho(bool isSame, UploadStep step) {
    if (!isSame && !hasRepeated_) row_.echoes = false;
    if (isSame && step != UploadStep::kAnnouncement && !row_.echoes) row_.echoes = true;
}

/// After a repetition an acknowledgement may have been taken for that of something later: only
/// their number tells that nothing of a video is still to be acknowledged.
void PlayerUpload::Prove(std::size_t answers) {
    while (!unproven_.empty() && unproven_.front().packets <= answers) {
        const Unproven video = unproven_.front();
        unproven_.pop_front();
        row_.confirmed = video.position + 1;
        owner_.Heard(
            {UploadEvent::Kind::kVideoDone, 0, row_.plan[video.position].place, video.bytes});
    }
}

void PlayerUpload::ReadNext() {
    step_ = Step::kChunks;
    source_.Next([this](ReadChunk chunk) { SendChunk(std::move(chunk)); });
}

void PlayerUpload::SendChunk(ReadChunk chunk) {
    const UploadVideo& video = row_.VideoAt(position_);
    if (!chunk.trouble.empty()) return Say({UploadNote::Kind::kUnreadable, TextOfPath(video.path)});
    const std::uint64_t sent = sent_ + chunk.buffer->size() - kHeaderSize;
    if (sent > announced_ || (chunk.isEnd && sent < announced_)) return AnnounceChanged();
    sent_ = sent;
    UploadStep step = UploadStep::kChunk;
    if (chunk.isEnd) {
        step = UploadStep::kLastChunk;
        step_ = Step::kVideoSent;
    }
    const std::uint16_t number = ChunkNumber(sent_);
    Upload(VideoChunk(std::move(chunk.buffer), number, video.code, step), step);
    if (!talk_) return;
    if (chunk.isEnd && talk_->IsAsking()) {
        row_.sent = position_ + 1;
        if (row_.sent < row_.plan.size()) Open(row_.sent);
    }
    owner_.Changed();
}

/// The player waits for another number of bytes than there are.
void PlayerUpload::AnnounceChanged() {
    if (std::exchange(hasChanged_, true))
        return Finish(UploadStatus::kNetworkFailure,
                      {UploadNote::Kind::kChanged, TextOfPath(row_.VideoAt(position_).path)});
    opening_.reset();
    BeginVideo();
}

void PlayerUpload::BeginDocument() {
    step_ = Step::kDocument;
    seconds_ = 0;
    owner_.Changed();
    source_.ReadDocument(document_, [this](const VideoSource::Document& document) {
        if (!document) return Say({UploadNote::Kind::kUnreadable, TextOfPath(document_)});
        if (!*document) return Complete();
        Ask({VideoTypePacket(**document), JudgeVideoTypes}, &PlayerUpload::TakeDocumentAnswer);
    });
}

void PlayerUpload::TakeDocumentAnswer(const WindowMessage&) { Complete(); }

void PlayerUpload::Complete() {
    row_.note = {};
    if (answers_ == packets_) return Finish(UploadStatus::kDone);
    step_ = Step::kLateAnswers;
    seconds_ = 0;
}

void PlayerUpload::Repeat() {
    TalkAnew();
    switch (step_) {
        case Step::kFirstQuery:
        case Step::kSecondQuery: return Query();
        case Step::kDocument: return BeginDocument();
        default: break;
    }
    hasRepeated_ = true;
    row_.sent = position_;
    line_ = {UploadLine::Kind::kResending, row_.VideoAt(position_).name};
    opening_.reset();
    BeginVideo();
}

}  // namespace sontaro
