// show, videos and watch.
#include <fmt/printf.h>

#include <algorithm>

#include "batchsend/set_problems.h"
#include "cli/cli_values.h"
#include "cli/commands.h"
#include "cli/exit_code.h"
#include "cli/player_runs.h"
#include "session/player_calls.h"

namespace sontaro::cli {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr LocalText kUnknown = {"未知", "not known"};
constexpr LocalText kVersion = {"版本", "version"};
constexpr LocalText kMode = {"模式", "mode"};
constexpr LocalText kFree = {"剩余空间", "free"};
constexpr LocalText kPlaying = {"正在播放", "playing"};
constexpr LocalText kPosition = {"位置", "position"};
constexpr LocalText kScreen = {"屏幕", "screen"};
constexpr LocalText kCategory = {"类别", "category"};
constexpr LocalText kName = {"名称", "name"};
constexpr LocalText kBytes = {"字节", "bytes"};
constexpr LocalText kNoTime = {"--for 需要 0.01 秒以上，一天以内。",
                               "--for takes 0.01 seconds to a day."};
constexpr seconds kLongestWatch{86'400};

struct ModeText {
    PlayerMode mode;
    const char* word;
    LocalText text;
};
constexpr ModeText kModes[] = {
    {PlayerMode::kIndependent, "independent", {"独立", "independent"}},
    {PlayerMode::kMaster, "master", {"主机", "master"}},
    {PlayerMode::kSlave, "slave", {"从机", "slave"}},
};

const ModeText& TextOf(PlayerMode mode) {
    const auto* found = std::ranges::find(kModes, mode, &ModeText::mode);
    return found == std::end(kModes) ? kModes[0] : *found;
}

std::string PlayingText(const NowPlaying& playing) {
    std::string text;
    const auto add = [&](const char* between, const std::string& part) {
        if (!part.empty()) text += (text.empty() ? "" : between) + part;
    };
    if (playing.position) {
        add("", playing.position->folder);
        add(" -> ", playing.position->video);
    }
    add(", ", playing.usbVideo.empty() ? "" : "USB: " + playing.usbVideo);
    return text;
}

Json::Value PlayingObject(const NowPlaying& playing) {
    Json::Value object(Json::objectValue);
    if (playing.position) {
        object["position"] = playing.position->seconds;
        object["duration"] = playing.position->duration;
        if (!playing.position->folder.empty()) object["folder"] = playing.position->folder;
        if (!playing.position->video.empty()) object["video"] = playing.position->video;
    }
    if (!playing.usbVideo.empty()) object["usbVideo"] = playing.usbVideo;
    return object;
}

/// What is shown of a player, question by question. One that does not know a question is asked the
/// others nevertheless.
class Shown {
   public:
    Shown(Session& session, const DeviceRecord& player) : session_(session) {
        object_["version"] = player.versionText;
        cells_.push_back(player.versionText);
    }

    PlayerReport Make() {
        Ask("mode", ReadMode, [&](PlayerMode mode) {
            object_["mode"] = TextOf(mode).word;
            cells_.push_back(Localized(TextOf(mode).text));
        });
        Ask("free", ReadFreeSpace, [&](std::uint64_t bytes) {
            object_["free"] = Json::UInt64(bytes);
            cells_.push_back(BytesText(bytes));
        });
        Ask(
            "playing", [](Session& session) { return ReadNowPlaying(session); },
            [&](const NowPlaying& playing) {
                if (Json::Value told = PlayingObject(playing); !told.empty())
                    object_["playing"] = std::move(told);
                const std::string text = PlayingText(playing);
                cells_.push_back(text.empty() ? Localized(kUnknown) : text);
                cells_.push_back(playing.position ? playing.position->Text() : "");
            });
        if (isReached_) {
            cells_.resize(kCells, Localized(kUnknown));
            report_.objects.push_back(std::move(object_));
            report_.rows.push_back(std::move(cells_));
        }
        return std::move(report_);
    }

   private:
    static constexpr std::size_t kCells = 5;

    template <class Read, class Take>
    void Ask(const char* part, const Read& read, const Take& take) {
        if (isLost_) return;
        const auto answer = read(session_);
        const SessionEnd& end = answer.HowItEnded();
        const bool hasAnswered =
            end.how == End::kReply || end.how == End::kRefused || end.how == End::kNotSupported;
        isReached_ = isReached_ || hasAnswered;
        isLost_ = !hasAnswered;
        if (answer) return take(*answer);
        cells_.push_back(Localized(kUnknown));
        if (end.how == End::kNotSupported) return;  // an older player has no such thing to tell
        report_.failures.push_back(FailureOf(end, part));
    }

    Session& session_;
    PlayerReport report_;
    Json::Value object_{Json::objectValue};
    std::vector<std::string> cells_;
    bool isReached_ = false;
    bool isLost_ = false;
};

PlayerReport VideosOf(Session& session) {
    const auto list = ReadVideos(session);
    if (!list) return PlayerReport::Of(FailureOf(list.HowItEnded()));
    PlayerReport report;
    for (std::size_t screen = 0; screen < list->screens.size(); ++screen)
        for (const ListedCategory& category : list->screens[screen])
            for (const ListedVideo& video : category.videos) {
                Json::Value object(Json::objectValue);
                object["screen"] = Json::UInt64(screen + 1);
                object["category"] = category.name;
                object["name"] = video.name;
                object["bytes"] = Json::Int64(video.size);
                report.objects.push_back(std::move(object));
                report.rows.push_back({std::to_string(screen + 1), category.name, video.name,
                                       std::to_string(video.size)});
            }
    return report;
}

/// Tells what a player reports as soon as it is another thing than before.
class Watch {
   public:
    Watch(const Surroundings& surroundings, const DeviceRecord& player, Session& session)
        : surroundings_(surroundings), player_(player), session_(session) {
        session_.SetListener([this](WindowMessage& message) {
            if (TakeReport(message, playing_)) Tell();
        });
    }
    ~Watch() {
        session_.SetListener([](WindowMessage&) {});
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    /// Until that time, or the program is to end, or the player is lost.
    PlayerReport RunUntil(std::chrono::steady_clock::time_point end) {
        if (const auto asked = ReadNowPlaying(session_); !asked) return EndOf(asked.HowItEnded());
        SessionEnd listened{End::kTimedOut, 0, {}, {}, {}};
        while (listened.how == End::kTimedOut && std::chrono::steady_clock::now() < end)
            listened = session_.Listen(std::min<milliseconds>(
                kStep, std::chrono::ceil<milliseconds>(end - std::chrono::steady_clock::now())));
        return EndOf(listened);
    }

   private:
    static constexpr milliseconds kStep{60'000};

    /// Nothing but the loss of the player is a failure.
    [[nodiscard]] static PlayerReport EndOf(const SessionEnd& end) {
        const bool isWanted = end.how == End::kTimedOut || end.how == End::kCancelled || end;
        return isWanted ? PlayerReport() : PlayerReport::Of(FailureOf(end));
    }

    void Tell() {
        Json::Value object = PlayingObject(playing_);
        if (object.empty() || object == told_) return;
        told_ = object;
        if (surroundings_.output.IsJson()) {
            AddPlayer(object, player_);
            return surroundings_.output.Object(object);
        }
        const std::string position = playing_.position ? playing_.position->Text() + "  " : "";
        surroundings_.output.Line(NameOf(player_) + "  " + position + PlayingText(playing_));
    }

    const Surroundings& surroundings_;
    const DeviceRecord& player_;
    Session& session_;
    NowPlaying playing_;
    Json::Value told_;
};

}  // namespace

int RunShow(const Surroundings& surroundings) {
    return RunForPlayers(
        surroundings, Identity::kNeeded,
        {Localized(kVersion), Localized(kMode), Localized(kFree), Localized(kPlaying),
         Localized(kPosition)},
        [](Session& session, const DeviceRecord& player) { return Shown(session, player).Make(); });
}

int RunVideos(const Surroundings& surroundings) {
    return RunForPlayers(
        surroundings, Identity::kNotNeeded,
        {Localized(kScreen), Localized(kCategory), Localized(kName), Localized(kBytes)},
        [](Session& session, const DeviceRecord&) { return VideosOf(session); });
}

int RunWatch(const Surroundings& surroundings) {
    milliseconds time = kLongestWatch * 365;  // until it is interrupted
    if (surroundings.call.Has(OptionId::kFor)) {
        const auto limit = ParseSeconds(surroundings.call.Value(OptionId::kFor), kLongestWatch);
        if (!limit) return TellWrongUse(surroundings, Localized(kNoTime));
        time = *limit;
    }
    const auto end = std::chrono::steady_clock::now() + time;
    return RunForPlayers(surroundings, Identity::kNotNeeded, {},
                         [&](Session& session, const DeviceRecord& player) {
                             return Watch(surroundings, player, session).RunUntil(end);
                         });
}

}  // namespace sontaro::cli
