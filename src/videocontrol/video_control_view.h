// What the remote control asks of its window.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace sontaro {

/// A button that sends its own caption. The player decides which exist and what they say.
struct VideoButton {
    int type;             ///< the number that the player knows it by
    const char* caption;  ///< until the player gives one; in one language only
};

// clang-format off
inline constexpr std::array<VideoButton, 14> kVideoButtons = {{
    {2, "类别循环"}, {3, "单曲循环"}, {4, "单曲播放"},  {5, "类别随机"},  {6, "全部随机"},
    {7, "播放"},     {8, "暂停"},     {9, "上一首"},    {10, "下一首"},   {11, "开机"},
    {12, "关机"},    {13, "屏幕特效"}, {200, "上一首"}, {201, "下一首"},
}};
// clang-format on

/// Texts are UTF-8. User-interface thread.
class VideoControlView {
   public:
    virtual ~VideoControlView() = default;
    /// Whether no box covers the window: under one, time stands still. The player's answers wait
    /// behind it, and every poll would add one more.
    [[nodiscard]] virtual bool IsInFront() const = 0;
    virtual void HideButtons() = 0;
    virtual void ShowButton(int type, const std::string& caption) = 0;
    /// Every caption of a reply has been given.
    virtual void ButtonsChanged() = 0;
    virtual void ShowPosition(int percent, const std::string& text) = 0;
    virtual void ShowTitle(const std::string& text) = 0;
    /// Sets the slider, 0 to 100, as if nobody had moved it.
    virtual void ShowVolume(int volume) = 0;
    virtual void ShowUsbLabel(const std::string& text) = 0;
    virtual void ShowUsbVideos(const std::vector<std::string>& names) = 0;
    virtual void OfferFolders(const std::vector<std::string>& names) = 0;
    virtual void OfferLayouts(const std::vector<std::string>& names) = 0;
    virtual void OfferVideos(const std::vector<std::string>& names) = 0;
    /// What the line tells has changed: the state, the connection, a trouble or a silence.
    virtual void StateChanged() = 0;
};

}  // namespace sontaro
