#include "batchsend/set_tables.h"

#include <algorithm>

#include "base/path_text.h"
#include "batchsend/set_page_text.h"

namespace sontaro {

namespace {

using Kind = SetProblem::Kind;

enum class PlayerColumn : std::size_t { kIp, kId, kMode, kFree, kState, kVideos };

constexpr TableColumn kPlayerColumns[] = {
    {{"IP地址", "IP"}, 14},  {{"ID号 / 备注", "ID / Remarks"}, 11},
    {{"模式", "Mode"}, 11},  {{"剩余空间", "Free"}, 10, CellKind::kNumber},
    {{"状态", "State"}, 22}, {{"视频", "Videos"}, 15, CellKind::kNumber},
};

enum class VideoColumn : std::size_t { kFile, kSize, kCategory, kName, kCode, kFolder };

constexpr TableColumn kVideoColumns[] = {
    {{"文件", "File"}, 19},
    {{"大小", "Size"}, 10, CellKind::kNumber},
    {{"类别", "Category"}, 14},
    {{"发送的名称", "Name as sent"}, 19},
    {{"代码", "Code"}, 7, CellKind::kNumber},
    {{"文件夹", "Folder"}, 40},
};

constexpr LocalText kAllPlayers = {"所有播放器", "All players"};
constexpr const char* kUnknown = "?";

std::string FileText(const SetVideo& video) {
    return TextOfPath(PathOfText(video.path).filename());
}

}  // namespace

std::span<const TableColumn> SetPlayersTable::Columns() const { return kPlayerColumns; }

std::string SetPlayersTable::Text(std::size_t row, std::size_t column) const {
    const auto shown = static_cast<PlayerColumn>(column);
    const SetPageRun::Place place = PlaceOfRow(row);
    if (shown == PlayerColumn::kVideos) return AmountText(run_.Set(), place);
    if (!place) return shown == PlayerColumn::kIp ? Localized(kAllPlayers) : "";
    const DeviceRecord& player = run_.Players()[*place];
    const PlayerFacts& facts = run_.Inquiry().FactsOf(*place);
    const InquiryState state = run_.Inquiry().StateOf(*place);
    const char* const unknown = state == InquiryState::kAnswered ? kUnknown : "";
    switch (shown) {
        case PlayerColumn::kIp: return player.ip;
        case PlayerColumn::kId:
            return player.id + (player.remarks.empty() ? "" : "  ") + player.remarks;
        case PlayerColumn::kMode: return facts.mode ? TextOf(*facts.mode) : unknown;
        case PlayerColumn::kFree: return facts.free ? BytesText(*facts.free) : unknown;
        case PlayerColumn::kState: return TextOf(state);
        case PlayerColumn::kVideos: break;
    }
    return {};
}

std::string SetPlayersTable::CellCaution(std::size_t row, std::size_t column) const {
    const SetPageRun::Place place = PlaceOfRow(row);
    const auto shown = static_cast<PlayerColumn>(column);
    if (shown == PlayerColumn::kState && place) {
        const InquiryState state = run_.Inquiry().StateOf(*place);
        return state > InquiryState::kAnswered ? TextOf(state) : "";
    }
    const bool isSpace = shown == PlayerColumn::kFree;
    if (!isSpace && shown != PlayerColumn::kVideos) return {};
    const auto& problems = run_.Problems();
    const auto problem = std::ranges::find_if(problems, [&](const SetProblem& one) {
        return one.player == place && (one.kind == Kind::kDoesNotFit) == isSpace;
    });
    return problem == problems.end() ? "" : ProblemText(run_.Set(), *problem);
}

std::span<const TableColumn> SetVideosTable::Columns() const { return kVideoColumns; }

std::string SetVideosTable::Text(std::size_t row, std::size_t column) const {
    const SetVideo& video = run_.Videos()[row];
    switch (static_cast<VideoColumn>(column)) {
        case VideoColumn::kFile: return FileText(video);
        case VideoColumn::kSize:
            return video.size < 0 ? "" : BytesText(static_cast<std::uint64_t>(video.size));
        case VideoColumn::kCategory: return SlotText(run_, video.category);
        case VideoColumn::kName: return video.Name();
        case VideoColumn::kCode: return std::to_string(video.code);
        case VideoColumn::kFolder: return TextOfPath(PathOfText(video.path).parent_path());
    }
    return {};
}

/// The lists' own numbers are 32 bits long.
std::uint64_t SetVideosTable::IdOf(std::size_t row) const {
    const std::uint64_t list = SetPlayersTable::RowOfPlace(run_.Shown());
    return (list << 32U) | run_.Videos().IdAt(row);
}

void SetVideosTable::SetTicked(std::size_t row, bool ticked) {
    if (ticked)
        ticked_.insert(IdOf(row));
    else
        ticked_.erase(IdOf(row));
}

std::vector<std::size_t> SetVideosTable::TickedRows() const {
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < RowCount() && !ticked_.empty(); ++row)
        if (IsTicked(row)) rows.push_back(row);
    return rows;
}

const SetProblem* SetVideosTable::ProblemOfRow(std::size_t row) const {
    const std::uint32_t id = run_.Videos().IdAt(row);
    const auto& problems = run_.Problems();
    const auto problem = std::ranges::find_if(problems, [&](const SetProblem& one) {
        return one.player == run_.Shown() && one.kind != Kind::kDoesNotFit && one.video == id;
    });
    return problem == problems.end() ? nullptr : &*problem;
}

std::string SetVideosTable::RowCaution(std::size_t row) const {
    const SetProblem* problem = ProblemOfRow(row);
    return problem ? problem->Told() : "";
}

std::string SetVideosTable::CellCaution(std::size_t row, std::size_t column) const {
    const SetProblem* problem = ProblemOfRow(row);
    if (!problem) return {};
    const auto marked = [&] {
        switch (problem->kind) {
            case Kind::kTooLong: return VideoColumn::kSize;
            case Kind::kNameTooLong:
            case Kind::kSameName: return VideoColumn::kName;
            default: return VideoColumn::kFile;
        }
    };
    return static_cast<VideoColumn>(column) == marked() ? problem->Told() : "";
}

}  // namespace sontaro
