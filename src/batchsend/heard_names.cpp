#include "batchsend/heard_names.h"

#include <algorithm>

#include "base/local_text.h"
#include "batchsend/video_types.h"

namespace sontaro {

namespace {

constexpr LocalText kNoName = {"（无）", "(none)"};
constexpr LocalText kBetween = {"；", "; "};
constexpr LocalText kNext = {"、", ", "};
constexpr LocalText kColon = {"：", ": "};

}  // namespace

void HeardNames::SetPlayers(const Elements<SetPlayer>& players) {
    addresses_.clear();
    for (const SetPlayer& player : players) addresses_.push_back(player.ip);
}

void HeardNames::Take(std::size_t player, const PlayerFacts& facts) {
    if (!facts.controlProtocol) return;
    if (auto names = ReadCategoryNames(*facts.controlProtocol))
        names_[addresses_[player]] = std::move(*names);
}

const CategoryNames* HeardNames::Of(std::optional<std::size_t> player) const {
    const auto names = names_.find(SourceOf(player));
    return names == names_.end() ? nullptr : &names->second;
}

ToldNames HeardNames::All(std::optional<std::size_t> player) const {
    const CategoryNames* const first = Of(player);
    if (!first) return {};
    ToldNames all = {first};
    for (const std::string& address : addresses_) {
        const auto names = names_.find(address);
        if (names != names_.end() && &names->second != first) all.push_back(&names->second);
    }
    return all;
}

std::string HeardNames::SourceOf(std::optional<std::size_t> player) const {
    if (player && names_.contains(addresses_[*player])) return addresses_[*player];
    for (const std::string& address : addresses_)
        if (names_.contains(address)) return address;
    return "";
}

bool HeardNames::HaveOthersThan(const std::array<CategoryAlias, kVideoCategories>& aliases) const {
    for (std::size_t slot = 0; slot < kVideoCategories; ++slot) {
        const std::string& alias = aliases.at(slot).name;
        const auto isOther = [&](const std::string& address) {
            const auto names = names_.find(address);
            return names == names_.end() || names->second.at(slot) != alias;
        };
        if (!alias.empty() && std::ranges::any_of(addresses_, isOther)) return true;
    }
    return false;
}

bool HeardNames::Differ(std::size_t slot) const {
    const std::string* first = nullptr;
    for (const std::string& address : addresses_) {
        const auto names = names_.find(address);
        if (names == names_.end()) continue;
        const std::string& name = names->second.at(slot);
        if (first && *first != name) return true;
        first = &name;
    }
    return false;
}

std::string HeardNames::Silent() const {
    std::string silent;
    for (const std::string& address : addresses_)
        if (!names_.contains(address)) silent += (silent.empty() ? "" : Localized(kNext)) + address;
    return silent;
}

std::string HeardNames::Told(std::size_t slot) const {
    std::string told;
    for (const std::string& address : addresses_) {
        const auto names = names_.find(address);
        if (names == names_.end()) continue;
        const std::string& name = names->second.at(slot);
        told += (told.empty() ? "" : Localized(kBetween)) + address + Localized(kColon) +
                (name.empty() ? Localized(kNoName) : name);
    }
    return told;
}

}  // namespace sontaro
