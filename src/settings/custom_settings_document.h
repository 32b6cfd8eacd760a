// The settings that a player describes itself, as a settings dialog holds them.
#pragma once

#include "settings/custom_settings.h"
#include "settings/settings_document.h"

namespace sontaro {

class CustomSettings : public SettingsDocument {
   public:
    /// Of no use without a setting: an empty document must never be sent to a player.
    [[nodiscard]] Status TakeReply(std::string_view text) override { return Take(text); }
    [[nodiscard]] Status TakeFile(std::string_view text) override { return Take(text); }
    [[nodiscard]] std::string Write() const override { return settings_.Serialise(); }
    [[nodiscard]] SettingsRows Rows() const override { return settings_.BuildGrid(); }
    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit) override;
    [[nodiscard]] std::shared_ptr<const SettingsDocument> Keep() const override {
        auto kept = std::make_shared<CustomSettings>();
        kept->settings_ = settings_.Copy();
        return kept;
    }
    void PutBack(const SettingsDocument& kept) override {
        settings_ = dynamic_cast<const CustomSettings&>(kept).settings_.Copy();
    }
    [[nodiscard]] std::vector<std::string> Keys() const override;
    [[nodiscard]] bool HasSettings() const override { return settings_.HasItems(); }

   private:
    [[nodiscard]] Status Take(std::string_view text);
    EditAnswer EditIn(const CCustomSettingAnalysor::Group& group, int index,
                      const std::string& prefix, const SettingsEdit& edit);

    CCustomSettingAnalysor settings_;
};

}  // namespace sontaro
