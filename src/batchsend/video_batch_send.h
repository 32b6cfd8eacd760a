// The page that sends videos to many players.
#pragma once

#include <wx/power.h>

#include <array>

#include "batchsend/chunk_reader.h"
#include "batchsend/send_tables.h"
#include "batchsend/video_set_wizard.h"
#include "venue/document_keeper.h"

class wxAppProgressIndicator;
class wxButton;
class wxCheckBox;
class wxSizer;
class wxSplitterWindow;
class wxStaticText;

namespace sontaro {

class Table;
class TextProgress;

/// Says what would be sent, sends it to one player after another, and says what has arrived. While
/// it sends, the system is kept awake, and there is no way back.
class CVideoBatchSend : public WizardPage, private SendPageView {
   public:
    explicit CVideoBatchSend(CVideoSetWizard& wizard);
    ~CVideoBatchSend() override;

    void Entered() override;
    void Left() override;
    [[nodiscard]] bool MayGoOn() const override { return !page_.IsRunning(); }
    [[nodiscard]] bool MayGoBack() const override { return !page_.IsRunning(); }
    [[nodiscard]] bool HasUnsentChanges() const override { return page_.IsRunning(); }
    void HandleMessage(WindowMessage& message) override { page_.Handle(message); }

   private:
    void LayOut();
    [[nodiscard]] wxSizer* MakeRunRow();
    [[nodiscard]] wxWindow* MakeTables();
    [[nodiscard]] wxSizer* MakeLineRow();
    [[nodiscard]] wxSizer* MakeAmountsRow();
    [[nodiscard]] wxSizer* MakeEndRow();
    wxButton* AddButton(wxSizer& row, int id, const LocalText& text, char key,
                        void (SendPage::*action)());
    wxCheckBox* AddTick(wxSizer& row, int id, const LocalText& text, char key,
                        void (SendPage::*action)(bool));
    wxStaticText* AddLine(wxSizer& row, int id, int proportion);
    void ShowMatrix();

    void BatchChanged() override;
    void PlayerChanged(std::size_t player) override;
    void VideoChanged(std::size_t video) override;
    void StateChanged() override;
    void Pause(std::chrono::milliseconds time) override;
    void EnableButtons();
    void ShowFigures();
    void ShowSummary();
    void ShowOnTaskbar();
    void Export();
    [[nodiscard]] SendPlaces Places();
    void Keep(const Target& player, std::string text);

    CVideoSetWizard& wizard_;
    ChunkReader reader_;
    BlockKeeping keeping_;
    SendPage page_;
    UploadTable players_;
    std::unique_ptr<BatchMatrix> matrix_;  // for the players of the batch
    std::unique_ptr<wxPowerResourceBlocker> awake_;
    std::unique_ptr<wxAppProgressIndicator> taskbar_;
    wxSplitterWindow* splitter_ = nullptr;
    Table* playerTable_ = nullptr;
    Table* matrixTable_ = nullptr;
    wxButton* start_ = nullptr;
    wxCheckBox* skipPresent_ = nullptr;
    wxCheckBox* tryAgain_ = nullptr;
    wxStaticText* line_ = nullptr;
    TextProgress* progress_ = nullptr;
    std::array<wxStaticText*, 3> amounts_ = {};
    wxStaticText* pace_ = nullptr;
    wxStaticText* summary_ = nullptr;
};

}  // namespace sontaro
