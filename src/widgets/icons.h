// Sontaro's own icons.
#pragma once

#include <wx/bmpbndl.h>
#include <wx/iconbndl.h>

#include <string>

namespace sontaro {

/// A line icon in the system's text colour; `name` is its file name in resources/icons without
/// extension, `size` its edge in device-independent pixels. Empty for an unknown name.
[[nodiscard]] wxBitmapBundle LineIcon(const std::string& name, int size);

/// The application's icon in the sizes that window managers ask for.
[[nodiscard]] wxIconBundle ApplicationIcons();

/// The application's icon as a picture of `size` device-independent pixels.
[[nodiscard]] wxBitmapBundle ApplicationPicture(int size);

}  // namespace sontaro
