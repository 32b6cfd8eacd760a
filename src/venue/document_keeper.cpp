#include "venue/document_keeper.h"

#include <fmt/printf.h>

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace sontaro {

namespace {

constexpr LocalText kTrouble = {"未存入历史：%s", "Not among the earlier ones: %s"};
constexpr LocalText kNoThread = {"系统没有可用的线程。", "the system has no thread left."};

const SettingsBlockKind& KindOf(SettingsBlock block) {
    return *std::ranges::find(SettingsBlocks(), block, &SettingsBlockKind::readBlock);
}

/// Some systems have names that are no text.
Status KeepIn(EarlierDocuments documents, const VenuePlayer& player, const SettingsBlockKind& kind,
              const std::string& text, std::chrono::system_clock::time_point now) {
    try {
        return documents.Keep(player, kind, text, now);
    } catch (const std::filesystem::filesystem_error& error) {
        return Error{error.what()};
    }
}

std::vector<EarlierState> ListIn(const EarlierDocuments& documents, const VenuePlayer& player,
                                 const SettingsBlockKind& kind,
                                 std::optional<std::string> present) {
    try {
        return EarlierStates(documents, player, kind, std::move(present));
    } catch (const std::filesystem::filesystem_error&) {
        return {};
    }
}

}  // namespace

/// Jobs, and the thread that does them as long as there are any.
struct DocumentKeeper::Work {
    void Run() {
        std::unique_lock lock(mutex);
        while (!jobs.empty()) {
            const std::function<void()> job = std::move(jobs.front());
            jobs.pop_front();
            lock.unlock();
            job();
            lock.lock();
        }
        isRunning = false;
        ended.notify_all();
    }

    std::mutex mutex;
    std::condition_variable ended;
    std::deque<std::function<void()>> jobs;
    bool isRunning = false;
};

DocumentKeeper::DocumentKeeper(std::filesystem::path folder, UiThread& owner, ThreadGroup& threads)
    : documents_(std::move(folder)),
      messenger_(std::make_shared<Messenger>(owner)),
      hasThread_(messenger_->Start(threads)),
      work_(std::make_shared<Work>()) {}

DocumentKeeper::~DocumentKeeper() {
    messenger_->Leave();
    std::unique_lock lock(work_->mutex);
    work_->ended.wait_for(lock, kPatience, [this] { return !work_->isRunning; });
}

/// False when there is no thread to do it.
bool DocumentKeeper::Do(std::function<void()> job) {
    const std::lock_guard lock(work_->mutex);
    work_->jobs.push_back(std::move(job));
    if (!work_->isRunning)
        work_->isRunning = hasThread_ && StartUnawaited([work = work_] { work->Run(); });
    if (!work_->isRunning) work_->jobs.pop_back();
    return work_->isRunning;
}

void DocumentKeeper::Keep(const VenuePlayer& player, SettingsBlock block, std::string text,
                          const Kept& kept) {
    const auto now = std::chrono::system_clock::now();
    const auto job = [documents = documents_, messenger = messenger_, player, &kind = KindOf(block),
                      text = std::move(text), now, kept] {
        messenger->Post(
            [kept, status = KeepIn(documents, player, kind, text, now)] { kept(status); });
    };
    if (!Do(job)) kept(Error{Localized(kNoThread)});
}

/// What takes long is no longer among the jobs: nothing has to wait for it to be kept.
void DocumentKeeper::List(const VenuePlayer& player, SettingsBlock block,
                          std::optional<std::string> present, const Listed& listed) {
    const auto list = [documents = documents_, messenger = messenger_, player,
                       &kind = KindOf(block), present = std::move(present), listed] {
        messenger->Post(
            [listed, states = ListIn(documents, player, kind, present)] { listed(states); });
    };
    const auto job = [messenger = messenger_, list, listed] {
        if (!StartUnawaited(list)) messenger->Post([listed] { listed({}); });
    };
    if (!Do(job)) listed({});
}

std::vector<EarlierState> EarlierStates(const EarlierDocuments& documents,
                                        const VenuePlayer& player, const SettingsBlockKind& kind,
                                        std::optional<std::string> present) {
    std::vector<EarlierState> states;
    std::optional<std::string> later = std::move(present);
    for (EarlierDocument& document : documents.List(player, kind)) {
        EarlierState& state = states.emplace_back(EarlierState{std::move(document)});
        Result<std::string> text = EarlierDocuments::Read(state.document);
        if (!text) {
            state.trouble = text.reason();
            continue;
        }
        state.text = std::move(*text);
        if (later) state.changes = CompareTexts(kind, state.text, *later);
        later = state.text;
    }
    return states;
}

void BlockKeeping::Keep(const DeviceRecord& player, std::string text) {
    const std::weak_ptr<const bool> alive = alive_;
    keeper_.Keep(OwnerOfDocuments(player), block_, std::move(text),
                 [this, alive](const Status& status) {
                     if (!alive.expired()) Ended(status);
                 });
}

void BlockKeeping::Ended(const Status& status) {
    std::string trouble = status ? "" : fmt::sprintf(Localized(kTrouble), status.reason());
    if (std::exchange(trouble_, std::move(trouble)) != trouble_) changed_();
}

}  // namespace sontaro
