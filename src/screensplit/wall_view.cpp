#include "screensplit/wall_view.h"

#include <wx/dcbuffer.h>

#include <cmath>
#include <memory>
#include <utility>

#include "screensplit/wall_text.h"
#include "widgets/caption_button.h"
#include "widgets/picture_control.h"
#include "widgets/table_drawing.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

using Kind = WallSpot::Kind;

constexpr LocalText kName = {"大屏示意图", "Picture of the wall"};
constexpr LocalText kNotFetched = {"读取播放器的参数后，这里将显示大屏。",
                                   "The wall is shown here once the players' parameters have been "
                                   "fetched."};
constexpr LocalText kNotApplied = {"按“应用排序”，这里将显示大屏。",
                                   "Press \"Apply order\" to see the wall here."};
constexpr LocalText kNoneUsed = {"没有使用任何分幕。请从下方拖一个到这里。",
                                 "No screen is used: drag one here from below."};
constexpr std::int32_t kSmallStep = 1;
constexpr std::int32_t kLargeStep = 10;

std::optional<WallArrow> ArrowOf(int key) {
    switch (key) {
        case WXK_LEFT: return WallArrow::kLeft;
        case WXK_UP: return WallArrow::kUp;
        case WXK_RIGHT: return WallArrow::kRight;
        case WXK_DOWN: return WallArrow::kDown;
        default: return std::nullopt;
    }
}

}  // namespace

WallView::WallView(wxWindow* parent, SplitDocument& document, std::function<void()> changed)
    : document_(document), changed_(std::move(changed)), drawing_(*this), picture_(document) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, kWallView, wxDefaultPosition, wxDefaultSize,
           long{wxBORDER_NONE} | wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE, wxDefaultValidator,
           ToWx(kName));
    SetMinSize(drawing_.LeastSize());
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { Paint(); });
    Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) { event.Skip(!HandleKey(event)); });
    Bind(wxEVT_CHAR, [this](wxKeyEvent& event) { event.Skip(!HandleSign(event)); });
    Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
        event.Skip();
        ChooseSome();
        Refresh();
    });
    Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
        event.Skip();
        series_ = 0;
        Refresh();
    });
    BindDrag(*this, {[this](auto& at) { OnDown(at); }, [this](auto& at) { OnMove(at); },
                     [this] { OnUp(); }, [this] { TakeBack(); }});
}

WallView::~WallView() {
    if (HasCapture()) ReleaseMouse();
}

void WallView::ShowWall() {
    if (!isChanging_) EndGesture();
    picture_ = WallPicture(document_);
    if (chosenScreen_)
        chosen_ = picture_.SpotOf(*chosenScreen_);
    else if (chosen_.index >= picture_.Overlaps().size())
        chosen_ = {};
    if (HasFocus()) ChooseSome();
    hovered_ = {};
    UnsetToolTip();
    Refresh();
}

void WallView::SetEditable(bool editable) {
    if (editable == isEditable_) return;
    if (!editable) TakeBack();
    isEditable_ = editable;
    Refresh();
}

WallFrame WallView::Frame() const { return {picture_, drawing_.Space(picture_.Direction())}; }

wxString WallView::Message() const {
    if (!picture_.Tiles().empty()) return {};
    if (!picture_.Unused().empty()) return ToWx(kNoneUsed);
    return ToWx(document_.Names().empty() ? kNotFetched : kNotApplied);
}

void WallView::Paint() {
    wxAutoBufferedPaintDC canvas(this);
    WallLook look{chosen_, {}, MayEdit()};
    if (press_ && press_->drop)
        look.ghost = {document_.Names()[press_->screen].text, *press_->drop, press_->at};
    if (const wxString message = Message(); !message.empty()) {
        const int height = static_cast<int>(Frame().Caption().Bottom());
        TableDrawing(*this).Message(canvas, {0, 0, GetClientSize().x, height}, message);
    }
    {
        const std::unique_ptr<wxGraphicsContext> graphics(wxGraphicsContext::Create(canvas));
        drawing_.Draw(*graphics, picture_, look);
    }
    DrawFocusFrame(canvas, *this);
}

void WallView::Choose(const WallSpot& spot) {
    if (spot == chosen_) return;
    chosen_ = spot;
    chosenScreen_ = picture_.ScreenOf(spot);
    series_ = 0;
    Refresh();
}

/// There is always something that keys can go on from.
void WallView::ChooseSome() {
    if (chosen_.kind == Kind::kNothing) Choose(picture_.Neighbour(chosen_, WallArrow::kRight));
}

/// Whatever is told to the document here comes back as a change that is known.
void WallView::Change(const std::function<void()>& edit) {
    isChanging_ = true;
    edit();
    ShowWall();
    changed_();
    isChanging_ = false;
}

void WallView::OnDown(const wxPoint& position) {
    SetFocus();
    if (HasCapture()) return;
    const WallSpot spot = SpotAt(position);
    if (spot.kind == Kind::kNothing || spot.kind == Kind::kTray) return;
    Choose(spot);
    if (!MayEdit()) return;
    if (spot.kind == Kind::kSeam)
        pull_.emplace(Pull{spot.index, position, Frame().Scale()});
    else
        press_.emplace(Press{*chosenScreen_, TileDrag(*chosenScreen_, position.x, position.y,
                                                      DragThreshold(*this))});
    CaptureMouse();
}

void WallView::OnMove(const wxPoint& position) {
    if (pull_) return OnPull(*pull_, position);
    if (!press_) return OnHover(position);
    press_->at = position;
    press_->drop = press_->drag.MovedTo(position.x, position.y, Frame());
    Refresh();
}

void WallView::OnPull(Pull& pull, const wxPoint& position) {
    if (!pull.drag) {
        const wxPoint way = position - pull.from;
        if (std::hypot(way.x, way.y) < DragThreshold(*this)) return;
        pull.drag.emplace(document_, pull.seam, pull.from.x, pull.from.y, pull.scale);
    }
    Change([&] { pull.hasChanged |= pull.drag->MoveTo(position.x, position.y, document_); });
}

void WallView::OnUp() {
    const std::optional<Press> press = std::exchange(press_, std::nullopt);
    EndGesture();
    if (press) Move(picture_.SpotOf(press->screen), press->drop);
}

/// Where it would stay what it is, nothing is changed.
void WallView::Move(const WallSpot& spot, const std::optional<WallDrop>& drop) {
    const std::optional<std::size_t> screen = picture_.ScreenOf(spot);
    if (!drop || !screen || !MayEdit()) return;
    const bool isTile = spot.kind == Kind::kTile;
    const bool stays = drop->toTray
                           ? !isTile
                           : isTile && (drop->place == spot.index || drop->place == spot.index + 1);
    if (!stays) Change([&] { DropScreen(*screen, *drop, document_); });
}

void WallView::Widen(std::int32_t pixels) {
    if (chosen_.kind != Kind::kSeam || !MayEdit()) return;
    if (series_ == 0) series_ = document_.NewSeries();
    const std::int32_t overlap = picture_.Overlaps()[chosen_.index].pixels;
    Change([&] { document_.SetOverlap(chosen_.index, overlap + pixels, series_); });
}

/// The steps of a seam's drag are one, and none when nothing has changed.
void WallView::TakeBack() {
    const bool hasChanged = pull_ && pull_->hasChanged;
    EndGesture();
    if (hasChanged) Change([this] { document_.Undo(); });
}

void WallView::EndGesture() {
    press_.reset();
    pull_.reset();
    if (HasCapture()) ReleaseMouse();
    Refresh();
}

void WallView::OnHover(const wxPoint& position) {
    const WallSpot spot = SpotAt(position);
    if (spot == hovered_) return;
    hovered_ = spot;
    const bool isHorizontal = picture_.Direction() == SplitDirection::kHorizontal;
    wxCursor cursor = wxNullCursor;
    if (MayEdit() && spot.kind == Kind::kSeam)
        cursor = wxCursor(isHorizontal ? wxCURSOR_SIZEWE : wxCURSOR_SIZENS);
    else if (MayEdit() && picture_.ScreenOf(spot))
        cursor = wxCursor(wxCURSOR_HAND);
    SetCursor(cursor);
    const std::string text = DescriptionOf(picture_, spot);
    if (text.empty())
        UnsetToolTip();
    else
        SetToolTip(TooltipText(ToWx(text)));
}

/// While something is dragged, no key but Escape means anything.
bool WallView::HandleKey(const wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (IsHeld()) {
        if (key == WXK_ESCAPE) TakeBack();
        return true;
    }
    if (event.ControlDown()) return false;
    if (const auto arrow = ArrowOf(key)) {
        if (event.AltDown())
            Move(chosen_, picture_.MovedBy(chosen_, *arrow));
        else
            Choose(picture_.Neighbour(chosen_, *arrow));
        return true;
    }
    if (event.AltDown()) return false;
    if (key == WXK_TAB) return HandleAsNavigationKey(event);
    return HandleEdit(key, event.ShiftDown());
}

bool WallView::HandleEdit(int key, bool withShift) {
    const std::int32_t step = withShift ? kLargeStep : kSmallStep;
    switch (key) {
        case WXK_NUMPAD_ADD: Widen(step); return true;
        case WXK_NUMPAD_SUBTRACT: Widen(-step); return true;
        case WXK_PAGEUP:
        case WXK_NUMPAD_PAGEUP: Widen(kLargeStep); return true;
        case WXK_PAGEDOWN:
        case WXK_NUMPAD_PAGEDOWN: Widen(-kLargeStep); return true;
        case WXK_DELETE:
        case WXK_NUMPAD_DELETE: Move(chosen_, WallDrop{true, 0}); return true;
        default: return false;
    }
}

/// A plus sign needs Shift on one keyboard and none on another: signs count, not keys.
bool WallView::HandleSign(const wxKeyEvent& event) {
    if (event.ControlDown() || event.AltDown()) return false;
    switch (event.GetUnicodeKey()) {
        case '+':
        case '=': Widen(kSmallStep); return true;
        case '-': Widen(-kSmallStep); return true;
        case '_': Widen(-kLargeStep); return true;
        default: return false;
    }
}

}  // namespace sontaro
