// A timeline as rows of settings: a row for each command.
#pragma once

#include "settings/settings_document.h"
#include "timeline/timeline_document.h"

namespace sontaro {

/// A row is known by its video, its time and its port ("0/Film/Intro.mp4/1500 232:0"), so that it
/// is the same one in two timelines whatever else is in them. Its value is the command, which may
/// be edited; commands are not added or taken away by rows.
class TimelineSettings : public SettingsDocument {
   public:
    /// A player without commands may send nothing at all.
    [[nodiscard]] Status TakeReply(std::string_view text) override;
    [[nodiscard]] Status TakeFile(std::string_view text) override {
        return timeline_.Take(text, TimelineSource::kFile);
    }
    [[nodiscard]] std::string Write() const override { return timeline_.Write(); }
    [[nodiscard]] SettingsRows Rows() const override;
    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit) override;
    [[nodiscard]] std::shared_ptr<const SettingsDocument> Keep() const override;
    void PutBack(const SettingsDocument& kept) override;
    [[nodiscard]] std::optional<LocalText> RefusalToSend() const override;

   private:
    TimelineDocument timeline_;
};

}  // namespace sontaro
