#include "board/paths/ChipEvidence.hpp"

#include <fmt/format.h>

#include <stdexcept>

#include "board/Wording.hpp"
#include "board/paths/MarvellEvidence.hpp"
#include "board/paths/VitesseEvidence.hpp"

namespace board {

std::unique_ptr<ChipEvidence> ChipEvidence::of(simulation::SimulatedBoard& board, unsigned switchId,
                                               std::string const& model, Question const& question) {
    if (model == "88e6096") {
        return std::make_unique<MarvellEvidence>(board.getMarvell(switchId), model, question);
    }
    if (model == "vsc7390") {
        return std::make_unique<VitesseEvidence>(board.getVitesse(switchId), model, question);
    }
    throw std::out_of_range("no rules for a " + model);
}

std::string ChipEvidence::unitOf(Row const& row) const {
    if (row.side == Side::chip) {
        return row.unit;
    }
    return "port " + std::to_string(row.side == Side::from ? _question.from : _question.to);
}

std::string ChipEvidence::nameOf(Row const& row) const {
    std::string const name = row.name;
    return name.back() == '_' ? name + std::to_string(_question.from) : name;
}

ChipEvidence::Fact ChipEvidence::factOf(Row const& row) const {
    std::string const unit = unitOf(row);
    std::string const name = nameOf(row);
    return {FieldAccess::describe(unit, name, row.field),
            fieldValue(row.field, _fields.get(unit, name, row.field))};
}

ChipEvidence::Change ChipEvidence::changeOf(Row const& row, std::uint32_t value) const {
    std::string const unit = unitOf(row);
    std::string const name = nameOf(row);
    return {FieldAccess::describe(unit, name, row.field) + "=" + fieldValue(row.field, value),
            [this, unit, name, field = row.field, value] { return _fields.set(unit, name, field, value); }};
}

ChipEvidence::Change ChipEvidence::additionOf(Row const& row, std::uint32_t ports) const {
    return changeOf(row, _fields.get(unitOf(row), nameOf(row), row.field) | ports);
}

} // namespace board
