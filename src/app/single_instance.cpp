#include "app/single_instance.h"

#include <wx/app.h>
#include <wx/filefn.h>
#include <wx/log.h>
#include <wx/utils.h>

#include <filesystem>

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

/// A path where wxServer uses a local socket, a service name where it has none.
wxString ServiceName(const std::string& title) {
#ifdef __WXMSW__
    return InstanceName(title);
#else
    return wxString::FromUTF8((RuntimeFolder() / FromWx(InstanceName(title) + ".sock")).string());
#endif
}

}  // namespace

SingleInstance::SingleInstance(const std::string& title, std::function<void()> raise)
    : service_(ServiceName(title)) {
    const wxLogNull quiet;  // a stale lock of a crashed run is taken over, not reported
    std::error_code error;
    std::filesystem::create_directories(RuntimeFolder(), error);
    checker_.Create(InstanceName(title), wxString::FromUTF8(RuntimeFolder().string()));
    if (checker_.IsAnotherRunning()) return;
    if (service_.StartsWith("/") && wxFileExists(service_)) wxRemoveFile(service_);
    server_ = std::make_unique<RaiseServer>(std::move(raise));
    server_->Create(service_);  // without it a second start ends all the same, only unseen
}

SingleInstance::~SingleInstance() = default;

void SingleInstance::RaiseOther() const {
    const wxLogNull quiet;  // the other may be ending just now
    wxClient client;
    const std::unique_ptr<wxConnectionBase> connection(
        client.MakeConnection("localhost", service_, kTopic));
    if (!connection) return;
    connection->Execute(kRaise);
    connection->Disconnect();
}

}  // namespace sontaro
