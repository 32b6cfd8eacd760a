#include "venue/restore_plan.h"

#include <fmt/printf.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/json.h"
#include "venue/compare.h"
#include "venue/document_leaves.h"
#include "venue/document_shape.h"

namespace sontaro {

namespace {

using Source = BlockDocument::Source;

constexpr LocalText kNoBlock = {"没有设置块“%s”。", "there is no block of settings \"%s\"."};
constexpr LocalText kNotHeld = {"备份中没有此设置块。", "the backup does not hold the block."};
constexpr LocalText kNotThere = {"播放器没有此设置块，或无法读取。",
                                 "the player does not have the block, or it cannot be read."};
constexpr LocalText kEmpty = {"文档是空的。", "the document is empty."};
constexpr LocalText kUnusable = {"文档不可用：%s", "the document is of no use: %s"};
constexpr LocalText kPresentUnusable = {"播放器现有的文档不可用：%s",
                                        "the player's present document is of no use: %s"};
constexpr LocalText kNoSuchKey = {"文档中没有“%s”。", "the document has no \"%s\"."};

template <class... Values>
std::string Worded(const LocalText& text, const Values&... values) {
    return fmt::sprintf(Localized(text), values...);
}

void Append(std::vector<std::string>& list, const std::vector<std::string>& more) {
    list.insert(list.end(), more.begin(), more.end());
}

/// Both documents, as far as there are such, on the way to the one that is to be sent.
class BlockPlanner {
   public:
    BlockPlanner(const SettingsBlockKind& kind, const std::string& wanted,
                 const std::string& present, const PlanOptions& options)
        : kind_(kind), wanted_(wanted), present_(present), options_(options) {
        plan_.kind = &kind;
    }

    BlockPlan Plan() {
        if (wanted_ != present_)
            Make();
        else if (!options_.key.empty() && TakeWanted() && !HasKey())
            plan_.trouble = Worded(kNoSuchKey, options_.key);
        return std::move(plan_);
    }

   private:
    void Make() {
        if (!TakeWanted()) return;
        std::string target = options_.key.empty() ? Whole() : Part();
        if (!plan_.trouble.empty()) return;
        const BlockComparison changes = CompareTexts(kind_, present_, target);
        plan_.rows = changes.differences;
        plan_.notListed = changes.notListed;
        const bool mayGo = !plan_.HasDoubts() || options_.force;
        if (plan_.rows.empty() || !mayGo || hasOtherTypes_) return;
        const BlockDocument document(kind_, target, Source::kPlayer);
        if (const auto refusal = document.RefusalToSend())
            plan_.trouble = *refusal;
        else
            plan_.text = std::move(target);
    }

    /// False when the wanted document is of no use. A player without commands may have sent nothing
    /// at all.
    bool TakeWanted() {
        if (wanted_.empty() && kind_.readBlock == kBlockPlayerTimeline) wanted_ = kNoCommands;
        const BlockDocument document(kind_, wanted_, Source::kFile);
        if (wanted_.empty())
            plan_.trouble = Localized(kEmpty);
        else if (!document.Usable())
            plan_.trouble = Worded(kUnusable, document.Usable().reason());
        if (auto json = ParseJson(wanted_)) wantedJson_ = std::move(*json);
        if (auto json = ParseJson(present_)) presentJson_ = std::move(*json);
        return plan_.trouble.empty();
    }

    std::string Whole() {
        if (kind_.describesItself) return Values(wanted_);
        const ShapeDifference shapes = CompareShapes(presentJson_, wantedJson_);
        plan_.unknown = shapes.added;
        plan_.missing = shapes.missing;
        RefuseTypes(shapes);
        Json::Value target = wantedJson_;
        AddMissing(presentJson_, plan_.missing, target);
        return WriteJson(target);
    }

    /// The present document with the values of another one.
    std::string Values(const std::string& others) {
        BlockDocument target(kind_, present_, Source::kPlayer);
        if (!target.Usable()) {
            plan_.trouble = Worded(kPresentUnusable, target.Usable().reason());
            return "";
        }
        TakenValues taken = target.TakeValues(BlockDocument(kind_, others, Source::kPlayer));
        Append(plan_.unknown, taken.unknown);
        Append(plan_.missing, taken.missing);
        plan_.refused = std::move(taken.refused);
        return target.Text();
    }

    /// The present document with what stands under the key in the wanted one. The screens of a wall
    /// belong together, and what only rows know of - a tick of a setting, a command of a timeline -
    /// is no value of its own.
    std::string Part() {
        const std::vector<std::string> wanted = PathsUnderKey(wantedJson_);
        const std::vector<std::string> present = PathsUnderKey(presentJson_);
        std::vector<std::string> common;
        std::ranges::set_intersection(wanted, present, std::back_inserter(common));
        if (common.empty() || kind_.readBlock == kBlockScreenSplitRead) return Rows();
        std::ranges::set_difference(wanted, present, std::back_inserter(plan_.unknown));
        std::ranges::set_difference(present, wanted, std::back_inserter(plan_.missing));
        Json::Value target = presentJson_;
        TakeLeaves(kind_, target, wantedJson_,
                   [this](const DocumentLeaf& leaf) { return IsPart(leaf); });
        RefuseTypes(CompareShapes(presentJson_, target));
        return kind_.describesItself ? Values(WriteJson(target)) : WriteJson(target);
    }

    [[nodiscard]] bool IsPart(const DocumentLeaf& leaf) const {
        return IsUnder(leaf.path, options_.key) && (leaf.item.empty() || leaf.IsSelect());
    }

    [[nodiscard]] std::vector<std::string> PathsUnderKey(const Json::Value& document) const {
        std::vector<std::string> paths;
        for (const DocumentLeaf& leaf : LeavesOf(kind_, document))
            if (IsPart(leaf)) paths.push_back(leaf.path);
        std::ranges::sort(paths);
        return paths;
    }

    [[nodiscard]] bool HasKey() const {
        if (!PathsUnderKey(wantedJson_).empty()) return true;
        const auto rows = BlockDocument(kind_, wanted_, Source::kPlayer).RowsByPath();
        return std::ranges::any_of(
            rows, [this](const auto& row) { return IsUnder(row.first, options_.key); });
    }

    /// The present document with the values of the rows under the key.
    std::string Rows() {
        const BlockDocument wanted(kind_, wanted_, Source::kPlayer);
        BlockDocument target(kind_, present_, Source::kPlayer);
        const auto present = target.RowsByPath();
        bool isFound = false;
        for (const auto& [path, row] : wanted.RowsByPath()) {
            if (!IsUnder(path, options_.key)) continue;
            isFound = true;
            if (!present.contains(path))
                plan_.unknown.push_back(path);
            else if (const Status set = target.SetValue(path, row.row.value); !set)
                plan_.refused.emplace(path, set.reason());
        }
        if (!isFound) plan_.trouble = Worded(kNoSuchKey, options_.key);
        if (target.Text() != present_)
            if (const auto refusal = target.RefusalToSend()) plan_.trouble = *refusal;
        return target.Text();
    }

    void RefuseTypes(const ShapeDifference& shapes) {
        for (const auto& [path, why] : shapes.otherTypes) plan_.refused.emplace(path, why);
        hasOtherTypes_ = hasOtherTypes_ || !shapes.otherTypes.empty();
    }

    static constexpr const char* kNoCommands = R"({"cmdInfos":[]})";

    const SettingsBlockKind& kind_;
    std::string wanted_;
    const std::string& present_;
    const PlanOptions& options_;
    Json::Value wantedJson_, presentJson_;
    bool hasOtherTypes_ = false;
    BlockPlan plan_;
};

/// One plan of several: of each the part under one key, one after another.
BlockPlan PlanParts(const SettingsBlockKind& kind, const std::string& wanted,
                    const std::string& present, std::span<const SettingsPart> only, bool force) {
    std::vector<std::string> keys;
    for (const SettingsPart& part : only)
        if (part.kind == &kind) keys.push_back(part.key);
    if (keys.empty() || std::ranges::find(keys, "") != keys.end())
        return PlanBlock(kind, wanted, present, {force, ""});
    BlockPlan plan{&kind};
    std::string text = present;
    for (const std::string& key : keys) {
        BlockPlan part = PlanBlock(kind, wanted, text, {force, key});
        if (!part.text.empty()) text = part.text;
        Append(plan.unknown, part.unknown);
        Append(plan.missing, part.missing);
        plan.refused.merge(part.refused);
        if (plan.trouble.empty()) plan.trouble = part.trouble;
    }
    const BlockComparison changes = CompareTexts(kind, present, text);
    plan.rows = changes.differences;
    plan.notListed = changes.notListed;
    if (plan.trouble.empty() && (force || !plan.HasDoubts()) && text != present) plan.text = text;
    return plan;
}

bool IsRead(const BlockReading* reading) {
    return reading != nullptr && reading->outcome == BlockReading::Outcome::kRead;
}

}  // namespace

Result<SettingsPart> PartOf(std::string_view text) {
    const std::size_t slash = std::min(text.find('/'), text.size());
    const std::string_view name = text.substr(0, slash);
    const SettingsBlockKind* kind = FindSettingsBlock(name);
    if (!kind) return Error{Worded(kNoBlock, std::string(name))};
    std::string_view key = text.substr(std::min(slash + 1, text.size()));
    while (key.ends_with('/')) key.remove_suffix(1);
    return SettingsPart{kind, std::string(key)};
}

BlockPlan PlanBlock(const SettingsBlockKind& kind, const std::string& wanted,
                    const std::string& present, const PlanOptions& options) {
    return BlockPlanner(kind, wanted, present, options).Plan();
}

std::vector<BlockPlan> PlanPlayer(const PlayerDocuments& wanted, const PlayerDocuments& present,
                                  std::span<const SettingsPart> only, bool force) {
    std::vector<BlockPlan> plans;
    for (const SettingsBlockKind& kind : SettingsBlocks()) {
        const BlockReading* backedUp = wanted.Find(kind);
        const BlockReading* held = present.Find(kind);
        const bool isNamed = std::ranges::find(only, &kind, &SettingsPart::kind) != only.end();
        if (!only.empty() && !isNamed) continue;
        if (!IsRead(backedUp)) {
            if (isNamed) plans.push_back({&kind, "", {}, 0, {}, {}, {}, Localized(kNotHeld)});
            continue;
        }
        BlockPlan plan{&kind};
        if (IsRead(held))
            plan = PlanParts(kind, backedUp->text, held->text, only, force);
        else
            plan.trouble = Localized(kNotThere);
        if (!plan.text.empty() || plan.IsRefused()) plans.push_back(std::move(plan));
    }
    return plans;
}

}  // namespace sontaro
