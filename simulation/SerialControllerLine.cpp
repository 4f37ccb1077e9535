#include "simulation/SerialControllerLine.hpp"

namespace simulation {

std::string const& SerialControllerLine::getDevicePath() const {
    return _terminal.getDevicePath();
}

int SerialControllerLine::getDescriptor() const {
    return _terminal.getDescriptor();
}

PseudoTerminal const& SerialControllerLine::getTerminal() const {
    return _terminal;
}

void SerialControllerLine::send(std::string const& text) {
    std::lock_guard<std::mutex> const lock(_mutex);
    _sent.append(text, 0, _terminal.send(text));
}

std::string SerialControllerLine::receive() {
    std::lock_guard<std::mutex> const lock(_mutex);
    std::string const text = _terminal.receive();
    _received += text;
    return text;
}

std::string SerialControllerLine::getReceived() const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return _received;
}

std::string SerialControllerLine::getSent() const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return _sent;
}

} // namespace simulation
