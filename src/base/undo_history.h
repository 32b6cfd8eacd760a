// What was done, so that it can be undone and done again.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <utility>

namespace sontaro {

/// Something that was done to a document.
template <class Step>
concept UndoStep = std::movable<Step> && requires(Step& step, const Step& other) {
    /// Memory that it takes to keep.
    { other.Bytes() } -> std::convertible_to<std::size_t>;
    /// Becomes this step and then `other`, or says that it cannot.
    { step.Absorb(other) } -> std::same_as<bool>;
};

/// The steps of one document in their order. It knows when a step is to be undone or done again;
/// how, its owner knows. The thread of its owner.
template <UndoStep Step>
class UndoHistory {
   public:
    /// Steps of the same number, one after another, become one: the moves of a drag. 0: no other
    /// step belongs to it.
    using Series = std::uint32_t;
    /// Equal numbers mean an equal document.
    using State = std::uint64_t;

    /// Forgets the oldest steps beyond `mostBytes`, but never the latest one.
    explicit UndoHistory(std::size_t mostBytes) : mostBytes_(mostBytes) {}

    /// Takes a step that has just been done. What had been undone can no longer be done again.
    void Add(Step step, Series series = 0) {
        DropUndone();
        const bool joins = series != 0 && series == series_ && !steps_.empty();
        series_ = series;
        const std::size_t before = joins ? steps_.back().step.Bytes() : 0;
        if (joins && steps_.back().step.Absorb(step)) {
            bytes_ += steps_.back().step.Bytes() - before;
            steps_.back().state = ++lastState_;
        } else {
            bytes_ += step.Bytes();
            steps_.push_back({std::move(step), ++lastState_});
        }
        done_ = steps_.size();
        DropOldest();
    }

    [[nodiscard]] bool CanUndo() const { return done_ > 0; }
    [[nodiscard]] bool CanRedo() const { return done_ < steps_.size(); }

    /// The step to be undone now; absent when there is none.
    [[nodiscard]] Step* Undo() {
        series_ = 0;
        return CanUndo() ? &steps_[--done_].step : nullptr;
    }
    /// The step to be done again now; absent when there is none.
    [[nodiscard]] Step* Redo() {
        series_ = 0;
        return CanRedo() ? &steps_[done_++].step : nullptr;
    }

    /// The state that the document is in.
    [[nodiscard]] State Now() const { return done_ > 0 ? steps_[done_ - 1].state : oldest_; }

    /// The document is another one: nothing leads back.
    void Clear() {
        steps_.clear();
        done_ = bytes_ = series_ = 0;
        oldest_ = ++lastState_;
    }

   private:
    struct Done {
        Step step;
        State state;  // behind it
    };

    void DropUndone() {
        for (; steps_.size() > done_; steps_.pop_back()) bytes_ -= steps_.back().step.Bytes();
    }
    void DropOldest() {
        for (; bytes_ > mostBytes_ && steps_.size() > 1; --done_) {
            bytes_ -= steps_.front().step.Bytes();
            oldest_ = steps_.front().state;
            steps_.pop_front();
        }
    }

    const std::size_t mostBytes_;
    std::deque<Done> steps_;
    std::size_t done_ = 0;  // of them; the others have been undone
    std::size_t bytes_ = 0;
    Series series_ = 0;  // that the latest step belongs to
    State oldest_ = 0;   // before the first step
    State lastState_ = 0;
};

}  // namespace sontaro
