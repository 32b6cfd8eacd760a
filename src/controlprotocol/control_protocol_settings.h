// The control protocol as a dialog holds it.
#pragma once

#include "controlprotocol/control_protocol_rows.h"
#include "settings/settings_document.h"

namespace sontaro {

/// A document is of use when it has at least one section of the control protocol.
class ControlProtocolSettings : public SettingsDocument {
   public:
    [[nodiscard]] Status TakeReply(std::string_view text) override {
        return Take(text, Source::kPlayer);
    }
    [[nodiscard]] Status TakeFile(std::string_view text) override {
        return Take(text, Source::kFile);
    }
    [[nodiscard]] std::string Write() const override { return ControlProtocolText(model_); }
    /// The rows of all grids together.
    [[nodiscard]] SettingsRows Rows() const override;
    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit) override {
        return EditControlProtocol(model_, edit);
    }
    [[nodiscard]] std::shared_ptr<const SettingsDocument> Keep() const override {
        return std::make_shared<ControlProtocolSettings>(*this);
    }
    void PutBack(const SettingsDocument& kept) override {
        model_ = dynamic_cast<const ControlProtocolSettings&>(kept).model_;
    }

    [[nodiscard]] ControlProtocolGrids Grids() const { return ControlProtocolRows(model_); }

   private:
    [[nodiscard]] Status Take(std::string_view text, Source source);

    mutable ControlProtocolModel model_;  // showing it clamps its choices
};

}  // namespace sontaro
