// The question for a JSON file, as several dialogs ask it.
#pragma once

#include "base/local_text.h"
#include "base/prompts.h"
#include "widgets/common_texts.h"

namespace sontaro {

/// What a dialog asks for a file with.
struct JsonFileTexts {
    LocalText caption{};
    LocalText filter{};
    LocalText name = InBoth("");  ///< that is suggested
};

[[nodiscard]] inline FileQuestion JsonFileQuestion(FileQuestion::Purpose purpose,
                                                   const JsonFileTexts& texts) {
    return {purpose, Localized(texts.caption), Localized(texts.filter) + kJsonPatterns,
            Localized(texts.name), "JSON"};
}

}  // namespace sontaro
