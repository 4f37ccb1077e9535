#include "switchctl/terminal/OutputDiversion.hpp"

#include <cerrno>
#include <string_view>
#include <system_error>

namespace switchctl {

namespace {

// As vitesse/SerialPort.cpp has it.
constexpr char const* openingOfLine = "SerialPort::SetBaud(): Setting baud rate for ";

ssize_t passOn(void* elsewhere, char const* text, std::size_t length) {
    if (std::string_view(text, length).rfind(openingOfLine, 0) == 0) {
        return static_cast<ssize_t>(length);
    }
    static_cast<std::ostream*>(elsewhere)->write(text, static_cast<std::streamsize>(length));
    return static_cast<ssize_t>(length);
}

} // namespace

OutputDiversion::OutputDiversion(std::ostream& elsewhere)
    : _before(stdout), _diverted(fopencookie(&elsewhere, "w", {nullptr, passOn, nullptr, nullptr})) {
    if (_diverted == nullptr) {
        throw std::system_error(errno, std::generic_category(), "standard output");
    }
    stdout = _diverted;
}

OutputDiversion::~OutputDiversion() {
    stdout = _before;
    std::fclose(_diverted);
}

} // namespace switchctl
