#include "batchsend/player_inquiry.h"

#include <algorithm>
#include <utility>

#include "exchange/player_requests.h"

namespace sontaro {

namespace {

using Question = PlayerInquiry::Question;
using State = InquiryState;

constexpr std::size_t kMostAtOnce = 9;  // as many as there are links
constexpr std::chrono::milliseconds kAtOnce{0};

Request RequestFor(Question question) {
    switch (question) {
        case Question::kMode: return AskPlayerMode();
        case Question::kFreeSpace: return AskPlayerData(0);
        case Question::kVideos: return AskVideoList(VideoListFor::kTimeline);
        case Question::kControlProtocol: return ReadSettings(kBlockControlProtocol);
    }
    return {};
}

void TakeAnswer(Question question, const WindowMessage& answer, PlayerFacts& facts) {
    switch (question) {
        case Question::kMode: facts.mode = ModeIn(answer); return;
        case Question::kFreeSpace: facts.free = FreeSpaceIn(answer, 0); return;
        case Question::kControlProtocol:
            facts.controlProtocol = std::string(AsText(PayloadOf(answer)));
            return;
        case Question::kVideos:
            if (auto list = ReadVideoList(AsText(PayloadOf(answer)))) facts.videos = *list;
            return;
    }
}

}  // namespace

PlayerInquiry::PlayerInquiry(const ExchangeServices& exchange,
                             std::function<void(std::size_t)> changed)
    : exchange_(exchange), changed_(std::move(changed)), next_(exchange.timers) {}

PlayerInquiry::~PlayerInquiry() = default;

void PlayerInquiry::Ask(std::vector<Target> players, std::vector<Question> questions) {
    Cancel();
    players_.clear();
    for (Target& target : players) players_.push_back({std::move(target)});
    questions_ = std::move(questions);
    for (std::size_t i = 0; i < players_.size(); ++i) AskAgain(i);
}

void PlayerInquiry::AskAgain(std::size_t player) {
    const State state = players_[player].state;
    if (state == State::kWaiting || state == State::kAsking) return;
    const bool isFirst = !IsAsking();
    players_[player].state = State::kWaiting;
    players_[player].facts = {};
    waiting_.push_back(player);
    changed_(player);
    if (isFirst) BeginRound();
}

void PlayerInquiry::Cancel() {
    next_.Stop();
    waiting_.clear();
    for (Player& player : players_) {
        player.talk.reset();
        if (player.state == State::kWaiting || player.state == State::kAsking)
            player.state = State::kNotAsked;
    }
}

bool PlayerInquiry::IsAsking() const {
    return !waiting_.empty() ||
           std::ranges::find(players_, State::kAsking, &Player::state) != players_.end();
}

std::size_t PlayerInquiry::PlayersDone() const {
    return static_cast<std::size_t>(std::ranges::count_if(players_, [](const Player& player) {
        return player.state != State::kWaiting && player.state != State::kAsking;
    }));
}

void PlayerInquiry::BeginRound() {
    connected_ = 0;
    mayConnect_ = true;
    wasRefused_ = false;
    exchange_.channel.Send({}, std::make_shared<const Bytes>(), Boxes::kMuted);
    next_.Start(kAtOnce, [this] { ConnectNext(); });
}

/// Connecting may block: one after another, so that the window is drawn in between.
void PlayerInquiry::ConnectNext() {
    if (waiting_.empty() || !mayConnect_ || connected_ == kMostAtOnce) return EndRoundIfOver();
    const std::size_t place = waiting_.front();
    waiting_.pop_front();
    ++connected_;
    Player& player = players_[place];
    player.question = 0;
    player.state = State::kAsking;
    player.talk = std::make_unique<Conversation>(
        exchange_, player.target,
        Conversation::Listener{[](WindowMessage&) {}, [this, place] { LinkEnded(place); }},
        Boxes::kMuted);
    next_.Start(kAtOnce, [this] { ConnectNext(); });
    AskNext(place);
}

bool PlayerInquiry::IsSkipped(const Player& player, Question question) {
    return std::ranges::find(player.unsupported, question) != player.unsupported.end();
}

void PlayerInquiry::AskNext(std::size_t place) {
    Player& player = players_[place];
    while (player.question < questions_.size() && IsSkipped(player, questions_[player.question]))
        ++player.question;
    if (player.question == questions_.size()) return Leave(place, State::kAnswered);
    changed_(place);
    Request request = RequestFor(questions_[player.question]);
    request.limit = kLimit;
    player.talk->Ask(std::move(request), [this, place](const Ended& ended) { Take(place, ended); });
}

void PlayerInquiry::Take(std::size_t place, const Ended& ended) {
    Player& player = players_[place];
    switch (ended.how) {
        case End::kReply:
            player.facts.isReached = true;
            TakeAnswer(questions_[player.question++], *ended.reply, player.facts);
            return AskNext(place);
        case End::kRefused: ++player.question; return AskNext(place);
        case End::kNotSupported:
            wasRefused_ = true;
            player.facts.isReached = true;
            player.unsupported.push_back(questions_[player.question]);
            return;
        case End::kNotSent: return Leave(place, State::kUnreachable);
        case End::kTimedOut: return Leave(place, State::kSilent);
        case End::kLinkEnded:  // which the listener is told
        case End::kCancelled: return;
    }
}

/// What the main window has closed because of another question is asked again, in another round.
void PlayerInquiry::LinkEnded(std::size_t place) {
    mayConnect_ = false;
    if (players_[place].state != State::kAsking) return;
    if (!wasRefused_) return Leave(place, State::kLinkLost);
    waiting_.push_back(place);
    Leave(place, State::kWaiting);
}

/// The conversation stays until the link ends, as the end of any link counts.
void PlayerInquiry::Leave(std::size_t place, State state) {
    players_[place].state = state;
    players_[place].facts.isAsked = state != State::kWaiting;
    changed_(place);
    if (!next_.IsRunning()) EndRoundIfOver();
}

void PlayerInquiry::EndRoundIfOver() {
    const auto isAsked = [](const Player& player) { return player.state == State::kAsking; };
    if (std::ranges::any_of(players_, isAsked) || waiting_.empty()) return;
    // Not at once: this may be within a call of a conversation that a new one is to replace.
    next_.Start(kAtOnce, [this] { BeginRound(); });
}

void PlayerInquiry::Handle(WindowMessage& message) {
    for (const Player& player : players_)
        if (player.talk && player.talk->Take(message)) return;
}

}  // namespace sontaro
