#include "simulation/vsc7390/VlanTable.hpp"

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

namespace {

constexpr std::uint32_t entryBits = vlan::mask.getMask() | vlan::sourceCheck.getMask() |
                                    vlan::mirror.getMask() | vlan::learnDisabled.getMask();

} // namespace

VlanTable::VlanTable(Context& context, RegisterFile& registers)
    : TableUnit(context, registers, analyser::vlanAccess, vlan::command, vlan::readEntry) {
    clear();
}

std::uint64_t VlanTable::usualNanoseconds(unsigned command) const {
    return command == vlan::clearTable ? _context.options.vlanClearNanoseconds
                                       : _context.options.vlanAccessNanoseconds;
}

void VlanTable::perform(unsigned command, std::uint32_t word) {
    std::uint32_t& entry = _entries[_registers.getStored(analyser::vlanIndex)];
    if (command == vlan::clearTable) {
        clear();
    } else if (command == vlan::readEntry) {
        _registers.store(analyser::vlanAccess, entry);
    } else {
        entry = word & entryBits;
    }
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
