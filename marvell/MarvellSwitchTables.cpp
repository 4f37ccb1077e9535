// The VLAN table unit and the spanning-tree unit of MarvellSwitch, which share one set of registers.

#include "host/Application.hpp"
#include "marvell/Global1Registers.hpp"
#include "marvell/MarvellSwitch.hpp"
#include "model/Polling.hpp"

namespace {

/// Where a search that is to find `id` first starts: the entry before it.
unsigned short searchStart(unsigned short id, unsigned short highest) {
    return id == 0 ? highest : static_cast<unsigned short>(id - 1);
}

constexpr char const* vlanPortOutOfBounds = "MarvellPort::writeVlanValues Port in map out of bounds\n";
constexpr char const* spanningTreePortOutOfBounds =
    "MarvellSwitch::writeSpanningTreeTable Port in map out of bounds\n";

} // namespace

bool MarvellSwitch::readGlobal1(unsigned short registerNumber, unsigned short& value) {
    MarvellManagementCommunications::MarvelRegisterValues registerValues(global1::device, registerNumber);
    if (!_communications->readRegister(registerValues)) {
        return false;
    }
    value = registerValues.value;
    return true;
}

bool MarvellSwitch::writeGlobal1(unsigned short registerNumber, unsigned short value) {
    return _communications->writeRegister(
        MarvellManagementCommunications::MarvelRegisterValues(global1::device, registerNumber, value));
}

bool MarvellSwitch::startTableOperation(unsigned short code) {
    using namespace global1::vtu_operation;
    return writeGlobal1(global1::vtuOperation, busy.set(operation.of(code)));
}

bool MarvellSwitch::isVlanTableBusy() {
    unsigned short operation = 0;
    return readGlobal1(global1::vtuOperation, operation) && global1::vtu_operation::busy.isSet(operation);
}

bool MarvellSwitch::waitVlanTableReady() {
    polling::End const end = polling::untilReadyWithoutPause(
        _vlanTableTimeout, [this] { return isVlanTableBusy() ? polling::Look::busy : polling::Look::ready; });
    if (end == polling::End::timedOut) {
        getApplication()->logError("MarvellSwitch::waitVlanTableReady Vlan Table ready timeout\n");
        return false;
    }
    return true;
}

/// On purpose, a port beyond the tables keeps the data register of the port before it; the first port has
/// none to keep.
bool MarvellSwitch::chooseDataRegister(unsigned short port, char const* outOfBounds,
                                       std::optional<unsigned short>& dataRegister) {
    using namespace global1;
    if (port / vtu_data::portsPerRegister < vtu_data::registers) {
        dataRegister = static_cast<unsigned short>(vtuDataPorts0To3 + port / vtu_data::portsPerRegister);
    } else {
        getApplication()->logError("%s", outOfBounds);
    }
    return dataRegister.has_value();
}

template <typename States, typename Stage>
bool MarvellSwitch::stageStates(States const& states, char const* outOfBounds, Stage stage) {
    std::optional<unsigned short> dataRegister;
    for (auto const& entry : states) {
        if (!chooseDataRegister(entry.first, outOfBounds, dataRegister)) {
            return false;
        }
        bool const staged =
            _communications->modifyRegister(global1::device, *dataRegister, [&](unsigned short value) {
                return stage(value, entry.first, static_cast<unsigned short>(entry.second));
            });
        if (!staged) {
            return false;
        }
    }
    return true;
}

template <typename State> std::map<unsigned short, State> MarvellSwitch::everyPort(State state) const {
    std::map<unsigned short, State> states;
    for (unsigned short port = 0; port < getNumberOfPorts(); ++port) {
        states[port] = state;
    }
    return states;
}

bool MarvellSwitch::writeVlanTable(std::map<unsigned short, VtuEgressState> states) {
    return stageStates(
        states, vlanPortOutOfBounds, [](unsigned short value, unsigned short port, unsigned short state) {
            auto const cleared = global1::vtu_data::memberTag(port).cleared(value);
            return static_cast<unsigned short>(cleared | global1::vtu_data::memberCode(port, state));
        });
}

bool MarvellSwitch::readVlanTable(std::map<unsigned short, VtuEgressState>& states) {
    states.clear();
    std::optional<unsigned short> dataRegister;
    for (unsigned short port = 0; port < getNumberOfPorts(); ++port) {
        unsigned short value = 0;
        if (!chooseDataRegister(port, vlanPortOutOfBounds, dataRegister) ||
            !readGlobal1(*dataRegister, value)) {
            return false;
        }
        states[port] = static_cast<VtuEgressState>(global1::vtu_data::memberTag(port).in(value));
    }
    return true;
}

bool MarvellSwitch::writeVlanTableCommand(unsigned short vlanId) {
    using namespace global1;
    return waitVlanTableReady() && writeGlobal1(vtuFid, vlanId) && writeGlobal1(vtuSid, vlanId) &&
           writeGlobal1(vtuVid, vtu_vid::valid.set(vtu_vid::vid.of(vlanId))) && waitVlanTableReady() &&
           startTableOperation(vtu_operation::loadVtu);
}

bool MarvellSwitch::readVlanTableCommand(unsigned short vlanId) {
    using namespace global1;
    if (!waitVlanTableReady() || !writeGlobal1(vtuVid, searchStart(vlanId, vtu_vid::highestVid))) {
        return false;
    }
    startTableOperation(vtu_operation::getNextVtu);
    unsigned short found = 0;
    return readGlobal1(vtuVid, found) && vtu_vid::vid.in(found) == vlanId && vtu_vid::valid.isSet(found);
}

bool MarvellSwitch::clearVlanTable() {
    return clearVlanAndSpanningTreeTable();
}

bool MarvellSwitch::clearVlanAndSpanningTreeTable() {
    return startTableOperation(global1::vtu_operation::flushAll);
}

bool MarvellSwitch::initialiseVlan(unsigned short vlanId) {
    return writeVlanTable(everyPort(VtuEgressState::notMember)) && writeVlanTableCommand(vlanId);
}

bool MarvellSwitch::initialiseSpanningTree(unsigned short spanningTreeId) {
    return writeSpanningTreeTable(everyPort(ManagedSwitchPort::PortEnabledStatus::disabled)) &&
           writeSpanningTreeTableCommand(spanningTreeId);
}

bool MarvellSwitch::writeSpanningTreeTable(
    std::map<unsigned short, ManagedSwitchPort::PortEnabledStatus> states) {
    return stageStates(states, spanningTreePortOutOfBounds,
                       [](unsigned short value, unsigned short port, unsigned short state) {
                           // Clears the membership, not the state: states only ever get added to.
                           auto const cleared = global1::vtu_data::memberTag(port).cleared(value);
                           return static_cast<unsigned short>(cleared |
                                                              global1::vtu_data::stateCode(port, state));
                       });
}

bool MarvellSwitch::writeSpanningTreeTableCommand(unsigned short spanningTreeId) {
    using namespace global1;
    return waitVlanTableReady() && writeGlobal1(vtuSid, spanningTreeId) &&
           writeGlobal1(vtuVid, vtu_vid::valid.mask()) && waitVlanTableReady() &&
           startTableOperation(vtu_operation::loadStu);
}

bool MarvellSwitch::readSpanningTreeTableCommand(unsigned short spanningTreeId) {
    using namespace global1;
    if (!waitVlanTableReady() || !writeGlobal1(vtuSid, searchStart(spanningTreeId, vtu_sid::highestSid))) {
        return false;
    }
    startTableOperation(vtu_operation::getNextStu);
    unsigned short foundSid = 0;
    unsigned short foundVid = 0;
    return readGlobal1(vtuSid, foundSid) && readGlobal1(vtuVid, foundVid) && foundSid == spanningTreeId &&
           vtu_vid::valid.isSet(foundVid);
}
