#include "session/block_document.h"

#include <fmt/printf.h>

#include <algorithm>
#include <utility>

#include "base/json.h"
#include "session/select_values.h"

namespace sontaro {

namespace {

constexpr LocalText kNoSuchRow = {"没有这一项设置。", "There is no such setting."};
constexpr LocalText kReadOnly = {"这一项不能修改。", "This cannot be changed."};
constexpr LocalText kDoesNotFit = {"这个值不适用。", "This value does not fit."};
constexpr LocalText kChoices = {"可选的值：%s", "It is one of: %s"};
constexpr LocalText kNoSettings = {"其中没有设置。", "There are no settings in it."};

// NOLINTNEXTLINE(misc-no-recursion): groups stand within groups
void AddRows(const SettingsRows& groups, const std::string& above, std::vector<PathRow>& rows) {
    for (const SettingsGroup& group : groups) {
        const std::string path = above.empty() ? group.name : above + " / " + group.name;
        for (const SettingsRow& row : group.rows) rows.push_back({row, path});
        AddRows(group.groups, path, rows);
    }
}

std::string WhyNot(const SettingsRow& row, const EditAnswer& answer) {
    if (!answer.text.empty()) return answer.text;
    std::string why = Localized(kDoesNotFit);
    std::string choices;
    for (const std::string& choice : row.choices) choices += (choices.empty() ? "" : ", ") + choice;
    if (!choices.empty()) why += ' ' + fmt::sprintf(Localized(kChoices), choices);
    return why;
}

/// Adds the paths of the values of one document that are others in a second one of its shape.
// NOLINTNEXTLINE(misc-no-recursion): values stand within values
void AddOthers(const Json::Value& first, const Json::Value& second, const std::string& path,
               std::set<std::string>& others) {
    const auto under = [&](const std::string& key) {
        return path.empty() ? key : path + '/' + key;
    };
    if (first == second) return;
    if (first.isObject() && second.isObject()) {
        for (const std::string& key : first.getMemberNames())
            AddOthers(first[key], second[key], under(key), others);
    } else if (first.isArray() && first.size() == second.size()) {
        for (Json::ArrayIndex i = 0; i < first.size(); ++i)
            AddOthers(first[i], second[i], under(std::to_string(i)), others);
    } else {
        others.insert(path);
    }
}

/// Whether a whole number was typed that is another one than what was taken for it.
bool IsAnotherNumber(const SettingsRow& row, std::string typed, const std::string& taken) {
    if (row.kind != RowKind::kWholeNumber) return false;
    const bool isNegative = typed.starts_with('-');
    typed.erase(0, std::min(typed.find_first_not_of("+-0 \t"), typed.size()));
    typed.erase(std::min(typed.find_last_not_of(" \t") + 1, typed.size()));
    if (typed.empty()) typed = "0";
    return (isNegative && typed != "0" ? '-' + typed : typed) != taken;
}

std::string CaptionOf(const PathRow& row) {
    return row.group.empty() ? row.row.name : row.group + " / " + row.row.name;
}

}  // namespace

BlockDocument::BlockDocument(const SettingsBlockKind& kind, std::string text, Source source)
    : kind_(&kind),
      text_(std::move(text)),
      document_(kind.makeDocument()),
      usable_(source == Source::kPlayer ? document_->TakeReply(text_) : document_->TakeFile(text_)),
      source_(source) {}

std::optional<std::string> BlockDocument::RefusalToSend() const {
    if (!usable_) return usable_.reason();
    if (!document_->HasSettings()) return Localized(kNoSettings);
    if (isWritten_ && !misfits_.empty()) {
        const std::string& path = *misfits_.begin();
        return path + ": " + WhyNot(RowsByPath()[path].row, {});
    }
    const std::optional<LocalText> refusal = document_->RefusalToSend();
    return refusal ? std::optional(Localized(*refusal)) : std::nullopt;
}

SettingsRows BlockDocument::Rows() const { return usable_ ? document_->Rows() : SettingsRows(); }

std::vector<PathRow> BlockDocument::PathRows() const {
    std::vector<PathRow> rows;
    AddRows(Rows(), {}, rows);
    return rows;
}

std::map<std::string, PathRow> BlockDocument::RowsByPath() const {
    std::map<std::string, PathRow> rows;
    for (PathRow& row : PathRows()) {
        std::string path = row.row.key;
        rows.emplace(std::move(path), std::move(row));
    }
    return rows;
}

Status BlockDocument::SetValue(const std::string& path, const std::string& value) {
    if (!usable_) return usable_;
    FindMisfits();
    const std::map<std::string, PathRow> rows = RowsByPath();
    const auto found = rows.find(path);
    if (found == rows.end()) return Error{Localized(kNoSuchRow)};
    if (found->second.row.value == value && !misfits_.contains(path)) return Done{};
    const std::string before = kind_->describesItself ? document_->Write() : std::string();
    Status edited = EditStrictly(found->second.row, value);
    if (edited) text_ = WithChanges(before), isWritten_ = true, misfits_.erase(path);
    return edited;
}

/// Some documents make the nearest choice of one that there is not as soon as they are shown. What
/// they have read is seen once more, as they may have been shown.
void BlockDocument::FindMisfits() {
    if (isWritten_ || kind_->describesItself) return;
    const auto document = kind_->makeDocument();
    const Status read =
        source_ == Source::kPlayer ? document->TakeReply(text_) : document->TakeFile(text_);
    if (!read) return;
    const Result<Json::Value> held = ParseJson(document->Write());
    static_cast<void>(document->Rows());
    const Result<Json::Value> shown = ParseJson(document->Write());
    misfits_.clear();
    if (held && shown) AddOthers(*held, *shown, {}, misfits_);
}

Status BlockDocument::EditStrictly(const SettingsRow& row, const std::string& value) {
    const auto kept = document_->Keep();
    if (Status edited = Edit(row, value); !edited) return edited;
    const SettingsRow taken = RowsByPath().at(row.key).row;
    const bool isChoice = row.kind == RowKind::kChoice;
    const bool isOffered = std::ranges::find(row.choices, value) != row.choices.end();
    const bool isWell = taken.caution.empty() && !IsAnotherNumber(row, value, taken.value);
    if (isChoice ? isOffered : isWell) return Done{};
    document_->PutBack(*kept);
    return Error{isChoice || taken.caution.empty() ? WhyNot(row, {}) : taken.caution};
}

Status BlockDocument::Edit(const SettingsRow& row, const std::string& value) {
    if (row.kind == RowKind::kReadOnly) return Error{Localized(kReadOnly)};
    // Where players describe a choice, it is the grid that offers nothing else.
    const bool isOffered = std::ranges::find(row.choices, value) != row.choices.end();
    if (kind_->describesItself && row.kind == RowKind::kChoice && !isOffered)
        return Error{WhyNot(row, {})};
    const EditAnswer answer = document_->Edit({row.key, value});
    if (answer.outcome != EditAnswer::Outcome::kAccepted) return Error{WhyNot(row, answer)};
    return Done{};
}

/// Of settings that describe themselves the changed value alone goes into what the player has sent:
/// what nobody here understands in it stays.
std::string BlockDocument::WithChanges(const std::string& before) const {
    std::string after = document_->Write();
    if (!kind_->describesItself) return after;
    Result<Json::Value> text = ParseJson(text_);
    const Result<Json::Value> old = ParseJson(before);
    const Result<Json::Value> changed = ParseJson(after);
    if (!text || !old || !changed) return after;
    TakeSelectChanges(*text, *old, *changed);
    return WriteJson(*text);
}

TakenValues BlockDocument::TakeValues(const BlockDocument& others) {
    TakenValues taken;
    if (!usable_ || !others.usable_) {
        taken.refused.emplace("", usable_ ? others.usable_.reason() : usable_.reason());
        return taken;
    }
    if (kind_->describesItself) return TakeSelects(others);
    FindMisfits();
    std::map<std::string, PathRow> rows = RowsByPath();
    for (const PathRow& other : others.PathRows()) {
        const auto mine = rows.find(other.row.key);
        if (mine == rows.end()) {
            taken.unknown.push_back(other.row.key);
            continue;
        }
        const SettingsRow row = std::move(mine->second.row);
        rows.erase(mine);
        if (row.value == other.row.value && !misfits_.contains(row.key)) continue;
        if (const Status edited = Edit(row, other.row.value))
            taken.changed.push_back(row.key), misfits_.erase(row.key);
        else
            taken.refused.emplace(row.key, edited.reason());
    }
    for (const auto& [path, row] : rows) taken.missing.push_back(path);
    if (!taken.changed.empty()) text_ = document_->Write(), isWritten_ = true;
    return taken;
}

TakenValues BlockDocument::TakeSelects(const BlockDocument& others) {
    Result<Json::Value> present = ParseJson(text_);
    const Result<Json::Value> wanted = ParseJson(others.text_);
    if (!present || !wanted) return {};
    TakenValues taken = TakeSelectValues(*present, *wanted);
    if (taken.changed.empty()) return taken;
    text_ = WriteJson(*present);
    usable_ = document_->TakeReply(text_);
    return taken;
}

std::vector<RowDifference> DifferencesBetween(const BlockDocument& first,
                                              const BlockDocument& second) {
    std::vector<RowDifference> differences;
    std::map<std::string, PathRow> others = second.RowsByPath();
    for (const PathRow& row : first.PathRows()) {
        const auto other = others.find(row.row.key);
        if (other == others.end()) {
            differences.push_back({row.row.key, CaptionOf(row), row.row.value, std::nullopt});
            continue;
        }
        if (other->second.row.value != row.row.value)
            differences.push_back(
                {row.row.key, CaptionOf(row), row.row.value, other->second.row.value});
        others.erase(other);
    }
    for (const PathRow& row : second.PathRows())
        if (others.contains(row.row.key))
            differences.push_back({row.row.key, CaptionOf(row), std::nullopt, row.row.value});
    return differences;
}

}  // namespace sontaro
