#include "simulation/SimulatedBoard.hpp"

#include <libxml/tree.h>

#include <cstdint>
#include <stdexcept>

#include "simulation/ChipFamilies.hpp"
#include "simulation/DocumentNumber.hpp"

namespace simulation {

namespace {

std::string attribute(xmlNodePtr node, char const* name) {
    auto const release = [](xmlChar* text) { xmlFree(text); };
    std::unique_ptr<xmlChar, decltype(release)> const text(
        xmlGetProp(node, reinterpret_cast<xmlChar const*>(name)), release);
    return text == nullptr ? std::string() : std::string(reinterpret_cast<char const*>(text.get()));
}

// Drivers keep an id in 16 bits.
unsigned idFrom(std::string const& text) {
    std::optional<DocumentNumber> const number = DocumentNumber::decimal(text);
    return text.empty() ? 0xFFFFU : static_cast<std::uint16_t>(number ? number->toInt() : 0);
}

} // namespace

SimulatedBoard::SimulatedBoard(Xml& document) : SimulatedBoard(document, Options()) {}

SimulatedBoard::SimulatedBoard(Xml& document, Options const& options)
    : _mdioBus(_services, options.mdio), _mac(_services, _mdioBus, options.mac) {
    addWindow(Arm920tMac::physicalAddress, Arm920tMac::size, _mac);
    xmlNodeSetPtr const switches = document.find("//switches/switch");
    for (int i = 0; switches != nullptr && i < switches->nodeNr; ++i) {
        xmlNodePtr const node = switches->nodeTab[i];
        addSwitch(attribute(node, "id"), attribute(node, "switchModel"), options);
    }
}

SimulatedBoard::~SimulatedBoard() = default;

void SimulatedBoard::addSwitch(std::string const& idText, std::string const& model, Options const& options) {
    unsigned const id = idFrom(idText);
    std::string const label = "switch " + idText + ": ";
    ChipFamilies::Family const* const family = ChipFamilies::find(model);
    if (family == nullptr) {
        _skippedSwitches.push_back(label + "no model of a \"" + model + "\"");
    } else if (options.missingSwitches.count(id) != 0) {
        _skippedSwitches.push_back(label + "left out");
    } else if (_chips.count(id) != 0) {
        _skippedSwitches.push_back(label + "the id is taken");
    } else {
        try {
            auto chip = family->create(_services, id, options);
            chip->attach(*this);
            _chips.emplace(id, std::move(chip));
        } catch (std::logic_error const& error) {
            _skippedSwitches.push_back(label + error.what());
        }
    }
}

SimulatedWindow* SimulatedBoard::window(unsigned physicalAddress, unsigned size) {
    auto const found = _windows.find(physicalAddress);
    return found == _windows.end() || found->second->requested < size ? nullptr : &found->second->simulated;
}

std::vector<unsigned> SimulatedBoard::getSwitchIds() const {
    std::vector<unsigned> ids;
    for (auto const& [id, chip] : _chips) {
        ids.push_back(id);
    }
    return ids;
}

ChipTestSide& SimulatedBoard::getChip(unsigned id) {
    auto const found = _chips.find(id);
    if (found == _chips.end()) {
        throw std::out_of_range("the board has no switch " + std::to_string(id));
    }
    return found->second->getTestSide();
}

template <typename TestSide> TestSide& SimulatedBoard::getAs(unsigned id, char const* what) {
    if (auto* const chip = dynamic_cast<TestSide*>(&getChip(id))) {
        return *chip;
    }
    throw std::out_of_range("switch " + std::to_string(id) + " is not " + what);
}

Marvell88E6096TestSide& SimulatedBoard::getMarvell(unsigned id) {
    return getAs<Marvell88E6096TestSide>(id, "an 88E6096");
}

Vsc7390TestSide& SimulatedBoard::getVitesse(unsigned id) {
    return getAs<Vsc7390TestSide>(id, "a VSC7390");
}

std::uint64_t SimulatedBoard::getRegisterAccesses() const {
    return _services.log.getSize();
}

std::uint64_t SimulatedBoard::getBusAccesses() const {
    return _services.log.getBusAccesses();
}

std::uint64_t SimulatedBoard::getBusNanoseconds() const {
    std::lock_guard<std::recursive_mutex> const lock(_services.mutex);
    std::uint64_t nanoseconds = _mdioBus.getBusNanoseconds();
    for (auto const& [id, chip] : _chips) {
        nanoseconds += chip->getBusNanoseconds();
    }
    return nanoseconds;
}

MdioBus& SimulatedBoard::getMdioBus() {
    return _mdioBus;
}

void SimulatedBoard::addWindow(unsigned physicalAddress, std::size_t size, BusDevice& device) {
    if (_windows.count(physicalAddress) != 0) {
        throw std::invalid_argument("the board already has a window at its address");
    }
    _windows.emplace(physicalAddress, std::make_unique<Window>(_faults, physicalAddress, device, size));
}

} // namespace simulation
