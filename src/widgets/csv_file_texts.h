// The question for a table of text, as several dialogs ask it.
#pragma once

#include "base/local_text.h"
#include "base/prompts.h"

namespace sontaro {

/// `name` is the one that is suggested.
[[nodiscard]] inline FileQuestion CsvFileQuestion(FileQuestion::Purpose purpose,
                                                  const LocalText& caption,
                                                  const LocalText& name = InBoth("")) {
    constexpr LocalText kFilter = {"CSV表格(*.csv)|*.csv", "CSV tables (*.csv)|*.csv"};
    return {purpose, Localized(caption), Localized(kFilter), Localized(name), "csv"};
}

}  // namespace sontaro
