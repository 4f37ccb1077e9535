#include "simulation/88e6096/PortSettings.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

namespace {

constexpr std::uint32_t unicastFlood = 1;
constexpr std::uint32_t groupFlood = 2;

} // namespace

PortSettings::PortSettings(Port const& port) : hasLink(port.hasLink()) {
    std::uint32_t const control = port.getStored(port::portControl);
    state = port::state.get(control);
    saFiltering = port::saFiltering.get(control);
    egressMode = port::egressMode.get(control);
    hasHeader = port::header.isSet(control);
    frameMode = port::frameMode.get(control);
    isTunnel = port::vlanTunnel.isSet(control);
    floodsUnicast = (port::egressFloods.get(control) & unicastFlood) != 0;
    floodsGroups = (port::egressFloods.get(control) & groupFlood) != 0;

    std::uint32_t const control1 = port.getStored(port::portControl1);
    isTrunk = port::trunkPort.isSet(control1);
    trunkId = port::trunkId.get(control1);
    std::uint32_t const map = port.getStored(port::portBasedVlanMap);
    fid = port::fidHigh.get(control1) << 4 | port::fidLow.get(map);
    vlanTable = port::vlanTable.get(map);

    std::uint32_t const vlan = port.getStored(port::defaultVlan);
    defaultPriority = port::defaultPriority.get(vlan);
    isVidForced = port::forceDefaultVid.isSet(vlan);
    defaultVid = port::defaultVid.get(vlan);

    std::uint32_t const control2 = port.getStored(port::portControl2);
    ignoresFcs = port::ignoreFcs.isSet(control2);
    mode8021Q = port::mode8021Q.get(control2);
    discardsTagged = port::discardTagged.isSet(control2);
    discardsUntagged = port::discardUntagged.isSet(control2);
    mapsDa = port::mapDa.isSet(control2);

    std::uint32_t const association = port.getStored(port::associationVector);
    isLocked = port::lockedPort.isSet(association);
    associationVector = port::vlanTable.get(association);
}

} // namespace simulation::marvell
