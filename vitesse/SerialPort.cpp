#include "vitesse/SerialPort.hpp"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <utility>
#include <vector>

namespace {

constexpr useconds_t readPauseMicroseconds = 10;

/// 8 data bits, no parity, one stop bit, no handshake lines, and nothing that edits the text.
void makeRaw(termios& options) {
    options.c_cflag |= CLOCAL | CREAD;
    options.c_cflag &= ~static_cast<tcflag_t>(PARENB);
    options.c_cflag &= ~static_cast<tcflag_t>(CSTOPB);
    options.c_cflag &= ~static_cast<tcflag_t>(CSIZE);
    options.c_cflag |= CS8;
    options.c_cflag &= ~static_cast<tcflag_t>(CRTSCTS);
    options.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ECHOE | ISIG);
    cfmakeraw(&options);
    options.c_cc[VMIN] = 1;
    options.c_cc[VTIME] = 0;
}

/// Prints a line. A stream object for that would cost the library a static constructor.
void say(char const* text, char const* detail = "") {
    std::printf("%s%s\n", text, detail);
    std::fflush(stdout);
}

bool fail(char const* message) {
    say(message);
    return false;
}

} // namespace

SerialPort::SerialPort(std::string deviceName, BaudRate baudRate)
    : _deviceName(std::move(deviceName)),
      _baudRate(baudRate),
      _descriptor(0),
      _readTimeout(5.0),
      _pollEntryCount(0) {}

SerialPort::~SerialPort() {
    Close();
}

bool SerialPort::Open(std::string const& deviceName) {
    _deviceName = deviceName;
    return Open();
}

bool SerialPort::Open() {
    if (_descriptor != 0) {
        say("SerialPort::Open() Port was already open - now closing port!");
        Close();
    }
    _descriptor = static_cast<short>(::open(_deviceName.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK));
    return _descriptor != -1 || fail("There was an error!"); // GCOVR_EXCL_BR_LINE: fail() says no
}

void SerialPort::Close() {
    if (_descriptor == 0) {
        return;
    }
    if (::close(_descriptor) != 0) {
        say("SerialPort::Close() Failed ", std::strerror(errno));
    }
    _descriptor = 0;
}

bool SerialPort::setBaud(BaudRate baudRate) {
    _baudRate = baudRate;
    say("SerialPort::SetBaud(): Setting baud rate for ", _deviceName.c_str());
    termios options{};
    if (tcgetattr(_descriptor, &options) != 0) {
        return fail("SerialPort::SetBaud(): Failed to get serial port options");
    }
    if (cfsetispeed(&options, _baudRate) != 0) {
        return fail("SerialPort::SetBaud(): Failed to set input baud");
    }
    if (cfsetospeed(&options, _baudRate) != 0) {
        return fail("SerialPort::SetBaud(): Failed to set output baud");
    }
    makeRaw(options);
    if (tcflush(_descriptor, TCIFLUSH) != 0) {
        fail("SerialPort::SetBaud(): Failed to set port options"); // GCOVR_EXCL_BR_LINE: fail() says no
        std::exit(EXIT_SUCCESS);
    }
    return tcsetattr(_descriptor, TCSANOW, &options) == 0 ||
           fail("SerialPort::SetBaud(): Failed to set port options"); // GCOVR_EXCL_BR_LINE: fail() says no
}

SerialPort::BaudRate SerialPort::getBaud() const {
    return _baudRate;
}

void SerialPort::configureForPolling() {
    // The entry that is filled is the one behind those that are counted.
    _pollEntries = std::make_unique<pollfd[]>(_pollEntryCount + 1);
    pollfd& entry = _pollEntries[_pollEntryCount];
    entry.fd = _descriptor;
    entry.events = POLLIN;
    entry.revents = 0;
}

bool SerialPort::poll() {
    int const ready = ::poll(_pollEntries.get(), _pollEntryCount, -1);
    return ready == 1 || ready == 2;
}

short SerialPort::Read(std::string& out, int count) const {
    std::vector<char> buffer(static_cast<std::size_t>(count));
    int total = 0;
    double elapsed = 0.0;
    time_t const start = time(nullptr);
    while (elapsed <= _readTimeout && total != count) {
        ssize_t const received = ::read(_descriptor, buffer.data(), buffer.size());
        if (received == -1) {
            usleep(readPauseMicroseconds);
        } else {
            total += static_cast<int>(received);
            out.append(buffer.data(), static_cast<std::size_t>(received));
        }
        elapsed = difftime(time(nullptr), start);
    }
    return static_cast<short>(total);
}

short SerialPort::Write(std::string& data) const {
    return static_cast<short>(::write(_descriptor, data.data(), data.size()));
}

short SerialPort::writeByte(char byte) const {
    return static_cast<short>(::write(_descriptor, &byte, sizeof byte));
}
