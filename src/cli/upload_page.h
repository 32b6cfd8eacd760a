// The upload of videos without a window.
#pragma once

#include "base/thread_group.h"
#include "batchsend/chunk_reader.h"
#include "batchsend/folder_walk.h"
#include "batchsend/send_page.h"
#include "cli/surroundings.h"
#include "session/session_links.h"

namespace sontaro::cli {

/// The page of the wizard over connections of one's own, on the thread that makes it: plans, runs,
/// proves, and keeps the journals in the folder of data. The program's wish to end stops it.
class UploadPage : private SendPageView {
   public:
    explicit UploadPage(const Surroundings& surroundings, std::chrono::milliseconds connectLimit);
    ~UploadPage() override;
    UploadPage(const UploadPage&) = delete;
    UploadPage& operator=(const UploadPage&) = delete;

    /// The files among these and below the folders among them. Fails, with a reason for the user,
    /// when something cannot be looked at.
    [[nodiscard]] Result<std::vector<std::string>> FilesIn(const std::vector<std::string>& paths);

    /// Each of them returns when it is over, or the program is to end.
    void Plan(VideoSet set);
    void Send();
    /// False when there is nothing left of the last run.
    [[nodiscard]] bool SendAgain();

    [[nodiscard]] const SendPage& Page() const { return page_; }

   private:
    void BatchChanged() override {}
    void PlayerChanged(std::size_t) override {}
    void VideoChanged(std::size_t) override {}
    void StateChanged() override {}
    void Pause(std::chrono::milliseconds time) override;

    void RunAndProve();
    void Serve(const std::function<bool()>& isOver);
    void TellProgress();

    /// Nothing that is asked in windows is asked here.
    class NoPrompts : public Prompts {
       public:
        void Inform(const std::string&) override {}
        void Warn(const std::string&) override {}
        bool Confirm(const std::string&) override { return true; }
        std::optional<std::filesystem::path> ChooseFile(const FileQuestion&) override { return {}; }
        std::optional<std::uint32_t> ChooseColour(std::uint32_t) override { return {}; }
    };

    const Surroundings& surroundings_;
    PlainLoop loop_;
    ThreadGroup threads_;
    ExchangeHub hub_;
    NoPrompts prompts_;
    SessionLinks links_;
    ChunkReader source_;
    FolderWalk walk_;
    SendPage page_;
};

}  // namespace sontaro::cli
