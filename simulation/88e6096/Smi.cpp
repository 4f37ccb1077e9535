#include "simulation/88e6096/Smi.hpp"

#include <utility>

#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

Smi::Smi(Context& context, DeviceFinder findDevice)
    : _context(context),
      _findDevice(std::move(findDevice)),
      _timer(context.services.clock, context.options.smiBusyNanoseconds),
      _fault(context.services.clock) {}

std::uint16_t Smi::mdioRead(unsigned registerAddress) {
    if (!_isPlugged) {
        return static_cast<std::uint16_t>(absent);
    }
    switch (registerAddress) {
    case smi::command:
        return readCommand();
    case smi::data:
        _isAccessOpen = false;
        return _data;
    default:
        report(MisuseReport::Kind::unknownRegister, "none", "read");
        return static_cast<std::uint16_t>(absent);
    }
}

void Smi::mdioWrite(unsigned registerAddress, std::uint16_t value) {
    if (!_isPlugged) {
        return;
    }
    switch (registerAddress) {
    case smi::command:
        return start(value);
    case smi::data:
        _data = value;
        return;
    default:
        report(MisuseReport::Kind::unknownRegister, "none", "write");
    }
}

std::uint16_t Smi::readCommand() {
    bool const isFaulty = !_isAccessOpen && _fault.isBusy();
    return static_cast<std::uint16_t>(isFaulty ? _command | busy.getMask()
                                               : CommandUnit::withBusy(_command, _timer));
}

void Smi::start(std::uint16_t word) {
    _command = static_cast<std::uint16_t>(word & ~busy.getMask());
    if (!busy.isSet(word)) {
        return;
    }
    unsigned const operation = smi::operation.get(word);
    if (operation != smi::read && operation != smi::write) {
        report(MisuseReport::Kind::meaninglessCommand, "SMICommand", "neither read nor write");
        return;
    }
    if (_timer.isBusy()) {
        report(MisuseReport::Kind::commandWhileBusy, "SMICommand", "the last command still runs");
    }
    _timer.start();
    _fault.accessStarted();
    _context.transfer = _timer.getCommands();
    RegisterFile& registers = _findDevice(smi::device.get(word));
    unsigned const address = smi::address.get(word);
    _isAccessOpen = operation == smi::read;
    if (_isAccessOpen) {
        _data = static_cast<std::uint16_t>(registers.read(address, _context.transfer));
    } else {
        registers.write(address, _data, _context.transfer);
    }
}

void Smi::report(MisuseReport::Kind kind, char const* registerName, char const* text) {
    _context.services.misuse.add(kind, _context.chip, "smi", registerName, text);
}

} // namespace simulation::marvell
