#include "cli/plan_failures.h"

#include <fmt/printf.h>

namespace sontaro::cli {

namespace {

constexpr LocalText kUnknownKeys = {"播放器没有的键：%s。",
                                    "keys that the player does not have: %s."};
constexpr LocalText kMissingKeys = {"文档缺少的键：%s。", "keys that the document lacks: %s."};
constexpr LocalText kUseForce = {"要照样发送，请加 --force。",
                                 "To send it nevertheless, add --force."};

std::string Joined(const std::vector<std::string>& keys) {
    constexpr std::size_t kMost = 5;
    std::string list;
    for (std::size_t i = 0; i < keys.size() && i < kMost; ++i)
        list += (i > 0 ? ", " : "") + keys[i];
    return list + (keys.size() > kMost ? ", ..." : "");
}

}  // namespace

std::optional<Failure> FailureOf(const BlockPlan& plan) {
    if (!plan.IsRefused()) return std::nullopt;
    if (!plan.trouble.empty()) return FailureOf("invalid", plan.trouble, plan.kind->name);
    std::string why;
    const auto add = [&](const std::string& sentence) {
        if (!why.empty()) why += ' ';
        why += sentence;
    };
    if (!plan.unknown.empty()) add(fmt::sprintf(Localized(kUnknownKeys), Joined(plan.unknown)));
    if (!plan.missing.empty()) add(fmt::sprintf(Localized(kMissingKeys), Joined(plan.missing)));
    for (const auto& [path, reason] : plan.refused) add(fmt::format("{}: {}", path, reason));
    add(Localized(kUseForce));
    return FailureOf("doubtful", why, plan.kind->name);
}

}  // namespace sontaro::cli
