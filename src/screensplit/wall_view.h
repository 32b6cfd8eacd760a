// The picture of a video wall as a window.
#pragma once

#include <wx/control.h>

#include <functional>
#include <optional>

#include "screensplit/wall_drawing.h"

namespace sontaro {

inline constexpr int kWallView = 2727;

/// The picture of a video wall: screens as tiles to be dragged, seams whose overlap is dragged, the
/// tray of those not used. Arrows go from one to another, with Alt they move the chosen tile,
/// Delete puts it into the tray; + and - change the overlap of the chosen seam by one pixel, Page
/// Up and Page Down by ten, and so do Shift with + and - of the number pad and Shift with -. A drag
/// is one step to be undone, and so is a series of these keys; Escape takes a drag back.
/// User-interface thread.
class WallView : public wxControl {
   public:
    /// `document` outlives it. `changed` is called after the user has changed the document here.
    WallView(wxWindow* parent, SplitDocument& document, std::function<void()> changed);
    ~WallView() override;

    /// The document has changed: draws it anew; keeps the chosen tile or seam where it still
    /// exists. A change by others ends a drag. Called before anything else is drawn once the
    /// document has taken other devices.
    void ShowWall();
    /// While something is fetched or sent nothing can be changed here; a drag is taken back.
    void SetEditable(bool editable);

    /// Where things are at present.
    [[nodiscard]] WallFrame Frame() const;
    [[nodiscard]] const WallPicture& Picture() const { return picture_; }
    [[nodiscard]] const WallSpot& Chosen() const { return chosen_; }

   private:
    /// A tile that is held down by the mouse.
    struct Press {
        std::size_t screen = 0;
        TileDrag drag;
        std::optional<WallDrop> drop = {};
        wxPoint at = {};
    };
    /// A seam that is held down.
    struct Pull {
        std::size_t seam = 0;
        wxPoint from;
        double scale = 1;  // of the picture then
        std::optional<SeamDrag> drag = {};
        bool hasChanged = false;
    };

    void Paint();
    [[nodiscard]] wxString Message() const;
    void OnDown(const wxPoint& position);
    void OnMove(const wxPoint& position);
    void OnPull(Pull& pull, const wxPoint& position);
    void OnUp();
    void OnHover(const wxPoint& position);
    [[nodiscard]] bool HandleKey(const wxKeyEvent& event);
    [[nodiscard]] bool HandleEdit(int key, bool withShift);
    [[nodiscard]] bool HandleSign(const wxKeyEvent& event);

    void Choose(const WallSpot& spot);
    void ChooseSome();
    void Move(const WallSpot& spot, const std::optional<WallDrop>& drop);
    void Widen(std::int32_t pixels);
    void Change(const std::function<void()>& edit);
    void TakeBack();
    void EndGesture();
    [[nodiscard]] bool IsHeld() const { return press_ || pull_; }
    [[nodiscard]] bool MayEdit() const { return isEditable_ && document_.IsLaidOut(); }
    [[nodiscard]] WallSpot SpotAt(const wxPoint& position) const {
        return Frame().SpotAt(position.x, position.y);
    }

    SplitDocument& document_;
    const std::function<void()> changed_;
    const WallDrawing drawing_;
    WallPicture picture_;
    bool isEditable_ = true;
    bool isChanging_ = false;  // by the user, here
    WallSpot chosen_;
    std::optional<std::size_t> chosenScreen_;  // of a tile
    WallSpot hovered_;
    std::optional<Press> press_;
    std::optional<Pull> pull_;
    SplitDocument::Series series_ = 0;  // of keys; 0: the next one begins another
};

}  // namespace sontaro
