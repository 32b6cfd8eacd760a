#include "widgets/icons.h"

#include <wx/icon.h>
#include <wx/settings.h>

#include <algorithm>

#include "widgets/icon_data.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

std::string SvgNamed(const std::string& name) {
    const auto* icon = std::find_if(std::begin(kIconData), std::end(kIconData),
                                    [&](const IconData& data) { return name == data.name; });
    return icon == std::end(kIconData) ? "" : icon->svg;
}

void Replace(std::string& text, const std::string& what, const std::string& with) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at))
        text.replace(at, what.size(), with);
}

wxBitmapBundle FromSvg(const std::string& svg, int size) {
    return svg.empty() ? wxBitmapBundle()
                       : wxBitmapBundle::FromSVG(svg.c_str(), wxSize(size, size));
}

}  // namespace

wxBitmapBundle LineIcon(const std::string& name, int size) {
    std::string svg = SvgNamed(name);
    const wxColour text = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT);
    Replace(svg, "currentColor", FromWx(text.GetAsString(wxC2S_HTML_SYNTAX)));
    return FromSvg(svg, size);
}

wxBitmapBundle ApplicationPicture(int size) { return FromSvg(SvgNamed("sontaro"), size); }

wxIconBundle ApplicationIcons() {
    wxIconBundle icons;
    for (int size : {16, 24, 32, 48, 64, 128}) {
        wxIcon icon;
        icon.CopyFromBitmap(ApplicationPicture(size).GetBitmap(wxSize(size, size)));
        icons.AddIcon(icon);
    }
    return icons;
}

}  // namespace sontaro
