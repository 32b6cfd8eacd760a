#include "screensplit/advanced_params.h"

#include <fmt/printf.h>

#include <algorithm>
#include <limits>

#include "base/local_text.h"
#include "base/row_text.h"
#include "screensplit/number_checks.h"
#include "settings/custom_item_rows.h"

namespace sontaro {

namespace {

using Document = CCustomSettingAnalysor;
using Refusal = std::optional<LocalText>;

struct Bounds {
    double least;
    double most;
};

/// Both are 0 where a document gives no bounds.
template <class Range>
void TakeBounds(const Document::BASE& record, Bounds& bounds) {
    const auto* range = dynamic_cast<const Range*>(&record);
    if (range && (range->minimum != 0 || range->maximum != 0))
        bounds = {static_cast<double>(range->minimum), static_cast<double>(range->maximum)};
}

/// Numbers without bounds are as large as they can be, and have no sign.
Bounds BoundsOf(const Document::BASE& record, NumberForm form) {
    Bounds bounds{0, form == NumberForm::kWhole
                         ? static_cast<double>(std::numeric_limits<std::int32_t>::max())
                         : std::numeric_limits<double>::max()};
    TakeBounds<Document::IntRange>(record, bounds);
    TakeBounds<Document::IntStringRange>(record, bounds);
    TakeBounds<Document::DoubleRange>(record, bounds);
    TakeBounds<Document::DoubleStringRange>(record, bounds);
    return bounds;
}

/// Of a value that is chosen from a list. A list without values limits nothing.
Refusal RefusalOfChoice(const Document::BASE& record, const SettingsRow& row,
                        const std::string& text) {
    if (text.empty()) return kNoData;
    if (std::ranges::find(row.choices, text) != row.choices.end()) return std::nullopt;
    const bool isText = dynamic_cast<const Document::StringArray*>(&record) != nullptr;
    const bool isWhole = dynamic_cast<const Document::IntArray*>(&record) != nullptr;
    const NumberForm form = isWhole ? NumberForm::kWhole : NumberForm::kDecimal;
    if (!isText && !IsNumber(text, form, true)) return kInputError;
    return row.choices.empty() ? Refusal() : kOutOfRange;
}

Refusal RefusalOf(const Document::BASE& record, const SettingsRow& row, const std::string& text) {
    switch (row.kind) {
        case RowKind::kChoice: return RefusalOfChoice(record, row, text);
        case RowKind::kWholeNumber:
        case RowKind::kDecimal: {
            const NumberForm form =
                row.kind == RowKind::kDecimal ? NumberForm::kDecimal : NumberForm::kWhole;
            const Bounds bounds = BoundsOf(record, form);
            return RefusalOfNumber(text, form, bounds.least, bounds.most, bounds.least < 0);
        }
        default: return text.empty() ? Refusal(kNoData) : std::nullopt;
    }
}

/// Only of a text that is a number.
std::string Rounded(const std::string& text) { return fmt::sprintf("%f", LeadingDouble(text)); }

}  // namespace

EditAnswer EditAdvancedParam(CustomEntries& entries, const SettingsEdit& edit) {
    const Document::Item item = entries.ItemOf(kAdvancedPath, edit.key);
    std::vector<SettingsRow> rows;
    entries.AddRows(kAdvancedPath, rows);
    const auto row = std::ranges::find(rows, edit.key, &SettingsRow::key);
    if (!item.record || row == rows.end()) return {};
    const bool isNumber = IsNumber(edit.text, NumberForm::kDecimal, true);
    const std::string text =
        row->kind == RowKind::kDecimal && isNumber ? Rounded(edit.text) : edit.text;
    if (const Refusal refusal = RefusalOf(*item.record, *row, text))
        return {EditAnswer::Outcome::kRefused, Localized(*refusal)};
    return entries.Edit(kAdvancedPath, edit.key, text, true);
}

}  // namespace sontaro
