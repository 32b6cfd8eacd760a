// The player control protocol as a dialog holds it.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "playercontrol/player_control_document.h"
#include "settings/settings_document.h"

namespace sontaro {

/// The number by which a player or a type is known, whatever its place.
using ElementId = std::uint32_t;

/// A player, or a type of one, as it stands in the keys of rows and groups.
struct ControlElement {
    ElementId player = 0;
    std::optional<ElementId> type = {};

    bool operator==(const ControlElement&) const = default;
};

/// The key of an element's group: "Players/0", "Players/0/VideoType/3".
[[nodiscard]] std::string KeyOf(const ControlElement& element);
/// The element that a key is of, be it a group's or a row's; none when it is of none.
[[nodiscard]] std::optional<ControlElement> ElementOf(std::string_view key);

/// Rows are those of all players; grids show `RowsOf` one. To add and to delete are edits as well,
/// which can be done again to another document.
class PlayerControlSettings : public SettingsDocument {
   public:
    /// What the player holds keeps its elements' numbers, place by place.
    [[nodiscard]] Status TakeReply(std::string_view text) override;
    /// A file that holds something, but no players, is another document's.
    [[nodiscard]] Status TakeFile(std::string_view text) override;
    [[nodiscard]] std::string Write() const override { return PlayerControlText(model_); }
    [[nodiscard]] SettingsRows Rows() const override;
    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit) override;
    [[nodiscard]] std::shared_ptr<const SettingsDocument> Keep() const override {
        return std::make_shared<PlayerControlSettings>(*this);
    }
    /// Numbers that were given meanwhile are not given again.
    void PutBack(const SettingsDocument& kept) override {
        model_ = dynamic_cast<const PlayerControlSettings&>(kept).model_;
    }
    /// What is deleted is added again, with the texts of its rows.
    [[nodiscard]] std::vector<SettingsEdit> Reversal(const SettingsEdit& edit) const override;

    [[nodiscard]] const PlayerControlModel& Model() const { return model_; }
    /// The rows of one player; without it those of an empty one, which cannot be edited.
    [[nodiscard]] SettingsRows RowsOf(std::optional<ElementId> player) const;

    // Edits that add or delete. What is new gets the number in the edit's key.

    [[nodiscard]] SettingsEdit NewPlayer();
    /// `name` is cut to what a type's name may have.
    [[nodiscard]] SettingsEdit NewType(ElementId player, std::string_view name);
    [[nodiscard]] static SettingsEdit Without(const ControlElement& element);

    /// What the player holds, by the keys of rows.
    void ShowHeld(const std::map<std::string, std::string>& values);
    /// How many additions had no room when they were done again, since the last call.
    [[nodiscard]] int TakeDropped() { return std::exchange(dropped_, 0); }

   private:
    using Held = std::map<ElementId, std::set<ElementId>>;

    template <class Record>
    void Renumber(Elements<Record>& elements, const std::vector<ElementId>& held);
    [[nodiscard]] EditAnswer Add(const ControlElement& element, const std::string& name);
    [[nodiscard]] EditAnswer Delete(const ControlElement& element);

    PlayerControlModel model_;
    Held held_;  // the numbers of players, each with those of its types
    ElementId next_ = Elements<ControlledPlayer>::kFirstInserted;
    int dropped_ = 0;
};

}  // namespace sontaro
