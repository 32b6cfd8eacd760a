#include "simulator/settings_commands.h"

#include "base/json.h"
#include "simulator/screen_split_commands.h"
#include "simulator/timeline_commands.h"

namespace sontaro::simulator {

namespace {

constexpr const char* kVideoType = "VideoType";
constexpr const char* kTypeName = "TypeName";
constexpr std::string_view kNoList = "{\"cloudNewVideoScreenDatas\":";

enum Operation : std::uint16_t { kRead = 0, kWrite = 1 };

bool IsRead(const DevicePacket& request) {
    return request.header.argument == kRead && request.payload.empty();
}

void SetPayload(Answer& answer, std::string_view text) {
    const ByteView bytes = AsBytes(text);
    answer.reply.payload.assign(bytes.begin(), bytes.end());
}

/// Keeps what the request carries; says nothing when that is no object.
void Save(std::string& document, const DevicePacket& request, Answer& answer) {
    const std::string_view text = AsText(request.payload);
    const Result<Json::Value> json = ParseJson(text);
    answer.content = Content::kSaved;
    answer.silent = !json || !json->isObject();
    if (!answer.silent) document = text;
}

/// Documents that are saved with argument 1, which is also the answer's.
void HandleKept(std::string& document, Content content, const DevicePacket& request,
                Answer& answer) {
    if (IsRead(request)) {
        answer.content = content;
        SetPayload(answer, document);
    } else if (request.header.argument == kWrite) {
        answer.reply.header.argument = kWrite;
        Save(document, request, answer);
    } else {
        answer = NotSupported(request);
    }
}

/// A document of nothing but the names of the video categories, which are put in their places.
bool KeepNames(std::string& document, const DevicePacket& request) {
    const auto names = ParseJson(AsText(request.payload));
    if (!names || !names->isObject() || names->size() != 1 || !names->isMember(kVideoType))
        return false;
    Json::Value whole = ParseJson(document).ok() ? *ParseJson(document) : Json::Value();
    if (!whole.isObject()) whole = Json::Value(Json::objectValue);
    for (Json::ArrayIndex i = 0; i < (*names)[kVideoType].size(); ++i)
        whole[kVideoType][i][kTypeName] = (*names)[kVideoType][i][kTypeName];
    document = WriteJson(whole);
    return true;
}

/// Whether an argument of the block's answer may tell that the player refuses; the others know no
/// refusal but that of what is not supported.
bool RefusesByArgument(std::uint16_t block) {
    return block == kBlockControlProtocol || block == kBlockScreenSplitRead ||
           block == kBlockScreenSplitWrite;
}

}  // namespace

void HandleOsd(PlayerState& state, const DevicePacket& request, Answer& answer) {
    if (request.header.argument != kRead) {
        answer = NotSupported(request);
        return;
    }
    answer.content = Content::kDocument;
    if (!IsRead(request)) Save(state.osd, request, answer);
    SetPayload(answer, state.osd);
}

void HandleControlProtocol(PlayerState& state, const DevicePacket& request, Answer& answer) {
    if (request.payload.empty()) {
        answer.content = Content::kControlProtocol;
        SetPayload(answer, state.controlProtocol);
    } else {
        answer.reply.header.qualifier = request.header.qualifier;
        answer.reply.header.argument = request.header.argument;
        if (!KeepNames(state.controlProtocol, request))
            Save(state.controlProtocol, request, answer);
    }
}

void HandleSchema(PlayerState& state, Document document, const DevicePacket& request,
                  Answer& answer) {
    HandleKept(state.*document, Content::kSchema, request, answer);
}

void HandlePlayerControl(PlayerState& state, const DevicePacket& request, Answer& answer) {
    HandleKept(state.playerControl, Content::kDocument, request, answer);
}

std::optional<Answer> FaultyAnswer(const DevicePacket& request, const FaultScript& faults) {
    const bool isSettings = request.header.command == kCommandSettings;
    const bool isSave = isSettings && !request.payload.empty();
    const auto isOfBlock = [&](std::uint16_t block) {
        return isSettings && block != 0 && request.header.subCommand == block;
    };
    if (faults.notSupported || (faults.refuseSaves && isSave) || isOfBlock(faults.unsupported))
        return NotSupported(request);
    if (isOfBlock(faults.refused))
        return RefusesByArgument(faults.refused) ? Refused(request) : NotSupported(request);
    return std::nullopt;
}

void Spoil(Answer& answer, const FaultScript& faults) {
    const bool isRead = answer.content == Content::kDocument ||
                        answer.content == Content::kControlProtocol ||
                        answer.content == Content::kSchema;
    if (answer.content == Content::kSchema && faults.schema) SetPayload(answer, *faults.schema);
    if (isRead && answer.reply.header.subCommand == faults.unread) answer.silent = true;
    if (answer.content == Content::kVideoList && faults.badList) SetPayload(answer, kNoList);
    if (isRead && faults.badJson) answer.reply.payload.resize(answer.reply.payload.size() / 2);
    if (answer.content == Content::kControlProtocol) answer.reply.header.argument = faults.result;
    if (answer.content == Content::kSaved && faults.noAck) answer.silent = true;
    if (answer.content == Content::kSecondPart && faults.noSecondPart) answer.silent = true;
    SpoilTimeline(answer, faults);
    SpoilParameterBlock(answer, faults);
    answer.reply.header.payloadLength = static_cast<std::uint32_t>(answer.reply.payload.size());
}

}  // namespace sontaro::simulator
