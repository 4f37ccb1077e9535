#pragma once

#include <ctime>

#include "host/MappedSection.hpp"

class Application;

/// The MDIO master of the ARM920T SoC's Ethernet MAC (IEEE 802.3 clause 22).
///
/// While an object lives, the MAC control register holds the management clock's setting; its former
/// value comes back on destruction. Every object saves what it finds: of several that live at the
/// same time, the one that goes last decides what is left behind, and that is the setting again when
/// it was not the first one that came.
///
/// One transfer at a time, on the management thread.
class Arm920tMdioAccess : public MappedSection {
public:
    /// Maps the MAC's registers and sets the management clock.
    /// \param noHardwareAccess true: the registers stay unmapped, and every transfer claims success
    ///        without taking place.
    Arm920tMdioAccess(Application& application, bool noHardwareAccess);

    /// Restores the MAC control register. Does not throw.
    ~Arm920tMdioAccess() override;

    /// Reads a register of a device on the management bus.
    /// \return false, after a message, when the master stayed busy for a second.
    bool mdioReadRegister(unsigned short phyAddress, unsigned short phyRegister, unsigned short& value);

    /// Writes a register of a device on the management bus and waits for the frame to be out.
    /// \return as for mdioReadRegister.
    bool mdioWriteRegister(unsigned short phyAddress, unsigned short phyRegister, unsigned short value);

    /// Waits for the master to be free.
    /// \return true, after a message, when it stayed busy for a second.
    bool isMacBusy();

    /// The time from `start` to `end`.
    static timespec clock_timediff(timespec start, timespec end);

private:
    unsigned int _physicalAddress;
    unsigned int _mappedSize;
    unsigned int _miiCommandOffset;
    unsigned int _miiDataOffset;
    unsigned int _miiStatusOffset;
    unsigned int _macControlOffset;
    unsigned short _registerMask;
    unsigned short _registerHighMask;
    [[maybe_unused]] unsigned short _phyAddressMask;
    [[maybe_unused]] unsigned short _opcodeMask;
    unsigned short _readOpcode;
    unsigned short _writeOpcode;
    unsigned short _busyMask;
    unsigned short _phyAddressShift;
    unsigned short _registerHighShift;
    double _macTimeout;
    Application& _application;
    unsigned int _savedMacControl = 0;
};
