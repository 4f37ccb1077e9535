#include "simulation/vsc7390/TableUnit.hpp"

namespace simulation::vitesse {

TableUnit::TableUnit(Context& context, RegisterFile& registers, unsigned address, Field const& command,
                     unsigned readCommand)
    : _context(context),
      _registers(registers),
      _address(address),
      _field(command),
      _command(readCommand),
      _timer(context.services.clock) {}

Register TableUnit::attachedTo(Register row) {
    return row.staging()
        .onRead([this](std::uint32_t stored) {
            return _timer.isBusy() ? stored | _field.placed(_command) : stored;
        })
        .onWrite([this](std::uint32_t word) { start(word); });
}

void TableUnit::start(std::uint32_t word) {
    _registers.store(_address, word & ~_field.getMask());
    unsigned const command = _field.get(word);
    if (command == 0) {
        return;
    }
    if (_timer.isBusy()) {
        _registers.report(MisuseReport::Kind::commandWhileBusy, _address, "the last command still runs");
    }
    _command = command;
    _timer.start(usualNanoseconds(command));
    perform(command, word);
}

} // namespace simulation::vitesse
