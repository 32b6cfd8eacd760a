// A document of settings that a grid shows and a player keeps.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/local_text.h"
#include "base/result.h"
#include "base/settings_rows.h"

namespace sontaro {

/// What a settings dialog needs of its document. Texts are UTF-8. User-interface thread.
class SettingsDocument {
   public:
    virtual ~SettingsDocument() = default;

    /// Takes what a player has sent. Fails when it is of no use; the document is as it was then.
    [[nodiscard]] virtual Status TakeReply(std::string_view text) = 0;

    /// Takes what a file holds. Fails when it is of no use; the document is as it was then.
    [[nodiscard]] virtual Status TakeFile(std::string_view text) = 0;

    /// The whole document as players read it.
    [[nodiscard]] virtual std::string Write() const = 0;

    /// The rows that show the document, in its own order.
    [[nodiscard]] virtual SettingsRows Rows() const = 0;

    /// Takes over an edit of one of those rows, or says why not.
    [[nodiscard]] virtual EditAnswer Edit(const SettingsEdit& edit) = 0;

    /// A copy to be kept.
    [[nodiscard]] virtual std::shared_ptr<const SettingsDocument> Keep() const = 0;
    /// Holds again what it held when it was kept.
    virtual void PutBack(const SettingsDocument& kept) = 0;
    /// What undoes an edit that a document like this one is going to take; empty when it has no
    /// such row.
    [[nodiscard]] virtual std::vector<SettingsEdit> Reversal(const SettingsEdit& edit) const {
        std::vector<SettingsEdit> edits;
        VisitRows(Rows(), [&](const SettingsRow& row) {
            if (row.key == edit.key) edits.push_back({row.key, row.value});
        });
        return edits;
    }

    /// The keys by which the player knows its settings, sorted, where documents can differ in them:
    /// one that has others is not the player's.
    [[nodiscard]] virtual std::vector<std::string> Keys() const { return {}; }

    /// Whether there is anything to send.
    [[nodiscard]] virtual bool HasSettings() const { return true; }

    /// Whether the player had nothing of its own to send.
    [[nodiscard]] virtual bool HoldsDefaults() const { return false; }

    /// Why the document must not be sent as it stands; none when it may.
    [[nodiscard]] virtual std::optional<LocalText> RefusalToSend() const { return std::nullopt; }
};

}  // namespace sontaro
