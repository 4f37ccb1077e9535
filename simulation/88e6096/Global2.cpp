#include "simulation/88e6096/Global2.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

Global2::Global2(Context& context, Phys& phys)
    : _context(context),
      _phys(phys),
      _timer(context.services.clock, context.options.smiPhyBusyNanoseconds),
      _registers(context.services, context.chip, "global 2", table()) {}

RegisterTable Global2::table() {
    return {
        Register(global2::managementEnable2x, "MGMTEnable2x").field("Enable", 15, 0),
        Register(global2::managementEnable0x, "MGMTEnable0x").field("Enable", 15, 0),
        Register(global2::switchManagement, "SwitchManagement").field("RSVD2CPU", 3),
        Register(global2::smiPhyCommand, "SMIPHYCommand")
            .staging()
            .field(busy.called("SMIBusy"))
            .field("SMIMode", 12)
            .field(smi::operation)
            .field(smi::device)
            .field(smi::address)
            .onRead([this](std::uint32_t stored) { return withBusy(stored, _timer); })
            .onWrite([this](std::uint32_t word) { operate(word); }),
        Register(global2::smiPhyData, "SMIPHYData").staging().field("Data", 15, 0),
    };
}

// The mode bit makes no difference: drivers write PHYs with it clear and read them with it set.
void Global2::operate(std::uint32_t word) {
    if (!startCommand(_registers, global2::smiPhyCommand, word, _timer)) {
        return;
    }
    unsigned const phy = smi::device.get(word);
    unsigned const address = smi::address.get(word);
    switch (smi::operation.get(word)) {
    case smi::read:
        return read(phy, address);
    case smi::write:
        return write(phy, address);
    default:
        _registers.report(MisuseReport::Kind::meaninglessCommand, global2::smiPhyCommand,
                          "neither read nor write");
    }
}

void Global2::read(unsigned phy, unsigned address) {
    std::uint32_t value = absent;
    if (phy < _phys.size()) {
        value = _phys[phy]->getRegisters().read(address, _context.transfer);
    } else {
        _context.services.log.addRead(absentPhy(phy), address, _context.transfer, value);
    }
    _registers.store(global2::smiPhyData, value);
}

void Global2::write(unsigned phy, unsigned address) {
    std::uint32_t const value = _registers.getStored(global2::smiPhyData);
    if (phy < _phys.size()) {
        _phys[phy]->getRegisters().write(address, value, _context.transfer);
    } else {
        _context.services.log.addWrite(absentPhy(phy), address, _context.transfer, value, absent, absent);
    }
}

std::shared_ptr<UnitIdentity const> const& Global2::absentPhy(unsigned phy) {
    auto& identity = _absentPhys[phy];
    if (identity == nullptr) {
        identity = std::make_shared<UnitIdentity const>(
            UnitIdentity{_context.chip, "phy " + std::to_string(phy), {}});
    }
    return identity;
}

RegisterFile& Global2::getRegisters() {
    return _registers;
}

CommandTimer& Global2::getTimer() {
    return _timer;
}

} // namespace simulation::marvell
