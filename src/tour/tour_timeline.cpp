#include "tour/tour_timeline.h"

#include <wx/button.h>
#include <wx/choice.h>

#include "timeline/player_time_add.h"
#include "timeline/shift_dialog.h"
#include "tour/timeline_front.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr const char* kTyped = R"(%1AVMT 31\r)";        // mutes a projector
constexpr const char* kTaken = "253141564D542033310D";  // the bytes of that

void ChooseTcp() {
    auto* port = dynamic_cast<wxChoice*>(FrontDialog()->FindWindow(kNodePort));
    port->SetSelection(kPortTcp);
}

void TypeNode() {
    TypeInFront(kNodeMinutes, "1");
    TypeInFront(kNodeSeconds, "45");
    TypeInFront(kNodeMilliseconds, "250");
    ChooseTcp();
    const char* address[] = {"192", "168", "84", "41"};
    for (int part = 0; part < 4; ++part) TypeInFront(kNodeIp + part, address[part]);
    TypeInFront(kNodePeerPort, "4352");
    TypeInFront(kNodeText, kTyped);
}

}  // namespace

void TourTimeline::Write() {
    OpenFeature(Window::kPlayerTimeControl);
    Read();
    AddNode();
    TestNode();
    EditNode();
    DragInPicture();
    ReadChecks();
    DuplicateAndUndo();
    AddByName();
    ChangeTicked();
    CopyVideo();
    MergeFile();
    KeepInFile();
    Upload();
    LeaveFeature();
}

void TourTimeline::Read() {
    Step(Pressing(wxID_OK), HavingNodes(kNodes), "the timeline has been read", "timeline");
}

void TourTimeline::AddNode() {
    const auto inEditor = [] { return Find<wxTextCtrl>(kNodeCommand) != nullptr; };
    const auto isTaken = [] { return Find<wxTextCtrl>(kNodeCommand)->GetValue() == kTaken; };
    Step(Pressing(kAddNode), inEditor, "pressed Add: the editor of a command is open");
    Step(Pressing(wxID_OK), NoticeInFront, "pressed OK without a command: it asks for one",
         "timeline-refused");
    Step(Pressing(wxID_OK), inEditor, "dismissed the message");
    Step(TypeNode, isTaken, "typed a command as text: its bytes are shown", "timeline-add");
    const auto isAdded = [] {
        return HavingNodes(kNodes + 1)() && ChosenCell(TimelineColumn::kCommand) == kTaken;
    };
    Step(Pressing(wxID_OK), isAdded, "pressed OK: the command is in the timeline",
         "timeline-added");
}

void TourTimeline::TestNode() {
    Step(Pressing(kTestNode), NoticeInFront, "pressed Test: the command has been sent",
         "timeline-test");
    Step(Pressing(wxID_OK), InFront(Window::kPlayerTimeControl), "dismissed the message");
    const auto isTesting = [](bool tests) {
        return [tests] {
            const auto* button = Find<wxButton>(kTestTicked);
            return button != nullptr && (button->GetLabelText() == ToWx(kStopTesting)) == tests;
        };
    };
    const auto test = [] {
        ClickLabels();
        Tour::Press(kTestTicked);
    };
    Step(test, isTesting(true), "ticked two commands and pressed Test ticked",
         "timeline-test-ticked");
    Step({}, isTesting(false), "both have been sent");
    Step(ClickLabels, InFront(Window::kPlayerTimeControl), "took the ticks away");
}

void TourTimeline::EditNode() {
    const auto isShown = [] {
        const auto* command = Find<wxTextCtrl>(kNodeCommand);
        return command != nullptr && command->GetValue() == kTaken;
    };
    Step(Pressing(kEditNode), isShown, "pressed Edit: the editor shows the command",
         "timeline-edit");
    Step([] { TypeInFront(kNodeSeconds, "46"); }, isShown, "typed another time");
    const auto isMoved = [] { return ChosenCell(TimelineColumn::kTime) == "106.250"; };
    Step(Pressing(wxID_OK), isMoved, "pressed OK: the command has another time");
}

void TourTimeline::DuplicateAndUndo() {
    Step(Pressing(kDuplicateNodes), HavingNodes(kNodes + 2), "pressed Duplicate");
    Step(Pressing(kUndoTimeline), HavingNodes(kNodes + 1), "pressed Undo: the copy is gone");
    Step(
        Pressing(kShiftNodes), [] { return Find<wxTextCtrl>(kShiftSeconds) != nullptr; },
        "pressed Shift by: asks for seconds", "timeline-shift");
    const auto shift = [] {
        TypeInFront(kShiftSeconds, "1.5");
        Tour::Press(wxID_OK);
    };
    Step(shift, InFront(Window::kPlayerTimeControl), "moved a command by 1.5 s");
}

void TourTimeline::KeepInFile() {
    Step(Pressing(kSaveTimeline), NoticeInFront, "saved the timeline to a file");
    Step(Pressing(wxID_OK), InFront(Window::kPlayerTimeControl), "dismissed the message");
    Step(Pressing(kOpenTimeline), HavingNodes(kNodes + 1), "opened the file again");
    Step(Pressing(kExportCsv), NoticeInFront, "exported a table");
    Step(Pressing(wxID_OK), InFront(Window::kPlayerTimeControl), "dismissed the message");
    Step(Pressing(kImportCsv), QuestionInFront, "imported it: asks what is to become of the others",
         "timeline-import");
    Step(Pressing(wxID_YES), HavingNodes(kNodes + 1), "answered Yes: they are replaced");
}

void TourTimeline::Upload() {
    const auto holds = [this] { return State().timeline.find(kTaken) != std::string::npos; };
    Step(
        Pressing(wxID_OK), [=] { return NoticeInFront() && holds(); },
        "pressed OK: player " + Address() + " holds the new command and has confirmed");
    Step(Pressing(wxID_OK), HavingNodes(kNodes + 1), "dismissed the message", "timeline-uploaded");
}

}  // namespace sontaro
