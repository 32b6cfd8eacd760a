#include <wx/app.h>
#include <wx/ipc.h>  // before the next one, which needs its settings
#include <wx/log.h>
#include <wx/utils.h>

#include <filesystem>

#include "app/single_instance.h"
#include "base/file_lock.h"
#include "base/folders.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr const char* kTopic = "window";
constexpr const char* kRaise = "raise";

class RaiseConnection : public wxConnection {
   public:
    explicit RaiseConnection(const std::function<void()>& raise) : raise_(raise) {}

   private:
    bool OnExec(const wxString&, const wxString& command) override {
        if (command == kRaise) wxTheApp->CallAfter(raise_);
        return command == kRaise;
    }

    const std::function<void()>& raise_;
};

class RaiseServer : public wxServer {
   public:
    explicit RaiseServer(std::function<void()> raise) : raise_(std::move(raise)) {}

   private:
    wxConnectionBase* OnAcceptConnection(const wxString& topic) override {
        return topic == kTopic ? new RaiseConnection(raise_) : nullptr;
    }

    std::function<void()> raise_;
};

/// A file for this title and user, with a name that is fit for one: titles may hold anything.
std::filesystem::path RuntimeFile(const std::string& title, const char* ending) {
    const wxString name = wxString::Format("sontaro-%s-%zx%s", wxGetUserId(),
                                           std::hash<std::string>()(title), ending);
    return RuntimeFolder() / PathFromWx(name);
}

}  // namespace

/// The lock of a file says who is the first; a socket beside it takes the wish to see its window.
/// Where the folder outlives the session, so do both files of a crashed run, and neither counts.
class SingleInstance::Claim {
   public:
    Claim(const std::string& title, std::function<void()> raise)
        : service_(RuntimeFile(title, ".sock")) {
        std::error_code error;
        std::filesystem::create_directories(RuntimeFolder(), error);
        const auto lock = FileLock::Take(RuntimeFile(title, ".lock"), std::chrono::milliseconds(0));
        isAnotherRunning_ = lock && !*lock;  // where no file can be made, every start is the first
        if (isAnotherRunning_) return;
        if (lock) lock_ = *lock;
        std::filesystem::remove(service_, error);
        const wxLogNull quiet;
        server_ = std::make_unique<RaiseServer>(std::move(raise));
        server_->Create(ServiceName());  // without it a second start ends all the same, only unseen
    }

    [[nodiscard]] bool IsAnotherRunning() const { return isAnotherRunning_; }

    void RaiseOther() const {
        const wxLogNull quiet;  // the other may be ending just now
        wxClient client;
        const std::unique_ptr<wxConnectionBase> connection(
            client.MakeConnection("localhost", ServiceName(), kTopic));
        if (!connection) return;
        connection->Execute(kRaise);
        connection->Disconnect();
    }

   private:
    [[nodiscard]] wxString ServiceName() const { return ToWx(TextOfPath(service_)); }

    const std::filesystem::path service_;
    bool isAnotherRunning_ = false;
    std::optional<FileLock> lock_;
    std::unique_ptr<wxServer> server_;
};

SingleInstance::SingleInstance(const std::string& title, std::function<void()> raise)
    : claim_(std::make_unique<Claim>(title, std::move(raise))) {}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::IsAnotherRunning() const { return claim_->IsAnotherRunning(); }

void SingleInstance::RaiseOther() const { claim_->RaiseOther(); }

}  // namespace sontaro
