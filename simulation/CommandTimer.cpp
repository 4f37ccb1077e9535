#include "simulation/CommandTimer.hpp"

namespace simulation {

CommandTimer::CommandTimer(VirtualClock const& clock, std::uint64_t busyNanoseconds)
    : _clock(clock), _busyNanoseconds(busyNanoseconds) {}

void CommandTimer::start() {
    start(_busyNanoseconds);
}

void CommandTimer::start(std::uint64_t usualNanoseconds) {
    ++_commands;
    _busyUntil = _clock.getNanoseconds() + (_isTimeSet ? _busyNanoseconds : usualNanoseconds);
    if (_commandsToHang > 0) {
        --_commandsToHang;
        _hangs = _commandsToHang == 0;
    }
    _isLost = _commandsToLose > 0;
    if (_isLost) {
        --_commandsToLose;
    }
}

bool CommandTimer::isBusy() const {
    return _hangs || _clock.getNanoseconds() < _busyUntil;
}

bool CommandTimer::isDone() const {
    return _commands > 0 && !isBusy() && !_isLost;
}

void CommandTimer::setBusyTime(std::uint64_t nanoseconds) {
    _busyNanoseconds = nanoseconds;
    _isTimeSet = true;
}

void CommandTimer::hang(unsigned nthCommand) {
    _commandsToHang = nthCommand;
    _hangs = nthCommand == 0;
}

void CommandTimer::release() {
    _commandsToLose = 0;
    _isLost = false;
    _commandsToHang = 0;
    _hangs = false;
    _busyUntil = 0;
}

} // namespace simulation
