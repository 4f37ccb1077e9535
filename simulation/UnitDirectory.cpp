#include "simulation/UnitDirectory.hpp"

#include <algorithm>

namespace simulation {

void UnitDirectory::add(RegisterFile& unit) {
    _units.push_back(&unit);
    _places.emplace(unit.getIdentity().place, &unit);
}

RegisterFile* UnitDirectory::find(UnitKind kind, unsigned number) const {
    return findIf([&](UnitIdentity const& unit) { return unit.kind == kind && unit.number == number; });
}

RegisterFile* UnitDirectory::find(std::string const& name) const {
    return findIf([&](UnitIdentity const& unit) { return unit.unit == name; });
}

RegisterFile* UnitDirectory::find(UnitPlace const& place) const {
    auto const found = _places.find(place);
    return found == _places.end() ? nullptr : found->second;
}

template <typename Condition> RegisterFile* UnitDirectory::findIf(Condition condition) const {
    auto const found = std::find_if(_units.begin(), _units.end(),
                                    [&](RegisterFile const* unit) { return condition(unit->getIdentity()); });
    return found == _units.end() ? nullptr : *found;
}

} // namespace simulation
