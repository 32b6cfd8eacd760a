// How the picture of a video wall looks.
#pragma once

#include <wx/graphics.h>
#include <wx/window.h>

#include "screensplit/wall_frame.h"

namespace sontaro {

/// A tile on its way.
struct WallGhost {
    std::string text;    ///< which one
    WallDrop drop = {};  ///< where it would go
    wxPoint at = {};     ///< the pointer
};

/// What is to be seen besides the wall itself.
struct WallLook {
    WallSpot chosen = {};
    std::optional<WallGhost> ghost = {};
    bool editable = true;
};

/// Draws in the system's colours of the moment.
class WallDrawing {
   public:
    /// `window` gives the font and the size; it outlives this object.
    explicit WallDrawing(wxWindow& window) : window_(window) {}

    /// The window's room for a wall that lies in that direction.
    [[nodiscard]] WallSpace Space(SplitDirection direction) const;
    /// Size in which a wall is still to be read.
    [[nodiscard]] wxSize LeastSize() const;
    /// All but the ground of a picture without a tile, where something is said in place of a wall.
    void Draw(wxGraphicsContext& canvas, const WallPicture& picture, const WallLook& look) const;

   private:
    wxWindow& window_;
};

}  // namespace sontaro
