#include "cli/documents_reading.h"

#include <algorithm>

#include "session/player_calls.h"

namespace sontaro::cli {

namespace {

/// So many blocks that are not answered, one after the other, and no answer before: nobody is
/// there.
constexpr int kMostLosses = 2;

bool IsLost(const SessionEnd& end) {
    return end.how == End::kNotSent || end.how == End::kLinkEnded || end.how == End::kTimedOut;
}

}  // namespace

bool ReadDocuments::HasAny() const {
    return std::ranges::any_of(documents.blocks, [](const BlockReading& block) {
        return block.outcome == BlockReading::Outcome::kRead;
    });
}

ReadDocuments ReadAll(Session& session, const DeviceRecord& player,
                      std::span<const SettingsBlockKind* const> kinds) {
    using Outcome = BlockReading::Outcome;
    ReadDocuments read{{VenuePlayerOf(player), {}}};
    std::optional<SessionEnd> last;
    int losses = 0;
    bool hasAnswered = false;
    for (const SettingsBlockKind* kind : kinds) {
        BlockReading& block = read.documents.blocks.emplace_back(BlockReading{kind});
        const bool isGivenUp = !hasAnswered && losses >= kMostLosses;
        if (!isGivenUp) {
            auto text = ReadBlockText(session, *kind);
            last = text.HowItEnded();
            if (text) block.text = std::move(*text);
            losses = IsLost(*last) ? losses + 1 : 0;
            hasAnswered = hasAnswered || (!IsLost(*last) && last->how != End::kCancelled);
        }
        if (*last) continue;
        block.outcome = last->how == End::kNotSupported ? Outcome::kNotSupported : Outcome::kFailed;
        if (block.outcome == Outcome::kNotSupported) continue;
        block.why = WordFor(*last);
        if (!isGivenUp) read.failures.push_back(FailureOf(*last, kind->name));
        if (last->how == End::kCancelled) break;
    }
    return read;
}

std::vector<const SettingsBlockKind*> AllKinds() {
    std::vector<const SettingsBlockKind*> kinds;
    for (const SettingsBlockKind& kind : SettingsBlocks()) kinds.push_back(&kind);
    return kinds;
}

}  // namespace sontaro::cli
