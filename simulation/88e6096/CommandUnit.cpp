#include "simulation/88e6096/CommandUnit.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

CommandUnit::CommandUnit(Context& context, RegisterFile& registers, unsigned address,
                         std::uint64_t busyNanoseconds)
    : _registers(registers), _address(address), _timer(context.services.clock, busyNanoseconds) {}

void CommandUnit::clearDone() {
    if (isDone()) {
        _commandsSeenDone = _timer.getCommands();
    }
}

Register CommandUnit::attachedTo(Register row) {
    return row.staging()
        .onRead([this](std::uint32_t stored) { return withBusy(stored, _timer); })
        .onWrite([this](std::uint32_t word) { start(word); });
}

std::uint32_t CommandUnit::withBusy(std::uint32_t stored, CommandTimer const& timer) {
    return stored | busy.placed(timer.isBusy());
}

void CommandUnit::start(std::uint32_t word) {
    _registers.store(_address, word & ~busy.getMask());
    if (!busy.isSet(word)) {
        return;
    }
    if (_timer.isBusy()) {
        _registers.report(MisuseReport::Kind::commandWhileBusy, _address, "the last command still runs");
    }
    _timer.start();
    perform(word);
}

void CommandUnit::reportMeaningless(char const* what) const {
    _registers.report(MisuseReport::Kind::meaninglessCommand, _address, what);
}

} // namespace simulation::marvell
