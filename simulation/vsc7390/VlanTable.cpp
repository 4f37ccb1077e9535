#include "simulation/vsc7390/VlanTable.hpp"

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

namespace {

enum Command : unsigned { idle = 0, readEntry = 1, writeEntry = 2, clearTable = 3 };

constexpr std::uint32_t entryBits = maskOf(vlan::mask.high, vlan::mask.low) | bit(vlan::sourceCheck) |
                                    bit(vlan::mirror) | bit(vlan::learnDisabled);

} // namespace

VlanTable::VlanTable(Context& context, RegisterFile& registers)
    : _context(context), _registers(registers), _timer(context.services.clock) {
    clear();
}

void VlanTable::operate(std::uint32_t word) {
    unsigned const command = fieldOf(word, vlan::command);
    _registers.store(analyser::vlanAccess, word & ~maskOf(vlan::command.high, vlan::command.low));
    if (command == idle) {
        return;
    }
    if (_timer.isBusy()) {
        _registers.report(MisuseReport::Kind::commandWhileBusy, analyser::vlanAccess,
                          "the last command still runs");
    }
    _command = command;
    unsigned const vid = _registers.getStored(analyser::vlanIndex);
    if (command == clearTable) {
        _timer.start(_context.options.vlanClearNanoseconds);
        return clear();
    }
    _timer.start(_context.options.vlanAccessNanoseconds);
    if (command == readEntry) {
        _registers.store(analyser::vlanAccess, _entries[vid]);
    } else {
        _entries[vid] = word & entryBits;
    }
}

std::uint32_t VlanTable::shown(std::uint32_t stored) const {
    if (!_timer.isBusy()) {
        return stored;
    }
    return stored | placedAt(_command == idle ? readEntry : _command, vlan::command);
}

CommandTimer& VlanTable::getTimer() {
    return _timer;
}

VlanTable::Entry VlanTable::getEntry(unsigned vid) const {
    std::uint32_t const word = _entries[vid];
    return {fieldOf(word, vlan::mask), isSet(word, vlan::sourceCheck), isSet(word, vlan::mirror),
            isSet(word, vlan::learnDisabled)};
}

void VlanTable::setEntry(unsigned vid, Entry const& entry) {
    _entries[vid] = placedAt(entry.ports, vlan::mask) | (entry.sourceCheck ? bit(vlan::sourceCheck) : 0) |
                    (entry.mirror ? bit(vlan::mirror) : 0) |
                    (entry.learnDisabled ? bit(vlan::learnDisabled) : 0);
}

bool VlanTable::isCleared(unsigned vid) const {
    return _entries[vid] == clearedWord();
}

void VlanTable::clear() {
    _entries.fill(clearedWord());
}

std::uint32_t VlanTable::clearedWord() const {
    return _context.options.vlanClear == Vsc7390Options::VlanClear::noMembers
               ? 0
               : placedAt(allPorts, vlan::mask);
}

} // namespace simulation::vitesse
