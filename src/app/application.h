// The running program.
#pragma once

#include <wx/app.h>

#include <memory>
#include <thread>

#include "app/command_line.h"
#include "app/main_window.h"
#include "app/single_instance.h"
#include "app/walk.h"
#include "simulator/player_group.h"
#include "venue/document_keeper.h"
#include "widgets/message_prompts.h"
#include "widgets/ui_gate.h"

namespace sontaro {

/// Fixes title and language, makes sure that it is alone, and runs the main window.
class CSontaroApp : public wxApp {
   public:
    /// `makeWalk` makes whoever is to press the controls in place of a user, when that is wanted.
    explicit CSontaroApp(WalkMaker makeWalk) : makeWalk_(std::move(makeWalk)) {}

    bool Initialize(int& count, wxChar** values) override;
    bool OnInit() override;
    int OnRun() override;
    int OnExit() override;
    /// Both languages of the interface run this way, whatever the system's own does.
    [[nodiscard]] wxLayoutDirection GetLayoutDirection() const override {
        return wxLayout_LeftToRight;
    }

   private:
    void FixTitleAndLanguage();
    [[nodiscard]] bool IsOnlyInstance();
    [[nodiscard]] bool StartDemoPlayers();
    [[nodiscard]] std::filesystem::path UserFile(const std::string& name) const;
    void OpenMainWindow();

    const WalkMaker makeWalk_;
    CommandLine commandLine_;
    std::jthread fontStart_;
    int exitCode_ = 0;
    bool ended_ = false;  // nothing to run
    std::unique_ptr<SingleInstance> instance_;
    std::unique_ptr<simulator::PlayerGroup> players_;
    std::unique_ptr<Walk> walk_;
    ExchangeHub hub_;
    std::unique_ptr<UiGate> gate_;
    std::unique_ptr<WindowDirectory> directory_;
    std::unique_ptr<ThreadGroup> threads_;
    std::unique_ptr<Prompts> prompts_;
    std::unique_ptr<JsonFile> preferences_;
    std::unique_ptr<DeviceRemarks> remarks_;
    std::unique_ptr<DocumentKeeper> documents_;
    CSontaroDlg* window_ = nullptr;  // owned by the toolkit
};

}  // namespace sontaro
