// The picture of the time of one video.
#pragma once

#include <wx/control.h>

#include <functional>
#include <optional>

#include "timeline/time_picture_drawing.h"
#include "timeline/timeline_document.h"

namespace sontaro {

/// What the user does in the picture.
struct TimePictureActions {
    std::function<void(NodeId node)> choose;  ///< a click on the node's mark
    std::function<void(NodeId node)> moved;   ///< this and maybe others, in the document already
};

/// Shows the nodes of one video over an axis of time, in a lane for each port; near ones are one
/// mark with their number. The wheel, + and - zoom, 0 shows all; dragging the ground moves the
/// picture, dragging a mark its nodes, of which Escape leaves all where they were. Left and Right
/// move the chosen node by a millisecond, with Shift by a second. No node gets before 0. A drag is
/// one step that can be undone, and so is a series of keys. User-interface thread.
class TimePictureView : public wxControl {
   public:
    /// `document` outlives the view.
    TimePictureView(wxWindow* parent, int id, TimelineDocument& document,
                    TimePictureActions actions);
    ~TimePictureView() override;

    /// Shows the video of a row and marks the row's node; a sentence in place of it without a row.
    /// Called when another row is chosen or the document has changed, which ends a drag.
    void ShowVideoOf(std::optional<std::size_t> row);

    /// The middle of the row's mark in the window; none when it is out of sight.
    [[nodiscard]] std::optional<wxPoint> ChosenPoint() const;

   private:
    /// Marks that are held down by the mouse.
    struct Press {
        MarkDrag drag;
        PictureMark mark;
        NodeIds nodes;
        std::int64_t time = 0;  // of the first of them
        std::optional<std::int64_t> target = {};
    };

    void Paint();
    void PaintMarks(wxGraphicsContext& canvas) const;
    void OnSize();
    void OnDown(const wxPoint& position);
    void OnMove(const wxPoint& position);
    void OnUp();
    void OnWheel(const wxMouseEvent& event);
    void OnKey(wxKeyEvent& event);
    [[nodiscard]] bool HandleKey(const wxKeyEvent& event);
    void OnCharacter(wxKeyEvent& event);
    void ShowTooltip(const wxPoint& position);
    [[nodiscard]] wxString TooltipOf(const PictureMark& mark) const;

    void EndGesture();
    void Nudge(std::int64_t milliseconds);
    void Move(const NodeIds& nodes, std::int64_t milliseconds, TimelineDocument::Series series);
    void Zoom(double x, double factor);
    void ShowAll();
    void ShowChosen();

    [[nodiscard]] std::vector<PictureMark> Marks() const {
        return picture_.Marks(window_, drawing_.MarkDistance());
    }
    [[nodiscard]] std::optional<PictureMark> MarkAtPoint(const wxPoint& position) const;
    [[nodiscard]] NodeIds NodesOf(const PictureMark& mark) const;
    [[nodiscard]] std::int64_t TimeOf(const TimelinePicture::Place& place) const;
    /// A pixel of the plot.
    [[nodiscard]] double PlotX(const wxPoint& position) const {
        return position.x - drawing_.Plot().x;
    }

    TimelineDocument& document_;
    const TimePictureActions actions_;
    TimePictureDrawing drawing_;
    TimelinePicture picture_;
    TimelineDocument::State state_ = 0;  // of the document, when the picture was made
    std::optional<VideoKey> video_;      // whose picture it is
    std::int64_t last_ = 0;              // time in it
    TimeWindow window_;
    bool isWhole_ = true;  // all of the time is shown, whatever the size
    NodeId chosen_ = 0;
    std::optional<Press> press_;
    std::optional<wxPoint> ground_;  // where it is held by the mouse
    std::optional<PictureMark> hovered_;
    TimelineDocument::Series series_ = 0;  // of keys; 0: the next one begins another
    TimelineDocument::State nudged_ = 0;   // as the last of them left the document
    NodeId nudgedNode_ = 0;
};

}  // namespace sontaro
