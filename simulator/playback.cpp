#include "simulator/playback.h"

#include <algorithm>
#include <optional>

namespace sontaro::simulator {

namespace {

template <class Item>
const Item* At(const std::vector<Item>& items, int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= items.size()) return nullptr;
    return &items[static_cast<std::size_t>(index)];
}

template <class Item>
std::optional<int> IndexOf(const std::vector<Item>& items, const std::string& name) {
    const auto found = std::ranges::find(items, name, &Item::name);
    if (found == items.end()) return std::nullopt;
    return static_cast<int>(found - items.begin());
}

void PlayFromStart(PlayerState& state, bool usb, int folder, int video) {
    state.playingUsb = usb;
    state.folder = folder;
    state.video = video;
    state.position = {};
    state.playing = state.poweredOn;
}

bool PlayVideoIn(PlayerState& state, int folder, const std::string& name) {
    const VideoFolder* candidates = At(state.folders, folder);
    const auto video = candidates ? IndexOf(candidates->videos, name) : std::nullopt;
    if (video) PlayFromStart(state, false, folder, *video);
    return video.has_value();
}

/// A number from 0 to `count` - 1 that depends on the state alone, so that a run can be repeated.
int Draw(PlayerState& state, int count) {
    state.shuffle = state.shuffle * 1664525U + 1013904223U;
    return static_cast<int>((state.shuffle >> 16) % static_cast<unsigned>(count));
}

/// Plays the video `direction` places from the current one, the last being followed by the first.
bool Step(PlayerState& state, int direction) {
    const VideoFolder* folder = CurrentFolder(state);
    if (folder == nullptr || folder->videos.empty()) return false;
    const int count = static_cast<int>(folder->videos.size());
    const int next = (std::clamp(state.video, 0, count - 1) + direction + count) % count;
    PlayFromStart(state, state.playingUsb, state.folder, next);
    return true;
}

bool StepOnUsb(PlayerState& state, int direction) {
    if (state.playingUsb) return Step(state, direction);
    if (state.usb.videos.empty()) return false;
    PlayFromStart(state, true, state.folder, 0);
    return true;
}

bool StepAtRandom(PlayerState& state) {
    const bool anyFolder = state.playMode == Action::kAllRandom && !state.playingUsb;
    if (anyFolder && !state.folders.empty())
        state.folder = Draw(state, static_cast<int>(state.folders.size()));
    const VideoFolder* folder = CurrentFolder(state);
    if (folder == nullptr || folder->videos.empty()) return false;
    const int video = Draw(state, static_cast<int>(folder->videos.size()));
    PlayFromStart(state, state.playingUsb, state.folder, video);
    return true;
}

void SwitchPower(PlayerState& state, bool on) {
    state.poweredOn = on;
    state.playing = on;
}

/// Follows the current video, which has ended, by what the play mode has next. False: nothing.
bool Follow(PlayerState& state) {
    switch (state.playMode) {
        case Action::kFolderLoop: return Step(state, 1);
        case Action::kSingleLoop: return Step(state, 0);
        case Action::kFolderRandom:
        case Action::kAllRandom: return StepAtRandom(state);
        default: return false;
    }
}

}  // namespace

const VideoFolder* CurrentFolder(const PlayerState& state) {
    return state.playingUsb ? &state.usb : At(state.folders, state.folder);
}

const Video* CurrentVideo(const PlayerState& state) {
    const VideoFolder* folder = CurrentFolder(state);
    return folder ? At(folder->videos, state.video) : nullptr;
}

bool PlayFolder(PlayerState& state, const std::string& name) {
    const auto folder = IndexOf(state.folders, name);
    if (folder) PlayFromStart(state, false, *folder, 0);
    return folder.has_value();
}

bool PlayVideo(PlayerState& state, const std::string& name) {
    if (PlayVideoIn(state, state.folder, name)) return true;
    const int count = static_cast<int>(state.folders.size());
    for (int folder = 0; folder < count; ++folder)
        if (PlayVideoIn(state, folder, name)) return true;
    return false;
}

bool PlayUsbVideo(PlayerState& state, const std::string& name) {
    const auto video = IndexOf(state.usb.videos, name);
    if (video) PlayFromStart(state, true, state.folder, *video);
    return video.has_value();
}

bool Perform(PlayerState& state, Action action) {
    if (!state.poweredOn && action != Action::kPowerOn) return false;
    switch (action) {
        case Action::kFolderLoop:
        case Action::kSingleLoop:
        case Action::kSinglePlay:
        case Action::kFolderRandom:
        case Action::kAllRandom: state.playMode = action; return true;
        case Action::kPlay: state.playing = true; return true;
        case Action::kPause: state.playing = false; return true;
        case Action::kPrevious: return Step(state, -1);
        case Action::kNext: return Step(state, 1);
        case Action::kPowerOn: SwitchPower(state, true); return true;
        case Action::kPowerOff: SwitchPower(state, false); return true;
        case Action::kScreenEffect: state.screenEffect = !state.screenEffect; return true;
        case Action::kUsbPrevious: return StepOnUsb(state, -1);
        case Action::kUsbNext: return StepOnUsb(state, 1);
    }
    return false;
}

void Advance(PlayerState& state, std::chrono::microseconds elapsed) {
    if (!state.playing) return;
    state.position += elapsed;
    for (const Video* video = CurrentVideo(state); video != nullptr; video = CurrentVideo(state)) {
        const std::chrono::seconds duration(video->seconds);
        if (duration.count() <= 0 || state.position < duration) return;
        const auto surplus = state.position - duration;
        if (!Follow(state)) {
            state.position = duration;
            state.playing = false;
            return;
        }
        state.position = surplus;
    }
}

}  // namespace sontaro::simulator
