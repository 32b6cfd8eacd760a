#include "screensplit/wall_view.h"

namespace sontaro {

WallView::WallView(wxWindow* parent, SplitDocument&, std::function<void()>)
    : wxWindow(parent, wxID_ANY) {}

void WallView::ShowWall() { Refresh(); }

void WallView::SetEditable(bool editable) { Enable(editable); }

}  // namespace sontaro
