// A timeline of anything, a table of anything added to it, all of it undone.
#include <algorithm>
#include <cstdlib>

#include "base/bytes.h"
#include "timeline/timeline_csv.h"

namespace sontaro {
namespace {

void Expect(bool holds) {
    if (!holds) std::abort();
}

/// What was read is written so that it is read and written alike, and is as long as it is said to
/// be.
std::string Written(const TimelineDocument& document) {
    std::string text = document.Write();
    Expect(document.TextBytes() == text.size());
    TimelineDocument again;
    Expect(again.Take(text, TimelineSource::kFile).ok());
    Expect(again.Write() == text && again.NodeCount() == document.NodeCount());
    return text;
}

/// What a table gives is what it gives again when it was written as one.
void TakeTable(std::string_view table, TimelineDocument& document) {
    auto read = ReadTimelineCsv(table);
    if (const auto* trouble = std::get_if<CsvTrouble>(&read)) {
        Expect(!trouble->Told().empty());
        return;
    }
    TimelineDocument alone;
    ImportNodes(alone, std::get<0>(read), CsvImport::kReplace);
    const std::string csv = TimelineCsv(alone.Order());
    TimelineDocument again;
    ImportNodes(again, std::get<0>(ReadTimelineCsv(csv)), CsvImport::kAppend);
    Expect(TimelineCsv(again.Order()) == csv);
    ImportNodes(document, std::get<0>(std::move(read)), CsvImport::kAppend);
}

/// A document up to the first zero byte, then a table. In between every second node goes.
void Run(std::string_view input) {
    const std::size_t end = std::min(input.find('\0'), input.size());
    TimelineDocument document;
    if (!document.Take(input.substr(0, end), TimelineSource::kPlayer))
        Expect(document.NodeCount() == 0);
    const std::string before = Written(document);
    TimelineChange change;
    for (std::size_t row = 0; row < document.NodeCount(); row += 2) {
        Expect(document.RowOf(document.IdAt(row)) == row);
        change.removed.push_back(document.IdAt(row));
    }
    document.Apply(change);
    TakeTable(input.substr(std::min(end + 1, input.size())), document);
    const std::string after = Written(document);
    while (document.Undo()) {
    }
    Expect(document.Write() == before);
    while (document.Redo()) {
    }
    Expect(document.Write() == after);
}

}  // namespace
}  // namespace sontaro

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sontaro::Run(sontaro::AsText({data, size}));
    return 0;
}
