// The system's colours of the moment, and what lies between two of them.
#pragma once

#include <wx/settings.h>

namespace sontaro {

[[nodiscard]] inline wxColour SystemColour(wxSystemColour name) {
    return wxSystemSettings::GetColour(name);
}

/// `share` of one colour, from 0 to 1, in another.
[[nodiscard]] inline wxColour Mix(const wxColour& one, const wxColour& other, double share) {
    return {wxColour::AlphaBlend(one.Red(), other.Red(), share),
            wxColour::AlphaBlend(one.Green(), other.Green(), share),
            wxColour::AlphaBlend(one.Blue(), other.Blue(), share)};
}

}  // namespace sontaro
