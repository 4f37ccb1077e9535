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

std::string ChipEvidence::unitOf(Side side) const {
    return "port " + std::to_string(side == Side::from ? _question.from : _question.to.value());
}

std::string ChipEvidence::unitOf(Row const& row) const {
    return row.side == Side::chip ? row.unit : unitOf(row.side);
}

std::string ChipEvidence::nameOf(Row const& row) const {
    std::string const name = row.name;
    return name.back() == '_' ? name + std::to_string(_question.from) : name;
}

std::string ChipEvidence::describeBit(Side side, std::uint32_t ports) const {
    if (side == Side::chip || (side == Side::to && !_question.to)) {
        return "";
    }
    unsigned const port = side == Side::from ? _question.from : *_question.to;
    return fmt::format(", {} port {}", (ports >> port & 1) != 0 ? "with" : "without", port);
}

void ChipEvidence::addFacts(Row const& row, std::vector<Fact>& facts) const {
    std::string const name = nameOf(row);
    std::vector<std::string> units = {row.side == Side::to ? "" : unitOf(row)};
    if (row.side == Side::to) {
        units.clear();
        for (unsigned const exit : _question.exits) {
            units.push_back("port " + std::to_string(exit));
        }
    }
    for (std::string const& unit : units) {
        std::uint32_t const value = _fields.get(unit, name, row.field);
        facts.push_back({FieldAccess::describe(unit, name, row.field),
                         fieldValue(row.field, value) + describeBit(row.bit, value)});
    }
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
