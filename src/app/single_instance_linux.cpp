#include <fcntl.h>
#include <glib-unix.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <wx/utils.h>

#include <cstring>
#include <filesystem>

#include "app/single_instance.h"
#include "base/file_lock.h"
#include "base/folders.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr char kRaise = 'r';

/// A socket of messages with a name in the file system; -1 where there is none.
class MessageSocket {
   public:
    MessageSocket() : handle_(socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)) {}
    ~MessageSocket() {
        if (handle_ != -1) close(handle_);
    }
    MessageSocket(const MessageSocket&) = delete;
    MessageSocket& operator=(const MessageSocket&) = delete;

    [[nodiscard]] int Handle() const { return handle_; }

    /// Does to an address what `bind` and `connect` do; false too when its path is too long.
    template <class Call>
    [[nodiscard]] bool At(const std::filesystem::path& path, Call call) const {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        const std::string& name = path.native();
        if (name.size() >= sizeof address.sun_path) return false;
        std::memcpy(address.sun_path, name.data(), name.size());
        return call(handle_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }

   private:
    const int handle_;
};

/// Calls `raise` from the user interface's loop whenever another start asks for it.
class RaiseService {
   public:
    RaiseService(const std::filesystem::path& path, std::function<void()> raise)
        : raise_(std::move(raise)) {
        if (socket_.At(path, bind)) source_ = g_unix_fd_add(socket_.Handle(), G_IO_IN, Take, this);
    }
    ~RaiseService() {
        if (source_ != 0) g_source_remove(source_);
    }
    RaiseService(const RaiseService&) = delete;
    RaiseService& operator=(const RaiseService&) = delete;

   private:
    static gboolean Take(int handle, GIOCondition, void* service) {
        char wish = 0;
        if (recv(handle, &wish, 1, 0) == 1 && wish == kRaise)
            static_cast<RaiseService*>(service)->raise_();
        return G_SOURCE_CONTINUE;
    }

    const std::function<void()> raise_;
    const MessageSocket socket_;
    guint source_ = 0;
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
        server_.emplace(service_, std::move(raise));
    }

    [[nodiscard]] bool IsAnotherRunning() const { return isAnotherRunning_; }

    /// A second start ends in any case, only unseen where this fails.
    void RaiseOther() const {
        const MessageSocket client;
        if (client.At(service_, connect)) (void)send(client.Handle(), &kRaise, 1, MSG_NOSIGNAL);
    }

   private:
    const std::filesystem::path service_;
    bool isAnotherRunning_ = false;
    std::optional<FileLock> lock_;
    std::optional<RaiseService> server_;
};

SingleInstance::SingleInstance(const std::string& title, std::function<void()> raise)
    : claim_(std::make_unique<Claim>(title, std::move(raise))) {}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::IsAnotherRunning() const { return claim_->IsAnotherRunning(); }

void SingleInstance::RaiseOther() const { claim_->RaiseOther(); }

}  // namespace sontaro
