#include "simulation/MdioBus.hpp"

#include <stdexcept>
#include <string>

namespace simulation {

MdioBus::MdioBus(Services& services, Options const& options) : _services(services), _options(options) {}

void MdioBus::attach(unsigned address, MdioDevice& device) {
    if (address >= numberOfAddresses) {
        throw std::out_of_range("an MDIO bus has no address " + std::to_string(address));
    }
    if (_devices[address] != nullptr) {
        throw std::invalid_argument("MDIO address " + std::to_string(address) + " is taken");
    }
    _devices[address] = &device;
}

void MdioBus::detach(unsigned address) {
    _devices.at(address) = nullptr;
}

std::uint16_t MdioBus::read(unsigned address, unsigned registerAddress) {
    passFrame();
    if (_heldValue) {
        return *_heldValue;
    }
    MdioDevice* const device = _devices.at(address);
    return device == nullptr ? _options.idleValue : device->mdioRead(registerAddress);
}

void MdioBus::write(unsigned address, unsigned registerAddress, std::uint16_t value) {
    passFrame();
    MdioDevice* const device = _devices.at(address);
    if (device != nullptr && !_heldValue) {
        device->mdioWrite(registerAddress, value);
    }
}

void MdioBus::passFrame() {
    _services.clock.advanceNanoseconds(_options.frameNanoseconds);
    _busNanoseconds += _options.frameNanoseconds;
    _services.log.countMdioFrame();
}

} // namespace simulation
