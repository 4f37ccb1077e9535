#include "benchmarks/micro/AnsweringLine.hpp"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <stdexcept>
#include <string_view>

namespace benchmarks {

AnsweringLine::AnsweringLine() : _controller(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
    if (_controller == -1 || grantpt(_controller) != 0 || unlockpt(_controller) != 0) {
        throw std::runtime_error("no pseudo-terminal");
    }
    _devicePath = ptsname(_controller);
    // Held open, so that the line does not hang up, and raw, so that nothing is echoed.
    _device = open(_devicePath.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    termios settings{};
    tcgetattr(_device, &settings);
    cfmakeraw(&settings);
    tcsetattr(_device, TCSANOW, &settings);
}

AnsweringLine::~AnsweringLine() {
    close(_device);
    close(_controller);
}

void AnsweringLine::prepare() {
    constexpr std::string_view answer = "0x0000002a\r\n";
    constexpr std::size_t block = 4096;
    char commands[block];
    while (read(_controller, commands, sizeof commands) > 0) {
    }
    for (int i = 0; i < answers; ++i) {
        if (write(_controller, answer.data(), answer.size()) != static_cast<ssize_t>(answer.size())) {
            throw std::runtime_error("the line takes no more");
        }
    }
    for (int readable = 0; readable < answers * static_cast<int>(answer.size());) {
        ioctl(_device, FIONREAD, &readable);
    }
}

} // namespace benchmarks
