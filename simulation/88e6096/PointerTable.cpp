#include "simulation/88e6096/PointerTable.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

PointerTable::PointerTable(RegisterFile& registers, unsigned address, Field const& pointer, Field const& data,
                           std::uint32_t entryReset)
    : _registers(registers), _address(address), _pointer(pointer), _data(data), _entryReset(entryReset) {
    reset();
}

Register PointerTable::attachedTo(Register row) {
    return row.staging()
        .onRead([this](std::uint32_t stored) {
            return (stored & ~_data.getMask()) | _data.placed(get(_pointer.get(stored)));
        })
        .onWrite([this](std::uint32_t word) { write(word); });
}

void PointerTable::reset() {
    _entries.assign(bit(_pointer.high - _pointer.low + 1), _entryReset);
    _common = 0;
}

void PointerTable::write(std::uint32_t word) {
    if (global2::update.isSet(word)) {
        _entries[_pointer.get(word)] = _data.get(word);
        _common = word & ~global2::update.getMask() & ~_pointer.getMask() & ~_data.getMask();
    }
    _registers.store(_address, (word & _pointer.getMask()) | _common);
}

} // namespace simulation::marvell
