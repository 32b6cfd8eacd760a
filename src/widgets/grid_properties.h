// The property of a property grid that stands for a row of settings.
#pragma once

#include <wx/propgrid/property.h>

#include <memory>
#include <string>

#include "base/settings_rows.h"

namespace sontaro {

/// The row's name, marked where there is a caution about its value.
[[nodiscard]] wxString LabelOf(const SettingsRow& row, const std::string& caution);

/// A new property for `row`, with its value, choices and help; its name is the row's key.
[[nodiscard]] std::unique_ptr<wxPGProperty> MakeProperty(const SettingsRow& row);

/// The row's text for a value of its property.
[[nodiscard]] std::string RowTextOf(const wxPGProperty& property, const SettingsRow& row,
                                    const wxVariant& value);

/// The value with which the row's property shows `text`; a choice is offered from then on.
[[nodiscard]] wxVariant RowValueOf(wxPGProperty& property, const SettingsRow& row,
                                   const std::string& text);

/// Whether a value of a colour row asks for a colour that is not in its list.
[[nodiscard]] bool IsOtherColour(const SettingsRow& row, const wxVariant& value);

}  // namespace sontaro
