#include "marvell/MarvellMultiMdioManagementCommunications.hpp"

#include "host/Application.hpp"
#include "marvell/Global2Registers.hpp"
#include "marvell/SmiRegisters.hpp"
#include "model/ElapsedTime.hpp"
#include "model/Polling.hpp"

MarvellMultiMdioManagementCommunications::MarvellMultiMdioManagementCommunications(
    Application& application, unsigned short switchAddress, bool noHardwareAccess)
    : MarvellManagementCommunications(application, switchAddress, noHardwareAccess),
      _mdioAccess(application, noHardwareAccess),
      _smiCommandRegister(smi::commandRegister),
      _smiDataRegister(smi::dataRegister),
      _smiBusyMask(smi::command::busy.mask()),
      _smiModeMask(smi::command::mode.mask()),
      _smiModeShift(smi::command::mode.position),
      _smiOpShift(smi::command::operation.position),
      _smiOpWidth(smi::command::operation.width),
      _smiDeviceShift(smi::command::device.position),
      _smiDeviceWidth(smi::command::device.width),
      _smiRegisterShift(smi::command::registerNumber.position),
      _smiRegisterWidth(smi::command::registerNumber.width),
      _smiPhyWriteMode(smi::command::phyWriteMode),
      _smiMode(smi::command::clause22Mode),
      _smiWriteOp(smi::command::writeOperation),
      _smiReadOp(smi::command::readOperation),
      _smiTimeout(1.0) {}

MarvellMultiMdioManagementCommunications::~MarvellMultiMdioManagementCommunications() = default;

bool MarvellMultiMdioManagementCommunications::initialise() {
    return true;
}

bool MarvellMultiMdioManagementCommunications::isMarvelSmiBusy() {
    polling::Outcome const outcome = polling::untilReady(_smiTimeout, [this] {
        unsigned short command = 0;
        // Read twice on purpose: only the second value counts.
        for (int reading = 0; reading < 2; ++reading) {
            if (!_mdioAccess.mdioReadRegister(_switchAddress, _smiCommandRegister, command)) {
                return polling::Status::failed;
            }
        }
        return polling::busyIf((command & _smiBusyMask) != 0);
    });
    if (outcome.end == polling::End::timedOut) {
        _application.log(
            2,
            "MarvelMultiMdioManagementCommunications::isMarvelSmiBusy Timeout waiting for SMI Busy "
            "Bit :Elapsed %f : smiTimeout %f\n",
            outcome.elapsedSeconds, _smiTimeout);
    }
    return outcome.end != polling::End::ready;
}

// Each access is compiled into one function, without calls: every operation on the chip is made of these.

[[gnu::flatten]] bool
MarvellMultiMdioManagementCommunications::readRegister(MarvelRegisterValues& registerValues) {
    if (_noHardwareAccess || isMarvelSmiBusy()) {
        return false;
    }
    unsigned short const command =
        commandWord(_smiReadOp, _smiMode, registerValues.deviceAddress, registerValues.registerAddress);
    if (!_mdioAccess.mdioWriteRegister(_switchAddress, _smiCommandRegister, command) || isMarvelSmiBusy()) {
        return false;
    }
    return _mdioAccess.mdioReadRegister(_switchAddress, _smiDataRegister, registerValues.value);
}

[[gnu::flatten]] bool
MarvellMultiMdioManagementCommunications::writeRegister(MarvelRegisterValues registerValues) {
    if (_noHardwareAccess || isMarvelSmiBusy()) {
        return false;
    }
    if (!_mdioAccess.mdioWriteRegister(_switchAddress, _smiDataRegister, registerValues.value)) {
        return false;
    }
    unsigned short const command =
        commandWord(_smiWriteOp, _smiMode, registerValues.deviceAddress, registerValues.registerAddress);
    return _mdioAccess.mdioWriteRegister(_switchAddress, _smiCommandRegister, command);
}

bool MarvellMultiMdioManagementCommunications::phyReadRegister(unsigned short phyAddress,
                                                               unsigned short phyRegister,
                                                               unsigned short& value) {
    MarvelRegisterValues command(global2::device, global2::smiPhyCommand,
                                 phyCommandWord(_smiReadOp, _smiMode, phyAddress, phyRegister));
    if (!writeRegister(command)) {
        return false;
    }
    polling::Outcome const outcome = polling::untilReady(_smiTimeout, [&] {
        return readRegister(command) ? polling::busyIf(smi::command::busy.isSet(command.value))
                                     : polling::Status::failed;
    });
    if (outcome.end == polling::End::timedOut) {
        _application.log(2,
                         "MarvellMultiMdioManagementCommunications::phyReadRegister                          "
                         "Timeout waiting for SMI Phy Busy Bit :Elapsed %f : smiTimeout %f\n",
                         outcome.elapsedSeconds, _smiTimeout);
        return true;
    }
    MarvelRegisterValues data(global2::device, global2::smiPhyData);
    if (outcome.end == polling::End::failed || !readRegister(data)) {
        return false;
    }
    value = data.value;
    return true;
}

bool MarvellMultiMdioManagementCommunications::phyWriteRegister(unsigned short phyAddress,
                                                                unsigned short phyRegister,
                                                                unsigned short value) {
    if (!writeRegister(MarvelRegisterValues(global2::device, global2::smiPhyData, value))) {
        return false;
    }
    return writeRegister(
        MarvelRegisterValues(global2::device, global2::smiPhyCommand,
                             phyCommandWord(_smiWriteOp, _smiPhyWriteMode, phyAddress, phyRegister)));
}

unsigned short MarvellMultiMdioManagementCommunications::commandWord(unsigned int operation,
                                                                     unsigned int mode, unsigned int device,
                                                                     unsigned int registerNumber) const {
    return static_cast<unsigned short>(_smiBusyMask | (device << _smiDeviceShift) |
                                       (operation << _smiOpShift) | (registerNumber << _smiRegisterShift) |
                                       (mode << _smiModeShift));
}

unsigned short MarvellMultiMdioManagementCommunications::phyCommandWord(unsigned int operation,
                                                                        unsigned int mode,
                                                                        unsigned short phyAddress,
                                                                        unsigned short phyRegister) const {
    return commandWord(operation, mode, smi::command::device.in(smi::command::device.of(phyAddress)),
                       smi::command::registerNumber.of(phyRegister));
}

timespec MarvellMultiMdioManagementCommunications::clock_timediff(timespec start, timespec end) {
    return elapsedTime(start, end);
}
