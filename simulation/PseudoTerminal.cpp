#include "simulation/PseudoTerminal.hpp"

#include <fcntl.h>
#include <stdlib.h> // NOLINT: for what it declares outside of std
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <system_error>
#include <thread>

namespace simulation {

namespace {

constexpr std::size_t pathLength = 128;
constexpr std::size_t chunkLength = 256;
constexpr std::chrono::microseconds pause{50};
constexpr std::chrono::seconds patienceForReader{2};

[[noreturn]] void fail(char const* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

} // namespace

PseudoTerminal::PseudoTerminal() : _descriptor(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
    if (_descriptor < 0) {
        fail("no pseudo-terminal");
    }
    try {
        openDevice();
    } catch (...) {
        close(_descriptor);
        throw;
    }
}

PseudoTerminal::~PseudoTerminal() {
    close(_device);
    close(_descriptor);
}

void PseudoTerminal::openDevice() {
    std::array<char, pathLength> path{};
    if (grantpt(_descriptor) != 0 || unlockpt(_descriptor) != 0 ||
        ptsname_r(_descriptor, path.data(), path.size()) != 0) {
        fail("pseudo-terminal without a device");
    }
    _devicePath = path.data();
    _device = open(path.data(), O_RDWR | O_NOCTTY);
    if (_device < 0) {
        fail(path.data());
    }
    termios settings = getSettings();
    cfmakeraw(&settings);
    tcsetattr(_device, TCSANOW, &settings);
}

std::size_t PseudoTerminal::send(std::string const& text) const {
    std::size_t sent = 0;
    while (sent < text.size()) {
        ssize_t const written = write(_descriptor, text.data() + sent, text.size() - sent);
        if (written <= 0) {
            break;
        }
        sent += static_cast<std::size_t>(written);
    }
    return sent;
}

std::string PseudoTerminal::receive() const {
    std::string text;
    std::array<char, chunkLength> chunk{};
    for (ssize_t count = 0; (count = read(_descriptor, chunk.data(), chunk.size())) > 0;) {
        text.append(chunk.data(), static_cast<std::size_t>(count));
    }
    return text;
}

bool PseudoTerminal::waitUntilReadable(std::size_t characters) const {
    // By pauses: the clock of a thread that lives in simulated time would stand still.
    for (std::chrono::microseconds waited{0}; waited < patienceForReader; waited += pause) {
        int waiting = 0;
        if (ioctl(_device, FIONREAD, &waiting) == 0 && static_cast<std::size_t>(waiting) >= characters) {
            return true;
        }
        std::this_thread::sleep_for(pause);
    }
    return false;
}

termios PseudoTerminal::getSettings() const {
    termios settings{};
    if (tcgetattr(_device, &settings) != 0) {
        fail("settings of the pseudo-terminal");
    }
    return settings;
}

} // namespace simulation
