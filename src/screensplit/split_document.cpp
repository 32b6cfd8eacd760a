#include "screensplit/split_document.h"

#include <algorithm>
#include <utility>

#include "base/json.h"
#include "screensplit/advanced_params.h"

namespace sontaro {

namespace {

constexpr LocalText kResolutions = {"设备分辨率必须相同", "Device resolution must be the same"};
constexpr LocalText kReused = {"分幕不能重复使用", "The screen cannot be reused"};
constexpr LocalText kNoChain = {
    "播放器中的大屏不是由这些分幕组成的单行或单列，或其重叠、缩放超出可设置的范围，无法采用。",
    "The players' wall is no single row or column of these screens, or has overlaps or zoom beyond "
    "what can be set. It cannot be taken over."};
constexpr LocalText kOtherPlayers = {"这个大屏属于另一组播放器。",
                                     "This wall is about another set of players."};

bool HasSameScreens(const std::vector<SplitDevice>& devices,
                    const std::vector<SplitDevice>& others) {
    return std::ranges::equal(devices, others, [](const SplitDevice& a, const SplitDevice& b) {
        return a.record.ip == b.record.ip && a.record.id == b.record.id &&
               a.params.Outputs() == b.params.Outputs() && a.params.Width() == b.params.Width() &&
               a.params.Height() == b.params.Height();
    });
}

}  // namespace

void SplitDocument::SetDevices(std::vector<SplitDevice> devices) {
    const bool isSame = HasSameScreens(devices_, devices);
    devices_ = std::move(devices);
    names_ = ScreenNames(devices_);
    if (isSame) return;
    configuration_.reset();
    changed_ = {};
    history_.Clear();
    SplitState state;
    state.wall = PlainWall(names_.size());
    state.shown = state.wall.arrangement;
    Enter(std::move(state));
}

void SplitDocument::SetConfiguration(SplitConfiguration configuration) {
    configuration_ = std::move(configuration);
    SplitState state = Editable();
    CustomEntries advanced = configuration_->Advanced();
    advanced.TakeValues(std::exchange(changed_, {}));
    state.advanced = std::make_shared<const CustomEntries>(std::move(advanced));
    history_.Clear();
    Enter(std::move(state));
}

void SplitDocument::ForgetConfiguration() {
    if (configuration_) changed_ = state_.advanced->ChangedSince(configuration_->Advanced());
    configuration_.reset();
    history_.Clear();
    SplitState state = Editable();
    state.advanced = std::make_shared<const CustomEntries>();
    Enter(std::move(state));
}

std::optional<SplitSize> SplitDocument::Size() const {
    if (devices_.empty()) return std::nullopt;
    const SplitDeviceParams& first = devices_[0].params;
    const bool isCommon = std::ranges::all_of(devices_, [&](const SplitDevice& device) {
        return device.params.Width() == first.Width() && device.params.Height() == first.Height();
    });
    if (!isCommon || first.Width() == 0 || first.Height() == 0) return std::nullopt;
    return SplitSize{first.Width(), first.Height()};
}

bool SplitDocument::IsAsFetched() const {
    return configuration_ &&
           (state_.isAsFetched ? *state_.advanced == configuration_->Advanced()
                               : IsApplied() && ToJson() == configuration_->Whole());
}

std::size_t SplitDocument::WallLength() const {
    return static_cast<std::size_t>(std::ranges::count_if(screens_, &SplitScreen::enabled));
}

Json::Value SplitDocument::ToJson() const {
    if (state_.isAsFetched) return configuration_->WholeWith(*state_.advanced);
    return configuration_->With(screens_, Size().value_or(SplitSize()), *state_.advanced);
}

std::string SplitDocument::Write() const { return WriteJson(ToJson()); }

void SplitDocument::SetSlot(std::size_t slot, SplitSlot screen) {
    SplitState state = Editable();
    state.shown.slots.at(slot) = screen;
    Do(std::move(state));
}

void SplitDocument::SetDirection(SplitDirection direction) {
    SplitState state = Editable();
    state.shown.direction = direction;
    Do(std::move(state));
}

SplitDocument::Refusal SplitDocument::ApplyOrder() {
    if (!Size()) return kResolutions;
    if (state_.shown.ReusesScreen()) return kReused;
    SplitState state = Editable();
    state.wall.arrangement = state.shown;
    state.isLaidOut = true;
    Do(std::move(state));
    return std::nullopt;
}

SplitArrangement SplitDocument::Applicable() const {
    SplitArrangement arrangement = state_.shown;
    if (arrangement.ReusesScreen()) arrangement.slots = state_.wall.arrangement.slots;
    return arrangement;
}

void SplitDocument::Arrange(SplitArrangement arrangement) {
    SplitState state = Editable();
    state.wall.arrangement = std::move(arrangement);
    state.shown = state.wall.arrangement;
    Do(std::move(state));
}

/// A place is one in the wall that is to be seen; slots that have not been applied may name others.
void SplitDocument::PlaceScreen(std::size_t screen, std::size_t place) {
    if (!state_.isLaidOut || screen >= names_.size()) return;
    const std::vector<std::size_t> seen = state_.wall.arrangement.Order();
    SplitArrangement arrangement = Applicable();
    std::vector<std::size_t> order = arrangement.Order();
    std::erase(order, screen);
    auto next = order.end();
    for (; next == order.end() && place < seen.size(); ++place)
        next = std::ranges::find(order, seen[place]);
    order.insert(next, screen);
    arrangement.slots = WithOrder(std::move(arrangement.slots), order);
    Arrange(std::move(arrangement));
}

void SplitDocument::DismissScreen(std::size_t screen) {
    if (!state_.isLaidOut) return;
    SplitArrangement arrangement = Applicable();
    std::ranges::replace(arrangement.slots, SplitSlot(screen), SplitSlot());
    Arrange(std::move(arrangement));
}

bool SplitDocument::SetOverlap(std::size_t seam, std::int32_t pixels, Series series) {
    if (!state_.isLaidOut || seam >= state_.wall.seams.size()) return false;
    SplitState state = Editable();
    SplitSeam& changed = state.wall.seams[seam];
    (Direction() == SplitDirection::kHorizontal ? changed.x : changed.y) = pixels;
    state.wall = WithinLimits(std::move(state.wall), *Size());
    return Do(std::move(state), series);
}

void SplitDocument::SetAllOverlaps(std::int32_t pixels) {
    const Series series = NewSeries();
    for (std::size_t seam = 0; seam + 1 < WallLength(); ++seam) SetOverlap(seam, pixels, series);
}

void SplitDocument::SetZoom(std::size_t screen, const SplitZoom& zoom) {
    if (!state_.isLaidOut || screen >= state_.wall.zooms.size()) return;
    SplitState state = Editable();
    state.wall.zooms[screen] = zoom;
    state.wall = WithinLimits(std::move(state.wall), *Size());
    Do(std::move(state));
}

EditAnswer SplitDocument::EditAdvanced(const SettingsEdit& edit) {
    CustomEntries entries = *state_.advanced;
    EditAnswer answer = EditAdvancedParam(entries, edit);
    if (answer.outcome != EditAnswer::Outcome::kAccepted) return answer;
    SplitState state = state_;  // a wall that the grids cannot tell would be lost otherwise
    state.advanced = std::make_shared<const CustomEntries>(std::move(entries));
    Do(std::move(state));
    return answer;
}

SplitDocument::Refusal SplitDocument::UseWall(const SplitWall& wall,
                                              std::optional<CustomEntries> advanced) {
    const std::optional<SplitSize> size = Size();
    if (!size) return kResolutions;
    if (wall.zooms.size() != names_.size()) return kOtherPlayers;
    SplitState state = Editable();
    state.wall = WithinLimits(wall, *size);
    state.shown = state.wall.arrangement;
    state.isLaidOut = true;
    if (advanced) state.advanced = std::make_shared<const CustomEntries>(std::move(*advanced));
    Do(std::move(state));
    return std::nullopt;
}

SplitDocument::Refusal SplitDocument::TakeOverWall() {
    if (!Size()) return kResolutions;
    const auto wall = FetchedWall();
    return wall ? UseWall(*wall) : Refusal(kNoChain);
}

std::optional<SplitWall> SplitDocument::FetchedWall() const {
    return configuration_ ? WallIn(*configuration_) : std::nullopt;
}

std::optional<SplitWall> SplitDocument::WallIn(const SplitConfiguration& configuration) const {
    if (!Size()) return std::nullopt;
    auto wall = WallOf(configuration.Screens(), names_.size(), state_.shown.direction);
    return wall && WithinLimits(*wall, *Size()) == *wall ? std::move(wall) : std::nullopt;
}

/// A wall that the grids cannot tell leaves them empty; the picture shows it all the same.
void SplitDocument::PutBackFetched() {
    SplitState state = state_;
    const auto wall = FetchedWall();
    state.isLaidOut = wall.has_value();
    if (wall) {
        state.wall = *wall;
        state.shown = state.wall.arrangement;
    }
    state.advanced = std::make_shared<const CustomEntries>(configuration_->Advanced());
    state.isAsFetched = true;
    Do(std::move(state));
}

/// A wall that is changed is not as it was fetched.
SplitState SplitDocument::Editable() const {
    SplitState state = state_;
    state.isAsFetched = false;
    return state;
}

/// False when it is no other one.
bool SplitDocument::Do(SplitState state, Series series) {
    if (state == state_) return false;
    history_.Add({state_, state}, series);
    Enter(std::move(state));
    return true;
}

void SplitDocument::Enter(SplitState state) {
    state_ = std::move(state);
    if (state_.isAsFetched)
        screens_ = configuration_->Screens();
    else if (const auto size = Size(); state_.isLaidOut && size)
        screens_ = state_.wall.Screens(*size);
    else
        screens_.clear();
}

bool SplitDocument::Undo() {
    SplitStep* const step = history_.Undo();
    if (step) Enter(step->before);
    return step != nullptr;
}

bool SplitDocument::Redo() {
    SplitStep* const step = history_.Redo();
    if (step) Enter(step->after);
    return step != nullptr;
}

}  // namespace sontaro
