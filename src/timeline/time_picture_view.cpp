#include "timeline/time_picture_view.h"

#include <wx/dcbuffer.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "timeline/time_text.h"
#include "timeline/timeline_edits.h"
#include "timeline/timeline_texts.h"
#include "widgets/caption_button.h"
#include "widgets/picture_control.h"
#include "widgets/table_drawing.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr LocalText kNothing = {"选择一条命令，这里将按时间显示其视频的所有命令。",
                                "Choose a command: this is where all commands of its video are "
                                "shown over time."};
constexpr LocalText kName = {"时间图", "Picture of time"};
constexpr LocalText kMore = {"…共 %zu 条", "… %zu in all"};
constexpr double kZoomStep = 1.25;
constexpr int kScrollStep = 80;  // pixels of a turn of the wheel
constexpr std::size_t kMostTooltipLines = 8;
constexpr std::int64_t kSmallNudge = 1;
constexpr std::int64_t kLargeNudge = 1000;

}  // namespace

TimePictureView::TimePictureView(wxWindow* parent, int id, TimelineDocument& document,
                                 TimePictureActions actions)
    : document_(document), actions_(std::move(actions)), drawing_(*this) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, id, wxDefaultPosition, wxDefaultSize,
           long{wxBORDER_NONE} | wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE, wxDefaultValidator,
           ToWx(kName));
    drawing_.Measure();
    SetMinSize(drawing_.LeastSize());
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { Paint(); });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        OnSize();
    });
    Bind(wxEVT_KEY_DOWN, &TimePictureView::OnKey, this);
    Bind(wxEVT_CHAR, &TimePictureView::OnCharacter, this);
    Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
        event.Skip();
        Refresh();
    });
    Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
        event.Skip();
        series_ = 0;
        Refresh();
    });
    BindDrag(*this, {[this](auto& at) { OnDown(at); }, [this](auto& at) { OnMove(at); },
                     [this] { OnUp(); }, [this] { EndGesture(); }});
    Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& event) { OnWheel(event); });
}

TimePictureView::~TimePictureView() {
    if (HasCapture()) ReleaseMouse();
}

void TimePictureView::ShowVideoOf(std::optional<std::size_t> row) {
    const NodeGroup* group = row ? document_.Order()[document_.PlaceOf(*row).group].get() : nullptr;
    const auto video = group ? std::optional(VideoOf(*group)) : std::nullopt;
    const NodeId chosen = row ? document_.IdAt(*row) : 0;
    const bool isOther = video != video_;
    const bool isNew = isOther || state_ != document_.CurrentState();
    if (!isNew && chosen == chosen_) return;
    if (isNew) {
        EndGesture();
        picture_ = group ? TimelinePicture(*group) : TimelinePicture();
        last_ = picture_.LastTime();
        state_ = document_.CurrentState();
        video_ = video;
        hovered_.reset();
        UnsetToolTip();
    }
    if (isOther) ShowAll();
    chosen_ = chosen;
    ShowChosen();
    Refresh();
}

void TimePictureView::ShowAll() {
    window_ = WholeTime(last_, drawing_.Plot().width);
    isWhole_ = true;
}

/// Where it is in sight already, nothing moves under the pointer.
void TimePictureView::ShowChosen() {
    const auto place = picture_.Find(chosen_);
    if (!place) return;
    const std::int64_t time = TimeOf(*place);
    const double x = window_.PixelOf(static_cast<double>(time));
    if (x >= 0 && x < window_.width) return;
    window_ = Showing(window_, time, last_);
    isWhole_ = false;
}

void TimePictureView::OnSize() {
    drawing_.Measure();
    window_.width = drawing_.Plot().width;
    if (isWhole_)
        ShowAll();
    else
        window_ = Moved(window_, 0, last_);
    Refresh();
}

void TimePictureView::Paint() {
    wxAutoBufferedPaintDC canvas(this);
    if (picture_.Lanes().empty()) {
        TableDrawing(*this).Message(canvas, GetClientSize(), ToWx(kNothing));
    } else {
        const std::unique_ptr<wxGraphicsContext> graphics(wxGraphicsContext::Create(canvas));
        drawing_.Ground(*graphics);
        const std::vector<TimelinePicture::Lane>& lanes = picture_.Lanes();
        for (std::size_t lane = 0; lane < lanes.size(); ++lane)
            drawing_.Lane(*graphics, lanes[lane], drawing_.MiddleOf(lane, lanes.size()));
        drawing_.ClipToTime(*graphics);
        drawing_.Axis(*graphics, AxisTicks(window_, drawing_.TickDistance()));
        PaintMarks(*graphics);
    }
    DrawFocusFrame(canvas, *this);
}

/// What is chosen or dragged comes last, above the others.
void TimePictureView::PaintMarks(wxGraphicsContext& canvas) const {
    const std::vector<PictureMark> marks = Marks();
    const auto place = picture_.Find(chosen_);
    const PictureMark* chosen = place ? MarkOf(marks, *place) : nullptr;
    const bool isDragged = press_ && press_->target;
    const auto draw = [&](const PictureMark& mark, double x, MarkLook look) {
        drawing_.Mark(canvas, x, drawing_.MiddleOf(mark.lane, picture_.Lanes().size()), mark.count,
                      look);
    };
    for (const PictureMark& mark : marks) {
        const bool leaves = isDragged && mark == press_->mark;
        if (leaves || &mark != chosen)
            draw(mark, mark.x, leaves ? MarkLook::kLeft : MarkLook::kPlain);
    }
    if (chosen != nullptr && !(isDragged && *chosen == press_->mark))
        draw(*chosen, chosen->x, MarkLook::kChosen);
    if (!isDragged) return;
    const double x = window_.PixelOf(static_cast<double>(*press_->target));
    drawing_.Moment(canvas, x, *press_->target);
    draw(press_->mark, x, MarkLook::kChosen);
}

std::optional<PictureMark> TimePictureView::MarkAtPoint(const wxPoint& position) const {
    const auto lane = drawing_.LaneAt(position.y, picture_.Lanes().size());
    if (!lane) return std::nullopt;
    const std::vector<PictureMark> marks = Marks();
    const PictureMark* mark = MarkAt(marks, *lane, PlotX(position), drawing_.Reach());
    return mark != nullptr ? std::optional(*mark) : std::nullopt;
}

NodeIds TimePictureView::NodesOf(const PictureMark& mark) const {
    NodeIds nodes;
    for (const TimelinePicture::Node& node : picture_.NodesOf(mark)) nodes.push_back(node.id);
    return nodes;
}

std::int64_t TimePictureView::TimeOf(const TimelinePicture::Place& place) const {
    return picture_.Lanes()[place.lane].nodes[place.node].time;
}

std::optional<wxPoint> TimePictureView::ChosenPoint() const {
    const auto place = picture_.Find(chosen_);
    const std::vector<PictureMark> marks = Marks();
    const PictureMark* mark = place ? MarkOf(marks, *place) : nullptr;
    if (mark == nullptr || mark->x < 0 || mark->x >= window_.width) return std::nullopt;
    return wxPoint(drawing_.Plot().x + static_cast<int>(std::lround(mark->x)),
                   drawing_.MiddleOf(mark->lane, picture_.Lanes().size()));
}

void TimePictureView::OnDown(const wxPoint& position) {
    SetFocus();
    if (picture_.Lanes().empty() || HasCapture()) return;
    if (const auto mark = MarkAtPoint(position)) {
        const std::int64_t time = TimeOf({mark->lane, mark->first});
        press_.emplace(Press{MarkDrag(time, PlotX(position), DragThreshold(*this)), *mark,
                             NodesOf(*mark), time});
    } else {
        ground_ = position;
    }
    CaptureMouse();
}

void TimePictureView::OnMove(const wxPoint& position) {
    if (press_) {
        press_->target = press_->drag.MovedTo(PlotX(position), window_);
    } else if (ground_) {
        const double begin = window_.begin;
        window_ = Moved(window_, position.x - std::exchange(ground_, position)->x, last_);
        isWhole_ = isWhole_ && window_.begin == begin;
    } else {
        return ShowTooltip(position);
    }
    Refresh();
}

/// A click on several nodes leaves the chosen one chosen when it is among them.
void TimePictureView::OnUp() {
    const std::optional<Press> press = press_;
    EndGesture();
    if (!press) return;
    if (press->target) return Move(press->nodes, *press->target - press->time, 0);
    const bool isChosen = std::ranges::find(press->nodes, chosen_) != press->nodes.end();
    actions_.choose(isChosen ? chosen_ : press->nodes.front());
}

void TimePictureView::EndGesture() {
    press_.reset();
    ground_.reset();
    if (HasCapture()) ReleaseMouse();
    Refresh();
}

void TimePictureView::OnWheel(const wxMouseEvent& event) {
    if (picture_.Lanes().empty() || press_ || ground_) return;
    const double turns = static_cast<double>(event.GetWheelRotation()) / event.GetWheelDelta();
    const bool isAcross = event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL;
    if (!isAcross && !event.ShiftDown())
        return Zoom(PlotX(event.GetPosition()), std::pow(kZoomStep, -turns));
    window_ = Moved(window_, (isAcross ? -turns : turns) * FromDIP(kScrollStep), last_);
    Refresh();
}

void TimePictureView::Zoom(double x, double factor) {
    window_ = Zoomed(window_, std::clamp<double>(x, 0, window_.width), factor, last_);
    isWhole_ = window_.perPixel >= WholeTime(last_, window_.width).perPixel;
    hovered_.reset();
    UnsetToolTip();
    Refresh();
}

void TimePictureView::OnKey(wxKeyEvent& event) {
    if (!HandleKey(event)) event.Skip();
}

bool TimePictureView::HandleKey(const wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    const std::int64_t step = event.ShiftDown() ? kLargeNudge : kSmallNudge;
    if (event.ControlDown() || event.AltDown()) return false;
    if (key == WXK_TAB) return HandleAsNavigationKey(event);
    if (key == WXK_ESCAPE)
        EndGesture();
    else if (key == WXK_LEFT || key == WXK_RIGHT)
        Nudge(key == WXK_LEFT ? -step : step);
    else
        return false;
    return true;
}

void TimePictureView::OnCharacter(wxKeyEvent& event) {
    if (press_ || ground_) return;
    const auto place = picture_.Find(chosen_);
    const double x =
        place ? window_.PixelOf(static_cast<double>(TimeOf(*place))) : window_.width / 2.0;
    switch (event.GetUnicodeKey()) {
        case '+': return Zoom(x, 1 / kZoomStep);
        case '-': return Zoom(x, kZoomStep);
        case '0': ShowAll(); return Refresh();
        default: event.Skip();
    }
}

void TimePictureView::Nudge(std::int64_t milliseconds) {
    if (chosen_ == 0 || press_) return;
    if (document_.CurrentState() != nudged_ || chosen_ != nudgedNode_) series_ = 0;
    if (series_ == 0) series_ = document_.NewSeries();
    nudgedNode_ = chosen_;
    Move({chosen_}, milliseconds, series_);
    nudged_ = document_.CurrentState();
}

void TimePictureView::Move(const NodeIds& nodes, std::int64_t milliseconds,
                           TimelineDocument::Series series) {
    if (!ShiftNodes(document_, nodes, milliseconds, series)) return wxBell();
    const bool isChosen = std::ranges::find(nodes, chosen_) != nodes.end();
    actions_.moved(isChosen ? chosen_ : nodes.front());
}

void TimePictureView::ShowTooltip(const wxPoint& position) {
    const auto mark = MarkAtPoint(position);
    if (mark == hovered_) return;
    hovered_ = mark;
    SetCursor(mark ? wxCursor(wxCURSOR_HAND) : wxNullCursor);
    if (mark)
        SetToolTip(TooltipOf(*mark));
    else
        UnsetToolTip();
}

/// Port, time and command of each node, as far as there is room.
wxString TimePictureView::TooltipOf(const PictureMark& mark) const {
    const wxString port = ToWx(PortName(picture_.Lanes()[mark.lane].port));
    wxString text;
    std::size_t lines = 0;
    for (const TimelinePicture::Node& node : picture_.NodesOf(mark)) {
        if (!text.empty()) text += '\n';
        if (lines++ == kMostTooltipLines) return text + wxString::Format(ToWx(kMore), mark.count);
        const std::optional<TimeNode> found = document_.Find(node.id);
        text += port + "  " + AxisText(node.time) + "  " +
                TooltipText(ToWx(found ? found->command : ""));
    }
    return text;
}

}  // namespace sontaro
