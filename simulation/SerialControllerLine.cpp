#include "simulation/SerialControllerLine.hpp"

namespace simulation {

std::string const& SerialControllerLine::getDevicePath() const {
    return _terminal.getDevicePath();
}

int SerialControllerLine::getDescriptor() const {
    return _terminal.getDescriptor();
}

void SerialControllerLine::send(std::string const& text) {
    std::lock_guard<std::mutex> const lock(_mutex);
    std::string const arriving = carried(_toDriver, text);
    _sent.append(arriving, 0, _terminal.send(arriving));
}

std::string SerialControllerLine::receive() {
    std::lock_guard<std::mutex> const lock(_mutex);
    std::string text = carried(_toController, _terminal.receive());
    _received += text;
    return text;
}

void SerialControllerLine::disturb(Direction direction, std::size_t character, CharacterFault fault) {
    std::lock_guard<std::mutex> const lock(_mutex);
    (direction == Direction::toController ? _toController : _toDriver).faults[character] = fault;
}

std::size_t SerialControllerLine::getTaken() const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return _toController.characters;
}

std::string SerialControllerLine::carried(Way& way, std::string const& text) {
    std::string arriving;
    for (char const character : text) {
        auto const fault = way.faults.find(++way.characters);
        if (fault == way.faults.end()) {
            arriving += character;
        } else if (fault->second == CharacterFault::doubled) {
            arriving.append(2, character);
        } else if (fault->second == CharacterFault::garbled) {
            arriving += static_cast<char>(character ^ 1);
        }
    }
    return arriving;
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
