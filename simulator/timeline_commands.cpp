#include "simulator/timeline_commands.h"

#include <fmt/format.h>

#include "base/json.h"
#include "timeline/timeline_edits.h"
#include "timeline/timeline_texts.h"

namespace sontaro::simulator {

namespace {

enum Operation : std::uint16_t { kRead = 0, kWrite = 1, kTest = 2 };

void SetPayload(Answer& answer, std::string_view text) {
    const ByteView bytes = AsBytes(text);
    answer.reply.payload.assign(bytes.begin(), bytes.end());
}

/// The node of a test: an object by itself, which is a list of one node but for its player.
TimeNode TestedNode(std::string_view text) {
    TimelineDocument document;
    const std::string list = fmt::format(R"({{"cmdInfos":[{{"cmdList":[{}]}}]}})", text);
    const Status taken = document.Take(list, TimelineSource::kPlayer);
    return taken && document.NodeCount() > 0 ? document.NodeAt(0) : TimeNode();
}

/// The timeline without its last node, as if it had not been kept whole.
std::string WithoutLastNode(std::string_view text) {
    TimelineDocument document;
    const Status taken = document.Take(text, TimelineSource::kPlayer);
    if (taken && document.NodeCount() > 0)
        DeleteNodes(document, std::array{document.IdAt(document.NodeCount() - 1)});
    return document.Write();
}

}  // namespace

void HandleTimeline(PlayerState& state, const DevicePacket& request, Answer& answer) {
    const std::string_view text = AsText(request.payload);
    answer.reply.header.argument = request.header.argument;
    switch (request.header.argument) {
        case kRead:
            answer.content = Content::kDocument;
            SetPayload(answer, state.timeline);
            return;
        case kWrite: {
            const Result<Json::Value> json = ParseJson(text);
            answer.content = Content::kSaved;
            answer.silent = !json || !json->isObject();
            if (!answer.silent) state.timeline = text;
            return;
        }
        case kTest: answer.note = "test " + LogText(TestedNode(text)); return;
        default: answer = NotSupported(request);
    }
}

void SpoilTimeline(Answer& answer, const FaultScript& faults) {
    const PacketHeader& header = answer.reply.header;
    const bool isTimeline =
        header.subCommand == kBlockPlayerTimeline && answer.content == Content::kDocument;
    if (isTimeline && faults.emptyTimeline) answer.reply.payload.clear();
    if (isTimeline && faults.changedTimeline)
        SetPayload(answer, WithoutLastNode(AsText(answer.reply.payload)));
}

std::string LogText(const TimeNode& node) {
    std::string text = PortName(node.port).english;
    if (IsNetworkPort(node.port)) text += fmt::format(" {}:{}", node.ip, node.peerPort);
    for (std::size_t at = 0; at < node.command.size(); at += 2)
        text += ' ' + node.command.substr(at, 2);
    return text;
}

}  // namespace sontaro::simulator
