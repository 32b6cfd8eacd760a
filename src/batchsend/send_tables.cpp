#include "batchsend/send_tables.h"

#include <algorithm>

#include "batchsend/set_problems.h"

namespace sontaro {

namespace {

enum class Column : std::size_t { kNumber, kIp, kPort, kStatus, kNote, kProof };

constexpr TableColumn kColumns[] = {
    {{"序号", "No."}, 6, CellKind::kNumber},
    {{"IP地址", "IP"}, 15},
    {{"TCP端口号", "TCP Port"}, 10, CellKind::kNumber},
    {{"更新视频", "Update Video"}, 20},
    {{"说明", "Notes"}, 36},
    {{"核对", "Proof"}, 44},
};

enum class VideoColumn : std::size_t { kName, kCode, kSize, kFirstPlayer };

constexpr TableColumn kVideoColumns[] = {
    {{"视频", "Video"}, 30},
    {{"代码", "Code"}, 7, CellKind::kNumber},
    {{"大小", "Size"}, 10, CellKind::kNumber},
};
constexpr int kPlayerCharacters = 22;

}  // namespace

std::span<const TableColumn> UploadTable::Columns() const { return kColumns; }

std::string UploadTable::Text(std::size_t row, std::size_t column) const {
    const UploadRow& upload = page_.Rows()[row];
    switch (static_cast<Column>(column)) {
        case Column::kNumber: return std::to_string(row + 1);
        case Column::kIp: return upload.player.target.ip;
        case Column::kPort: return std::to_string(upload.player.target.port);
        case Column::kStatus: return StatusText(upload);
        case Column::kNote: return NoteText(upload.note);
        case Column::kProof: return page_.ProofText(row);
    }
    return {};
}

BatchMatrix::BatchMatrix(const SendPage& page)
    : page_(page), columns_(std::begin(kVideoColumns), std::end(kVideoColumns)) {
    for (const Target& player : page.Batch().Players()) addresses_.push_back(player.ip);
    for (const std::string& address : addresses_)
        columns_.push_back({InBoth(address.c_str()), kPlayerCharacters});
}

bool BatchMatrix::IsUpToDate() const {
    return std::ranges::equal(page_.Batch().Players(), addresses_, {}, &Target::ip);
}

std::string BatchMatrix::Text(std::size_t row, std::size_t column) const {
    const BatchVideo& video = page_.Batch().Videos()[row];
    switch (static_cast<VideoColumn>(column)) {
        case VideoColumn::kName: return video.video.name;
        case VideoColumn::kCode: return std::to_string(video.video.code);
        case VideoColumn::kSize: return BytesText(video.size);
        default: break;
    }
    return PairAt(row, column)->Text();
}

const SendPair* BatchMatrix::PairAt(std::size_t row, std::size_t column) const {
    constexpr auto kFirst = static_cast<std::size_t>(VideoColumn::kFirstPlayer);
    return column < kFirst ? nullptr : &page_.Batch().PairAt(column - kFirst, row);
}

std::string BatchMatrix::CellCaution(std::size_t row, std::size_t column) const {
    const SendPair* pair = PairAt(row, column);
    return pair && pair->IsTrouble() ? pair->Text() : "";
}

}  // namespace sontaro
