#pragma once

#include <atomic>

#include "host/MappedSection.hpp"
#include "vitesse/VitesseManagementCommunications.hpp"

/// Access to a VSC7390 over its parallel processor interface, which the board maps into memory.
///
/// Most registers are read in two steps: a first read has the chip fetch the value, a status bit tells
/// when it is there. A chip that stops answering is reported by throwing a plain text
/// (char const*), which the switch manager catches. The waits do not pause.
class VitesseParallelCommunication : public VitesseManagementCommunications {
public:
    /// Maps the chip and sets up its bus.
    /// \param noHardwareAccess true: the chip stays unmapped; every access is then reported as failed.
    VitesseParallelCommunication(Application& application, bool noHardwareAccess);
    ~VitesseParallelCommunication() override;

    /// Always true; a failed bus access is reported and leaves `value` alone. Throws a text when the
    /// value is not there after five repetitions, a second and more apart.
    bool readRegister(Bsa const& location, unsigned int& value) override;

    /// Always true; a failed bus access is reported.
    bool writeRegister(Bsa const& location, unsigned int const& value) override;

    /// Throws a text when the controller stays busy for more than a second, or, after a message, when
    /// the PHY does not answer.
    bool phyReadRegister(MiiManagementLocation controller, unsigned short phyAddress,
                         unsigned short registerAddress, unsigned short& value) override;

    /// Starts the write and does not wait for its end. Throws a text when the controller stays busy for
    /// more than a second.
    bool phyWriteRegister(MiiManagementLocation controller, unsigned short phyAddress,
                          unsigned short registerAddress, unsigned short value) override;

    /// Reports a bus read that failed.
    void readError(unsigned int physicalAddress);

private:
    void fetch(unsigned int offset, unsigned int& value);
    void waitForController(Bsa const& status);

    [[maybe_unused]] Bsa _readStatusLocation;
    [[maybe_unused]] unsigned short _readReadyBit;
    [[maybe_unused]] Bsa _readDataLocation;
    double _readTimeout;
    double _phyTimeout;
    MappedSection _mapping;
    unsigned int _maximumReadAttempts;

    /// Repetitions of the read in progress, of all objects together.
    static std::atomic<unsigned int> _readAttempts;
};
