#include "settings/settings_history.h"

#include <algorithm>

namespace sontaro {

namespace {

using Shown = std::vector<std::pair<std::string, std::string>>;  // keys and values

Shown ShownIn(const SettingsDocument& document) {
    Shown shown;
    VisitRows(document.Rows(), [&](const auto& row) { shown.emplace_back(row.key, row.value); });
    return shown;
}

/// Where the rows differ; of rows that have gone, the one before them. Empty when none is left,
/// and nothing when they do not differ.
std::optional<std::string> DifferingRow(const Shown& before, const Shown& after) {
    const auto place = std::ranges::mismatch(before, after).in2 - after.begin();
    if (before == after) return std::nullopt;
    if (after.empty()) return "";
    const bool haveGone = after.size() < before.size() && place > 0;
    return after[static_cast<std::size_t>(haveGone ? place - 1 : place)].first;
}

}  // namespace

SettingsHistory::SettingsHistory(SettingsDocument& document)
    : document_(document), now_(document.Keep()) {}

EditAnswer SettingsHistory::Edit(const SettingsEdit& edit) {
    EditAnswer answer = document_.Edit(edit);
    if (answer.outcome == EditAnswer::Outcome::kAccepted) Add(std::vector{edit});
    return answer;
}

Status SettingsHistory::TakeFile(std::string text) {
    Status taken = document_.TakeFile(text);
    if (!taken) return taken;
    textBytes_ = 0;  // of the steps from here on
    Add(std::move(text));
    return taken;
}

void SettingsHistory::Add(Change change) {
    Step step = StepTo(document_.Keep(), std::move(change));
    now_ = step.after;
    log_.push_back({step.number, false, step.change});
    steps_.Add(std::move(step));
}

SettingsHistory::Step SettingsHistory::StepTo(Kept after, Change change) {
    if (textBytes_ == 0) textBytes_ = document_.Write().size();
    return {++lastStep_, std::move(change), now_, std::move(after), textBytes_};
}

bool SettingsHistory::Do(const Change& change) {
    if (const auto* text = std::get_if<std::string>(&change)) return document_.TakeFile(*text).ok();
    bool hasEffect = false;
    for (const SettingsEdit& edit : std::get<0>(change))
        hasEffect |= document_.Edit(edit).outcome == EditAnswer::Outcome::kAccepted;
    return hasEffect;
}

void SettingsHistory::Repeat() {
    const Kept before = now_;
    now_ = document_.Keep();
    std::deque<Entry> log;
    std::vector<Step> steps;
    for (const Entry& entry : log_) {
        Entry& again = log.emplace_back(Entry{0, false, entry.change});
        if (!Do(entry.change)) continue;
        steps.push_back(StepTo(document_.Keep(), entry.change));
        now_ = steps.back().after;
        again.step = steps.back().number;
    }
    if ((CanUndo() || CanRedo()) && ShowsTheSame(*before)) {
        document_.PutBack(*before);
        now_ = before;
        return;
    }
    steps_.Clear();
    textBytes_ = 0;
    log_ = std::move(log);
    for (Step& step : steps) steps_.Add(std::move(step));
}

bool SettingsHistory::ShowsTheSame(const SettingsDocument& other) const {
    return ShownIn(document_) == ShownIn(other) && document_.Write() == other.Write();
}

std::string SettingsHistory::Walk(bool back) {
    std::optional<std::string> row;
    while (!row && (back ? CanUndo() : CanRedo())) {
        const Step& step = back ? *steps_.Undo() : *steps_.Redo();
        const Kept from = std::exchange(now_, back ? step.before : step.after);
        document_.PutBack(*now_);
        Log(step, back);
        row = DifferingRow(ShownIn(*from), ShownIn(*now_));
    }
    return row.value_or("");
}

/// What takes back the latest change that is not confirmed leaves nothing to be confirmed of it.
void SettingsHistory::Log(const Step& step, bool back) {
    const bool takesBack = !log_.empty() && HasSince(sealed_) && log_.back().step == step.number &&
                           log_.back().isUndone != back;
    if (takesBack)
        log_.pop_back();
    else
        log_.push_back({step.number, back, back ? Reversal(step) : step.change});
}

/// What undoes the step in another document, as far as that has its rows.
SettingsHistory::Change SettingsHistory::Reversal(const Step& step) {
    if (std::holds_alternative<std::string>(step.change)) return step.before->Write();
    std::vector<SettingsEdit> edits;
    auto done = std::get<std::vector<SettingsEdit>>(step.change);
    std::ranges::reverse(done);
    for (const SettingsEdit& edit : done)
        std::ranges::move(step.before->Reversal(edit), std::back_inserter(edits));
    return edits;
}

bool SettingsHistory::HasFile() const {
    return std::ranges::any_of(
        log_, [](const Entry& entry) { return std::holds_alternative<std::string>(entry.change); });
}

void SettingsHistory::ConfirmBefore(Mark mark) {
    for (; confirmed_ < mark && !log_.empty(); ++confirmed_) log_.pop_front();
}

}  // namespace sontaro
