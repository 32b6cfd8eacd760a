// What the fuzzers need around the code they feed.
#pragma once

#include "base/prompts.h"
#include "base/ui_thread.h"

namespace sontaro::fuzz {

/// The only thread is the user-interface thread.
class SameThread : public UiThread {
   public:
    bool Call(const std::function<void()>& function) override {
        function();
        return true;
    }
    void Close() override {}
};

/// Nobody reads the message boxes.
class NoPrompts : public Prompts {
   public:
    void Inform(const std::string&) override {}
    void Warn(const std::string&) override {}
    bool Confirm(const std::string&) override { return true; }
    std::optional<std::filesystem::path> ChooseFile(const FileQuestion&) override { return {}; }
    std::optional<std::uint32_t> ChooseColour(std::uint32_t) override { return {}; }
};

}  // namespace sontaro::fuzz
