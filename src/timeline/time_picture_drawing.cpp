#include "timeline/time_picture_drawing.h"

#include <algorithm>

#include "timeline/time_text.h"
#include "timeline/timeline_texts.h"
#include "widgets/colours.h"
#include "widgets/fonts.h"
#include "widgets/picture_control.h"
#include "widgets/table_drawing.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr const char* kWidestNumber = "000";
constexpr const char* kWidestTime = "00:00:00.000";
constexpr std::size_t kThousand = 1000;
constexpr double kMostLaneHeight = 2.2;  // in lines of text
constexpr double kPlainShare = 0.65;     // of the text's colour, in a mark
constexpr double kLeftShare = 0.25;
constexpr double kGroundShare = 0.6;  // of a window's colour, behind captions and axis

/// As much of a number as there is room for: "999", "12k".
wxString ShortNumber(std::size_t number) {
    if (number < kThousand) return std::to_string(number);
    return std::to_string(number / kThousand) + "k";
}

wxColour MarkColour(MarkLook look) {
    const wxColour ink = SystemColour(wxSYS_COLOUR_WINDOWTEXT);
    const wxColour ground = SystemColour(wxSYS_COLOUR_WINDOW);
    switch (look) {
        case MarkLook::kPlain: return Mix(ink, ground, kPlainShare);
        case MarkLook::kChosen: return SystemColour(wxSYS_COLOUR_HIGHLIGHT);
        case MarkLook::kLeft: break;
    }
    return Mix(ink, ground, kLeftShare);
}

}  // namespace

void TimePictureDrawing::Measure() {
    captionWidth_ = 0;
    for (const LocalText& port : kTimelinePortNames)
        captionWidth_ = std::max(captionWidth_, window_.GetTextExtent(ToWx(port)).x);
    captionWidth_ += 2 * Space();
    axisHeight_ = LineHeight(window_) + Space();
    markSize_ = LineHeight(window_) / 2;
    wxFont font = SmallFont();
    int width = 0;
    window_.GetTextExtent(kWidestNumber, &width, nullptr, nullptr, nullptr, &font);
    markDistance_ = width + Space() + window_.FromDIP(2);
    window_.GetTextExtent(kWidestTime, &width, nullptr, nullptr, nullptr, &font);
    tickDistance_ = width + Space();
}

wxSize TimePictureDrawing::LeastSize() const {
    constexpr int kTicks = 3;
    return {captionWidth_ + kTicks * static_cast<int>(tickDistance_),
            axisHeight_ + kTimelinePorts * window_.GetCharHeight()};
}

wxRect TimePictureDrawing::Plot() const {
    const wxSize size = window_.GetClientSize();
    const int left = captionWidth_ + static_cast<int>(Reach());
    const int frame = window_.FromDIP(2);
    return {left, axisHeight_, std::max(1, size.x - left - frame),
            std::max(1, size.y - axisHeight_ - frame)};
}

void TimePictureDrawing::ClipToTime(wxGraphicsContext& canvas) const {
    const wxSize size = window_.GetClientSize();
    canvas.Clip(captionWidth_, 0, size.x - captionWidth_, size.y);
}

double TimePictureDrawing::LaneHeight(std::size_t lanes) const {
    return std::min(Plot().height / static_cast<double>(std::max<std::size_t>(lanes, 1)),
                    kMostLaneHeight * LineHeight(window_));
}

int TimePictureDrawing::MiddleOf(std::size_t lane, std::size_t lanes) const {
    return axisHeight_ +
           static_cast<int>((static_cast<double>(lane) + 0.5) * LaneHeight(lanes));  // of a lane
}

std::optional<std::size_t> TimePictureDrawing::LaneAt(int y, std::size_t lanes) const {
    if (y < axisHeight_) return std::nullopt;
    const auto lane = static_cast<std::size_t>((y - axisHeight_) / LaneHeight(lanes));
    return lane < lanes ? std::optional(lane) : std::nullopt;
}

void TimePictureDrawing::Ground(wxGraphicsContext& canvas) const {
    const wxSize size = window_.GetClientSize();
    const wxColour ground = SystemColour(wxSYS_COLOUR_WINDOW);
    canvas.SetPen(*wxTRANSPARENT_PEN);
    canvas.SetBrush(Mix(ground, SystemColour(wxSYS_COLOUR_BTNFACE), kGroundShare));
    canvas.DrawRectangle(0, 0, size.x, size.y);
    canvas.SetBrush(ground);
    canvas.DrawRectangle(captionWidth_, axisHeight_, size.x, size.y);
}

void TimePictureDrawing::Axis(wxGraphicsContext& canvas, const std::vector<AxisTick>& ticks) const {
    const wxRect plot = Plot();
    canvas.SetPen(TableDrawing::LineColour());
    canvas.SetFont(SmallFont(), SystemColour(wxSYS_COLOUR_WINDOWTEXT));
    for (const AxisTick& tick : ticks) {
        const double x = plot.x + tick.x;
        canvas.StrokeLine(x, 0, x, plot.GetBottom());
        double width = 0;
        double height = 0;
        canvas.GetTextExtent(tick.text, &width, &height);
        const double left = x + window_.FromDIP(3);
        if (left + width < plot.GetRight())
            canvas.DrawText(tick.text, left, (axisHeight_ - height) / 2);
    }
}

void TimePictureDrawing::Lane(wxGraphicsContext& canvas, const TimelinePicture::Lane& lane,
                              int middle) const {
    canvas.SetPen(TableDrawing::LineColour());
    canvas.StrokeLine(captionWidth_, middle, window_.GetClientSize().x, middle);
    canvas.SetFont(window_.GetFont(), SystemColour(wxSYS_COLOUR_WINDOWTEXT));
    const wxString caption = ToWx(PortName(lane.port));
    double height = 0;
    canvas.GetTextExtent(caption, nullptr, &height);
    canvas.DrawText(caption, Space(), middle - height / 2);
}

void TimePictureDrawing::Mark(wxGraphicsContext& canvas, double x, int middle, std::size_t count,
                              MarkLook look) const {
    const bool isChosen = look == MarkLook::kChosen;
    x += Plot().x;
    canvas.SetPen(isChosen ? wxPen(SystemColour(wxSYS_COLOUR_WINDOWTEXT), window_.FromDIP(2))
                           : *wxTRANSPARENT_PEN);
    canvas.SetBrush(MarkColour(look));
    if (count == 1) {
        const double size = isChosen ? markSize_ + window_.FromDIP(2) : markSize_;
        canvas.DrawEllipse(x - size / 2, middle - size / 2, size, size);
        return;
    }
    canvas.SetFont(SmallFont(),
                   SystemColour(isChosen ? wxSYS_COLOUR_HIGHLIGHTTEXT : wxSYS_COLOUR_WINDOW));
    const wxString number = ShortNumber(count);
    double width = 0;
    double height = 0;
    canvas.GetTextExtent(number, &width, &height);
    width = std::max(width + Space(), height);
    canvas.DrawRoundedRectangle(x - width / 2, middle - height / 2, width, height, height / 2);
    DrawCentred(canvas, number, x, middle);
}

void TimePictureDrawing::Moment(wxGraphicsContext& canvas, double x, std::int64_t time) const {
    const wxRect plot = Plot();
    const wxString text = AxisText(time);
    canvas.SetPen(SystemColour(wxSYS_COLOUR_HIGHLIGHT));
    canvas.SetBrush(SystemColour(wxSYS_COLOUR_HIGHLIGHT));
    canvas.StrokeLine(plot.x + x, plot.y, plot.x + x, plot.GetBottom());
    canvas.SetFont(SmallFont(), SystemColour(wxSYS_COLOUR_HIGHLIGHTTEXT));
    double width = 0;
    canvas.GetTextExtent(text, &width, nullptr);
    width += 2 * Space();
    const double left = std::clamp(plot.x + x - width / 2, 0.0,
                                   std::max(captionWidth_ * 1.0, plot.GetRight() - width));
    canvas.DrawRoundedRectangle(left, 0, width, axisHeight_, window_.FromDIP(3));
    DrawCentred(canvas, text, left + width / 2, axisHeight_ / 2.0);
}

}  // namespace sontaro
