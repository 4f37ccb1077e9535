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

/// Where the units of a name are: the first of them; the rest follow.
struct Place {
    char const* unit;
    Space space;
    unsigned block;
    unsigned first;
};

constexpr Place placesOf88e6096[] = {
    {"port", Space::device, 0, 0x10},
    {"global", Space::device, 0, 0x1A},
    {"phy", Space::phy, 0, 0},
};

constexpr unsigned portsInLowBlock = 16;
constexpr unsigned lowPortBlock = 1;
constexpr unsigned highPortBlock = 6;
constexpr Place placesOfVsc7390[] = {
    {"port", Space::block, lowPortBlock, 0},
    {"analyser", Space::block, 2, 0},
    {"mii", Space::block, 3, 0},
    {"memory", Space::block, 3, 2},
    {"capture", Space::block, 4, 0},
    {"arbiter", Space::block, 5, 0},
    {"system", Space::block, 7, 0},
    {"phy", Space::phy, 0, 0},
};

template <std::size_t size>
RegisterAddress placeIn(Place const (&places)[size], std::string const& word, unsigned number) {
    for (Place const& place : places) {
        if (word == place.unit) {
            return {place.space, place.block, place.first + number, 0};
        }
    }
    throw std::logic_error("a unit of the chip is nowhere: " + word);
}

RegisterAddress startOf(std::string const& unit, bool isVitesse) {
    std::size_t const blank = unit.find(' ');
    std::string const word = unit.substr(0, blank);
    unsigned const number =
        blank == std::string::npos ? 0 : NumberText::parse(unit.substr(blank + 1)).value();
    if (!isVitesse) {
        return placeIn(placesOf88e6096, word, number);
    }
    RegisterAddress start = placeIn(placesOfVsc7390, word, number);
    if (start.block == lowPortBlock && start.unit >= portsInLowBlock) {
        start.block = highPortBlock;
        start.unit -= portsInLowBlock;
    }
    return start;
}

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
    simulation::ChipTestSide const& chip = _chip->chip->getTestSide();
    for (simulation::RegisterFile const* const unit : chip.getUnits()) {
        std::string const& name = unit->getName();
        _units.push_back({name, startOf(name, getSpace() == Space::block), &unit->getTable()});
    }
}

ChipCatalogue::~ChipCatalogue() = default;

std::string const& ChipCatalogue::getModel() const {
    return _model;
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
    } else if (Register const* const found = unit == nullptr ? nullptr : findRegister(*unit, name)) {
        address.address = found->getAddress();
    } else {
        throw refusal(text, (unit == nullptr ? "the unit" : unit->name) + " of a " + _model +
                                " has no register \"" + name + "\"");
    }
    return locate(address, unit);
}

std::vector<RegisterLocation> ChipCatalogue::getAll() const {
    std::vector<RegisterLocation> all;
    for (Unit const& unit : _units) {
        for (auto const& [number, description] : unit.registers->getRegisters()) {
            RegisterAddress address = unit.start;
            address.address = number;
            all.push_back(locate(address, &unit));
        }
    }
    return all;
}

bool ChipCatalogue::isSameName(std::string const& first, std::string const& second) {
    return normalised(first) == normalised(second);
}

Space ChipCatalogue::getSpace() const {
    return _model == "vsc7390" ? Space::block : Space::device;
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
        isKnown = isSameName(unit->name, text);
        address = unit->start;
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
        address = {Space::block, block.value_or(0), subBlock.value_or(0), 0};
        return block && subBlock;
    }
    auto const number = NumberText::parse(text);
    address = {physOnly ? Space::phy : Space::device, 0, number.value_or(0), 0};
    return number.has_value();
}

ChipCatalogue::Unit const* ChipCatalogue::findUnit(RegisterAddress const& address) const {
    auto const found = std::find_if(_units.begin(), _units.end(),
                                    [&](Unit const& unit) { return unit.start.isSameUnit(address); });
    return found == _units.end() ? nullptr : &*found;
}

Register const* ChipCatalogue::findRegister(Unit const& unit, std::string const& name) {
    for (auto const& [address, description] : unit.registers->getRegisters()) {
        if (isSameName(description.getName(), name)) {
            return &description;
        }
    }
    return nullptr;
}

RegisterLocation ChipCatalogue::locate(RegisterAddress const& address, Unit const* unit) {
    std::string const number = address.getText();
    std::size_t const slash = number.find('/');
    RegisterLocation location{address, number.substr(0, slash), number.substr(slash + 1), nullptr};
    if (unit != nullptr) {
        location.unit = unit->name;
        location.description = unit->registers->find(address.address);
    }
    if (location.description != nullptr) {
        location.name = location.description->getName();
    }
    return location;
}

} // namespace chips
