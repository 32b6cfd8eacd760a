#include "venue/block_check.h"

#include <fmt/printf.h>

#include <map>
#include <set>

#include "base/hex_command.h"
#include "base/json.h"
#include "session/block_document.h"
#include "venue/document_leaves.h"
#include "venue/document_shape.h"

namespace sontaro {

namespace {

using Weight = CheckFinding::Weight;

constexpr LocalText kUnusable = {"它不是此设置块的文档：%s", "it is no document of this block: %s"};
constexpr LocalText kNotTaken = {"这个值不会按原样采用，读作：%s",
                                 "the value is not taken as it stands, but read as: %s"};
constexpr LocalText kPassedOver = {"这个值会被忽略。", "the value is passed over."};
constexpr LocalText kUnknown = {"未知的键：不会从文件中采用。",
                                "nobody here knows the key: it is not taken from a file."};
constexpr LocalText kMissing = {"缺少此键：采用播放器的值。",
                                "the key is missing: the player's value stays."};

template <class... Values>
std::string Worded(const LocalText& text, const Values&... values) {
    return fmt::sprintf(Localized(text), values...);
}

/// The last part of a path.
std::string_view LastPart(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

/// Whether a value was taken; commands may have another spelling.
bool IsTaken(const Json::Value& value, const Json::Value& taken) {
    if (IsSameLeaf(value, taken)) return true;
    if (!value.isString() || !taken.isString()) return false;
    const auto command = NormalizedHexCommand(TextOf(value));
    return command && command == NormalizedHexCommand(TextOf(taken));
}

/// Compares what stands in a document with what is read of it.
class BlockCheck {
   public:
    BlockCheck(const SettingsBlockKind& kind, const std::string& text, const Json::Value& json,
               std::vector<FindingAt>& findings)
        : kind_(kind),
          text_(text),
          json_(json),
          leaves_(LeavesOf(kind, json)),
          findings_(findings) {
        for (const DocumentLeaf& leaf : leaves_) values_.emplace(leaf.path, leaf.value);
    }

    void Run() {
        const BlockDocument document(kind_, text_, BlockDocument::Source::kFile);
        if (!document.Usable()) {
            const std::string why = document.Usable().reason();
            return Add(Weight::kFault, &json_, "",
                       Worded(kUnusable, why.substr(0, why.find('\n'))));
        }
        CheckLeaves();
        CheckRows(document);
        if (const auto refusal = document.RefusalToSend())
            Add(Weight::kFault, &json_, "", *refusal);
    }

   private:
    /// What is read is written again: whatever is another value then was not taken.
    void CheckLeaves() {
        const std::unique_ptr<SettingsDocument> document = kind_.makeDocument();
        if (!document->TakeFile(text_)) return;
        const Result<Json::Value> taken = ParseJson(document->Write());
        if (!taken) return;
        std::map<std::string, const Json::Value*> others;
        for (const DocumentLeaf& leaf : LeavesOf(kind_, *taken))
            others.emplace(leaf.path, leaf.value);
        const ShapeDifference shapes = CompareShapes(*taken, json_);
        for (const DocumentLeaf& leaf : leaves_) CheckLeaf(leaf, others);
        for (const std::string& path : shapes.missing)
            Add(Weight::kRemark, nullptr, path, Localized(kMissing));
    }

    /// Of what describes a setting nothing is said: it is the player's affair.
    void CheckLeaf(const DocumentLeaf& leaf,
                   const std::map<std::string, const Json::Value*>& others) {
        const std::string& path = leaf.item.empty() ? leaf.path : leaf.item;
        if (!leaf.item.empty() && !leaf.IsSelect()) return;
        if (const auto other = others.find(leaf.path); other != others.end()) {
            if (IsTaken(*leaf.value, *other->second)) return;
            told_.insert(path);
            return Add(Weight::kFault, leaf.value, path,
                       Worded(kNotTaken, LeafText(*other->second)));
        }
        const auto under = others.lower_bound(leaf.path + '/');
        if (under != others.end() && IsUnder(under->first, leaf.path))
            Add(Weight::kFault, leaf.value, path, Localized(kPassedOver));
        else
            Add(Weight::kRemark, leaf.value, path,
                Localized(leaf.item.empty() ? kUnknown : kPassedOver));
    }

    void CheckRows(const BlockDocument& document) {
        for (const PathRow& row : document.PathRows())
            if (!row.row.caution.empty() && !told_.contains(row.row.key))
                Add(Weight::kFault, ValueOf(row.row.key), row.row.key, row.row.caution);
    }

    /// The value that a row shows; absent when that is no single one.
    [[nodiscard]] const Json::Value* ValueOf(const std::string& path) const {
        for (std::string at = path; !at.empty(); at.resize(
                 at.size() - LastPart(at).size() - (at.find('/') == std::string::npos ? 0 : 1)))
            for (const std::string& place : {at, at + "/select"})
                if (const auto value = values_.find(place); value != values_.end())
                    return value->second;
        return nullptr;
    }

    void Add(Weight weight, const Json::Value* value, const std::string& path, std::string what) {
        const auto offset = value ? std::optional(OffsetOf(*value, text_)) : std::nullopt;
        findings_.push_back({weight, offset, path, std::move(what)});
    }

    const SettingsBlockKind& kind_;
    const std::string& text_;
    const Json::Value& json_;
    const std::vector<DocumentLeaf> leaves_;
    std::map<std::string, const Json::Value*> values_;
    std::set<std::string> told_;  // paths of values that are not taken
    std::vector<FindingAt>& findings_;
};

}  // namespace

void CheckBlock(const SettingsBlockKind& kind, const std::string& text, const Json::Value& json,
                std::vector<FindingAt>& findings) {
    if (kind.readBlock == kBlockPlayerTimeline)
        CheckTimeline(text, json, findings);
    else
        BlockCheck(kind, text, json, findings).Run();
}

}  // namespace sontaro
