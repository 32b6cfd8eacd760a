#include "batchsend/batch_run.h"

#include <algorithm>
#include <utility>

namespace sontaro {

namespace {

constexpr std::chrono::milliseconds kSecond{1000};

}  // namespace

BatchRun::BatchRun(VideoSource& source, BatchView& view, const ExchangeServices& exchange,
                   std::filesystem::path document)
    : source_(source),
      view_(view),
      exchange_(exchange),
      document_(std::move(document)),
      tick_(exchange.timers),
      self_(exchange.timers),
      muting_(exchange.hub.Subscribe(
          [this](const ExchangeNews&) { return running_ ? Boxes::kMuted : Boxes::kShown; })) {}

BatchRun::~BatchRun() { source_.Close(); }

void BatchRun::SetPlayers(std::vector<UploadPlayer> players) {
    rows_.clear();
    for (UploadPlayer& player : players) {
        rows_.emplace_back();
        rows_.back().player = std::move(player);
        if (!rows_.back().player.videos.empty()) rows_.back().status = UploadStatus::kWaiting;
    }
    current_ = 0;
    stopped_ = false;
    line_ = {};
    percent_ = 0;
    view_.StateChanged();
}

void BatchRun::Start() {
    if (running_ || rows_.empty()) return;
    for (UploadRow& row : rows_) {
        row.plan.clear();
        row.leftOut.clear();
        row.sent = row.confirmed = 0;
        row.status = UploadStatus::kWaiting;
        row.note = {};
        row.echoes.reset();
    }
    current_ = 0;
    isSecondRound_ = false;
    Begin();
}

void BatchRun::Continue() {
    if (!MayContinue()) return;
    SkipEnded();
    Begin();
}

void BatchRun::Begin() {
    running_ = true;
    stopped_ = false;
    owed_.reset();
    line_ = {};
    percent_ = 0;
    CloseLinks();
    for (std::size_t i = 0; i < rows_.size(); ++i) view_.RowChanged(i);
    view_.StateChanged();
    Look();
}

/// Sizes are asked for before a player is, each file's once. A disk may take its time.
void BatchRun::Look() {
    SizeOfFile unknown;
    for (const UploadRow& row : rows_)
        if (!IsFinal(row.status))
            for (const UploadVideo& video : row.player.videos) unknown.emplace(video.path, 0);
    std::vector<std::filesystem::path> files;
    for (const auto& [path, size] : unknown) files.push_back(path);
    NoteLooking(true);
    source_.LookAt(files, [this, files](const VideoSource::Sizes& sizes) {
        SizeOfFile known;
        for (std::size_t i = 0; i < files.size(); ++i) known.emplace(files[i], sizes[i]);
        Plan(known);
    });
}

void BatchRun::NoteLooking(bool isLooking) {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        UploadNote& note = rows_[i].note;
        if (isLooking ? IsFinal(rows_[i].status) : note.kind != UploadNote::Kind::kLooking)
            continue;
        note = {isLooking ? UploadNote::Kind::kLooking : UploadNote::Kind::kNone};
        view_.RowChanged(i);
    }
}

/// A player whose turn is over keeps the plan that it had.
void BatchRun::Plan(const SizeOfFile& sizes) {
    NoteLooking(false);
    for (std::size_t i = 0; i < rows_.size(); ++i)
        if (!IsFinal(rows_[i].status)) PlanRow(i, sizes);
    tick_.Start(kSecond, [this] { Tick(); });
    ServeNext();
}

/// What has been confirmed before stays where it is in the plan.
void BatchRun::PlanRow(std::size_t player, const SizeOfFile& sizes) {
    UploadRow& row = rows_[player];
    row.plan.resize(row.confirmed);
    row.leftOut.clear();
    const std::vector<PlannedVideo> confirmed = row.plan;
    for (std::size_t place = 0; place < row.player.videos.size(); ++place) {
        if (std::ranges::find(confirmed, place, &PlannedVideo::place) != confirmed.end()) continue;
        const UploadVideo& video = row.player.videos[place];
        const Result<std::uint64_t>& size = sizes.at(video.path);
        if (size && *size <= kLongestVideo && video.name.size() <= kLongestVideoName) {
            row.plan.push_back({place, *size});
            continue;
        }
        row.leftOut.push_back(place);
        row.note = {UploadNote::Kind::kUnreadable, video.name};
        view_.Heard({UploadEvent::Kind::kLeftOut, player, place, 0, row.status, row.note});
    }
    row.sent = row.confirmed;
    view_.RowChanged(player);
}

void BatchRun::Serve() {
    UploadRow& row = rows_[current_];
    row.status = UploadStatus::kInProgress;
    row.note = {};
    UploadOwner& owner = *this;
    upload_ = std::make_unique<PlayerUpload>(row, source_, exchange_, document_, owner);
    view_.Heard({UploadEvent::Kind::kPlayerBegun, current_, 0, row.BytesLeft(), row.status});
    view_.RowChanged(current_);
    upload_->Begin();
}

/// While an end is owed, the time of the player that has had its turn does not count.
void BatchRun::Tick() {
    tick_.Start(kSecond, [this] { Tick(); });
    if (upload_ && !owed_) upload_->Tick();
}

void BatchRun::Stop() {
    if (!running_) return;
    running_ = false;
    stopped_ = true;
    tick_.Stop();
    self_.Stop();
    if (!owed_) FailVideosInFlight({UploadNote::Kind::kStopped});
    owed_.reset();
    upload_.reset();
    source_.Close();
    NoteLooking(false);
    CloseLinks();
    view_.Heard({UploadEvent::Kind::kRunEnded, 0, 0, 0, {}, {UploadNote::Kind::kStopped}});
    view_.StateChanged();
}

void BatchRun::Handle(WindowMessage& message) {
    if (!running_) return;
    if (message.id == MessageId::kLinkEnded) return TakeEnd(message.origin);
    if (upload_ && !owed_) upload_->Handle(message);
}

void BatchRun::Heard(UploadEvent event) {
    event.player = current_;
    event.status = rows_[current_].status;
    view_.Heard(event);
}

void BatchRun::Changed() {
    line_ = upload_->Line();
    percent_ = upload_->Percent();
    view_.RowChanged(current_);
    view_.StateChanged();
}

/// A connection that ends by itself is a failure, one that was dropped is not, whatever has become
/// of the run since: each has a number of its own.
void BatchRun::TakeEnd(const Origin& origin) {
    if (owed_) {
        if (owed_->connection != 0 && origin.connection == owed_->connection) GoOn();
        return;
    }
    if (!upload_ || upload_->Connection() == 0 || origin.connection != upload_->Connection())
        return;
    UploadNote note = rows_[current_].note;
    if (note.kind != UploadNote::Kind::kNotSupported) note = {UploadNote::Kind::kLinkLost};
    EndPlayer(UploadStatus::kNetworkFailure, std::move(note));
    GoOn();
}

/// A player lacks what could not be read; where that is everything, it is as if its files could
/// not be read all the time. With no link that could end, the run goes on by itself.
void BatchRun::Ended(UploadStatus status, UploadNote note) {
    const UploadRow& row = rows_[current_];
    if (status == UploadStatus::kDone && !row.leftOut.empty()) {
        note = {UploadNote::Kind::kUnreadable, row.player.videos[row.leftOut.front()].name};
        if (row.plan.empty()) status = UploadStatus::kTimedOut;
    }
    EndPlayer(status, std::move(note));
    owed_ = OwedEnd{upload_->Connection()};
    CloseLinks();
    if (owed_->connection == 0) self_.Start(std::chrono::milliseconds(0), [this] { GoOn(); });
}

void BatchRun::EndPlayer(UploadStatus status, UploadNote note) {
    UploadRow& row = rows_[current_];
    row.status = status;
    row.note = note;
    if (status != UploadStatus::kDone) FailVideosInFlight(note);
    view_.Heard({UploadEvent::Kind::kPlayerEnded, current_, 0, 0, status, std::move(note)});
    view_.RowChanged(current_);
}

void BatchRun::FailVideosInFlight(const UploadNote& note) {
    if (!upload_) return;
    for (const std::size_t place : upload_->VideosInFlight())
        view_.Heard(
            {UploadEvent::Kind::kVideoFailed, current_, place, 0, rows_[current_].status, note});
}

void BatchRun::GoOn() {
    owed_.reset();
    upload_.reset();
    SkipEnded();
    if (current_ < rows_.size()) view_.Pause(kPause);
    ServeNext();
}

/// The files are looked at once more before a second round.
void BatchRun::ServeNext() {
    if (current_ < rows_.size()) return Serve();
    if (!BeginSecondRound()) return Finish();
    view_.Pause(kPause);
    Look();
}

void BatchRun::SkipEnded() {
    while (current_ < rows_.size() && IsFinal(rows_[current_].status)) ++current_;
}

bool BatchRun::BeginSecondRound() {
    if (!triesAgain_ || std::exchange(isSecondRound_, true)) return false;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (rows_[i].IsWhole()) continue;
        rows_[i].status = UploadStatus::kWaiting;
        rows_[i].sent = rows_[i].confirmed;
        view_.RowChanged(i);
    }
    const auto failed = std::ranges::find(rows_, UploadStatus::kWaiting, &UploadRow::status);
    if (failed == rows_.end()) return false;
    current_ = static_cast<std::size_t>(failed - rows_.begin());
    return true;
}

void BatchRun::Finish() {
    running_ = false;
    tick_.Stop();
    line_ = {UploadLine::Kind::kFinished};
    view_.Heard({UploadEvent::Kind::kRunEnded});
    view_.StateChanged();
}

void BatchRun::CloseLinks() {
    exchange_.channel.Send({}, std::make_shared<const Bytes>(), Boxes::kMuted);
}

}  // namespace sontaro
