#include <windows.h>

#include "app/single_instance.h"
#include "widgets/wx_text.h"

namespace sontaro {

/// The first of a name creates its mutex; the system closes it with the process.
class SingleInstance::Claim {
   public:
    explicit Claim(const std::string& title)
        : title_(ToWx(title)), mutex_(OpenMutexW(MUTEX_ALL_ACCESS, FALSE, title_.wc_str())) {
        another_ = mutex_ != nullptr;
        if (!another_) mutex_ = CreateMutexW(nullptr, TRUE, title_.wc_str());
    }
    ~Claim() {
        if (!another_) ReleaseMutex(mutex_);
        if (mutex_) CloseHandle(mutex_);
    }
    Claim(const Claim&) = delete;
    Claim& operator=(const Claim&) = delete;

    [[nodiscard]] bool IsAnotherRunning() const { return another_; }

    /// This process was started by the user last, so that the system lets it choose the window.
    void RaiseOther() const {
        const HWND window = FindWindowW(nullptr, title_.wc_str());
        if (!window) return;
        ShowWindow(window, SW_RESTORE);
        SetForegroundWindow(window);
        SetForegroundWindow(GetLastActivePopup(window));
    }

   private:
    wxString title_;
    HANDLE mutex_;
    bool another_ = false;
};

SingleInstance::SingleInstance(const std::string& title, std::function<void()>)
    : claim_(std::make_unique<Claim>(title)) {}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::IsAnotherRunning() const { return claim_->IsAnotherRunning(); }

void SingleInstance::RaiseOther() const { claim_->RaiseOther(); }

}  // namespace sontaro
