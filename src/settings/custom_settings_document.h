// The settings that a player describes itself, as a settings dialog holds them.
#pragma once

#include "settings/custom_settings.h"
#include "settings/settings_document.h"

namespace sontaro {

class CustomSettings : public SettingsDocument {
   public:
    /// False when the reply has no setting: nothing is held then, for an empty document must never
    /// be sent to a player.
    [[nodiscard]] bool TakeReply(std::string_view text) override;
    [[nodiscard]] bool TakeFile(std::string_view text) override;
    [[nodiscard]] std::string Write() const override { return settings_.Serialise(); }
    [[nodiscard]] SettingsRows Rows() const override { return settings_.BuildGrid(); }
    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit) override;

   private:
    CCustomSettingAnalysor settings_;
};

}  // namespace sontaro
