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

std::uint16_t MdioBus::read(unsigned address, unsigned registerAddress) {
    passFrame();
    MdioDevice* const device = _devices.at(address);
    return device == nullptr ? _options.idleValue : device->mdioRead(registerAddress);
}

void MdioBus::write(unsigned address, unsigned registerAddress, std::uint16_t value) {
    passFrame();
    if (MdioDevice* const device = _devices.at(address)) {
        device->mdioWrite(registerAddress, value);
    }
}

void MdioBus::passFrame() {
    _services.clock.advanceNanoseconds(_options.frameNanoseconds);
    _busNanoseconds += _options.frameNanoseconds;
    _services.log.countMdioFrame();
}

} // namespace simulation
