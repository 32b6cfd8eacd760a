#include "cli/player_runs.h"

#include <fmt/printf.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "cli/cli_values.h"
#include "cli/exit_code.h"

namespace sontaro::cli {

namespace {

constexpr std::chrono::seconds kUsualTimeout{5};
constexpr std::chrono::seconds kLongestTimeout{600};
constexpr int kUsualParallel = 4;
constexpr int kMostParallel = 9;

constexpr LocalText kNoTimeout = {"--timeout 需要 0.01 到 600 秒。",
                                  "--timeout takes 0.01 to 600 seconds."};
constexpr LocalText kNoParallel = {"--parallel 需要 1 到 9。", "--parallel takes 1 to 9."};
constexpr LocalText kNoAnswer = {"没有应答，端口也未知。",
                                 "it does not answer, and its port is not known."};
constexpr LocalText kNobody = {"没有找到播放器。", "no players were found."};
constexpr LocalText kNeedsYes = {"%s 没有可以询问的终端，请加 --yes。",
                                 "%s There is no terminal to ask on: add --yes."};
constexpr LocalText kLeft = {"已取消。", "nothing was done."};
constexpr LocalText kProgress = {"%d / %d", "%d of %d"};
constexpr const char* kNotFound = "not-found";

/// Reports as they come, in the order of their players.
class Reports {
   public:
    explicit Reports(std::size_t count) : reports_(count) {}

    void Put(std::size_t place, PlayerReport report) {
        {
            const std::lock_guard lock(mutex_);
            reports_[place] = std::move(report);
        }
        changed_.notify_one();
    }
    /// Waits for it.
    PlayerReport Take(std::size_t place) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return reports_[place].has_value(); });
        return std::move(*reports_[place]);
    }

   private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::optional<PlayerReport>> reports_;
};

/// What is thrown is a fault of ours, and must not cost the other players their turn.
PlayerReport Serve(const std::function<PlayerReport(const DeviceRecord&)>& work,
                   const DeviceRecord& player) try {
    return work(player);
} catch (const std::exception& error) {
    return PlayerReport::Of(FailureOf("fault", error.what()));
}

}  // namespace

Result<RunSettings> RunSettingsOf(const Surroundings& surroundings) {
    const Invocation& call = surroundings.call;
    RunSettings settings;
    settings.parallel = kUsualParallel;
    settings.session.limit = kUsualTimeout;
    settings.session.stop = surroundings.stop;
    if (call.Has(OptionId::kTimeout)) {
        const auto limit = ParseSeconds(call.Value(OptionId::kTimeout), kLongestTimeout);
        if (!limit) return Error{Localized(kNoTimeout)};
        settings.session.limit = *limit;
    }
    if (call.Has(OptionId::kParallel)) {
        const auto count = ParseCount(call.Value(OptionId::kParallel), 1, kMostParallel);
        if (!count) return Error{Localized(kNoParallel)};
        settings.parallel = static_cast<std::size_t>(*count);
    }
    settings.session.connectLimit = std::min(settings.session.connectLimit, settings.session.limit);
    return settings;
}

void ForEachPlayer(const std::vector<DeviceRecord>& players, std::size_t parallel,
                   std::stop_token stop,
                   const std::function<PlayerReport(const DeviceRecord&)>& work,
                   const std::function<void(const DeviceRecord&, PlayerReport&)>& done) {
    Reports reports(players.size());
    std::atomic<std::size_t> next = 0;
    const auto serve = [&] {
        for (std::size_t i = next++; i < players.size(); i = next++)
            reports.Put(i, stop.stop_requested() ? PlayerReport::Of(FailureOf(SessionEnd()))
                                                 : Serve(work, players[i]));
    };
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < std::min(parallel, players.size()); ++i)
        threads.emplace_back(serve);
    for (std::size_t i = 0; i < players.size(); ++i) {
        PlayerReport report = reports.Take(i);
        done(players[i], report);
    }
}

PlayerReport WithSession(const DeviceRecord& player, const SessionOptions& options,
                         const std::function<PlayerReport(Session&)>& work) {
    const auto address = ParseIpv4(player.ip);
    auto session = Session::Open({address.value_or(Ipv4Address()), player.tcpPort}, options);
    if (!session) return PlayerReport::Of(FailureOf("not-sent", session.reason()));
    return work(**session);
}

void TellMissing(const Surroundings& surroundings, const ChosenPlayers& chosen) {
    for (const std::string& name : chosen.missing) {
        const Failure failure = FailureOf(kNotFound, Localized(kNoAnswer));
        if (surroundings.output.IsJson()) {
            Json::Value object = ObjectOf({}, failure);
            object["name"] = name;
            surroundings.output.Object(object);
        } else {
            surroundings.output.Remark(name + ": " + failure.text);
        }
    }
}

int TellWrongUse(const Surroundings& surroundings, const std::string& why) {
    if (surroundings.output.IsJson())
        surroundings.output.Object(ObjectOf({}, FailureOf("wrong-use", why)));
    else
        surroundings.output.Remark("sontaro-cli: " + why);
    return kWrongUse;
}

std::optional<int> EndWithoutPlayers(const Surroundings& surroundings,
                                     const ChosenPlayers& chosen) {
    if (surroundings.stop.stop_requested()) return kInterrupted;
    if (!chosen.players.empty()) return std::nullopt;
    if (chosen.missing.empty()) surroundings.output.Remark(Localized(kNobody));
    return kNobodyFound;
}

std::optional<int> EndUnlessConfirmed(const Surroundings& surroundings,
                                      const std::string& question) {
    const Invocation& call = surroundings.call;
    if (call.Has(OptionId::kYes) || !call.Command()->isFinal || !call.Command()->isFinal(call))
        return std::nullopt;
    const std::optional<bool> answer = surroundings.confirm(question);
    if (!answer) return TellWrongUse(surroundings, fmt::sprintf(Localized(kNeedsYes), question));
    if (*answer) return std::nullopt;
    surroundings.output.Remark(Localized(kLeft));
    return surroundings.stop.stop_requested() ? kInterrupted : kSomeFailed;
}

int RunForPlayers(const Surroundings& surroundings, Identity identity,
                  const std::vector<std::string>& headings,
                  const std::function<PlayerReport(Session&, const DeviceRecord&)>& work) {
    const auto settings = RunSettingsOf(surroundings);
    if (!settings) return TellWrongUse(surroundings, settings.reason());
    const auto chosen = ChoosePlayers(surroundings, identity);
    if (!chosen) return TellWrongUse(surroundings, chosen.reason());
    Output& output = surroundings.output;
    TellMissing(surroundings, *chosen);
    if (const auto end = EndWithoutPlayers(surroundings, *chosen)) return *end;
    ReportTeller teller(output, headings);
    std::size_t through = 0;
    const auto done = [&](const DeviceRecord& player, PlayerReport& report) {
        teller.Take(player, report);
        output.Progress(fmt::sprintf(Localized(kProgress), ++through, chosen->players.size()));
    };
    const CommandRow& command = *surroundings.call.Command();
    const bool isInTurn = Takes(command, RowOf(OptionId::kParallel));
    ForEachPlayer(
        chosen->players, isInTurn ? settings->parallel : chosen->players.size(), surroundings.stop,
        [&](const DeviceRecord& player) {
            return WithSession(player, settings->session,
                               [&](Session& session) { return work(session, player); });
        },
        done);
    teller.End();
    if (surroundings.stop.stop_requested()) return kInterrupted;
    return teller.IsWhole() && chosen->missing.empty() ? kAllWell : kSomeFailed;
}

}  // namespace sontaro::cli
