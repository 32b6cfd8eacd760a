#include "batchsend/upload_status.h"

#include <fmt/printf.h>

#include <numeric>

#include "base/local_text.h"

namespace sontaro {

namespace {

/// In the order of `UploadStatus`.
constexpr LocalText kStatuses[] = {
    {"未选择", "No choice"},
    {"应答超时", "Time Out"},
    {"磁盘剩余小", "Small disk surplus"},
    {"类别剩余少", "Less category remaining"},
    {"网络中断", "net failure"},
    {"%d/%d", "%d/%d"},
    {"等待", "Waiting"},
    {"完成", "OK"},
};
/// In the order of `UploadNote::Kind`.
constexpr LocalText kNotes[] = {
    {"", ""},
    {"未发送：无法连接播放器", "Not sent: the player cannot be reached"},
    {"无法读取文件：%s", "The file cannot be read: %s"},
    {"发送期间文件大小一再变化：%s", "The file keeps changing its size while it is sent: %s"},
    {"播放器不支持此功能", "The player does not support this"},
    {"播放器未保存视频类别", "The player does not keep the categories"},
    {"连接已断开", "The connection has ended"},
    {"已停止", "Stopped"},
    {"正在检查文件", "Looking at the files"},
};
/// Of what has not been sent although the player may be there, in the order of `NotSent`.
constexpr LocalText kReasons[] = {
    kNotes[1],
    {"未发送：所有连接都已被占用", "Not sent: all links are taken by other players"},
    kNotes[1],
    {"未发送：所用的连接仍属于另一台播放器", "Not sent: the link still belonged to another player"},
    {"未发送：连接正在断开", "Not sent: the connection was just ending"},
    {"未发送：播放器没有接收数据", "Not sent: the player does not take anything in"},
};
/// In the order of `UploadLine::Kind`.
constexpr LocalText kLines[] = {
    {"", ""},
    {"正在发送视频:", "Sending video:"},
    {"正在重发送视频:", "ReSending video:"},
    {"批量发送完成！", "Batch Send OK!"},
};

}  // namespace

std::uint64_t UploadRow::BytesLeft() const {
    const auto first = plan.begin() + static_cast<std::ptrdiff_t>(confirmed);
    const auto add = [](std::uint64_t bytes, const auto& video) { return bytes + video.size; };
    return std::accumulate(first, plan.end(), std::uint64_t{0}, add);
}

std::string StatusText(const UploadRow& row) {
    std::string text = Localized(kStatuses[static_cast<std::size_t>(row.status)]);
    if (row.status != UploadStatus::kInProgress) return text;
    return fmt::sprintf(text, row.sent, row.plan.size());
}

std::string NoteText(const UploadNote& note) {
    if (note.kind == UploadNote::Kind::kNotSent)
        return Localized(kReasons[static_cast<std::size_t>(note.reason)]);
    return fmt::sprintf(Localized(kNotes[static_cast<std::size_t>(note.kind)]), note.text);
}

std::string LineText(const UploadLine& line) {
    return Localized(kLines[static_cast<std::size_t>(line.kind)]) + line.name;
}

}  // namespace sontaro
