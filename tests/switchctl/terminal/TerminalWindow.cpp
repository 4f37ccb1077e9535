#include "TerminalWindow.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace {

int required(int result, char const* what) {
    if (result < 0) {
        throw std::system_error(errno, std::generic_category(), what);
    }
    return result;
}

} // namespace

TerminalWindow::TerminalWindow()
    : _window(required(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC), "pseudo-terminal")) {
    required(grantpt(_window), "grantpt");
    required(unlockpt(_window), "unlockpt");
    char path[64];
    required(-ptsname_r(_window, path, sizeof path), "ptsname");
    _device = required(open(path, O_RDWR | O_NOCTTY | O_CLOEXEC), path);
    winsize const size{24, 80, 0, 0};
    required(ioctl(_device, TIOCSWINSZ, &size), "size");
}

TerminalWindow::~TerminalWindow() {
    closeDevice();
    close(_window);
}

void TerminalWindow::closeDevice() {
    if (_device >= 0) {
        close(_device);
        _device = -1;
    }
}

std::string const& TerminalWindow::readUntil(std::string const& text) {
    while (_read.find(text) == std::string::npos && readMore()) {
    }
    return _read;
}

std::string const& TerminalWindow::readToEnd() {
    while (readMore()) {
    }
    return _read;
}

std::string const& TerminalWindow::readAvailable() {
    pollfd entry{_window, POLLIN, 0};
    while (poll(&entry, 1, 0) == 1 && (entry.revents & POLLIN) != 0 && readMore()) {
    }
    return _read;
}

void TerminalWindow::type(std::string const& text) const {
    required(static_cast<int>(write(_window, text.data(), text.size())), "typing");
}

bool TerminalWindow::readMore() {
    char buffer[512];
    ssize_t const length = read(_window, buffer, sizeof buffer);
    if (length <= 0) {
        return false;
    }
    _read.append(buffer, static_cast<std::size_t>(length));
    return true;
}
