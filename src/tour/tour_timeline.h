// The tour's station in the timeline.
#pragma once

#include "tour/tour_steps.h"

namespace sontaro {

/// Reads the timeline of the first player, adds a command, tries and edits it, drags it in the
/// picture of time, reads what the checks find, adds one by its name, changes, copies and merges
/// many at once, undoes, keeps the timeline in a file, and uploads it.
class TourTimeline : public TourSteps {
   public:
    using TourSteps::TourSteps;

    void Write();

   private:
    static constexpr int kNodes = 12;  // that a player comes with

    void Read();
    void AddNode();
    void TestNode();
    void EditNode();
    void DragInPicture();
    void ReadChecks();
    void DuplicateAndUndo();
    void KeepInFile();
    void Upload();

    // What stands in a file of its own.
    void AddByName();
    void ChangeTicked();
    void CopyVideo();
    void MergeFile();
};

}  // namespace sontaro
