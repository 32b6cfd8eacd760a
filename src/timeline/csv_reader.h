// Tables of text (RFC 4180), row by row.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace sontaro {

struct CsvCell {
    std::string text;
    std::size_t line = 1;  ///< on which it begins, from 1
    enum class Fault { kNone, kOpenQuote, kAfterQuote };
    Fault fault = Fault::kNone;
};

using CsvRow = std::vector<CsvCell>;

/// Takes a text apart. Lines end with CR, LF or both; what separates cells is the first comma,
/// semicolon or tab outside of quotes.
class CsvReader {
   public:
    explicit CsvReader(std::string_view text);

    /// The next row that is not an empty line; empty behind the last. A row ends at a cell with a
    /// fault.
    [[nodiscard]] CsvRow NextRow();

   private:
    [[nodiscard]] CsvRow TakeRow();
    [[nodiscard]] CsvCell TakeCell();
    [[nodiscard]] std::string_view TakePlain();
    [[nodiscard]] CsvCell TakeQuoted();
    void TakeLineEnd();

    std::string_view rest_;
    std::size_t line_ = 1;
    char separator_ = ',';
};

}  // namespace sontaro
