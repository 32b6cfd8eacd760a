// The way of the control protocol from a player into a dialog and back, without the dialog.
#pragma once

#include <filesystem>

#include "controlprotocol/asking_chain.h"
#include "controlprotocol/control_protocol_settings.h"
#include "controlprotocol/serial_learner.h"
#include "controlprotocol/working_copy.h"
#include "exchange/keep_alive.h"

namespace sontaro {

/// What the procedure asks of its window.
class ControlProtocolView : public SettingsView {
   public:
    /// A row has changed by itself.
    virtual void ShowChange(const SettingsEdit& change) = 0;
    /// The video category, from 0, whose row is chosen and seen; none when none is.
    [[nodiscard]] virtual std::optional<int> ChosenCategory() const = 0;
    /// Whether the user is about to give a row of the categories another value.
    [[nodiscard]] virtual bool IsEditingCategory() const = 0;
};

/// Settings that are asked for in a chain, uploaded as the working copy holds them, and that learn
/// from the player's serial line as long as they keep the link alive. User-interface thread.
class ControlProtocolRun : private SettingsView {
   public:
    static constexpr std::chrono::milliseconds kLeavingTime{1000};

    /// `workingCopy` is the file that is uploaded; `view` and `prompts` outlive the run.
    ControlProtocolRun(ControlProtocolView& view, Prompts& prompts,
                       const ExchangeServices& exchange, Target player,
                       std::filesystem::path workingCopy,
                       ProtocolVariant variant = ProtocolVariant::kCurrent);

    /// What the settings dialogs have in common.
    [[nodiscard]] SettingsRun& Settings() { return settings_; }
    [[nodiscard]] const SettingsRun& Settings() const { return settings_; }

    /// The window is about to close: calls `left` when what was sent has had its time to leave.
    void Leave(std::function<void()> left);

    /// The user has edited a row. After a restart was asked for nothing can be changed.
    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit);
    /// Whether commands are to be learned from the serial line.
    void Learn(bool wanted);

    [[nodiscard]] ControlProtocolGrids Rows() const { return document_.Grids(); }
    [[nodiscard]] const AskingChain& Asking() const { return chain_; }
    [[nodiscard]] const SerialLineState& SerialLine() const { return line_; }

   private:
    void ShowRows() override;
    void ChooseRow(const std::string& key) override { view_.ChooseRow(key); }
    void ShowConfirmed() override { view_.ShowConfirmed(); }
    void StateChanged() override;

    [[nodiscard]] SettingsSteps Steps();
    void TakeUnasked(WindowMessage& message);
    void TakeSerialBytes(const SerialData& serial);

    ControlProtocolView& view_;
    ControlProtocolSettings document_;
    AskingChain chain_;
    WorkingCopy workingCopy_;
    SerialLearner learner_;
    SerialLineState line_;
    bool listens_ = false;
    SettingsRun settings_;
    KeepAlive keepAlive_;
    Timer leaving_;
};

}  // namespace sontaro
