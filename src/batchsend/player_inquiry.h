// Asks many players what is to be known of them.
#pragma once

#include <deque>

#include "batchsend/player_facts.h"
#include "exchange/conversation.h"

namespace sontaro {

enum class InquiryState : std::uint8_t {
    kNotAsked,
    kWaiting,  ///< for its turn
    kAsking,
    kAnswered,
    kSilent,       ///< it has not answered in time
    kUnreachable,  ///< there is no connection to it
    kLinkLost,
};

/// Asks nothing but questions, of at most nine players at once: each needs a link of its own. All
/// links are closed before such a round, and none is made in it once one has ended, as it could
/// lead to another player. User-interface thread.
class PlayerInquiry {
   public:
    enum class Question : std::uint8_t { kMode, kFreeSpace, kVideos, kControlProtocol };

    /// A question may take that long.
    static constexpr std::chrono::milliseconds kLimit{5000};

    /// `changed` is called with the place of a player whose state or facts have changed. It must
    /// not destroy the inquiry.
    PlayerInquiry(const ExchangeServices& exchange, std::function<void(std::size_t)> changed);
    ~PlayerInquiry();
    PlayerInquiry(const PlayerInquiry&) = delete;
    PlayerInquiry& operator=(const PlayerInquiry&) = delete;

    /// Asks all of them, in place of whom it was asking; nothing is known of them at first.
    void Ask(std::vector<Target> players, std::vector<Question> questions);
    /// Asks one of them once more, as soon as the others have had their turn.
    void AskAgain(std::size_t player);
    void Cancel();
    /// Takes a message that the main window forwards.
    void Handle(WindowMessage& message);

    [[nodiscard]] bool IsAsking() const;
    [[nodiscard]] std::size_t PlayerCount() const { return players_.size(); }
    /// With whom it is through, whatever has come of it.
    [[nodiscard]] std::size_t PlayersDone() const;
    [[nodiscard]] InquiryState StateOf(std::size_t player) const { return players_[player].state; }
    [[nodiscard]] const PlayerFacts& FactsOf(std::size_t player) const {
        return players_[player].facts;
    }

   private:
    struct Player {
        Target target;
        InquiryState state = InquiryState::kNotAsked;
        PlayerFacts facts = {};
        std::vector<Question> unsupported = {};
        std::size_t question = 0;  // of those that are asked, the one that is open
        std::unique_ptr<Conversation> talk = {};
    };

    void BeginRound();
    void ConnectNext();
    void AskNext(std::size_t place);
    void Take(std::size_t place, const Ended& ended);
    void LinkEnded(std::size_t place);
    void Leave(std::size_t place, InquiryState state);
    void EndRoundIfOver();
    [[nodiscard]] static bool IsSkipped(const Player& player, Question question);

    const ExchangeServices exchange_;
    const std::function<void(std::size_t)> changed_;
    std::vector<Player> players_;
    std::vector<Question> questions_;
    std::deque<std::size_t> waiting_;  // players, for a connection
    std::size_t connected_ = 0;        // in this round
    bool mayConnect_ = false;          // no link has ended in this round
    bool wasRefused_ = false;          // a question, after which the main window closes all links
    Timer next_;
};

}  // namespace sontaro
