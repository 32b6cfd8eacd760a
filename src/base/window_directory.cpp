#include "base/window_directory.h"

#include <algorithm>
#include <utility>

namespace sontaro {

WindowDirectory::Registration& WindowDirectory::Registration::operator=(
    Registration&& other) noexcept {
    if (this == &other) return *this;
    Remove();
    directory_ = std::exchange(other.directory_, nullptr);
    entry_ = std::exchange(other.entry_, nullptr);
    return *this;
}

void WindowDirectory::Registration::Remove() {
    if (!directory_) return;
    directory_->entries_.remove_if([this](const Entry& entry) { return &entry == entry_; });
    directory_ = nullptr;
}

WindowDirectory::Registration WindowDirectory::Register(std::string title, Handler handler) {
    entries_.push_front({std::move(title), std::make_shared<const Handler>(std::move(handler))});
    Registration registration;
    registration.directory_ = this;
    registration.entry_ = &entries_.front();
    return registration;
}

const WindowDirectory::Entry* WindowDirectory::FindEntry(const std::string& title) const {
    const auto entry = std::ranges::find(entries_, title, &Entry::title);
    return entry == entries_.end() ? nullptr : &*entry;
}

bool WindowDirectory::Find(const std::string& title) const { return FindEntry(title) != nullptr; }

bool WindowDirectory::Send(const std::string& title, WindowMessage& message) {
    bool delivered = false;
    const bool ran = uiThread_.Call([&] {
        const Entry* entry = FindEntry(title);
        if (!entry) return;
        const std::shared_ptr<const Handler> handler = entry->handler;
        (*handler)(message);
        delivered = true;
    });
    return ran && delivered;
}

}  // namespace sontaro
