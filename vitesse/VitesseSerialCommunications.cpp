#include "vitesse/VitesseSerialCommunications.hpp"

#include <initializer_list>
#include <utility>

#include "host/Application.hpp"

namespace {

constexpr unsigned int registerReplyCharacters = 12;
constexpr unsigned int phyReplyCharacters = 8;
constexpr std::size_t replyPrefix = 2;
constexpr unsigned int hexadecimal = 16;

std::string commandLine(char letter, std::initializer_list<unsigned int> operands) {
    std::string line(1, letter);
    for (unsigned int const operand : operands) {
        line += ' ' + std::to_string(operand);
    }
    return line + "\r\n";
}

/// The value of a hexadecimal digit, or `hexadecimal` for any other character.
unsigned int digitValue(char character) {
    constexpr char const* digits = "0123456789abcdef0123456789ABCDEF";
    std::size_t const position = std::string(digits).find(character);
    return position == std::string::npos ? hexadecimal : static_cast<unsigned int>(position % hexadecimal);
}

/// The number behind a reply's prefix; of more than eight digits, the last eight.
unsigned int numberIn(std::string const& reply) {
    unsigned int number = 0;
    for (std::size_t position = replyPrefix; position < reply.size(); ++position) {
        unsigned int const digit = digitValue(reply[position]);
        if (digit == hexadecimal) {
            break;
        }
        number = number * hexadecimal + digit;
    }
    return number;
}

} // namespace

VitesseSerialCommunications::VitesseSerialCommunications(Application& application, bool noHardwareAccess,
                                                         std::string deviceName)
    : VitesseManagementCommunications(application, noHardwareAccess),
      _serialPort(std::move(deviceName), SerialPort::baud9600),
      _registerReplyLength(registerReplyCharacters),
      _phyReplyLength(phyReplyCharacters) {
    if (!_serialPort.Open()) {
        _application->logError(
            "VitesseSerialCommunications::VitesseSerialCommunications Failed to open Serail Port\n");
    }
    if (!_serialPort.setBaud(SerialPort::baud9600)) {
        _application->logError(
            "VitesseSerialCommunications::VitesseSerialCommunications Failed to set baud\n");
    }
}

bool VitesseSerialCommunications::readRegister(Bsa const& location, unsigned int& value) {
    std::string command = commandLine('r', {location.block, location.subBlock, location.address});
    _serialPort.Write(command);
    return readReply(_registerReplyLength,
                     "VitesseSerialCommunications::ReadRegister ERROR expected: %d Got: %d \n", value);
}

bool VitesseSerialCommunications::readReply(unsigned int length, char const* wrongLength,
                                            unsigned int& value) {
    std::string reply;
    int const received = _serialPort.Read(reply, static_cast<int>(length));
    if (received == static_cast<int>(length)) {
        value = numberIn(reply);
        return true;
    }
    // The length of a register's reply is what is said to be expected, whatever was read.
    _application->logError(wrongLength, _registerReplyLength,
                           received); // NOLINT: one of two formats of this file
    _application->logError("%s", reply.c_str());
    return false;
}

bool VitesseSerialCommunications::writeRegister(Bsa const& location, unsigned int const& value) {
    std::string command = commandLine('w', {location.block, location.subBlock, location.address, value});
    if (_serialPort.Write(command) == -1) {
        _application->logError("VitesseSerialCommunications::writeRegister write tty failed \n");
        return false;
    }
    return true;
}

bool VitesseSerialCommunications::phyReadRegister(MiiManagementLocation /*controller*/,
                                                  unsigned short phyAddress, unsigned short registerAddress,
                                                  unsigned short& value) {
    std::string command = commandLine('i', {phyAddress, registerAddress});
    _serialPort.Write(command);
    unsigned int number = 0;
    if (!readReply(_phyReplyLength, "VitesseSwitch::ReadRegister ERROR expected: %d Got: %d \n", number)) {
        return false;
    }
    value = static_cast<unsigned short>(number);
    return true;
}

bool VitesseSerialCommunications::phyWriteRegister(MiiManagementLocation /*controller*/,
                                                   unsigned short phyAddress, unsigned short registerAddress,
                                                   unsigned short value) {
    std::string command = commandLine('o', {phyAddress, registerAddress, value});
    _serialPort.Write(command);
    return true;
}
