#include "cli/documents_reading.h"

#include <fmt/printf.h>

#include <algorithm>

#include "base/json.h"
#include "session/player_calls.h"

namespace sontaro::cli {

namespace {

/// So many blocks that are not answered, one after the other, and no answer before: nobody is
/// there.
constexpr int kMostLosses = 2;

constexpr LocalText kNoDocument = {"播放器发来的不是完整的文档：%s",
                                   "what the player has sent is no whole document: %s"};

/// Whether brackets or a text are open at the end, as far as can be told without reading it all.
bool EndsHalfway(std::string_view text) {
    int open = 0;
    bool isInText = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char character = text[i];
        if (character == '"') isInText = !isInText;
        if (isInText && character == '\\') ++i;
        if (isInText) continue;
        if (character == '{' || character == '[') ++open;
        if (character == '}' || character == ']') --open;
    }
    return isInText || open != 0;
}

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

void RefuseBroken(ReadDocuments& read) {
    for (BlockReading& block : read.documents.blocks) {
        if (block.outcome != BlockReading::Outcome::kRead || !EndsHalfway(block.text)) continue;
        const auto json = ParseJson(block.text);
        if (json) continue;
        block = {block.kind, BlockReading::Outcome::kFailed, "", "unreadable"};
        read.failures.push_back(FailureOf(
            "unreadable", fmt::sprintf(Localized(kNoDocument), json.reason()), block.kind->name));
    }
}

std::vector<const SettingsBlockKind*> AllKinds() {
    std::vector<const SettingsBlockKind*> kinds;
    for (const SettingsBlockKind& kind : SettingsBlocks()) kinds.push_back(&kind);
    return kinds;
}

}  // namespace sontaro::cli
