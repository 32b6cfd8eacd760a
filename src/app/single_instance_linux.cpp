#include <wx/app.h>
#include <wx/filefn.h>
#include <wx/ipc.h>  // before the next one, which needs its settings
#include <wx/log.h>
#include <wx/snglinst.h>
#include <wx/utils.h>

#include <filesystem>

#include "app/single_instance.h"
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

/// A name for this title and user that is fit for a file: titles may hold anything.
wxString InstanceName(const std::string& title) {
    return wxString::Format("sontaro-%s-%zx", wxGetUserId(), std::hash<std::string>()(title));
}

}  // namespace

/// A lock file says who is the first; a socket beside it takes the wish to see its window.
class SingleInstance::Claim {
   public:
    Claim(const std::string& title, std::function<void()> raise)
        : service_(InRuntimeFolder(InstanceName(title) + ".sock")) {
        const wxLogNull quiet;  // a stale lock of a crashed run is taken over, not reported
        std::error_code error;
        std::filesystem::create_directories(RuntimeFolder(), error);
        checker_.Create(InstanceName(title), ToWx(TextOfPath(RuntimeFolder())));
        if (checker_.IsAnotherRunning()) return;
        if (wxFileExists(service_)) wxRemoveFile(service_);
        server_ = std::make_unique<RaiseServer>(std::move(raise));
        server_->Create(service_);  // without it a second start ends all the same, only unseen
    }

    [[nodiscard]] bool IsAnotherRunning() const { return checker_.IsAnotherRunning(); }

    void RaiseOther() const {
        const wxLogNull quiet;  // the other may be ending just now
        wxClient client;
        const std::unique_ptr<wxConnectionBase> connection(
            client.MakeConnection("localhost", service_, kTopic));
        if (!connection) return;
        connection->Execute(kRaise);
        connection->Disconnect();
    }

   private:
    [[nodiscard]] static wxString InRuntimeFolder(const wxString& name) {
        return ToWx(TextOfPath(RuntimeFolder() / PathFromWx(name)));
    }

    wxString service_;
    wxSingleInstanceChecker checker_;
    std::unique_ptr<wxServer> server_;
};

SingleInstance::SingleInstance(const std::string& title, std::function<void()> raise)
    : claim_(std::make_unique<Claim>(title, std::move(raise))) {}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::IsAnotherRunning() const { return claim_->IsAnotherRunning(); }

void SingleInstance::RaiseOther() const { claim_->RaiseOther(); }

}  // namespace sontaro
