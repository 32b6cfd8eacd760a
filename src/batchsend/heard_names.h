// What players call their categories.
#pragma once

#include <map>

#include "batchsend/player_facts.h"
#include "batchsend/video_set.h"

namespace sontaro {

/// The names that players have told, kept by the players' addresses until they tell others.
class HeardNames {
   public:
    /// From now on it is about these players, in this order.
    void SetPlayers(const Elements<SetPlayer>& players);
    /// Takes what the player at that place has answered, if there are names in it.
    void Take(std::size_t player, const PlayerFacts& facts);

    /// The names of that player; where it has told none, those of the first one in order that has.
    /// Absent: nobody has.
    [[nodiscard]] const CategoryNames* Of(std::optional<std::size_t> player) const;
    /// Those, and behind them the names of all others that have told theirs. They are this
    /// object's.
    [[nodiscard]] ToldNames All(std::optional<std::size_t> player) const;
    /// Whose names those are; empty: nobody's.
    [[nodiscard]] std::string SourceOf(std::optional<std::size_t> player) const;
    /// Whether any of them calls a slot by another name than the user has given it, or may do so
    /// as it has not told its names.
    [[nodiscard]] bool HaveOthersThan(
        const std::array<CategoryAlias, kVideoCategories>& aliases) const;
    /// Whether players call a slot by different names.
    [[nodiscard]] bool Differ(std::size_t slot) const;
    /// The addresses of those that have not told names, for the user; empty: there are none.
    [[nodiscard]] std::string Silent() const;
    /// What each of them calls it, for the user.
    [[nodiscard]] std::string Told(std::size_t slot) const;

    bool operator==(const HeardNames&) const = default;

   private:
    std::vector<std::string> addresses_;
    std::map<std::string, CategoryNames> names_;
};

}  // namespace sontaro
