// The timeline of one player.
#pragma once

#include <optional>

#include "timeline/command_names.h"
#include "timeline/timeline_run.h"
#include "timeline/timeline_table.h"
#include "timeline/video_fields.h"
#include "widgets/earlier_settings.h"
#include "widgets/feature_dialog.h"

class wxGauge;

namespace sontaro {

class ChecksPanel;
class FilterBox;
class NumberField;
class Table;
class TimePictureView;

/// Control numbers of the dialog, besides OK and Cancel.
inline constexpr int kAddNode = 2901;
inline constexpr int kDeleteNodes = 2902;
inline constexpr int kDuplicateNodes = 2903;
inline constexpr int kEditNode = 2904;
inline constexpr int kTestNode = 2905;
inline constexpr int kOpenTimeline = 2906;
inline constexpr int kSaveTimeline = 2907;
inline constexpr int kUndoTimeline = 2908;
inline constexpr int kRedoTimeline = 2909;
inline constexpr int kTimelineGrid = 2910;
inline constexpr int kTimelineFilter = 2911;
inline constexpr int kTestTicked = 2912;
inline constexpr LocalText kStopTesting = {"停止", "Stop"};  ///< of that button meanwhile
inline constexpr int kTestGap = 2913;
inline constexpr int kImportCsv = 2914;
inline constexpr int kExportCsv = 2915;
inline constexpr int kShiftNodes = 2916;
inline constexpr int kChangeNodes = 2917;
inline constexpr int kCopyVideo = 2918;
inline constexpr int kMergeTimeline = 2919;
inline constexpr int kTimePicture = 2931;
inline constexpr int kChecks = 2932;  ///< and the two behind it

/// Shows the commands of a timeline, one a row. Ticked ones are deleted, duplicated and moved; the
/// chosen one is edited and tried, as is any by its button; ticked ones are changed together, and
/// tried in turn. The commands of a video are copied to another, those of a file merged. Insert
/// adds, Delete deletes, Ctrl+T tries, Ctrl+Z and Ctrl+Y undo and do again. Below are the picture
/// of the chosen one's video and what the checks of the show find. Closes only through Cancel or
/// its close box.
class CPlayerTimeControl : public FeatureDialog, private TimelineView {
   public:
    CPlayerTimeControl(wxWindow* parent, const UiServices& services, const DeviceRecord& player);

   private:
    void LayOut(const DeviceRecord& player);
    void MakeTable();
    void MakePicture();
    void MakeChecks();
    void MakeRoom();
    [[nodiscard]] wxSizer* MakeInfoRow();
    [[nodiscard]] wxSizer* MakeNodeButtons();
    void BindEvents();
    void OfferEarlier(wxSizer& foot, const DeviceRecord& player);
    [[nodiscard]] bool HandleShortcut(int key);

    void HandleMessage(WindowMessage& message) override {
        if (!commandNames_.Handle(message)) run_.Handle(message);
    }
    void ReadAgain() override { run_.Read(); }
    [[nodiscard]] bool HasUnsentChanges() const override { return run_.HasUnsentChanges(); }
    void ShowNodes() override;
    void ShowVideoList() override;
    void StateChanged() override;
    void ShowState();
    void ShowChosen();
    void Choose(NodeId node);
    void ShowButtons();
    void ShowFill();

    void AddNode();
    void EditNode(std::size_t row);
    void TestNode(std::size_t row);
    void TestTickedOrStop();
    void DeleteTicked();
    void DuplicateChosen();
    void ShiftChosen();
    void ChangeTicked();
    void CopyVideo();
    void Added(const NodeIds& nodes);
    void UndoOrRedo(bool undo);
    void Changed(std::optional<NodeId> chosen);
    [[nodiscard]] std::optional<TimeNode> AskForNode(const TimeNode* edited);
    [[nodiscard]] NodeIds Chosen() const;
    [[nodiscard]] std::size_t HiddenOf(const NodeIds& ids) const;

    TimelineDocument document_;
    std::optional<VideoList> videos_;  // none before the list has come
    TimelineTable rows_;
    TimelineRun run_;
    VideoOffer videoOffer_{videos_};
    CommandNames commandNames_;
    Table* table_ = nullptr;
    TimePictureView* picture_ = nullptr;
    ChecksPanel* checks_ = nullptr;
    FilterBox* filter_ = nullptr;
    wxStaticText* counts_ = nullptr;
    wxStaticText* fillText_ = nullptr;
    wxGauge* fill_ = nullptr;
    wxStaticText* test_ = nullptr;
    NumberField* gap_ = nullptr;
    wxStaticText* state_ = nullptr;
    std::optional<EarlierSettings> earlier_;
    bool asked_ = false;  // the player; before, there is nothing to connect again
    bool shown_ = false;  // nodes have been
};

}  // namespace sontaro
