// How the parts of a picture of time look.
#pragma once

#include <wx/graphics.h>
#include <wx/window.h>

#include <optional>
#include <vector>

#include "timeline/timeline_picture.h"

namespace sontaro {

/// How a mark is shown.
enum class MarkLook {
    kPlain,
    kChosen,
    kLeft,  ///< what is dragged away from there
};

/// Draws in the system's colours of the moment: an axis above, under it lanes with their captions
/// at the left. The rest is the plot, from whose left edge pixels of time are counted; there is
/// some room for marks before it.
class TimePictureDrawing {
   public:
    /// `window` gives the font and the size; it outlives this object. `Measure` comes before all
    /// else, once there is such a window.
    explicit TimePictureDrawing(wxWindow& window) : window_(window) {}

    /// The font or the resolution of the window may be another one.
    void Measure();

    /// Size in which all ports there are find room.
    [[nodiscard]] wxSize LeastSize() const;
    [[nodiscard]] wxRect Plot() const;
    /// Pixels between the lefts of marks that can be drawn apart.
    [[nodiscard]] double MarkDistance() const { return markDistance_; }
    /// Pixels between ticks that leave room for their texts.
    [[nodiscard]] double TickDistance() const { return tickDistance_; }
    /// How far from the middle of a mark a pointer is still on it.
    [[nodiscard]] double Reach() const { return markDistance_ / 2; }
    /// The middle of a lane, one of so many.
    [[nodiscard]] int MiddleOf(std::size_t lane, std::size_t lanes) const;
    [[nodiscard]] std::optional<std::size_t> LaneAt(int y, std::size_t lanes) const;

    void Ground(wxGraphicsContext& canvas) const;
    /// Nothing is drawn on the captions any more.
    void ClipToTime(wxGraphicsContext& canvas) const;
    void Axis(wxGraphicsContext& canvas, const std::vector<AxisTick>& ticks) const;
    void Lane(wxGraphicsContext& canvas, const TimelinePicture::Lane& lane, int middle) const;
    /// `x` is a pixel of the plot.
    void Mark(wxGraphicsContext& canvas, double x, int middle, std::size_t count,
              MarkLook look) const;
    /// A line down the plot with its time above, for what is being dragged.
    void Moment(wxGraphicsContext& canvas, double x, std::int64_t time) const;

   private:
    [[nodiscard]] int Space() const { return window_.FromDIP(6); }
    [[nodiscard]] double LaneHeight(std::size_t lanes) const;
    [[nodiscard]] wxFont SmallFont() const { return window_.GetFont().Scaled(0.85F); }

    wxWindow& window_;
    int captionWidth_ = 0;
    int axisHeight_ = 0;
    int markSize_ = 0;
    double markDistance_ = 1;
    double tickDistance_ = 1;
};

}  // namespace sontaro
