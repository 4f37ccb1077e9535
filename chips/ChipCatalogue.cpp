#include "chips/ChipCatalogue.hpp"

#include <algorithm>
#include <cctype>
#include <stdexcept>

#include "chips/NumberText.hpp"
#include "chips/ToolError.hpp"
#include "simulation/ChipFamilies.hpp"
#include "simulation/Services.hpp"

namespace chips {

using simulation::ChipFamilies;
using simulation::Register;
using Space = RegisterAddress::Space;

namespace {

std::string normalised(std::string const& name) {
    std::string text;
    for (char const character : name) {
        if (character != ' ' && character != '-' && character != '_') {
            text += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
        }
    }
    return text;
}

ToolError refusal(std::string const& location, std::string const& reason) {
    return {ExitStatus::usage, "\"" + location + "\": " + reason};
}

Register const* registerOf(simulation::UnitIdentity const& unit, std::string const& name) {
    for (auto const& [address, description] : unit.registers.getRegisters()) {
        if (ChipCatalogue::isSameName(description.getName(), name)) {
            return &description;
        }
    }
    return nullptr;
}

} // namespace

/// A chip without a board, for its tables.
struct ChipCatalogue::Chip {
    explicit Chip(std::string const& model) {
        ChipFamilies::Family const* const family = ChipFamilies::find(model);
        if (family == nullptr) {
            throw std::out_of_range("no model of a \"" + model + "\"");
        }
        chip = family->create(services, 0, {});
    }

    simulation::Services services;
    std::unique_ptr<simulation::SimulatedChip> chip;
};

ChipCatalogue::ChipCatalogue(std::string const& model) : _model(model), _chip(std::make_unique<Chip>(model)) {
    for (simulation::RegisterFile const* const unit : _chip->chip->getTestSide().getUnits()) {
        _units.push_back(&unit->getIdentity());
    }
}

ChipCatalogue::~ChipCatalogue() = default;

RegisterLocation ChipCatalogue::at(simulation::UnitKind kind, unsigned number, unsigned address) const {
    return locate({_chip->chip->getTestSide().getUnit(kind, number).getIdentity().place, address});
}

RegisterLocation ChipCatalogue::locate(RegisterAddress const& address) const {
    RegisterLocation location{address, address.getUnitText(), address.getNumberText(), nullptr};
    if (Unit const* const unit = findUnit(address)) {
        location.unit = unit->unit;
        location.description = unit->registers.find(address.address);
    }
    if (location.description != nullptr) {
        location.name = location.description->getName();
    }
    return location;
}

RegisterLocation ChipCatalogue::find(std::string const& text, bool physOnly) const {
    std::string const location = expand(text);
    std::size_t const slash = location.find('/');
    if (slash == std::string::npos || slash == 0 || slash + 1 == location.size()) {
        throw refusal(text, "not of the form UNIT/REGISTER");
    }
    RegisterAddress address = parseUnit(location.substr(0, slash), physOnly, text);
    std::string const name = location.substr(slash + 1);
    Unit const* const unit = findUnit(address);
    if (auto const number = NumberText::parse(name)) {
        address.address = *number;
        if (!address.isInRange()) {
            throw refusal(text, "there is no register " + name);
        }
    } else if (Register const* const found = unit == nullptr ? nullptr : registerOf(*unit, name)) {
        address.address = found->getAddress();
    } else {
        throw refusal(text, (unit == nullptr ? "the unit" : unit->unit) + " of a " + _model +
                                " has no register \"" + name + "\"");
    }
    return locate(address);
}

std::vector<RegisterLocation> ChipCatalogue::getAll() const {
    std::vector<RegisterLocation> all;
    for (Unit const* const unit : _units) {
        for (auto const& [number, description] : unit->registers.getRegisters()) {
            all.push_back(locate({unit->place, number}));
        }
    }
    return all;
}

bool ChipCatalogue::isSameName(std::string const& first, std::string const& second) {
    return normalised(first) == normalised(second);
}

/// That of ports, which all chips begin with.
Space ChipCatalogue::getSpace() const {
    return _units.front()->place.space;
}

// BLOCK.SUB-BLOCK.ADDRESS is BLOCK.SUB-BLOCK/ADDRESS.
std::string ChipCatalogue::expand(std::string const& text) const {
    bool const hasTwoDots = std::count(text.begin(), text.end(), '.') == 2;
    std::string location = text;
    if (getSpace() == Space::block && hasTwoDots && text.find('/') == std::string::npos) {
        location[text.rfind('.')] = '/';
    }
    return location;
}

RegisterAddress ChipCatalogue::parseUnit(std::string const& text, bool physOnly,
                                         std::string const& location) const {
    RegisterAddress address;
    bool isKnown = parseNumber(text, physOnly, address);
    for (auto unit = _units.begin(); !isKnown && unit != _units.end(); ++unit) {
        isKnown = isSameName((*unit)->unit, text);
        address = {(*unit)->place, 0};
    }
    if (!isKnown || !address.isUnitInRange()) {
        throw refusal(location, "a " + _model + " has no unit \"" + text + "\"");
    }
    if (physOnly && address.space != Space::phy) {
        throw refusal(location, "\"" + text + "\" is not a PHY");
    }
    return address;
}

bool ChipCatalogue::parseNumber(std::string const& text, bool physOnly, RegisterAddress& address) const {
    if (getSpace() == Space::block && !physOnly) {
        std::size_t const dot = text.find('.');
        auto const block = NumberText::parse(text.substr(0, dot));
        auto const subBlock = NumberText::parse(dot == std::string::npos ? "" : text.substr(dot + 1));
        address = {{Space::block, block.value_or(0), subBlock.value_or(0)}, 0};
        return block && subBlock;
    }
    auto const number = NumberText::parse(text);
    address = {{physOnly ? Space::phy : Space::device, 0, number.value_or(0)}, 0};
    return number.has_value();
}

ChipCatalogue::Unit const* ChipCatalogue::findUnit(simulation::UnitPlace const& place) const {
    auto const found = std::find_if(_units.begin(), _units.end(), [&](Unit const* unit) {
        return RegisterAddress{unit->place, 0}.isSameUnit(place);
    });
    return found == _units.end() ? nullptr : *found;
}

} // namespace chips
