// The VLAN table, the source masks and the aggregation masks of VitesseSwitch.

#include <algorithm>

#include "host/Application.hpp"
#include "model/ManagedSwitchPort.hpp"
#include "model/Polling.hpp"
#include "vitesse/AnalyserRegisters.hpp"
#include "vitesse/VitesseSwitch.hpp"

using namespace vsc7390::analyser;

bool VitesseSwitch::waitforVlanTableReady() {
    polling::Outcome const outcome =
        polling::untilReady(_vlanTimeout, [this] { return polling::busyIf(!isVlanTableIdle()); });
    if (outcome.end == polling::End::timedOut) {
        getApplication()->log(1,
                              "VitesseSwitch::waitforVlanTableReady                          "
                              "Timeout waiting for Vlan Table Busy Bit :Elapsed %f : vlanTimeout %f\n",
                              outcome.elapsedSeconds, _vlanTimeout);
    }
    return outcome.end == polling::End::ready;
}

bool VitesseSwitch::isVlanTableIdle() {
    unsigned int word = 0;
    return readAnalyser(vlanAccess, word) && vlan_access::command.in(word) == vlan_access::idle;
}

bool VitesseSwitch::clearVlanTable() {
    getApplication()->log(3, "VitesseSwitch::clearVlanTable\n");
    if (!waitforVlanTableReady() ||
        !writeAnalyser(vlanAccess, vlan_access::command.of(vlan_access::clearTable))) {
        return false;
    }
    getApplication()->log(3, "VitesseSwitch::clearVlanTable Port Vlan Table\n");
    return cleanPortBaseVlans();
}

bool VitesseSwitch::cleanPortBaseVlans() {
    for (unsigned int port = 0; port < getNumberOfPorts(); ++port) {
        if (!writeAnalyser(sourceMasks + port, 0)) {
            return false;
        }
    }
    return true;
}

bool VitesseSwitch::writeVlanTableCommand(unsigned short vid, VlanTableCommand command) {
    command.word = vlan_access::command.replaced(command.word, vlan_access::writeEntry);
    return writeAnalyser(vlanTableIndex, vid) && waitforVlanTableReady() &&
           writeAnalyser(vlanAccess, command.word);
}

bool VitesseSwitch::readVlanTableCommand(unsigned short vid, VlanTableCommand& command) {
    if (!writeAnalyser(vlanTableIndex, vid) || !waitforVlanTableReady()) {
        return false;
    }
    command.word = vlan_access::command.replaced(command.word, vlan_access::readEntry);
    return writeAnalyser(vlanAccess, command.word) && waitforVlanTableReady() &&
           readAnalyser(vlanAccess, command.word);
}

bool VitesseSwitch::readVlanMask(unsigned short vid, unsigned int& mask) {
    VlanTableCommand entry;
    readVlanTableCommand(vid, entry);
    mask = vlan_access::ports.in(entry.word);
    return mask <= vlan_access::highestUsedMask;
}

bool VitesseSwitch::writeAggregationGroup(std::map<unsigned int const, ManagedSwitchPort*> ports) {
    unsigned int trunkMask = 0;
    for (auto member = ports.begin(); member != ports.end();) {
        // A member without a port object, or beyond every mask, has no bit and no masks of its own.
        if (member->second == nullptr || portBit(member->second->getId()) == 0) {
            member = ports.erase(member);
            continue;
        }
        trunkMask |= portBit(member->second->getId());
        ++member;
    }
    if (!dealAggregationMasks(ports, trunkMask)) {
        return false;
    }
    return std::all_of(ports.begin(), ports.end(),
                       [&](auto const& member) { return joinTrunk(member.second->getId(), trunkMask); });
}

bool VitesseSwitch::dealAggregationMasks(std::map<unsigned int const, ManagedSwitchPort*> const& ports,
                                         unsigned int trunkMask) {
    auto member = ports.begin();
    for (unsigned int hashClass = 0; hashClass < _aggregationMasks; ++hashClass) {
        unsigned int mask = 0;
        if (!readAnalyser(aggregationMasks + hashClass, mask)) {
            return false;
        }
        mask &= ~trunkMask;
        if (member != ports.end()) {
            mask |= portBit(member->second->getId());
            ++member;
            member = member == ports.end() ? ports.begin() : member;
        }
        if (!writeAnalyser(aggregationMasks + hashClass, mask)) {
            return false;
        }
    }
    return true;
}

bool VitesseSwitch::joinTrunk(unsigned int port, unsigned int trunkMask) {
    unsigned int destination = 0;
    unsigned int source = 0;
    if (!readAnalyser(destinationMasks + port, destination) || !readAnalyser(sourceMasks + port, source)) {
        return false;
    }
    unsigned int const others = trunkMask & ~portBit(port);
    return writeAnalyser(destinationMasks + port, destination | trunkMask) &&
           writeAnalyser(sourceMasks + port, source & ~others);
}
