#include "controlprotocol/control_protocol_settings.h"

#include <iterator>

namespace sontaro {

bool ControlProtocolSettings::TakeFile(std::string_view text) {
    return HoldsControlProtocol(text) && ReadControlProtocol(text, model_);
}

SettingsRows ControlProtocolSettings::Rows() const {
    SettingsRows rows;
    ControlProtocolGrids grids = Grids();
    for (SettingsRows& grid : grids)
        rows.insert(rows.end(), std::move_iterator(grid.begin()), std::move_iterator(grid.end()));
    return rows;
}

}  // namespace sontaro
