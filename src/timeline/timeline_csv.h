// A timeline as a table of text, for spreadsheets (RFC 4180 in UTF-8, with a byte order mark).
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "timeline/timeline_document.h"

namespace sontaro {

/// All nodes under a row of headers in the user's language. Commands are bytes with blanks between
/// them: a spreadsheet takes 5E12 for a number.
[[nodiscard]] std::string TimelineCsv(const GroupOrder& order);

/// Why a table cannot be read: where, counted from 1, and what stands there.
struct CsvTrouble {
    enum class Kind {
        kNoUtf8,      ///< a cell is in another encoding
        kOpenQuote,   ///< a quoted cell does not end
        kAfterQuote,  ///< something follows the end of a quoted cell
        kColumns,     ///< a row has not as many cells as there are headers
        kHeader,      ///< a column is missing
        kPlayer,      ///< not a number from 1 to 65536
        kTime,        ///< not a time in seconds
        kPort,        ///< no port
        kAddress,     ///< no address, which ports with a peer need
        kPeerPort,    ///< not a number from 0 to 65535
        kCommand,     ///< no hexadecimal bytes
    };
    Kind kind{};
    std::size_t line = 0;    ///< of the text; a quoted cell may span several
    std::size_t column = 0;  ///< of the table
    std::string text = {};

    /// For the user.
    [[nodiscard]] std::string Told() const;
};

/// Reads such a table with headers of either language. Its columns may stand in any order, and
/// others among them; its byte order mark may be missing; semicolons or tabs may separate cells.
/// What the editor of a node would refuse is no node.
[[nodiscard]] std::variant<std::vector<TimeNode>, CsvTrouble> ReadTimelineCsv(
    std::string_view text);

enum class CsvImport { kAppend, kReplace };

/// Adds the nodes, or puts them in place of all others, as one step; says their numbers.
NodeIds ImportNodes(TimelineDocument& document, std::vector<TimeNode> nodes, CsvImport how);

}  // namespace sontaro
