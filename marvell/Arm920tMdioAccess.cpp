#include "marvell/Arm920tMdioAccess.hpp"

#include "host/Application.hpp"
#include "marvell/Arm920tMacRegisters.hpp"
#include "model/ElapsedTime.hpp"
#include "model/Polling.hpp"

namespace {

/// Outlasts a frame on the bus, so that the MAC is free when it is polled: a poll that finds it busy costs a
/// pause that is far longer.
void idle() {
    constexpr int steps = 1000;
    for (int volatile i = 0; i < steps; ++i) {
    }
}

} // namespace

Arm920tMdioAccess::Arm920tMdioAccess(Application& application, bool noHardwareAccess)
    : MappedSection("MiiAccess", application, noHardwareAccess),
      _physicalAddress(arm920t_mac::physicalAddress),
      _mappedSize(arm920t_mac::mappedSize),
      _miiCommandOffset(arm920t_mac::miiCommandOffset),
      _miiDataOffset(arm920t_mac::miiDataOffset),
      _miiStatusOffset(arm920t_mac::miiStatusOffset),
      _macControlOffset(arm920t_mac::macControlOffset),
      _registerMask(arm920t_mac::mii_command::registerNumber.mask()),
      _registerHighMask(arm920t_mac::mii_command::registerHigh.mask()),
      _phyAddressMask(arm920t_mac::mii_command::phyAddress.mask()),
      _opcodeMask(arm920t_mac::mii_command::operation.mask()),
      _readOpcode(arm920t_mac::mii_command::operation.of(arm920t_mac::mii_command::readOperation)),
      _writeOpcode(arm920t_mac::mii_command::operation.of(arm920t_mac::mii_command::writeOperation)),
      _busyMask(arm920t_mac::mii_status::busy.mask()),
      _phyAddressShift(arm920t_mac::mii_command::phyAddress.position),
      _registerHighShift(arm920t_mac::mii_command::registerHighPosition),
      _macTimeout(1.0),
      _application(application) {
    map(_physicalAddress, _mappedSize);
    get(_macControlOffset, _savedMacControl);
    set(_macControlOffset, arm920t_mac::mac_control::mdioClock.mask());
}

Arm920tMdioAccess::~Arm920tMdioAccess() {
    set(_macControlOffset, _savedMacControl);
    unMap();
}

// isMacBusy() is compiled into the transfers: it is most of what an access to an 88E6096 executes.

[[gnu::flatten]] bool Arm920tMdioAccess::mdioReadRegister(unsigned short phyAddress,
                                                          unsigned short phyRegister, unsigned short& value) {
    if (isMacBusy()) {
        return false;
    }
    unsigned int const phy = static_cast<unsigned int>(phyAddress) << _phyAddressShift;
    unsigned int const registerHigh = static_cast<unsigned int>(phyRegister & _registerHighMask)
                                      << _registerHighShift;
    unsigned int const registerLow = phyRegister & _registerMask;
    set(_miiCommandOffset, _readOpcode | phy | registerLow | registerHigh);
    if (isMacBusy()) {
        return false;
    }
    unsigned int word = 0;
    get(_miiDataOffset, word);
    value = static_cast<unsigned short>(arm920t_mac::mii_data::data.in(word));
    return true;
}

[[gnu::flatten]] bool Arm920tMdioAccess::mdioWriteRegister(unsigned short phyAddress,
                                                           unsigned short phyRegister, unsigned short value) {
    if (isMacBusy()) {
        return false;
    }
    set(_miiDataOffset, value);
    unsigned int const phy = static_cast<unsigned int>(phyAddress) << _phyAddressShift;
    unsigned int const registerLow = phyRegister & _registerMask;
    set(_miiCommandOffset, _writeOpcode | phy | registerLow);
    return !isMacBusy();
}

bool Arm920tMdioAccess::isMacBusy() {
    unsigned int status = 0;
    polling::Outcome const outcome = polling::untilReady(_macTimeout, [&] {
        idle();
        // Unchecked on purpose: unmapped registers count as free, so that transfers then claim success.
        get(_miiStatusOffset, status);
        return polling::busyIf((status & _busyMask) != 0);
    });
    if (outcome.end == polling::End::timedOut) {
        _application.log(2, "Arm920tMdioAccess::isMacBusy Timeout waiting for Mac Busy Bit\n");
        return true;
    }
    return false;
}

timespec Arm920tMdioAccess::clock_timediff(timespec start, timespec end) {
    return elapsedTime(start, end);
}
