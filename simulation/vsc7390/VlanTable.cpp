#include "simulation/vsc7390/VlanTable.hpp"

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

namespace {

constexpr std::uint32_t entryBits = vlan::mask.getMask() | vlan::sourceCheck.getMask() |
                                    vlan::mirror.getMask() | vlan::learnDisabled.getMask();

} // namespace

VlanTable::VlanTable(Context& context, RegisterFile& registers)
    : _context(context), _registers(registers), _timer(context.services.clock) {
    clear();
}

void VlanTable::operate(std::uint32_t word) {
    unsigned const command = vlan::command.get(word);
    _registers.store(analyser::vlanAccess, word & ~vlan::command.getMask());
    if (command == vlan::idle) {
        return;
    }
    if (_timer.isBusy()) {
        _registers.report(MisuseReport::Kind::commandWhileBusy, analyser::vlanAccess,
                          "the last command still runs");
    }
    _command = command;
    unsigned const vid = _registers.getStored(analyser::vlanIndex);
    if (command == vlan::clearTable) {
        _timer.start(_context.options.vlanClearNanoseconds);
        return clear();
    }
    _timer.start(_context.options.vlanAccessNanoseconds);
    if (command == vlan::readEntry) {
        _registers.store(analyser::vlanAccess, _entries[vid]);
    } else {
        _entries[vid] = word & entryBits;
    }
}

std::uint32_t VlanTable::shown(std::uint32_t stored) const {
    if (!_timer.isBusy()) {
        return stored;
    }
    return stored | vlan::command.placed(_command == vlan::idle ? vlan::readEntry : _command);
}

CommandTimer& VlanTable::getTimer() {
    return _timer;
}

VlanTable::Entry VlanTable::getEntry(unsigned vid) const {
    std::uint32_t const word = _entries[vid];
    return {vlan::mask.get(word), vlan::sourceCheck.isSet(word), vlan::mirror.isSet(word),
            vlan::learnDisabled.isSet(word)};
}

void VlanTable::setEntry(unsigned vid, Entry const& entry) {
    _entries[vid] = vlan::mask.placed(entry.ports) | vlan::sourceCheck.placed(entry.sourceCheck) |
                    vlan::mirror.placed(entry.mirror) | vlan::learnDisabled.placed(entry.learnDisabled);
}

bool VlanTable::isCleared(unsigned vid) const {
    return _entries[vid] == clearedWord();
}

void VlanTable::clear() {
    _entries.fill(clearedWord());
}

std::uint32_t VlanTable::clearedWord() const {
    return _context.options.vlanClear == Vsc7390Options::VlanClear::noMembers ? 0
                                                                              : vlan::mask.placed(allPorts);
}

} // namespace simulation::vitesse
