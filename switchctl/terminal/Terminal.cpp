#include "switchctl/terminal/Terminal.hpp"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <string>

namespace switchctl {

namespace {

constexpr Terminal::Size usualSize = {24, 80};

std::string variable(char const* name) {
    char const* const text = std::getenv(name);
    return text == nullptr ? "" : text;
}

} // namespace

int Terminal::descriptorOf(std::ostream const& stream) {
    if (&stream == &std::cout) {
        return STDOUT_FILENO;
    }
    return &stream == &std::cerr ? STDERR_FILENO : -1;
}

bool Terminal::isAt(int descriptor) {
    return descriptor >= 0 && isatty(descriptor) == 1 && variable("TERM") != "dumb";
}

bool Terminal::hasColoursAt(int descriptor) {
    return isAt(descriptor) && variable("NO_COLOR").empty();
}

Terminal::Size Terminal::getSize(int descriptor) {
    winsize size{};
    if (ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0) {
        return usualSize;
    }
    return {size.ws_row, size.ws_col};
}

} // namespace switchctl
