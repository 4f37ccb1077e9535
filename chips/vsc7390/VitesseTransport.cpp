#include "chips/vsc7390/VitesseTransport.hpp"

#include <utility>

namespace chips {

namespace {

using Communications = VitesseManagementCommunications;

/// The one that the chip's PHYs are on.
constexpr auto controllerOfPhys = Communications::MiiManagementLocation::controller1;

Communications::Bsa locationOf(RegisterAddress const& address) {
    return {RegisterTransport::narrow(address.block), RegisterTransport::narrow(address.unit),
            RegisterTransport::narrow(address.address)};
}

} // namespace

VitesseTransport::VitesseTransport(AccessErrors& errors, std::unique_ptr<Communications> communications)
    : RegisterTransport(errors), _communications(std::move(communications)) {}

bool VitesseTransport::tryRead(RegisterAddress const& address, std::uint32_t& value) {
    if (address.space == RegisterAddress::Space::phy) {
        unsigned short contents = 0;
        bool const succeeded = _communications->phyReadRegister(controllerOfPhys, narrow(address.unit),
                                                                narrow(address.address), contents);
        value = contents;
        return succeeded;
    }
    unsigned int contents = 0;
    bool const succeeded = _communications->readRegister(locationOf(address), contents);
    value = contents;
    return succeeded;
}

bool VitesseTransport::tryWrite(RegisterAddress const& address, std::uint32_t value) {
    if (address.space == RegisterAddress::Space::phy) {
        return _communications->phyWriteRegister(controllerOfPhys, narrow(address.unit),
                                                 narrow(address.address), narrow(value));
    }
    return _communications->writeRegister(locationOf(address), value);
}

} // namespace chips
