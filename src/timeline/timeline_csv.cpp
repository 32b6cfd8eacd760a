#include "timeline/timeline_csv.h"

#include <fmt/printf.h>

#include <algorithm>
#include <charconv>
#include <iterator>

#include "base/csv_text.h"
#include "base/encoding.h"
#include "base/hex_command.h"
#include "timeline/csv_reader.h"
#include "timeline/node_checks.h"
#include "timeline/time_text.h"
#include "timeline/timeline_texts.h"

namespace sontaro {

namespace {

using Kind = CsvTrouble::Kind;

const LocalText& TextOf(Kind kind) {
    // clang-format off
    static constexpr std::pair<Kind, LocalText> kTexts[] = {
        {Kind::kNoUtf8,     {"不是 UTF-8 文本", "the text is not UTF-8"}},
        {Kind::kOpenQuote,  {"引号没有结束", "a quoted cell does not end"}},
        {Kind::kAfterQuote, {"引号之后还有“%s”", "\"%s\" follows the end of a quoted cell"}},
        {Kind::kColumns,    {"单元格数与标题不符", "there are not as many cells as headers"}},
        {Kind::kHeader,     {"缺少“%s”列", "the column \"%s\" is missing"}},
        {Kind::kPlayer,     {"“%s”不是 1 到 65536 的播放器编号", "\"%s\" is no player from 1 to 65536"}},
        {Kind::kTime,       {"“%s”不是以秒表示的时间", "\"%s\" is no time in seconds"}},
        {Kind::kPort,       {"没有端口“%s”", "\"%s\" is no port"}},
        {Kind::kAddress,    {"“%s”不是 IP 地址", "\"%s\" is no IP address"}},
        {Kind::kPeerPort,   {"“%s”不是 0 到 65535 的网络端口", "\"%s\" is no peer port from 0 to 65535"}},
        {Kind::kCommand,    {"“%s”不是十六进制命令", "\"%s\" is no hexadecimal command"}},
    };
    // clang-format on
    return std::ranges::find(kTexts, kind, &std::pair<Kind, LocalText>::first)->second;
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(" \t"), text.size());
    return text.substr(begin, text.find_last_not_of(" \t") + 1 - begin);
}

std::optional<std::int32_t> NumberOf(std::string_view text, std::int32_t least, std::int32_t most) {
    text = Trimmed(text);
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    if (!isWhole || number < least || number > most) return std::nullopt;
    return number;
}

bool Is(const LocalText& name, std::string_view text) {
    return text == name.chinese || text == name.english;
}

/// Spreadsheets take 232:1 for a time of day, and write 232:01:00 in its place.
std::optional<std::int32_t> PortOf(std::string_view text) {
    constexpr std::string_view kSerial = "232:";
    constexpr std::string_view kNoSeconds = ":00";
    text = Trimmed(text);
    const auto* named =
        std::ranges::find_if(kTimelinePortNames, [&](const auto& name) { return Is(name, text); });
    if (named != kTimelinePortNames.end())
        return static_cast<std::int32_t>(named - kTimelinePortNames.begin());
    if (!text.starts_with(kSerial)) return std::nullopt;
    text.remove_prefix(kSerial.size());
    if (text.ends_with(kNoSeconds)) text.remove_suffix(kNoSeconds.size());
    return NumberOf(text, kPortSerial0, kPortSerial3);
}

/// A column: how its cell is written, and read into a node; false when it cannot be.
struct CsvColumn {
    TimelineColumn column;
    Kind trouble;
    bool (*read)(const std::string& text, TimeNode& node);

    [[nodiscard]] const LocalText& Name() const {
        return kTimelineHeaders[static_cast<std::size_t>(column)];
    }
};

template <class Value, class Field>
bool Store(const std::optional<Value>& value, Field& field) {
    if (value) field = *value;
    return value.has_value();
}

constexpr CsvColumn kColumns[] = {
    {TimelineColumn::kPlayer, Kind::kPlayer,
     [](const std::string& text, TimeNode& node) {
         const bool isPlayer = Store(NumberOf(text, 1, kLastPlayer + 1), node.player);
         --node.player;
         return isPlayer;
     }},
    {TimelineColumn::kType, Kind::kNoUtf8,
     [](const std::string& text, TimeNode& node) { return node.typeName = text, true; }},
    {TimelineColumn::kVideo, Kind::kNoUtf8,
     [](const std::string& text, TimeNode& node) { return node.videoName = text, true; }},
    {TimelineColumn::kTime, Kind::kTime,
     [](const std::string& text, TimeNode& node) {
         return Store(MillisecondsOfSeconds(text), node.time) && node.time >= 0;
     }},
    {TimelineColumn::kPort, Kind::kPort,
     [](const std::string& text, TimeNode& node) { return Store(PortOf(text), node.port); }},
    {TimelineColumn::kIp, Kind::kAddress,
     [](const std::string& text, TimeNode& node) {
         node.ip = Trimmed(text);
         return node.ip.empty() || IsCompleteAddress(node.ip);
     }},
    {TimelineColumn::kPeerPort, Kind::kPeerPort,
     [](const std::string& text, TimeNode& node) {
         return Trimmed(text).empty() || Store(NumberOf(text, 0, kLastPeerPort), node.peerPort);
     }},
    {TimelineColumn::kCommand, Kind::kCommand,
     [](const std::string& text, TimeNode& node) {
         return Store(NormalizedHexCommand(text), node.command) && !node.command.empty();
     }},
};

std::string SpacedCommand(const std::string& command) {
    if (!IsHexCommand(command)) return command;
    std::string text;
    for (std::size_t at = 0; at < command.size(); at += 2)
        text += (at == 0 ? "" : " ") + command.substr(at, 2);
    return text;
}

std::string Written(const TimeNode& node, TimelineColumn column) {
    switch (column) {
        case TimelineColumn::kPlayer: return std::to_string(node.player + 1);
        case TimelineColumn::kCommand: return SpacedCommand(node.command);
        default: return CellText(node, column);
    }
}

template <class TextOfColumn>
void AddRow(std::string& csv, const TextOfColumn& text) {
    std::vector<std::string> cells;
    for (const CsvColumn& column : kColumns) cells.push_back(text(column));
    AddCsvRow(csv, cells);
}

/// Reads row after row under the headers.
class NodeReader {
   public:
    explicit NodeReader(std::string_view text) : rows_(text) {}

    [[nodiscard]] std::optional<CsvTrouble> Read(std::vector<TimeNode>& nodes) {
        if (auto trouble = ReadHeaders()) return trouble;
        for (CsvRow row = rows_.NextRow(); !row.empty(); row = rows_.NextRow())
            if (auto trouble = ReadNode(row, nodes.emplace_back())) return trouble;
        return std::nullopt;
    }

   private:
    [[nodiscard]] std::optional<CsvTrouble> ReadHeaders() {
        const CsvRow headers = rows_.NextRow();
        if (auto trouble = FaultOf(headers)) return trouble;
        width_ = headers.size();
        for (std::size_t i = 0; i < std::size(kColumns); ++i) {
            const auto found = std::ranges::find_if(headers, [&](const CsvCell& cell) {
                return Is(kColumns[i].Name(), Trimmed(cell.text));
            });
            if (found == headers.end())
                return CsvTrouble{Kind::kHeader, 1, width_ + 1, Localized(kColumns[i].Name())};
            places_[i] = static_cast<std::size_t>(found - headers.begin());
        }
        return std::nullopt;
    }

    [[nodiscard]] std::optional<CsvTrouble> ReadNode(const CsvRow& row, TimeNode& node) const {
        if (auto trouble = FaultOf(row)) return trouble;
        if (row.size() != width_) {
            const std::size_t column = std::min(row.size() - 1, width_);
            return TroubleAt(row, column, Kind::kColumns);
        }
        for (std::size_t i = 0; i < std::size(kColumns); ++i)
            if (!kColumns[i].read(row[places_[i]].text, node))
                return TroubleAt(row, places_[i], kColumns[i].trouble);
        if (!IsNetworkPort(node.port) || !node.ip.empty()) return std::nullopt;
        return TroubleAt(row, places_[kIpPlace], Kind::kAddress);
    }

    [[nodiscard]] static CsvTrouble TroubleAt(const CsvRow& row, std::size_t column, Kind kind) {
        return {kind, row[column].line, column + 1, row[column].text};
    }

    /// What is wrong with a row as such.
    [[nodiscard]] static std::optional<CsvTrouble> FaultOf(const CsvRow& row) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            const CsvCell& cell = row[column];
            if (DecodeUtf8(cell.text) != cell.text)
                return CsvTrouble{Kind::kNoUtf8, cell.line, column + 1};
            if (cell.fault != CsvCell::Fault::kNone)
                return TroubleAt(row, column,
                                 cell.fault == CsvCell::Fault::kOpenQuote ? Kind::kOpenQuote
                                                                          : Kind::kAfterQuote);
        }
        return std::nullopt;
    }

    static constexpr std::size_t kIpPlace = 5;  // in `kColumns`

    CsvReader rows_;
    std::size_t width_ = 0;
    std::array<std::size_t, std::size(kColumns)> places_{};
};

}  // namespace

std::string CsvTrouble::Told() const {
    constexpr LocalText kTold = {"第 %d 行第 %d 列：%s。未作任何更改。",
                                 "Line %d, column %d: %s. Nothing has been changed."};
    return fmt::sprintf(Localized(kTold), line, column,
                        fmt::sprintf(Localized(TextOf(kind)), text));
}

std::string TimelineCsv(const GroupOrder& order) {
    std::string csv(kCsvBegin);
    AddRow(csv, [](const CsvColumn& column) { return Localized(column.Name()); });
    for (const SharedGroup& group : order)
        for (const GroupNode& stored : group->nodes)
            AddRow(csv, [node = NodeOf(*group, stored)](const CsvColumn& column) {
                return Written(node, column.column);
            });
    return csv;
}

std::variant<std::vector<TimeNode>, CsvTrouble> ReadTimelineCsv(std::string_view text) {
    std::vector<TimeNode> nodes;
    if (auto trouble = NodeReader(text).Read(nodes)) return *std::move(trouble);
    return nodes;
}

NodeIds ImportNodes(TimelineDocument& document, std::vector<TimeNode> nodes, CsvImport how) {
    TimelineChange change{{}, {}, std::move(nodes)};
    if (how == CsvImport::kReplace)
        for (const SharedGroup& group : document.Order())
            std::ranges::transform(group->nodes, std::back_inserter(change.removed),
                                   &GroupNode::id);
    return document.Apply(change);
}

}  // namespace sontaro
