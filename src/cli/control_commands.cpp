// control and send.
#include <fmt/printf.h>

#include <algorithm>
#include <array>

#include "cli/cli_values.h"
#include "cli/commands.h"
#include "cli/player_runs.h"
#include "session/player_calls.h"

namespace sontaro::cli {

namespace {

constexpr LocalText kNoButton = {"没有这个按钮。有：%s。",
                                 "there is no such button. There are: %s."};
constexpr LocalText kNoButtons = {"它没有任何按钮。", "it has no buttons at all."};
constexpr LocalText kNeedsValue = {"control %s 需要一个值。", "control %s needs a value."};
constexpr LocalText kTakesNoValue = {"control %s 不带值。", "control %s takes no value."};
constexpr LocalText kNoVolume = {"音量为 0 到 100。", "the volume is 0 to 100."};
constexpr LocalText kNoPower = {"power 需要 on 或 off。", "power takes on or off."};
constexpr LocalText kPowerQuestion = {"要关闭播放器吗？", "Switch the players off?"};
constexpr LocalText kSent = {"已发送 %s", "sent %s"};

/// The types that a player knows a button by; the first that it has counts.
struct ButtonRow {
    const char* action;
    const char* value;  ///< absent: the action has none
    std::array<int, 2> types;
};
constexpr ButtonRow kButtons[] = {
    {"play", nullptr, {7, 7}},       {"pause", nullptr, {8, 8}},
    {"previous", nullptr, {9, 200}}, {"next", nullptr, {10, 201}},
    {"mode", "folder-loop", {2, 2}}, {"mode", "single-loop", {3, 3}},
    {"mode", "single", {4, 4}},      {"mode", "folder-random", {5, 5}},
    {"mode", "all-random", {6, 6}},  {"power", "on", {11, 11}},
    {"power", "off", {12, 12}},
};

/// The commands that take their value as it is.
struct CommandRowOfAction {
    const char* action;
    VideoCommand command;
};
constexpr CommandRowOfAction kCommandActions[] = {
    {"folder", kVideoFolder}, {"video", kVideoPlayName}, {"usb-video", kVideoUsbName},
    {"layout", kVideoLayout}, {"volume", kVideoSound},
};

const ButtonRow* FindButton(const std::string& action, const std::string& value) {
    const auto* found = std::ranges::find_if(kButtons, [&](const ButtonRow& row) {
        return action == row.action && (row.value ? value == row.value : value.empty());
    });
    return found == std::end(kButtons) ? nullptr : found;
}

/// Why the action cannot be meant; none: it can.
std::optional<std::string> RefusalOf(const std::string& action, const std::string& value) {
    const auto row = std::ranges::find(Actions(), action, &ActionRow::name);
    if (row->isValueRequired && value.empty()) return fmt::sprintf(Localized(kNeedsValue), action);
    if (!row->value && !value.empty()) return fmt::sprintf(Localized(kTakesNoValue), action);
    constexpr int kLoudest = 100;
    if (action == "volume" && !ParseCount(value, 0, kLoudest)) return Localized(kNoVolume);
    if (action == "power" && !FindButton(action, value)) return Localized(kNoPower);
    return std::nullopt;
}

/// What the player's button says; none: it has no such button. A play mode may be what its button
/// says as well.
std::optional<std::string> CaptionFor(const std::vector<VideoCaption>& captions,
                                      const ButtonRow* button, const std::string& value) {
    if (!button) {
        const auto said = std::ranges::find(captions, value, &VideoCaption::caption);
        return said == captions.end() ? std::nullopt : std::optional(said->caption);
    }
    for (const int type : button->types) {
        const auto found = std::ranges::find(captions, type, &VideoCaption::type);
        if (found != captions.end()) return found->caption;
    }
    return std::nullopt;
}

Failure NoButton(const std::vector<VideoCaption>& captions) {
    std::string list;
    for (const VideoCaption& caption : captions) {
        const auto* known = std::ranges::find_if(kButtons, [&](const ButtonRow& row) {
            return std::ranges::find(row.types, caption.type) != row.types.end();
        });
        list += (list.empty() ? "" : ", ") + caption.caption;
        if (known != std::end(kButtons))
            list += std::string(" (") + known->action +
                    (known->value ? std::string(" ") + known->value : "") + ")";
    }
    return FailureOf("no-button", list.empty() ? Localized(kNoButtons)
                                               : fmt::sprintf(Localized(kNoButton), list));
}

PlayerReport Report(const std::string& what, const std::string& text) {
    PlayerReport report;
    Json::Value object(Json::objectValue);
    object["sent"] = text;
    report.objects.push_back(std::move(object));
    report.rows.push_back({what});
    return report;
}

PlayerReport Control(Session& session, const std::string& action, const std::string& value) {
    VideoCommand command = kVideoPlayMode;
    std::string text = value;
    const auto* row = std::ranges::find(kCommandActions, action, &CommandRowOfAction::action);
    if (row != std::end(kCommandActions)) {
        command = row->command;
    } else {
        const auto captions = ReadCaptions(session);
        if (!captions) return PlayerReport::Of(FailureOf(captions.HowItEnded()));
        const auto caption = CaptionFor(*captions, FindButton(action, value), value);
        if (!caption) return PlayerReport::Of(NoButton(*captions));
        text = *caption;
    }
    const SessionEnd end = SendVideoCommand(session, command, text);
    if (!end) return PlayerReport::Of(FailureOf(end));
    return Report(fmt::sprintf(Localized(kSent), text), text);
}

}  // namespace

int RunControl(const Surroundings& surroundings) {
    const std::string action = surroundings.call.Argument(0);
    const std::string value = surroundings.call.Argument(1);
    if (const auto refusal = RefusalOf(action, value)) return TellWrongUse(surroundings, *refusal);
    if (const auto end = EndUnlessConfirmed(surroundings, Localized(kPowerQuestion))) return *end;
    return RunForPlayers(
        surroundings, Identity::kNotNeeded, {""},
        [&](Session& session, const DeviceRecord&) { return Control(session, action, value); });
}

int RunSend(const Surroundings& surroundings) {
    const Invocation& call = surroundings.call;
    const auto node = ParseCommandToSend(call.Value(OptionId::kPort), call.Arguments());
    if (!node) return TellWrongUse(surroundings, node.reason());
    return RunForPlayers(
        surroundings, Identity::kNotNeeded, {""}, [&](Session& session, const DeviceRecord&) {
            const SessionEnd end = SendCommand(session, *node);
            if (!end) return PlayerReport::Of(FailureOf(end));
            return Report(fmt::sprintf(Localized(kSent), node->command), node->command);
        });
}

}  // namespace sontaro::cli
