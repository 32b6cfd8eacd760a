// What is wrong with a document of a settings block.
#pragma once

#include "venue/document_check.h"

namespace sontaro {

/// A finding whose place is still a byte of the text.
struct FindingAt {
    CheckFinding::Weight weight = CheckFinding::Weight::kFault;
    std::optional<std::size_t> offset = {};
    std::string path = {};
    std::string what;
};

/// Adds what is found in a document of the block; `json` was read from `text`.
void CheckBlock(const SettingsBlockKind& kind, const std::string& text, const Json::Value& json,
                std::vector<FindingAt>& findings);

/// Adds what is found in the commands of a timeline, and what may go wrong in its show.
void CheckTimeline(std::string_view text, const Json::Value& json,
                   std::vector<FindingAt>& findings);

}  // namespace sontaro
