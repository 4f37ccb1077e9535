#include "vitesse/VitesseParallelCommunication.hpp"

#include <ctime>

#include "host/Application.hpp"
#include "model/Polling.hpp"
#include "vitesse/MiiManagementRegisters.hpp"
#include "vitesse/SystemRegisters.hpp"

namespace {

using Bsa = VitesseManagementCommunications::Bsa;

unsigned int offsetOf(Bsa const& location) {
    return vsc7390::parallel_bus::offsetOf(location.block, location.subBlock, location.address);
}

unsigned int physicalAddressOf(unsigned int offset) {
    return offset + vsc7390::parallel_bus::physicalAddress;
}

Bsa systemRegister(unsigned short address) {
    return {vsc7390::system::block, vsc7390::system::subBlock, address};
}

constexpr unsigned int systemOffset(unsigned int address) {
    using namespace vsc7390;
    return parallel_bus::offsetOf(system::block, system::subBlock, address);
}

bool isReadDirectly(Bsa const& location) {
    return location.block == vsc7390::parallel_bus::captureBlock || location.block == vsc7390::system::block;
}

Bsa controllerRegister(VitesseManagementCommunications::MiiManagementLocation controller,
                       unsigned short address) {
    return {vsc7390::mii_management::block, static_cast<unsigned short>(controller), address};
}

} // namespace

std::atomic<unsigned int> VitesseParallelCommunication::_readAttempts{0};

VitesseParallelCommunication::VitesseParallelCommunication(Application& application, bool noHardwareAccess)
    : VitesseManagementCommunications(application, noHardwareAccess),
      _readStatusLocation(systemRegister(vsc7390::system::readStatus)),
      _readReadyBit(vsc7390::system::read_status::ready.position),
      _readDataLocation(systemRegister(vsc7390::system::readData)),
      _readTimeout(1.0),
      _phyTimeout(1.0),
      _mapping("VITESSE_PARALLEL_COMMUNICATION", application, noHardwareAccess),
      _maximumReadAttempts(5) {
    _mapping.map(vsc7390::parallel_bus::physicalAddress, vsc7390::parallel_bus::mappedSize);
    _mapping.set(systemOffset(vsc7390::system::busSetUp), vsc7390::system::bus_set_up::value);
}

VitesseParallelCommunication::~VitesseParallelCommunication() {
    _mapping.unMap();
}

void VitesseParallelCommunication::readError(unsigned int physicalAddress) {
    _application->logError("Failed Read : address %x\n", physicalAddress);
}

/// Waits for the value that a read of `offset` has had the chip fetch, and takes it. Nearly all accesses to
/// the bus are made here, so the locations are constants and not read from the members.
inline void VitesseParallelCommunication::fetch(unsigned int offset, unsigned int& value) {
    unsigned int status = 0;
    time_t start = time(nullptr);
    while (!vsc7390::system::read_status::ready.isSet(status)) {
        _mapping.get(systemOffset(vsc7390::system::readStatus), status);
        if (difftime(time(nullptr), start) > _readTimeout) {
            _mapping.get(offset, value);
            start = time(nullptr);
            if (++_readAttempts >= _maximumReadAttempts) {
                _readAttempts = 0;
                throw "switch timed out after attempted to read a register 5 times.";
            }
        }
    }
    _mapping.get(systemOffset(vsc7390::system::readData), value);
}

bool VitesseParallelCommunication::readRegister(Bsa const& location, unsigned int& value) {
    unsigned int const offset = offsetOf(location);
    if (!_mapping.get(offset, value)) {
        readError(physicalAddressOf(offset));
    } else if (!isReadDirectly(location)) {
        fetch(offset, value);
    }
    _readAttempts.store(0, std::memory_order_relaxed);
    return true;
}

bool VitesseParallelCommunication::writeRegister(Bsa const& location, unsigned int const& value) {
    unsigned int const offset = offsetOf(location);
    if (!_mapping.set(offset, value)) {
        _application->logError("Failed Write : address %x\n", physicalAddressOf(offset));
    }
    return true;
}

void VitesseParallelCommunication::waitForController(Bsa const& status) {
    polling::End const end = polling::untilReadyByCalendar(_phyTimeout, [&] {
        unsigned int value = 0;
        readRegister(status, value);
        return polling::busyIf(vsc7390::mii_management::status_bits::busy.isSet(value));
    });
    if (end == polling::End::timedOut) {
        throw "PHY Read timed out after 1 second.";
    }
}

bool VitesseParallelCommunication::phyReadRegister(MiiManagementLocation controller,
                                                   unsigned short phyAddress, unsigned short registerAddress,
                                                   unsigned short& value) {
    using namespace vsc7390::mii_management;
    Bsa const statusLocation = controllerRegister(controller, status);
    waitForController(statusLocation);
    writeRegister(controllerRegister(controller, command),
                  command_bits::read.mask() | command_bits::phyAddress.of(phyAddress) |
                      command_bits::registerAddress.of(registerAddress));
    waitForController(statusLocation);
    unsigned int reply = 0;
    readRegister(controllerRegister(controller, data), reply);
    if (data_bits::noReply.isSet(reply)) {
        _application->logError(
            "VitesseParallelCommunication::phyReadRegister Failed to read Phy Address %d\n", phyAddress);
        throw "No reply from phy";
    }
    value = static_cast<unsigned short>(data_bits::data.in(reply));
    return true;
}

bool VitesseParallelCommunication::phyWriteRegister(MiiManagementLocation controller,
                                                    unsigned short phyAddress, unsigned short registerAddress,
                                                    unsigned short value) {
    using namespace vsc7390::mii_management;
    waitForController(controllerRegister(controller, status));
    writeRegister(controllerRegister(controller, command),
                  command_bits::phyAddress.of(phyAddress) |
                      command_bits::registerAddress.of(registerAddress) | command_bits::data.of(value));
    return true;
}
