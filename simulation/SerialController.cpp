#include "simulation/SerialController.hpp"

#include <fmt/format.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "simulation/SimulatedBoard.hpp"
#include "simulation/WindowRegistry.hpp"

namespace simulation {

namespace {

constexpr char const* lineEnd = "\r\n";
constexpr char const* answerPrefix = "0x";
constexpr unsigned registerDigits = 8;
constexpr unsigned phyDigits = 4;
/// More than any command has.
constexpr std::size_t longestLine = 64;
constexpr std::chrono::seconds patience{10};

BusDevice& chipOf(SimulatedBoard& board) {
    SimulatedWindow const* const window =
        board.window(Vsc7390TestSide::physicalAddress, Vsc7390TestSide::windowSize);
    if (window == nullptr) {
        throw std::out_of_range("the board has no VSC7390");
    }
    return *WindowRegistry::getInstance().find(window->getBaseAddress());
}

int makeEndSignal() {
    int const descriptor = eventfd(0, 0);
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category(), "no event");
    }
    return descriptor;
}

std::string printable(std::string const& line) {
    std::string text;
    for (char const character : line) {
        bool const isPlain = character >= ' ' && character <= '~';
        text += isPlain ? std::string(1, character)
                        : fmt::format("\\x{:02x}", static_cast<unsigned char>(character));
    }
    return text;
}

} // namespace

SerialController::SerialController(SimulatedBoard& board)
    : _misuse(board.getMisuse()),
      _chip(chipOf(board), board.getClock()),
      _line(std::make_shared<SerialControllerLine>()),
      _end(makeEndSignal()),
      _thread([this] { run(); }) {}

SerialController::~SerialController() {
    eventfd_write(_end, 1);
    _thread.join();
    close(_end);
}

std::string const& SerialController::getDevicePath() const {
    return _line->getDevicePath();
}

std::string SerialController::getReceived() const {
    return _line->getReceived();
}

std::string SerialController::getSent() const {
    return _line->getSent();
}

unsigned SerialController::getCommands() const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return _commands;
}

bool SerialController::waitForCommands(unsigned count) const {
    std::unique_lock<std::mutex> lock(_mutex);
    return _changed.wait_for(lock, patience, [&] { return _commands >= count; });
}

PseudoTerminal const& SerialController::getTerminal() const {
    return _line->getTerminal();
}

void SerialController::disturb(Disturbance disturbance, unsigned characters) {
    std::lock_guard<std::mutex> const lock(_mutex);
    _disturbance = disturbance;
    _disturbedCharacters = characters;
}

void SerialController::answerNext(std::string const& text) {
    std::lock_guard<std::mutex> const lock(_mutex);
    _nextAnswer = text;
}

void SerialController::disturbCharacter(SerialControllerLine::Direction direction, std::size_t character,
                                        SerialControllerLine::CharacterFault fault) {
    _line->disturb(direction, character, fault);
}

bool SerialController::waitForCharacters(std::size_t count) const {
    std::unique_lock<std::mutex> lock(_mutex);
    return _changed.wait_for(lock, patience, [&] { return _characters >= count; });
}

void SerialController::delayAnswers(VirtualClock& clock, std::uint64_t nanoseconds) {
    std::lock_guard<std::mutex> const lock(_mutex);
    _delayClock = &clock;
    _delayNanoseconds = nanoseconds;
}

void SerialController::run() {
    std::array<pollfd, 2> waits = {{{_line->getDescriptor(), POLLIN, 0}, {_end, POLLIN, 0}}};
    while (waits[1].revents == 0) {
        if (poll(waits.data(), waits.size(), -1) > 0 && waits[0].revents != 0) {
            take(_line->receive());
            countCharacters();
        }
    }
}

void SerialController::take(std::string const& text) {
    for (char const character : text) {
        if (character == '\n') {
            finishLine();
        } else if (_pending.size() <= longestLine) {
            _pending += character;
        }
    }
}

void SerialController::countCharacters() {
    std::lock_guard<std::mutex> const lock(_mutex);
    _characters = _line->getTaken();
    _changed.notify_all();
}

void SerialController::finishLine() {
    std::string line = std::exchange(_pending, {});
    if (line.size() > longestLine) {
        report(line.substr(0, longestLine), "too long");
    } else if (line.empty() || line.back() != '\r') {
        report(line, "no carriage return before the line feed");
    } else {
        line.pop_back();
        execute(line);
    }
    countCommand();
}

void SerialController::execute(std::string const& line) {
    std::string reason;
    if (auto const command = SerialControllerCommand::parse(line, reason)) {
        carryOut(*command);
    } else {
        report(line, reason);
    }
}

void SerialController::carryOut(SerialControllerCommand const& command) {
    using Operation = SerialControllerCommand::Operation;
    std::vector<std::uint32_t> const& operands = command.operands;
    switch (command.operation) {
    case Operation::readRegister:
        return answer(_chip.readRegister(operands[0], operands[1], operands[2]), registerDigits);
    case Operation::writeRegister:
        _chip.writeRegister(operands[0], operands[1], operands[2], operands[3]);
        return;
    case Operation::readPhy:
        return answer(_chip.readPhy(operands[0], operands[1]), phyDigits);
    case Operation::writePhy:
        _chip.writePhy(operands[0], operands[1], static_cast<std::uint16_t>(operands[2]));
        return;
    }
}

void SerialController::answer(std::optional<std::uint32_t> value, unsigned digits) {
    std::unique_lock<std::mutex> lock(_mutex);
    if (_nextAnswer) {
        std::string const text = *std::exchange(_nextAnswer, std::nullopt);
        lock.unlock();
        return transmit(text);
    }
    if (!value || _disturbance == Disturbance::silent) {
        return;
    }
    std::string const number = _disturbance == Disturbance::garbled ? std::string(digits, '?')
                                                                    : fmt::format("{:0{}x}", *value, digits);
    std::string text = answerPrefix + number + lineEnd;
    if (_disturbance == Disturbance::shortened) {
        text.resize(text.size() - std::min<std::size_t>(text.size(), _disturbedCharacters));
    } else if (_disturbance == Disturbance::lengthened) {
        text.append(_disturbedCharacters, '+');
    }
    lock.unlock();
    transmit(text);
}

void SerialController::transmit(std::string const& text) {
    std::unique_lock<std::mutex> lock(_mutex);
    VirtualClock* const clock = _delayClock;
    std::uint64_t const delay = _delayNanoseconds;
    lock.unlock();
    if (delay == 0) {
        _line->send(text);
        return;
    }
    clock->callAt(clock->getNanoseconds() + delay, [weakLine = std::weak_ptr(_line), text] {
        if (auto const line = weakLine.lock()) {
            line->send(text);
        }
    });
}

void SerialController::report(std::string const& line, std::string const& reason) {
    _misuse.add(MisuseReport::Kind::malformedCommand, "serial controller", "line", "none",
                "\"" + printable(line) + "\": " + reason);
}

void SerialController::countCommand() {
    std::lock_guard<std::mutex> const lock(_mutex);
    ++_commands;
    _changed.notify_all();
}

} // namespace simulation
