#include "exchange/player_requests.h"

#include "base/json.h"

namespace sontaro {

namespace {

using Kind = Verdict::Kind;

constexpr std::uint16_t kLastGoodResult = 1;  // of the control protocol and the screen split
constexpr std::uint8_t kRestart = 1;

Verdict ReplyIf(bool holds) { return {holds ? Kind::kReply : Kind::kNotMine}; }

Verdict JudgeVideoReply(const WindowMessage& message, std::uint16_t commandId) {
    if (message.id != MessageId::kVideoReply) return {};
    const auto answer = ParseJson(AsText(PayloadOf(message)));
    if (!answer || !answer->isObject()) return {};
    const Json::Value& answered = (*answer)["cmdId"];
    if (!answered.isInt() || answered.asInt() != commandId) return {};
    const std::uint16_t code = VideoReplyCode(*answer);
    return {code == 0 ? Kind::kReply : Kind::kRefused, code};
}

bool IsOfBlock(const WindowMessage& message, SettingsBlock block) {
    const PacketHeader& header = message.origin.header;
    return header.command == kCommandSettings && header.subCommand == block;
}

/// What a block's answer is to a read, or to a write.
Verdict JudgeSettings(const WindowMessage& message, const SettingsBlockFacts& facts, bool isWrite,
                      bool restarts) {
    if (!IsOfBlock(message, facts.block)) return {};
    const std::uint16_t argument = message.origin.header.argument;
    switch (facts.confirmation) {
        case SettingsBlockFacts::Confirmation::kArgument:
            return ReplyIf(argument == (isWrite ? facts.writeArgument : 0));
        case SettingsBlockFacts::Confirmation::kAnyDocument: return {Kind::kReply};
        case SettingsBlockFacts::Confirmation::kNoDocument:
            if (argument > kLastGoodResult) return {Kind::kRefused, argument};
            return ReplyIf(!isWrite || restarts || PayloadOf(message).empty());
    }
    return {};
}

Verdict JudgeScreenSplit(const WindowMessage& message, SettingsBlock block) {
    if (!IsOfBlock(message, block)) return {};
    const std::uint16_t argument = message.origin.header.argument;
    if (argument > kLastGoodResult) return {Kind::kRefused, argument};
    return {Kind::kReply};
}

}  // namespace

SharedPacket ReadyPacket(std::uint32_t commandWord, std::uint32_t selectorWord,
                         std::string_view payload) {
    return std::make_shared<const Bytes>(
        DevicePacket::Request(commandWord, selectorWord, payload).Serialize());
}

Request AskPlayerState() {
    return {ReadyPacket(kCommandPlayerData, 0), [](const WindowMessage& message) {
                return ReplyIf(message.id == MessageId::kPlayerState &&
                               message.origin.header.command == kCommandPlayerData);
            }};
}

Request AskPlayerData(std::uint16_t part) {
    const Request any = AskPlayerState();
    return {ReadyPacket(kCommandPlayerData, std::uint32_t{part} << 16),
            [part, judge = any.judge](const WindowMessage& message) {
                return message.origin.header.argument == part ? judge(message) : Verdict{};
            }};
}

Request AskLayoutState() {
    return {ReadyPacket(kCommandLayoutState, 0), [](const WindowMessage& message) {
                return ReplyIf(message.id == MessageId::kLayoutState);
            }};
}

Request AskOlderNames() { return AskVideoList(VideoListFor::kPlayerControl); }

Request AskVideoList(VideoListFor room) {
    return {ReadyPacket(kCommandPlayerState, static_cast<std::uint32_t>(room)),
            [](const WindowMessage& message) {
                return ReplyIf(message.id == MessageId::kPlayerState &&
                               message.origin.header.command == kCommandPlayerState);
            }};
}

Request AskVideoCommand(std::uint16_t commandId, std::string_view json) {
    return {ReadyPacket(kCommandVideo, commandId, json), [commandId](const WindowMessage& message) {
                return JudgeVideoReply(message, commandId);
            }};
}

Request ReadSettings(SettingsBlock block) {
    return {ReadyPacket(kCommandSettings, block),
            [&facts = FactsOf(block)](const WindowMessage& message) {
                return JudgeSettings(message, facts, false, false);
            }};
}

Request WriteSettings(SettingsBlock block, std::string_view document, std::uint8_t qualifier) {
    const SettingsBlockFacts& facts = FactsOf(block);
    return {ReadyPacket(kCommandSettings | std::uint32_t{qualifier} << 8,
                        block | std::uint32_t{facts.writeArgument} << 16, document),
            [&facts, restarts = qualifier == kRestart](const WindowMessage& message) {
                return JudgeSettings(message, facts, true, restarts);
            }};
}

Request AskParameterBlock() {
    constexpr std::uint32_t kQualifier = 1;
    return {ReadyPacket(kCommandParameterBlock | kQualifier << 8, 0),
            [](const WindowMessage& message) {
                return ReplyIf(message.id == MessageId::kParameterBlock);
            }};
}

Request ReadScreenSplit() {
    return {ReadyPacket(kCommandSettings, kBlockScreenSplitRead), [](const WindowMessage& message) {
                return JudgeScreenSplit(message, kBlockScreenSplitRead);
            }};
}

Request WriteScreenSplit(std::string_view document) {
    return {ReadyPacket(kCommandSettings, kBlockScreenSplitWrite, document),
            [](const WindowMessage& message) {
                return JudgeScreenSplit(message, kBlockScreenSplitWrite);
            }};
}

std::uint16_t VideoReplyCode(const Json::Value& answer) {
    const Json::Value& code = answer["code"];
    if (!code.isIntegral()) return 1;
    return static_cast<std::uint16_t>(code.isInt64() ? code.asInt64()
                                                     : static_cast<std::int64_t>(code.asUInt64()));
}

}  // namespace sontaro
