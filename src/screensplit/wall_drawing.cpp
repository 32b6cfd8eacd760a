#include "screensplit/wall_drawing.h"

#include "screensplit/wall_painter.h"
#include "widgets/fonts.h"
#include "widgets/wx_text.h"

namespace sontaro {

WallSpace WallDrawing::Space(SplitDirection direction) const {
    const double line = LineHeight(window_);
    const wxSize size = window_.GetClientSize();
    const auto dip = [this](int pixels) { return static_cast<double>(window_.FromDIP(pixels)); };
    const auto widthOf = [this](const wxString& text) {
        return static_cast<double>(window_.GetTextExtent(text).x);
    };
    WallSpace space;
    space.width = size.x;
    space.height = size.y;
    space.margin = dip(8);
    space.tray = 2 * line + space.margin;
    space.chip = dip(130);
    space.handle = dip(10);
    space.beside = direction == SplitDirection::kHorizontal ? line : widthOf("0000") + dip(16);
    space.caption = line + dip(4);
    space.title = widthOf(ToWx(kTrayTitle)) + dip(8);
    return space;
}

wxSize WallDrawing::LeastSize() const {
    constexpr int kLetters = 40;
    constexpr int kLines = 10;
    return {kLetters * LetterWidth(window_), kLines * LineHeight(window_)};
}

void WallDrawing::Draw(wxGraphicsContext& canvas, const WallPicture& picture,
                       const WallLook& look) const {
    const WallFrame frame(picture, Space(picture.Direction()));
    WallPainter(window_, canvas, picture, frame, look).Paint();
}

}  // namespace sontaro
