#pragma once

#include <termios.h>

#include <memory>
#include <string>

struct pollfd;

/// One serial device of POSIX: raw, 8 data bits, no parity, one stop bit.
///
/// Reports its problems on the standard output. Not for use by two threads at once.
class SerialPort {
public:
    /// The speed codes of termios themselves.
    enum BaudRate : unsigned int { baud9600 = B9600 };

    /// Opens nothing yet.
    SerialPort(std::string deviceName, BaudRate baudRate);

    /// Closes the device.
    virtual ~SerialPort();
    SerialPort(SerialPort const&) = delete;
    SerialPort& operator=(SerialPort const&) = delete;

    /// Opens the device, closing what was open.
    /// \return false, after a message, when the device could not be opened.
    bool Open();

    /// Opens another device from now on.
    bool Open(std::string const& deviceName);

    /// Does nothing on a port that is not open. A descriptor of 0 counts as not open.
    void Close();

    /// Puts the open device into raw mode at a speed, and drops what it has received.
    /// \return false, after a message, when the device refused. A device that cannot even drop its
    ///         input ends the process, with exit status 0: without its line the board cannot be managed.
    bool setBaud(BaudRate baudRate);

    /// The speed that was asked for last.
    BaudRate getBaud() const;

    /// Prepares poll() for the open device.
    void configureForPolling();

    /// Waits, without limit, for something to read.
    /// \return whether there is.
    bool poll();

    /// Appends what the device receives to `out` until `count` characters have come or five to six
    /// seconds are over. Characters beyond `count` are appended, too, and keep it waiting to the end.
    /// \return how many characters came.
    short Read(std::string& out, int count) const;

    /// Writes the text in one go.
    /// \return how many characters went out, or -1.
    short Write(std::string& data) const;

    /// \return 1, or -1.
    short writeByte(char byte) const;

private:
    std::string _deviceName;
    BaudRate _baudRate;
    short _descriptor;
    double _readTimeout;
    unsigned int _pollEntryCount;
    std::unique_ptr<pollfd[]> _pollEntries;
};
