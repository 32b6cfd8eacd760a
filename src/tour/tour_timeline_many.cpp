#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/listctrl.h>
#include <wx/srchctrl.h>

#include "timeline/change_nodes_dialog.h"
#include "timeline/copy_video_dialog.h"
#include "timeline/merge_dialog.h"
#include "timeline/named_command_dialog.h"
#include "timeline/player_time_add.h"
#include "tour/timeline_front.h"
#include "tour/tour_timeline.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr const char* kProjectorOn = "2531504F575220310D";  // of the player's second projector
constexpr const char* kMovedTo = "192.168.84.42";

/// Chooses one of a drop-down's entries as a click does.
void Choose(int id, int entry) {
    auto* choice = dynamic_cast<wxChoice*>(FrontDialog()->FindWindow(id));
    choice->SetSelection(entry < 0 ? static_cast<int>(choice->GetCount()) + entry : entry);
    wxCommandEvent chosen(wxEVT_CHOICE, id);
    chosen.SetEventObject(choice);
    choice->GetEventHandler()->ProcessEvent(chosen);
}

wxString CellOf(int row, TimelineColumn column) {
    wxGrid* grid = TimelineGrid();
    return grid ? grid->GetCellValue(row, static_cast<int>(column)) : wxString();
}

}  // namespace

void TourTimeline::AddByName() {
    const auto hasNames = [](int count) {
        return [count] {
            const auto* list = Find<wxListView>(kNamedCommandList);
            return list != nullptr && list->GetItemCount() >= count;
        };
    };
    const auto isTaken = [] {
        const auto* command = Find<wxTextCtrl>(kNodeCommand);
        return command != nullptr && command->GetValue() == kProjectorOn &&
               Find<wxChoice>(kNodePort)->GetSelection() == kPortTcp;
    };
    Step(
        Pressing(kAddNode), [] { return Find<wxTextCtrl>(kNodeCommand) != nullptr; },
        "pressed Add once more");
    Step(Pressing(kCommandByName), hasNames(20),
         "pressed Commands by name: the player has sent its control protocol", "timeline-names");
    const auto filter = [] { Find<wxSearchCtrl>(kNamedCommandFilter)->SetValue(kProjectorOn); };
    Step(
        filter, [] { return Find<wxListView>(kNamedCommandList)->GetItemCount() == 1; },
        "typed the beginning of a command: one is left", "timeline-names-filtered");
    Step(Pressing(wxID_OK), isTaken,
         "pressed OK: the editor has the projector's command, port and address",
         "timeline-add-by-name");
    const auto isAdded = [] { return ChosenCell(TimelineColumn::kCommand) == kProjectorOn; };
    Step(Pressing(wxID_OK), isAdded, "pressed OK: the projector is switched on by the timeline");
    Step(Pressing(kUndoTimeline), HavingNodes(kNodes + 1), "pressed Undo: it is gone");
}

void TourTimeline::ChangeTicked() {
    const auto inDialog = [] { return Find<wxCheckBox>(kChangeTick) != nullptr; };
    const auto open = [] {
        ClickLabels();
        Tour::Press(kChangeNodes);
    };
    Step(open, inDialog, "ticked two commands and pressed Change in all ticked");
    Step(Pressing(wxID_OK), NoticeInFront, "pressed OK: asks for what is to be changed");
    Step(Pressing(wxID_OK), inDialog, "dismissed the message");
    const auto type = [] {
        Choose(kChangePort, kPortUdp);
        const char* address[] = {"192", "168", "84", "42"};
        for (int part = 0; part < 4; ++part) TypeInFront(kChangeIp + part, address[part]);
        TypeInFront(kChangePeerPort, "7000");
    };
    const auto areTicked = [] {
        for (int field = 0; field < kCommonFields; ++field) {
            const bool isEntered = field >= static_cast<int>(CommonField::kPort) &&
                                   field <= static_cast<int>(CommonField::kPeerPort);
            if (Find<wxCheckBox>(kChangeTick + field)->IsChecked() != isEntered) return false;
        }
        return true;
    };
    Step(type, areTicked, "entered a port and an address: they are ticked, and nothing else is",
         "timeline-change");
    const auto areChanged = [] {
        return CellOf(9, TimelineColumn::kIp) == kMovedTo &&
               CellOf(10, TimelineColumn::kIp) == kMovedTo &&
               CellOf(8, TimelineColumn::kIp) != kMovedTo;
    };
    Step(Pressing(wxID_OK), areChanged, "pressed OK: both commands have them, the others have not",
         "timeline-changed");
    Step(ClickLabels, InFront(Window::kPlayerTimeControl), "took the ticks away");
}

void TourTimeline::CopyVideo() {
    const auto inDialog = [] { return Find<wxWindow>(kCopySource) != nullptr; };
    Step(Pressing(kCopyVideo), inDialog, "pressed Copy video: asks for the other video");
    Step(Pressing(wxID_OK), NoticeInFront, "pressed OK: it has to be another one");
    Step(Pressing(wxID_OK), inDialog, "dismissed the message");
    Step([] { Choose(kCopyPlayer, 1); }, inDialog, "chose the second player", "timeline-copy");
    const auto isCopied = [] {
        return TimelineGrid() != nullptr && TimelineGrid()->GetNumberRows() > kNodes + 1 &&
               ChosenCell(TimelineColumn::kPlayer) == ToWx(PlayerName(1));
    };
    Step(Pressing(wxID_OK), isCopied, "pressed OK: the second player has the commands, too",
         "timeline-copied");
    Step(Pressing(kUndoTimeline), HavingNodes(kNodes + 1), "pressed Undo: they are gone");
}

void TourTimeline::MergeFile() {
    Step(Pressing(kSaveTimeline), NoticeInFront, "saved the timeline to a file");
    Step(Pressing(wxID_OK), InFront(Window::kPlayerTimeControl), "dismissed the message");
    const auto grid = [] { return Find<wxGrid>(kMergeGrid); };
    Step(
        Pressing(kMergeTimeline), [=] { return grid() != nullptr; },
        "pressed Merge from file: shows the file's videos");
    const auto map = [=] {
        ClickLabel(*grid(), -1);
        ClickLabel(*grid(), 0);
        Choose(kMergePlayer, -1);
    };
    const auto isMapped = [=] {
        const wxString names = grid()->GetCellValue(0, 1) + " / " + grid()->GetCellValue(0, 2);
        return grid()->GetCellValue(0, grid()->GetNumberCols() - 1).EndsWith(" / " + names);
    };
    Step(map, isMapped, "ticked one video alone, and chose the last player for it",
         "timeline-merge");
    const auto isMerged = [] {
        return TimelineGrid() != nullptr && TimelineGrid()->GetNumberRows() > kNodes + 1 &&
               ChosenCell(TimelineColumn::kPlayer) != ToWx(PlayerName(0));
    };
    Step(Pressing(wxID_OK), isMerged, "pressed OK: its commands are that player's, too",
         "timeline-merged");
    Step(Pressing(kUndoTimeline), HavingNodes(kNodes + 1), "pressed Undo: they are gone");
}

}  // namespace sontaro
