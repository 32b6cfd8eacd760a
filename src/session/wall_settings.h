// The configuration of a video wall as rows of settings.
#pragma once

#include "screensplit/split_configuration.h"
#include "settings/settings_document.h"

namespace sontaro {

/// The document that every player of a wall holds. Its screens belong together and are laid out by
/// the wizard: their rows are there to be compared. Those of the advanced settings may be edited.
class WallSettings : public SettingsDocument {
   public:
    [[nodiscard]] Status TakeReply(std::string_view text) override { return Take(text); }
    [[nodiscard]] Status TakeFile(std::string_view text) override { return Take(text); }
    [[nodiscard]] std::string Write() const override;
    [[nodiscard]] SettingsRows Rows() const override;
    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit) override;
    [[nodiscard]] std::shared_ptr<const SettingsDocument> Keep() const override {
        return std::make_shared<WallSettings>(*this);
    }
    void PutBack(const SettingsDocument& kept) override {
        *this = dynamic_cast<const WallSettings&>(kept);
    }
    [[nodiscard]] bool HasSettings() const override { return configuration_.has_value(); }

   private:
    [[nodiscard]] Status Take(std::string_view text);

    std::optional<SplitConfiguration> configuration_;
    CustomEntries advanced_;  // with what was edited
};

}  // namespace sontaro
