#include "simulation/vsc7390/Analyser.hpp"

#include <utility>

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

namespace {

std::string numbered(char const* name, unsigned number) {
    return std::string(name) + "_" + std::to_string(number);
}

Register portMask(unsigned address, std::string const& name, std::uint32_t reset) {
    return Register(address, name, reset).field(ports);
}

} // namespace

Analyser::Analyser(Context& context)
    : RegisterFile(context.services,
                   {context.chip, UnitKind::analyser, 0, {UnitPlace::Space::block, block::analyser, 0}}),
      _context(context),
      _vlanTable(context, *this),
      _macTable(context, *this) {
    define(table());
}

RegisterTable Analyser::table() {
    RegisterTable table = {
        Register(analyser::advancedLearning, "ADVLEARN").field(analyser::refusedNotLearnt),
        Register(analyser::aggregationControl, "AGGRCTRL").field("Mode", 31, 0),
        Register(analyser::captureEnable, "CAPENAB").field("Enable", 31, 0),
    };
    addNamedOnly(table);
    addPortMasks(table);
    addMaskArrays(table);
    addTableAccess(table);
    return table;
}

// Drivers of the family use these, but not in a way that tells what is in them. Those that the chip itself
// changes may forget by being read.
void Analyser::addNamedOnly(RegisterTable& table) {
    table.add(Register(analyser::stormLimit, "STORMLIMIT").unknownReset().field("Data", 31, 0));
    table.add(Register(analyser::ageFilter, "ANAGEFIL").unknownReset().field("Data", 31, 0));
    table.add(Register(analyser::countMask, "ANCNTMASK").unknownReset().field("Data", 31, 0));
    table.add(Register(analyser::ageControl, "AGENCTRL").unknownReset().field("Data", 31, 0));
    for (auto const& [address, name] :
         {std::pair(analyser::stationMoved, "ANMOVED"), std::pair(analyser::events, "ANEVENTS"),
          std::pair(analyser::countValue, "ANCNTVAL")}) {
        table.add(Register(address, name).unstable().changedByRead().unknownReset().field("Data", 31, 0));
    }
}

void Analyser::addPortMasks(RegisterTable& table) const {
    table.add(portMask(analyser::ipMulticastFlood, "IFLODMSK", allPorts));
    table.add(portMask(analyser::vlanMask, "VLANMASK", 0));
    table.add(portMask(analyser::learnMask, "LEARNMASK", allPorts));
    table.add(portMask(analyser::unicastFlood, "UFLODMASK", allPorts));
    table.add(portMask(analyser::multicastFlood, "MFLODMASK", allPorts));
    table.add(portMask(analyser::receiveMask, "RECVMASK", allPorts));
}

void Analyser::addMaskArrays(RegisterTable& table) const {
    for (unsigned number = 0; number < analyser::numberOfAggregationMasks; ++number) {
        table.add(
            portMask(analyser::aggregationMasks + number, numbered("AGGRMSKS", number), aggregationReset()));
    }
    for (unsigned number = 0; number < analyser::numberOfDestinationMasks; ++number) {
        table.add(portMask(analyser::destinationMasks + number, numbered("DSTMASKS", number),
                           destinationReset(number)));
    }
    for (unsigned number = 0; number < analyser::numberOfSourceMasks; ++number) {
        table.add(Register(analyser::sourceMasks + number, numbered("SRCMASKS", number), sourceReset(number))
                      .field("Other", 31, 28)
                      .field(analyser::cpuCopy)
                      .field(analyser::mirror)
                      .field("Other", 25)
                      .field(ports));
    }
}

void Analyser::addTableAccess(RegisterTable& table) {
    table.add(Register(analyser::macHigh, "MACHDATA").staging().field(mac::vid).field(mac::highBytes));
    table.add(Register(analyser::macLow, "MACLDATA").staging().field("Mac2345", 31, 0));
    table.add(_macTable.attachedTo(Register(analyser::macAccess, "MACACCESS")
                                       .field(mac::cpuCopy)
                                       .field(mac::forwardKill)
                                       .field(mac::ignoreVlan)
                                       .field(mac::aged)
                                       .field(mac::valid)
                                       .field(mac::locked)
                                       .field(mac::destination)
                                       .field(mac::command)));
    table.add(Register(analyser::macIndex, "MACTINDX")
                  .staging()
                  .field(mac::shadow)
                  .field(mac::bucket)
                  .field(mac::row));
    table.add(_vlanTable.attachedTo(Register(analyser::vlanAccess, "VLANACCESS")
                                        .field("Other31", 31)
                                        .field(vlan::learnDisabled)
                                        .field(vlan::mirror)
                                        .field(vlan::sourceCheck)
                                        .field("Other27", 27)
                                        .field(vlan::mask)
                                        .field(vlan::command)));
    table.add(Register(analyser::vlanIndex, "VLANTIDX").staging().field("VID", 11, 0));
}

void Analyser::clearTables() {
    _vlanTable.clear();
    _vlanTable.getTimer().release();
    _macTable.clear();
    _macTable.getTimer().release();
}

std::uint32_t Analyser::destinationReset(unsigned number) const {
    if (number > ports.high) {
        return 0;
    }
    switch (_context.options.destinationMaskReset) {
    case Vsc7390Options::DestinationMaskReset::ownPort:
        return bit(number);
    case Vsc7390Options::DestinationMaskReset::allPorts:
        return allPorts;
    case Vsc7390Options::DestinationMaskReset::none:
        break;
    }
    return 0;
}

std::uint32_t Analyser::aggregationReset() const {
    return _context.options.aggregationMaskReset == Vsc7390Options::AggregationMaskReset::none ? 0 : allPorts;
}

std::uint32_t Analyser::sourceReset(unsigned number) const {
    if (number > ports.high) {
        return 0;
    }
    switch (_context.options.sourceMaskReset) {
    case Vsc7390Options::SourceMaskReset::allButOwn:
        return allPorts & ~bit(number);
    case Vsc7390Options::SourceMaskReset::allPorts:
        return allPorts;
    case Vsc7390Options::SourceMaskReset::none:
        break;
    }
    return 0;
}

} // namespace simulation::vitesse
