// A video wall on its way from the players to the players: shown, edited, undone.
#pragma once

#include <optional>

#include "base/settings_rows.h"
#include "base/undo_history.h"
#include "screensplit/split_configuration.h"
#include "screensplit/split_state.h"

namespace sontaro {

/// The players of a wall, what the user makes of their screens, and the document that goes to all
/// of them. User-interface thread.
class SplitDocument {
   public:
    using Series = UndoHistory<SplitStep>::Series;
    using Refusal = std::optional<LocalText>;

    /// Takes other players: everything begins anew, unless they have just the same screens.
    void SetDevices(std::vector<SplitDevice> devices);
    /// Takes the document that a player has sent. The wall stays as it is arranged, and so do
    /// advanced settings that were changed before; nothing before that can be undone.
    void SetConfiguration(SplitConfiguration configuration);
    /// There is none any more.
    void ForgetConfiguration();

    [[nodiscard]] const std::vector<SplitDevice>& Devices() const { return devices_; }
    [[nodiscard]] const std::vector<ScreenName>& Names() const { return names_; }
    /// The resolution of all outputs; none when they differ.
    [[nodiscard]] std::optional<SplitSize> Size() const;
    [[nodiscard]] bool HasConfiguration() const { return configuration_.has_value(); }
    [[nodiscard]] const SplitConfiguration& Configuration() const { return *configuration_; }

    [[nodiscard]] const SplitArrangement& Shown() const { return state_.shown; }
    [[nodiscard]] const SplitWall& Wall() const { return state_.wall; }
    /// What is shown as far as it can be applied: with the slots applied last where it uses a
    /// screen twice.
    [[nodiscard]] SplitArrangement Applicable() const;
    /// Whether any order has been applied, so that there are overlaps and zoom.
    [[nodiscard]] bool IsLaidOut() const { return state_.isLaidOut; }
    /// Whether what the slots and the direction say is laid out.
    [[nodiscard]] bool IsApplied() const {
        return state_.isLaidOut && state_.wall.arrangement == state_.shown;
    }
    /// Whether the screens that would be sent are those that the picture shows.
    [[nodiscard]] bool IsSettled() const { return state_.isAsFetched || IsApplied(); }
    /// Whether just the fetched document would be sent.
    [[nodiscard]] bool IsAsFetched() const;
    /// All screens as they would be sent, those in the wall first; empty before an order has been
    /// applied. Changes with the document.
    [[nodiscard]] const std::vector<SplitScreen>& Screens() const { return screens_; }
    /// The direction in which they lie.
    [[nodiscard]] SplitDirection Direction() const { return state_.wall.arrangement.direction; }
    /// How many of them are in the wall.
    [[nodiscard]] std::size_t WallLength() const;
    /// The document that goes to every player; only with a configuration.
    [[nodiscard]] std::string Write() const;

    void SetSlot(std::size_t slot, SplitSlot screen);
    void SetDirection(SplitDirection direction);
    /// Lays the screens out as slots and direction say, or says why not.
    [[nodiscard]] Refusal ApplyOrder();
    /// Puts a screen before the one that stands at `place` in the wall (the wall's length: behind
    /// the last one), whether it was in the wall or not, and applies that together with whatever
    /// of slots and direction can be applied.
    void PlaceScreen(std::size_t screen, std::size_t place);
    /// Takes a screen out of the wall, and applies that likewise.
    void DismissScreen(std::size_t screen);
    /// Gives a seam (counted from 0) an overlap in pixels, as far as it is possible. Changes of one
    /// series are undone together. False when that changes nothing.
    bool SetOverlap(std::size_t seam, std::int32_t pixels, Series series = 0);
    /// Gives all seams the same overlap.
    void SetAllOverlaps(std::int32_t pixels);
    void SetZoom(std::size_t screen, const SplitZoom& zoom);
    /// Takes an edit of an advanced setting or says why not.
    [[nodiscard]] EditAnswer EditAdvanced(const SettingsEdit& edit);
    /// Takes order, direction, overlaps and zoom, and advanced settings in place of those held if
    /// there are any, or says why not.
    [[nodiscard]] Refusal UseWall(const SplitWall& wall,
                                  std::optional<CustomEntries> advanced = {});
    /// The wall of these screens that a document tells; none when grids could not tell it without a
    /// change.
    [[nodiscard]] std::optional<SplitWall> WallIn(const SplitConfiguration& configuration) const;
    /// Takes the wall that the fetched document tells, or says why not.
    [[nodiscard]] Refusal TakeOverWall();
    /// Puts the fetched document back whole; only with one.
    void PutBackFetched();

    [[nodiscard]] const CustomEntries& Advanced() const { return *state_.advanced; }
    /// The same; another pointer once they have been changed.
    [[nodiscard]] std::shared_ptr<const CustomEntries> SharedAdvanced() const {
        return state_.advanced;
    }
    /// A number for a new series.
    [[nodiscard]] Series NewSeries() { return ++lastSeries_; }
    [[nodiscard]] bool CanUndo() const { return history_.CanUndo(); }
    [[nodiscard]] bool CanRedo() const { return history_.CanRedo(); }
    /// False when there is nothing to undo, or to do again.
    bool Undo();
    bool Redo();

   private:
    [[nodiscard]] std::optional<SplitWall> FetchedWall() const;
    [[nodiscard]] SplitState Editable() const;
    bool Do(SplitState state, Series series = 0);
    void Enter(SplitState state);
    void Arrange(SplitArrangement arrangement);
    [[nodiscard]] Json::Value ToJson() const;

    static constexpr std::size_t kMostUndoBytes = std::size_t{4} << 20;

    std::vector<SplitDevice> devices_;
    std::vector<ScreenName> names_;
    std::optional<SplitConfiguration> configuration_;
    CustomEntries changed_;  // by the user, in the configuration before
    SplitState state_;
    std::vector<SplitScreen> screens_;
    UndoHistory<SplitStep> history_{kMostUndoBytes};
    Series lastSeries_ = 0;
};

}  // namespace sontaro
