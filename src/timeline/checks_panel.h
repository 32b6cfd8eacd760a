// What may go wrong in a show, for whoever wants to know.
#pragma once

#include <wx/panel.h>

#include <functional>
#include <optional>
#include <vector>

#include "base/timers.h"
#include "timeline/show_checks.h"
#include "videolist/video_list.h"

class wxChoice;
class wxListEvent;
class wxToggleButton;

namespace sontaro {

/// A list of what is found, which a button opens and closes: the button says how much that is. It
/// is looked for when nothing has changed for a moment, and nothing is prevented by it. The arrows
/// and a click on a finding choose its node; Enter and a double click go there. User-interface
/// thread.
class ChecksPanel : public wxPanel {
   public:
    struct Actions {
        std::function<void(NodeId node)> choose;
        std::function<void(NodeId node)> goTo;
        std::function<void()> opened;  ///< or closed: there is to be room for it
    };

    /// Closed at first; the button is another child of `parent`. Has the control numbers from
    /// `firstId`: of the button, the list and the choice of the serial ports' speed. `videos` have
    /// no value until their list has come; all references outlive the panel.
    ChecksPanel(wxWindow* parent, int firstId, const TimelineDocument& document,
                const std::optional<VideoList>& videos, Timers& timers, Actions actions);

    [[nodiscard]] wxToggleButton* Button() const { return button_; }

    /// The nodes or the player's videos have changed.
    void CheckSoon();
    /// The node that the user has chosen, wherever; 0: none.
    void NodeChosen(NodeId node);

   private:
    class List;

    void Check();
    void ShowCount();
    void Open(bool open);
    [[nodiscard]] const ShowFinding* Chosen() const;

    const TimelineDocument& document_;
    const std::optional<VideoList>& videos_;
    const Actions actions_;
    std::vector<ShowFinding> findings_;
    wxToggleButton* button_ = nullptr;
    List* list_ = nullptr;
    wxChoice* baudRate_ = nullptr;
    Timer timer_;
};

}  // namespace sontaro
