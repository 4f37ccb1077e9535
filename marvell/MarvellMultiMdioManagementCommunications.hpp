#pragma once

#include <ctime>

#include "marvell/Arm920tMdioAccess.hpp"
#include "marvell/MarvellManagementCommunications.hpp"

/// Access to an 88E6096 in multi-chip mode: the chip answers at one MDIO address, and each of its
/// internal registers is reached through a command and a data register there.
///
/// Holds the MDIO master for as long as it lives (see Arm920tMdioAccess). Every access waits for the
/// chip to be free first; a write does not wait for its own completion.
class MarvellMultiMdioManagementCommunications : public MarvellManagementCommunications {
public:
    MarvellMultiMdioManagementCommunications(Application& application, unsigned short switchAddress,
                                             bool noHardwareAccess);
    ~MarvellMultiMdioManagementCommunications() override;

    /// Nothing to prepare: true.
    bool initialise() override;

    bool readRegister(MarvelRegisterValues& registerValues) override;
    bool writeRegister(MarvelRegisterValues registerValues) override;

    /// Reads a PHY register through the chip's own PHY command unit. A unit that stays busy for a
    /// second is logged, `value` is left alone, and the result is true all the same.
    bool phyReadRegister(unsigned short phyAddress, unsigned short phyRegister,
                         unsigned short& value) override;

    /// Starts a PHY register write; does not wait for the PHY command unit, neither before nor after.
    bool phyWriteRegister(unsigned short phyAddress, unsigned short phyRegister,
                          unsigned short value) override;

    /// Waits for the chip to take a command.
    /// \return false once it is free; true when the bus failed or, after a message, when the chip
    ///         stayed busy for a second.
    bool isMarvelSmiBusy();

    /// The time from `start` to `end`.
    static timespec clock_timediff(timespec start, timespec end);

private:
    unsigned short commandWord(unsigned int operation, unsigned int mode, unsigned int device,
                               unsigned int registerNumber) const;
    unsigned short phyCommandWord(unsigned int operation, unsigned int mode, unsigned short phyAddress,
                                  unsigned short phyRegister) const;

    Arm920tMdioAccess _mdioAccess;
    unsigned short _smiCommandRegister;
    unsigned short _smiDataRegister;
    unsigned short _smiBusyMask;
    [[maybe_unused]] unsigned short _smiModeMask;
    unsigned short _smiModeShift;
    unsigned short _smiOpShift;
    [[maybe_unused]] unsigned short _smiOpWidth;
    unsigned short _smiDeviceShift;
    [[maybe_unused]] unsigned short _smiDeviceWidth;
    unsigned short _smiRegisterShift;
    [[maybe_unused]] unsigned short _smiRegisterWidth;
    unsigned short _smiPhyWriteMode;
    unsigned short _smiMode;
    unsigned short _smiWriteOp;
    unsigned short _smiReadOp;
    double _smiTimeout;
};
