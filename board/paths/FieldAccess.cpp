#include "board/paths/FieldAccess.hpp"

#include <stdexcept>

namespace board {

FieldAccess::Place FieldAccess::find(std::string const& unit, std::string const& name,
                                     std::string const& field) const {
    chips::RegisterLocation const location = _catalogue.find(unit + "/" + name);
    if (location.description != nullptr) {
        for (simulation::Field const& candidate : location.description->getFields()) {
            if (candidate.name == field) {
                return {location.address.address, candidate};
            }
        }
    }
    throw std::out_of_range("no field " + describe(unit, name, field));
}

std::uint32_t FieldAccess::get(std::string const& unit, std::string const& name,
                               std::string const& field) const {
    Place const place = find(unit, name, field);
    return place.field.get(_chip.peek(unit, place.address));
}

FieldAccess::Undo FieldAccess::set(std::string const& unit, std::string const& name, std::string const& field,
                                   std::uint32_t value) const {
    Place const place = find(unit, name, field);
    std::uint32_t const before = _chip.peek(unit, place.address);
    _chip.poke(unit, place.address, (before & ~place.field.getMask()) | place.field.placed(value));
    return [&chip = _chip, unit, address = place.address, before] { chip.poke(unit, address, before); };
}

} // namespace board
