#include "timeline/csv_reader.h"

#include <algorithm>

namespace sontaro {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kSeparators = ",;\t";
constexpr char kQuote = '"';

char SeparatorOf(std::string_view text) {
    bool quoted = false;
    for (const char character : text) {
        if (character == kQuote) quoted = !quoted;
        if (!quoted && kSeparators.find(character) != std::string_view::npos) return character;
    }
    return kSeparators.front();
}

/// Lines that a text goes on for.
std::size_t LineEnds(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++at)
        if (text[at] == '\n' || (text[at] == '\r' && text.substr(at + 1, 1) != "\n")) ++count;
    return count;
}

}  // namespace

CsvReader::CsvReader(std::string_view text) : rest_(text) {
    if (rest_.starts_with(kByteOrderMark)) rest_.remove_prefix(kByteOrderMark.size());
    separator_ = SeparatorOf(rest_);
}

CsvRow CsvReader::NextRow() {
    while (!rest_.empty()) {
        CsvRow row = TakeRow();
        if (row.size() > 1 || !row.front().text.empty() ||
            row.front().fault != CsvCell::Fault::kNone)
            return row;
    }
    return {};
}

CsvRow CsvReader::TakeRow() {
    CsvRow row;
    for (;;) {
        row.push_back(TakeCell());
        if (row.back().fault != CsvCell::Fault::kNone) return row;
        if (!rest_.starts_with(separator_)) break;
        rest_.remove_prefix(1);
    }
    TakeLineEnd();
    return row;
}

CsvCell CsvReader::TakeCell() {
    if (rest_.starts_with(kQuote)) return TakeQuoted();
    return {std::string(TakePlain()), line_};
}

/// What is left of the cell.
std::string_view CsvReader::TakePlain() {
    const char ends[] = {separator_, '\r', '\n'};
    const std::size_t end = rest_.find_first_of({ends, std::size(ends)});
    const std::string_view text = rest_.substr(0, end);
    rest_.remove_prefix(text.size());
    return text;
}

CsvCell CsvReader::TakeQuoted() {
    CsvCell cell{"", line_};
    do {
        rest_.remove_prefix(1);
        const std::size_t end = rest_.find(kQuote);
        if (end == std::string_view::npos) {
            rest_ = {};
            return {"", cell.line, CsvCell::Fault::kOpenQuote};
        }
        cell.text += rest_.substr(0, end + 1);  // its quote stays only if another one follows
        rest_.remove_prefix(end + 1);
    } while (rest_.starts_with(kQuote));
    cell.text.pop_back();
    line_ += LineEnds(cell.text);
    if (const std::string_view after = TakePlain(); !after.empty())
        return {std::string(after), cell.line, CsvCell::Fault::kAfterQuote};
    return cell;
}

void CsvReader::TakeLineEnd() {
    if (rest_.empty()) return;
    rest_.remove_prefix(rest_.starts_with("\r\n") ? 2 : 1);
    ++line_;
}

}  // namespace sontaro
