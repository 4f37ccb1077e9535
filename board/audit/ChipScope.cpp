#include "board/audit/ChipScope.hpp"

#include "chips/ChipKinds.hpp"

namespace board {

using simulation::AccessLog;

ChipScope::ChipScope(ModelBringUp& bringUp, unsigned switchId)
    : _switchId(switchId),
      _catalogue(bringUp.getModel(switchId)),
      _tables(chips::ChipKinds::get(_catalogue.getModel(), "audit").makeTables(_catalogue)) {
    std::string const chip = getChip();
    for (AccessLog::Entry const& entry : bringUp.getBoard().getLog().getEntries()) {
        if (entry.chip == chip) {
            _tables->take(entry);
            takeRegister(entry);
        }
    }
}

std::string ChipScope::getChip() const {
    return "switch " + std::to_string(_switchId);
}

void ChipScope::takeRegister(AccessLog::Entry const& entry) {
    simulation::UnitIdentity const& unit = *entry.identity;
    if (entry.kind != AccessLog::Kind::write || unit.kind == simulation::UnitKind::unknown ||
        !_seen.emplace(unit.place, entry.address).second) {
        return;
    }
    chips::RegisterLocation const location = _catalogue.locate({unit.place, entry.address});
    // What is at a number that nobody knows may change by being read.
    if (location.description != nullptr &&
        location.description->getKind() == simulation::Register::Kind::setting) {
        _registers.push_back(location);
    }
}

} // namespace board
