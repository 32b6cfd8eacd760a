#include "app/application.h"

#include <wx/image.h>
#include <wx/log.h>

#include <cstdio>
#include <cstdlib>

#include "app/application_title.h"
#include "app/session_end.h"
#include "base/folders.h"
#include "base/program_arguments.h"
#include "base/window_titles.h"
#include "widgets/fonts.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr int kUsageError = 2;
constexpr int kStartFailed = 1;
constexpr const char* kDemoLocalAddress = "127.0.0.1";

constexpr LocalText kAlreadyRunning = {"已经有一个实例在运行中！",
                                       "There is an running instance already!"};
constexpr LocalText kDemoMark = {" 演示", " Demo"};
constexpr LocalText kNoPlayers = {
    "无法启动模拟播放器。可能有其他程序占用了从 127.0.0.2 开始的地址。",
    "The simulated players cannot be started. Another program may be using the addresses from "
    "127.0.0.2 on."};

}  // namespace

bool CSontaroApp::OnInit() {
    delete wxLog::SetActiveTarget(new wxLogStderr);
    ended_ = true;
    if (!commandLine_.tour.empty()) walk_ = makeWalk_(commandLine_.tour);
    prompts_ = walk_ ? walk_->MakePrompts() : std::make_unique<MessagePrompts>();
    FixTitleAndLanguage();
    if (!IsOnlyInstance() || !StartDemoPlayers()) return true;
    ended_ = false;
    wxImage::AddHandler(new wxPNGHandler);
    OpenMainWindow();
    if (walk_) walk_->Start(*players_);
    return true;
}

/// Takes the options before the toolkit looks for a display, which --help does not need.
bool CSontaroApp::Initialize(int& count, wxChar** values) {
    const Result<CommandLine> line = ParseCommandLine(ProgramArguments());
    if (!line) {
        std::fprintf(stderr, "sontaro: %s\n%s", line.reason().c_str(), CommandLineHelp().c_str());
        std::exit(kUsageError);  // NOLINT(concurrency-mt-unsafe): no other thread yet
    }
    if (line->help) {
        std::fputs(CommandLineHelp().c_str(), stdout);
        std::exit(0);  // NOLINT(concurrency-mt-unsafe): no other thread yet
    }
    commandLine_ = *line;
    count = 1;  // the options are ours, the toolkit has none
    fontStart_ = StartFonts();
    return wxApp::Initialize(count, values);
}

void CSontaroApp::FixTitleAndLanguage() {
    SetLanguage(commandLine_.language.value_or(SystemLanguage()));
    std::string title = TitleFromTemplates(ProgramFolder());
    if (commandLine_.demoPlayers) title += Localized(kDemoMark);
    SetApplicationTitle(title);
    SetAppDisplayName(ToWx(title));
}

bool CSontaroApp::IsOnlyInstance() {
    instance_ = std::make_unique<SingleInstance>(ApplicationTitle(), [this] {
        if (window_) window_->BringForward();
    });
    if (!instance_->IsAnotherRunning()) return true;
    prompts_->Warn(Localized(kAlreadyRunning));
    instance_->RaiseOther();
    return false;
}

bool CSontaroApp::StartDemoPlayers() {
    if (!commandLine_.demoPlayers) return true;
    simulator::LineUpOptions options;
    options.count = static_cast<std::size_t>(*commandLine_.demoPlayers);
    const auto lineUp = simulator::LineUp(options);
    Status started = lineUp ? Status(Done{}) : Error{lineUp.reason()};
    if (lineUp) {
        players_ = std::make_unique<simulator::PlayerGroup>(*lineUp);
        started = players_->Start();
    }
    if (started) return true;
    std::fprintf(stderr, "sontaro: %s\n", started.reason().c_str());
    prompts_->Warn(Localized(kNoPlayers));
    exitCode_ = kStartFailed;
    return false;
}

/// A file of the user's; a demonstration has its own and leaves the real ones alone.
std::filesystem::path CSontaroApp::UserFile(const std::string& name) const {
    return ConfigFolder() / (commandLine_.demoPlayers ? "demo-" + name : name);
}

void CSontaroApp::OpenMainWindow() {
    gate_ = std::make_unique<UiGate>();
    directory_ = std::make_unique<WindowDirectory>(*gate_);
    threads_ = std::make_unique<ThreadGroup>();
    preferences_ = std::make_unique<JsonFile>(UserFile("preferences.json"));
    remarks_ = std::make_unique<DeviceRemarks>(UserFile("remarks.json"));
    const std::filesystem::path folder =
        commandLine_.demoPlayers ? ProgramFolder() / "Demo" : ProgramFolder();
    documents_ = std::make_unique<DocumentKeeper>(
        EarlierDocumentsFolder(commandLine_.demoPlayers ? folder : UserDataFolder()), *gate_,
        *threads_);
    const UiServices services{
        {*directory_, *threads_, *prompts_}, hub_, *gate_, *preferences_, *documents_, folder};
    std::string address = commandLine_.localAddress;
    if (address.empty() && commandLine_.demoPlayers) address = kDemoLocalAddress;
    const auto temporary = EnsureTempFolder(folder);
    fontStart_ = {};  // joined, or the toolkit, which needs fonts now, would read them once more
    window_ = new CSontaroDlg(services, {temporary ? *temporary : std::filesystem::path(),
                                         {*remarks_, address},
                                         commandLine_.demoPlayers.value_or(0)});
    window_->Bind(wxEVT_DESTROY, [this](wxWindowDestroyEvent& event) {
        if (event.GetEventObject() == window_) window_ = nullptr;
        event.Skip();
    });
    OnSessionEnd(*this, [this] {
        if (window_) window_->EndByForce();
    });
    SetTopWindow(window_);
    window_->Show();
}

int CSontaroApp::OnRun() {
    if (ended_) return exitCode_;
    const int code = wxApp::OnRun();
    return walk_ && !walk_->Succeeded() ? kStartFailed : code;
}

int CSontaroApp::OnExit() {
    if (directory_) directory_->ShutDown();
    documents_.reset();
    if (threads_) threads_->Join();
    walk_.reset();
    players_.reset();
    return wxApp::OnExit();
}

}  // namespace sontaro
