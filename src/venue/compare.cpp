#include "venue/compare.h"

#include <algorithm>
#include <map>
#include <set>

#include "base/json.h"
#include "venue/document_leaves.h"
#include "venue/sha256.h"

namespace sontaro {

namespace {

using Sides = BlockComparison::Sides;

/// Where the commands of a timeline stand, which are known by their rows.
constexpr const char* kCommands = "cmdInfos";
constexpr const char* kCommandsOfVideo = "cmdList";

/// The rows that are told already.
class ToldRows {
   public:
    explicit ToldRows(const std::vector<RowDifference>& differences) {
        for (const RowDifference& difference : differences) paths_.insert(difference.path);
    }
    /// Whether one of them shows the leaf.
    [[nodiscard]] bool Tell(const DocumentLeaf& leaf) const {
        if (leaf.item.empty()) return Has(leaf.path);
        return leaf.IsSelect() && (Has(leaf.item) || HasUnder(leaf.item));
    }

   private:
    /// A row at that path, or at one that leads to it.
    [[nodiscard]] bool Has(const std::string& path) const {
        for (std::size_t end = path.size(); end != std::string::npos && end > 0;
             end = path.rfind('/', end - 1))
            if (paths_.contains(path.substr(0, end))) return true;
        return false;
    }
    [[nodiscard]] bool HasUnder(const std::string& path) const {
        const auto row = paths_.lower_bound(path + '/');
        return row != paths_.end() && IsUnder(*row, path);
    }

    std::set<std::string> paths_;
};

/// The leaves of a document by their paths.
class LeafTable {
   public:
    LeafTable(const SettingsBlockKind& kind, const Json::Value& document)
        : leaves_(LeavesOf(kind, document)) {
        for (const DocumentLeaf& leaf : leaves_) values_.emplace(leaf.path, leaf.value);
    }

    [[nodiscard]] const std::vector<DocumentLeaf>& Leaves() const { return leaves_; }
    /// Null when there is none.
    [[nodiscard]] const Json::Value* Find(const std::string& path) const {
        const auto value = values_.find(path);
        return value == values_.end() ? nullptr : value->second;
    }

   private:
    std::vector<DocumentLeaf> leaves_;
    std::map<std::string, const Json::Value*> values_;
};

/// A value of a list that stands for a set, in an order of its own.
std::vector<std::string> SortedTexts(const Json::Value& list) {
    std::vector<std::string> texts;
    for (const Json::Value& element : list) texts.push_back(LeafText(element));
    std::ranges::sort(texts);
    return texts;
}

/// Players may hold fractions in single precision, and the chosen ones of several in any order.
bool IsSameValue(const DocumentLeaf& leaf, const Json::Value& other) {
    const Json::Value& value = *leaf.value;
    if (IsSameLeaf(value, other)) return true;
    if (leaf.IsSelect() && value.isArray() && other.isArray())
        return SortedTexts(value) == SortedTexts(other);
    const bool areFractions =
        value.isNumeric() && other.isNumeric() && !(value.isIntegral() && other.isIntegral());
    return areFractions && value.asFloat() == other.asFloat();
}

/// Whether it is there for its own sake: what describes a setting comes with its value.
bool IsValue(const DocumentLeaf& leaf) {
    return leaf.item.empty() || (leaf.IsSelect() && !leaf.IsOfTitle());
}

/// Whether the leaf is all that a document has to say there, and says nothing.
bool IsNothing(const DocumentLeaf& leaf) { return leaf.value->empty(); }

/// Adds what differs besides those rows.
void AddLeaves(const SettingsBlockKind& kind, const Json::Value& first, const Json::Value& second,
               std::vector<RowDifference>& differences) {
    const ToldRows told(differences);
    const LeafTable one(kind, first);
    const LeafTable other(kind, second);
    for (const DocumentLeaf& leaf : one.Leaves()) {
        const Json::Value* value = other.Find(leaf.path);
        if (!IsValue(leaf) || told.Tell(leaf) ||
            (value ? IsSameValue(leaf, *value) : IsNothing(leaf)))
            continue;
        differences.push_back({leaf.path, "", LeafText(*leaf.value),
                               value ? std::optional(LeafText(*value)) : std::nullopt});
    }
    for (const DocumentLeaf& leaf : other.Leaves())
        if (IsValue(leaf) && !one.Find(leaf.path) && !IsNothing(leaf) && !told.Tell(leaf))
            differences.push_back({leaf.path, "", std::nullopt, LeafText(*leaf.value)});
}

/// The commands of a timeline in an order of their own, which players do not keep.
Json::Value SortedTimeline(const Json::Value& document) {
    std::multiset<std::string> commands;
    const Json::Value& groups = document[kCommands];
    Json::Value rest = document;
    rest.removeMember(kCommands);
    if (groups.isArray())
        for (const Json::Value& group : groups) {
            if (!group.isObject() || !group[kCommandsOfVideo].isArray()) {
                commands.insert(WriteJsonLine(group));
                continue;
            }
            Json::Value frame = group;
            frame.removeMember(kCommandsOfVideo);
            const std::string video = WriteJsonLine(frame);
            for (const Json::Value& command : group[kCommandsOfVideo])
                commands.insert(video + WriteJsonLine(command));
        }
    Json::Value& sorted = rest[kCommands] = Json::Value(Json::arrayValue);
    for (const std::string& command : commands) sorted.append(command);
    return rest;
}

/// Whether players may mean `written` by `value`, which is written in another way.
bool IsMeant(const Json::Value& value, const Json::Value& written) {
    const auto number = [](const Json::Value& json) { return json.isNumeric() || json.isBool(); };
    if (number(value) && number(written)) return value.asDouble() == written.asDouble();
    return LeafText(value) == LeafText(written);
}

// NOLINTBEGIN(misc-no-recursion): values hold values, which the reader limits

/// Gives `document` what `written`, the same settings as this program writes them, has besides, and
/// the same values in the same way. What is empty there has nothing left out: it says that there is
/// nothing.
void TakeForm(const Json::Value& written, Json::Value& document) {
    if (document.empty()) return;
    if (written.isObject() && document.isObject()) {
        for (auto member = written.begin(); member != written.end(); ++member) {
            Json::Value& own = document[member.name()];
            if (own.isNull())
                own = *member;
            else
                TakeForm(*member, own);
        }
    } else if (written.isArray() && document.isArray()) {
        for (Json::ArrayIndex i = 0; i < written.size(); ++i) {
            if (i < document.size())
                TakeForm(written[i], document[i]);
            else
                document.append(written[i]);
        }
    } else if (IsMeant(document, written)) {
        document = written;
    }
}

// NOLINTEND(misc-no-recursion)

/// The document with all that its rows stand for, in the form that this program would give it.
/// Settings that describe themselves have no other than their own.
Json::Value InOneForm(const SettingsBlockKind& kind, const std::string& text,
                      const Json::Value& json) {
    const std::unique_ptr<SettingsDocument> document = kind.makeDocument();
    if (kind.describesItself || !document->TakeReply(text) || !document->HasSettings()) return json;
    const auto written = ParseJson(document->Write());
    if (!written) return json;
    if (kind.readBlock == kBlockPlayerTimeline) return SortedTimeline(*written);
    Json::Value formed = json;
    TakeForm(*written, formed);
    return formed;
}

void AddBesideRows(const SettingsBlockKind& kind, const std::string& first,
                   const std::string& second, BlockComparison& comparison) {
    const auto firstJson = ParseJson(first);
    const auto secondJson = ParseJson(second);
    std::vector<RowDifference>& differences = comparison.differences;
    const RowDifference whole{"", "", Sha256Text(first), Sha256Text(second)};
    if (!firstJson || !secondJson || !firstJson->isObject() || !secondJson->isObject()) {
        if (differences.empty()) differences.push_back(whole);
        return;
    }
    if (*firstJson == *secondJson) return;
    const Json::Value one = InOneForm(kind, first, *firstJson);
    const Json::Value other = InOneForm(kind, second, *secondJson);
    if (kind.readBlock != kBlockPlayerTimeline)
        AddLeaves(kind, one, other, differences);
    else if (differences.empty() && one != other)
        differences.push_back(whole);
    comparison.isOtherForm = differences.empty();
}

bool HasFailed(const BlockReading* reading) {
    return reading != nullptr && reading->outcome == BlockReading::Outcome::kFailed;
}

/// The block of a player that has no such player on the other side, or could not be read there.
BlockComparison OneSided(const BlockReading& reading, Sides sides, const BlockReading* other) {
    BlockComparison comparison{reading.kind, sides};
    if (HasFailed(other)) comparison.why = other->why;
    return comparison;
}

bool IsRead(const BlockReading* reading) {
    return reading != nullptr && reading->outcome == BlockReading::Outcome::kRead;
}

template <class Documents>
Result<std::vector<PlayerComparison>> CompareMatched(const Backup& first,
                                                     std::span<const VenuePlayer> second,
                                                     const std::vector<const VenuePlayer*>& shown,
                                                     const Documents& documents) {
    std::vector<VenuePlayer> players;
    for (const ManifestPlayer& entry : first.Manifest().players) players.push_back(entry.player);
    std::vector<PlayerComparison> comparisons;
    for (const MatchedPlayers& match : MatchPlayers(players, second)) {
        PlayerComparison& comparison = comparisons.emplace_back();
        if (match.first) comparison.first = &first.Manifest().players[*match.first].player;
        if (match.second) comparison.second = shown[*match.second];
        if (!match.first || !match.second) continue;
        const Result<PlayerDocuments> one = first.Documents(*match.first);
        if (!one) return Error{one.reason()};
        const Result<PlayerDocuments> other = documents(*match.second);
        if (!other) return Error{other.reason()};
        comparison.blocks = ComparePlayers(*one, *other).blocks;
    }
    return comparisons;
}

}  // namespace

BlockComparison CompareTexts(const SettingsBlockKind& kind, const std::string& first,
                             const std::string& second) {
    BlockComparison comparison{&kind};
    if (first == second) return comparison;
    const BlockDocument one(kind, first, BlockDocument::Source::kPlayer);
    const BlockDocument other(kind, second, BlockDocument::Source::kPlayer);
    std::vector<RowDifference>& differences = comparison.differences;
    if (one.Usable() && other.Usable()) differences = DifferencesBetween(one, other);
    AddBesideRows(kind, first, second, comparison);
    if (differences.size() > kMostDifferences) {
        comparison.notListed = differences.size() - kMostDifferences;
        differences.resize(kMostDifferences);
    }
    return comparison;
}

PlayerComparison ComparePlayers(const PlayerDocuments& first, const PlayerDocuments& second) {
    PlayerComparison comparison{&first.player, &second.player};
    for (const SettingsBlockKind& kind : SettingsBlocks()) {
        const BlockReading* one = first.Find(kind);
        const BlockReading* other = second.Find(kind);
        if (IsRead(one) && IsRead(other)) {
            BlockComparison block = CompareTexts(kind, one->text, other->text);
            if (!block.differences.empty() || block.isOtherForm)
                comparison.blocks.push_back(std::move(block));
        } else if (IsRead(one)) {
            comparison.blocks.push_back(OneSided(*one, Sides::kFirstOnly, other));
        } else if (IsRead(other)) {
            comparison.blocks.push_back(OneSided(*other, Sides::kSecondOnly, one));
        } else if (const BlockReading* failed = HasFailed(one) ? one : other; HasFailed(failed)) {
            comparison.blocks.push_back(OneSided(*failed, Sides::kNeither, failed));
        }
    }
    return comparison;
}

std::vector<MatchedPlayers> MatchPlayers(std::span<const VenuePlayer> first,
                                         std::span<const VenuePlayer> second) {
    std::vector<MatchedPlayers> matches;
    for (std::size_t i = 0; i < first.size(); ++i) matches.push_back({i, std::nullopt});
    std::vector<bool> isMatched(second.size());
    // Who has the same address as well comes first: several players may have one ID.
    for (const bool byMac : {true, false})
        for (std::size_t i = 0; i < first.size(); ++i)
            for (std::size_t k = 0; k < second.size() && !matches[i].second; ++k)
                if (!isMatched[k] && first[i].id == second[k].id &&
                    (!byMac || first[i].mac == second[k].mac)) {
                    matches[i].second = k;
                    isMatched[k] = true;
                }
    for (std::size_t k = 0; k < second.size(); ++k)
        if (!isMatched[k]) matches.push_back({std::nullopt, k});
    return matches;
}

Result<std::vector<PlayerComparison>> CompareBackups(const Backup& first, const Backup& second) {
    std::vector<VenuePlayer> players;
    std::vector<const VenuePlayer*> shown;
    for (const ManifestPlayer& entry : second.Manifest().players) {
        players.push_back(entry.player);
        shown.push_back(&entry.player);
    }
    return CompareMatched(first, players, shown,
                          [&](std::size_t player) { return second.Documents(player); });
}

Result<std::vector<PlayerComparison>> CompareWithVenue(const Backup& first,
                                                       std::span<const PlayerDocuments> second,
                                                       bool isWhole) {
    std::vector<VenuePlayer> players;
    std::vector<const VenuePlayer*> shown;
    for (const PlayerDocuments& documents : second) {
        players.push_back(documents.player);
        shown.push_back(&documents.player);
    }
    auto compared = CompareMatched(first, players, shown, [&](std::size_t player) {
        return Result<PlayerDocuments>(second[player]);
    });
    if (compared && !isWhole)
        std::erase_if(*compared,
                      [](const PlayerComparison& player) { return player.second == nullptr; });
    return compared;
}

}  // namespace sontaro
