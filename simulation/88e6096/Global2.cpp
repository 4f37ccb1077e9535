#include "simulation/88e6096/Global2.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

namespace {

constexpr Field deviceNumber{"TargetDevice", 12, 8};
constexpr Field devicePort{"Port", 3, 0};
constexpr Field macPointer{"Pointer", 12, 8};
constexpr Field macByte{"Byte", 7, 0};
constexpr Field priorityPointer{"Pointer", 11, 8};
constexpr Field priorityData{"Data", 7, 0};

} // namespace

Global2::Global2(Context& context, Phys& phys)
    : RegisterFile(context.services,
                   {context.chip, UnitKind::global, 2, {UnitPlace::Space::device, 0, global2Device}}),
      CommandUnit(context, *this, global2::smiPhyCommand, context.options.smiPhyBusyNanoseconds),
      _context(context),
      _phys(phys),
      _devices(*this, global2::deviceMapping, deviceNumber, devicePort),
      _trunkMasks(*this, global2::trunkMask, global2::trunkMaskNumber, global2::trunkPorts,
                  global2::trunkPorts.getMask()),
      _trunkMembers(*this, global2::trunkMapping, global2::trunkId, global2::trunkMembers),
      _switchMac(*this, global2::switchMac, macPointer, macByte),
      _priorities(*this, global2::priorityOverride, priorityPointer, priorityData) {
    define(table());
}

void Global2::resetAll() {
    reset();
    for (PointerTable* const table : {&_devices, &_trunkMasks, &_trunkMembers, &_switchMac, &_priorities}) {
        table->reset();
    }
}

RegisterTable Global2::table() {
    RegisterTable table{
        Register(global2::managementEnable2x, "MGMTEnable2x").field("Enable", 15, 0),
        Register(global2::managementEnable0x, "MGMTEnable0x").field("Enable", 15, 0),
        Register(global2::switchManagement, "SwitchManagement")
            .field("UseDoubleTagData", 15)
            .field("PreventLoops", 14)
            .field("FlowControlMessage", 13)
            .field("ForceFlowControlPri", 7)
            .field("FlowControlPri", 6, 4)
            .field(global2::reservedToCpu)
            .field("MGMTPri", 2, 0),
        attachedTo(Register(global2::smiPhyCommand, "SMIPHYCommand")
                       .field(busy.called("SMIBusy"))
                       .field("SMIMode", 12)
                       .field(smi::operation)
                       .field(smi::device)
                       .field(smi::address)),
        Register(global2::smiPhyData, "SMIPHYData").staging().field("Data", 15, 0),
    };
    addTables(table);
    addCommands(table);
    return table;
}

void Global2::addTables(RegisterTable& table) {
    table.add(_devices.attachedTo(Register(global2::deviceMapping, "DeviceMapping")
                                      .selfClearing(global2::update)
                                      .field(deviceNumber)
                                      .field(devicePort)));
    table.add(_trunkMasks.attachedTo(Register(global2::trunkMask, "TrunkMask")
                                         .selfClearing(global2::update)
                                         .field(global2::trunkMaskNumber)
                                         .field(global2::hashTrunk)
                                         .field(global2::trunkPorts)));
    table.add(_trunkMembers.attachedTo(Register(global2::trunkMapping, "TrunkMapping")
                                           .selfClearing(global2::update)
                                           .field(global2::trunkId)
                                           .field(global2::trunkMembers)));
    table.add(_switchMac.attachedTo(Register(global2::switchMac, "SwitchMAC")
                                        .selfClearing(global2::update)
                                        .field(macPointer)
                                        .field(macByte)));
    table.add(_priorities.attachedTo(Register(global2::priorityOverride, "PriorityOverride")
                                         .selfClearing(global2::update)
                                         .field("Other", 14, 12)
                                         .field(priorityPointer)
                                         .field(priorityData)));
}

void Global2::addCommands(RegisterTable& table) {
    table.add(commandWithoutUnit(global2::ingressRateCommand, "IngressRateCommand"));
    table.add(Register(global2::ingressRateData, "IngressRateData").staging().field("Data", 15, 0));
    table.add(commandWithoutUnit(global2::crossChipAddress, "CrossChipAddress"));
    table.add(Register(global2::crossChipData, "CrossChipData").staging().field("Data", 15, 0));
    table.add(Register(global2::atuStatistics, "ATUStatistics").field("Data", 15, 0));
    table.add(commandWithoutUnit(global2::eepromCommand, "EEPROMCommand"));
    table.add(Register(global2::eepromData, "EEPROMData").staging().field("Data", 15, 0));
}

// Rate limits, cross-chip paths and the EEPROM are no part of the model: their commands end at once, and
// nothing stands behind them. A driver that waits for the end goes on.
Register Global2::commandWithoutUnit(unsigned address, char const* name) {
    return Register(address, name)
        .staging()
        .selfClearing(busy)
        .field("Command", 14, 0)
        .onWrite([this, address](std::uint32_t word) { store(address, word & ~busy.getMask()); });
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
