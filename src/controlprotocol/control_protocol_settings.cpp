#include "controlprotocol/control_protocol_settings.h"

#include <iterator>

namespace sontaro {

Status ControlProtocolSettings::Take(std::string_view text, Source source) {
    const Result<int> sections = ReadControlProtocol(text, model_, source);
    if (!sections) return Error{sections.reason()};
    if (*sections == 0) return Error{"it has no section of a control protocol"};
    return Done{};
}

SettingsRows ControlProtocolSettings::Rows() const {
    SettingsRows rows;
    ControlProtocolGrids grids = Grids();
    for (SettingsRows& grid : grids)
        rows.insert(rows.end(), std::move_iterator(grid.begin()), std::move_iterator(grid.end()));
    return rows;
}

}  // namespace sontaro
