// What the rows of settings show.
#pragma once

#include <map>
#include <string>

#include "settings/settings_document.h"

namespace sontaro {

/// By the key of the row.
using RowValues = std::map<std::string, std::string>;

/// What all rows of the document show.
[[nodiscard]] RowValues ValuesOf(const SettingsDocument& document);

/// `values`, but of rows that are still as they were `before`, what is `known` of them.
[[nodiscard]] RowValues WithKnown(RowValues values, const RowValues& before,
                                  const RowValues& known);

}  // namespace sontaro
