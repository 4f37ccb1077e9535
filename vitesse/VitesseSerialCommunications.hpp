#pragma once

#include <string>

#include "vitesse/SerialPort.hpp"
#include "vitesse/VitesseManagementCommunications.hpp"

/// Access to a VSC7390 through a small controller on a serial line that understands one-line commands:
/// a letter and decimal numbers, ended by carriage return and line feed. Replies to reads are
/// hexadecimal.
///
/// A command and its reply are one unit on the line: one caller at a time.
class VitesseSerialCommunications : public VitesseManagementCommunications {
public:
    /// Opens the line at 9600 baud. A line that does not open, or refuses the speed, is reported;
    /// every access then fails.
    /// \param noHardwareAccess has no effect here.
    /// \param deviceName the line's device.
    VitesseSerialCommunications(Application& application, bool noHardwareAccess,
                                std::string deviceName = "/dev/ttyS1");

    /// \return false, after a message, when the reply does not have its exact length within five to
    ///         six seconds; `value` is then left alone. A reply of the right length without a number
    ///         in it gives 0.
    bool readRegister(Bsa const& location, unsigned int& value) override;

    /// \return false, after a message, when the command could not be written. There is no reply.
    bool writeRegister(Bsa const& location, unsigned int const& value) override;

    /// As readRegister. The controller's number is not transmitted.
    bool phyReadRegister(MiiManagementLocation controller, unsigned short phyAddress,
                         unsigned short registerAddress, unsigned short& value) override;

    /// Always true. The controller's number is not transmitted.
    bool phyWriteRegister(MiiManagementLocation controller, unsigned short phyAddress,
                          unsigned short registerAddress, unsigned short value) override;

private:
    bool readReply(unsigned int length, char const* wrongLength, unsigned int& value);

    SerialPort _serialPort;
    unsigned int _registerReplyLength;
    unsigned int _phyReplyLength;
};
