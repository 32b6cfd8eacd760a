// The settings of the text that a player draws over its video.
#pragma once

#include <array>
#include <cstdint>

#include "settings/record_schema.h"
#include "settings/settings_document.h"

namespace sontaro {

/// Most bytes of a text line in the legacy code page.
inline constexpr std::size_t kLongestOsdLine = 140;

/// The settings. Positions and sizes are fractions of the screen. What they are at first, the
/// table of the document says.
struct OsdRecord {
    bool enabled = false;
    std::uint32_t backgroundColour = 0, textColour = 0;
    std::uint32_t transparency = 0;  ///< per cent
    std::uint32_t displayTime = 0;   ///< seconds; 0: always
    double left = 0, top = 0, width = 0, height = 0;
    std::uint32_t backgroundCorner = 0, speed = 0;  ///< what they mean is the player's affair
    TextList lines;                                 ///< as many as the player has
    OtherKeys others = {};
};

/// The document around them: {"data": [{...}]}.
struct OsdDocument {
    std::array<OsdRecord, 1> data;
    OtherKeys others = {};
};

/// The settings of one player. What the user does not edit stays as it was read, out of range or
/// not.
class OsdSettings : public SettingsDocument {
   public:
    OsdSettings();

    /// A document without settings, and no text at all, are of a player that has none: they change
    /// nothing. Neither does what is refused.
    [[nodiscard]] Status TakeReply(std::string_view text) override;
    [[nodiscard]] Status TakeFile(std::string_view text) override;
    [[nodiscard]] std::string Write() const override;
    [[nodiscard]] SettingsRows Rows() const override;
    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit) override;
    [[nodiscard]] std::shared_ptr<const SettingsDocument> Keep() const override {
        return std::make_shared<OsdSettings>(*this);
    }
    void PutBack(const SettingsDocument& kept) override {
        document_ = dynamic_cast<const OsdSettings&>(kept).document_;
    }
    [[nodiscard]] bool HoldsDefaults() const override { return holdsDefaults_; }
    /// Too long a line must not be sent.
    [[nodiscard]] std::optional<LocalText> RefusalToSend() const override;

   private:
    [[nodiscard]] Status Take(std::string_view text, Source source);

    OsdDocument document_;
    bool holdsDefaults_ = true;  // as long as no player has sent any settings
};

}  // namespace sontaro
