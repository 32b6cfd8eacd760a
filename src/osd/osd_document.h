// The settings of the text that a player draws over its video.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/settings_document.h"

namespace sontaro {

/// The colour that leaves the choice to the player; every other one is 0x00BBGGRR.
inline constexpr std::uint32_t kOsdDefaultColour = 0xFFFFFFFF;

/// Most bytes of a text line in the legacy code page.
inline constexpr std::size_t kLongestOsdLine = 140;

/// The settings. Positions and sizes are fractions of the screen.
struct OsdRecord {
    bool enabled = false;
    std::uint32_t backgroundColour = kOsdDefaultColour;
    std::uint32_t textColour = kOsdDefaultColour;
    std::uint32_t transparency = 0;  ///< per cent
    std::uint32_t displayTime = 0;   ///< seconds; 0: always
    double left = 0;
    double top = 0;
    double width = 1;
    double height = 1;
    std::uint32_t backgroundCorner = 0;  ///< what it means is the player's affair; so is `speed`
    std::uint32_t speed = 0;
    std::vector<std::string> lines;  ///< as many as the player has
};

/// The document around them: {"data": [{...}]}. A key that is missing or of another type leaves
/// the setting as it is, and so does an element of the lines that is no text. Keys that nobody
/// here knows are kept and written back. What the user does not edit stays as it was read, out of
/// range or not.
class OsdSettings : public SettingsDocument {
   public:
    /// A player without settings sends nothing, or a document without an element: what is shown
    /// stays. Changes nothing when false.
    [[nodiscard]] bool TakeReply(std::string_view text) override;
    [[nodiscard]] bool TakeFile(std::string_view text) override { return Take(text); }
    [[nodiscard]] std::string Write() const override;
    [[nodiscard]] SettingsRows Rows() const override;
    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit) override;
    [[nodiscard]] bool HoldsDefaults() const override { return holdsDefaults_; }
    /// Too long a line must not be sent.
    [[nodiscard]] std::optional<LocalText> RefusalToSend() const override;

   private:
    [[nodiscard]] bool Take(std::string_view text);

    OsdRecord settings_;
    bool holdsDefaults_ = true;
    Json::Value read_ = Json::Value(Json::objectValue);  // as it came, unknown keys included
};

}  // namespace sontaro
