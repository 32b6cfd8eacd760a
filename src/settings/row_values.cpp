#include "settings/row_values.h"

namespace sontaro {

RowValues ValuesOf(const SettingsDocument& document) {
    RowValues values;
    VisitRows(document.Rows(), [&](const auto& row) { values.emplace(row.key, row.value); });
    return values;
}

RowValues WithKnown(RowValues values, const RowValues& before, const RowValues& known) {
    for (auto& [key, value] : values) {
        const auto shown = before.find(key);
        const auto last = known.find(key);
        if (shown != before.end() && shown->second == value && last != known.end())
            value = last->second;
    }
    return values;
}

}  // namespace sontaro
