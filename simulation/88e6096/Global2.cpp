#include "simulation/88e6096/Global2.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

Global2::Global2(Context& context, Phys& phys)
    : RegisterFile(context.services,
                   {context.chip, UnitKind::global, 2, {UnitPlace::Space::device, 0, global2Device}}),
      CommandUnit(context, *this, global2::smiPhyCommand, context.options.smiPhyBusyNanoseconds),
      _context(context),
      _phys(phys) {
    define(table());
}

RegisterTable Global2::table() {
    return {
        Register(global2::managementEnable2x, "MGMTEnable2x").field("Enable", 15, 0),
        Register(global2::managementEnable0x, "MGMTEnable0x").field("Enable", 15, 0),
        Register(global2::switchManagement, "SwitchManagement").field("RSVD2CPU", 3),
        attachedTo(Register(global2::smiPhyCommand, "SMIPHYCommand")
                       .field(busy.called("SMIBusy"))
                       .field("SMIMode", 12)
                       .field(smi::operation)
                       .field(smi::device)
                       .field(smi::address)),
        Register(global2::smiPhyData, "SMIPHYData").staging().field("Data", 15, 0),
    };
}

// The mode bit makes no difference: drivers write PHYs with it clear and read them with it set.
void Global2::perform(std::uint32_t word) {
    unsigned const phy = smi::device.get(word);
    unsigned const address = smi::address.get(word);
    switch (smi::operation.get(word)) {
    case smi::read:
        return store(global2::smiPhyData, readPhy(phy, address));
    case smi::write:
        return writePhy(phy, address, getStored(global2::smiPhyData));
    default:
        reportMeaningless("neither read nor write");
    }
}

std::uint32_t Global2::readPhy(unsigned phy, unsigned address) {
    return phy < _phys.size() ? _phys[phy].read(address, _context.transfer)
                              : absentPhy(phy).read(address, _context.transfer);
}

void Global2::writePhy(unsigned phy, unsigned address, std::uint32_t value) {
    if (phy < _phys.size()) {
        _phys[phy].write(address, value, _context.transfer);
    } else {
        absentPhy(phy).write(address, value, _context.transfer);
    }
}

AbsentUnit Global2::absentPhy(unsigned phy) const {
    return {_context.services,
            _context.chip,
            "phy " + std::to_string(phy),
            {UnitPlace::Space::phy, 0, phy},
            absent};
}

} // namespace simulation::marvell
