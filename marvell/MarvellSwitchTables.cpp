// The VLAN table unit and the spanning-tree unit of MarvellSwitch, which share one set of registers.

#include "host/Application.hpp"
#include "marvell/Global1Registers.hpp"
#include "marvell/MarvellSwitch.hpp"
#include "model/Polling.hpp"

namespace {

/// A search finds the entry after the one that it starts from.
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
        _vlanTableTimeout, [this] { return polling::busyIf(isVlanTableBusy()); });
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

/// Stages a code for each port. Whatever is staged, what gets cleared before is the port's membership: of
/// spanning-tree states, on purpose, the old bits stay. A code that is too large spills over.
template <typename States, typename Place>
bool MarvellSwitch::stageStates(States const& states, char const* outOfBounds, Place place) {
    std::optional<unsigned short> dataRegister;
    for (auto const& entry : states) {
        if (!chooseDataRegister(entry.first, outOfBounds, dataRegister)) {
            return false;
        }
        bool const staged =
            _communications->modifyRegister(global1::device, *dataRegister, [&](unsigned short value) {
                auto const code = static_cast<unsigned short>(entry.second);
                return static_cast<unsigned short>(global1::vtu_data::memberTag(entry.first).cleared(value) |
                                                   code << place(entry.first).position);
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
    return stageStates(states, vlanPortOutOfBounds, global1::vtu_data::memberTag);
}

bool MarvellSwitch::readVlanTable(std::map<unsigned short, VtuEgressState>& states) {
    states.clear();
    std::optional<unsigned short> dataRegister;
    for (unsigned short port = 0; port < getNumberOfPorts(); ++port) {
        unsigned short value = 0;
        if (!chooseDataRegister(port, vlanPortOutOfBounds, dataRegister) || // GCOVR_EXCL_BR_LINE: has one
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
    // On purpose, neither is the write's result looked at nor the end of the search waited for. A search that
    // did not start leaves the register as written above, which is another VLAN's and not valid: not found.
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
    return writeVlanTable(everyPort(VtuEgressState::notMember)) && // GCOVR_EXCL_BR_LINE: memory
           writeVlanTableCommand(vlanId);                          // GCOVR_EXCL_BR_LINE: memory
}

bool MarvellSwitch::initialiseSpanningTree(unsigned short spanningTreeId) {
    // GCOVR_EXCL_BR_START: memory
    return writeSpanningTreeTable(everyPort(ManagedSwitchPort::PortEnabledStatus::disabled)) &&
           writeSpanningTreeTableCommand(spanningTreeId);
    // GCOVR_EXCL_BR_STOP
}

bool MarvellSwitch::writeSpanningTreeTable(
    std::map<unsigned short, ManagedSwitchPort::PortEnabledStatus> states) {
    return stageStates(states, spanningTreePortOutOfBounds, global1::vtu_data::portState);
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
    startTableOperation(vtu_operation::getNextStu); // on purpose as in readVlanTableCommand
    unsigned short foundSid = 0;
    unsigned short foundVid = 0;
    return readGlobal1(vtuSid, foundSid) && readGlobal1(vtuVid, foundVid) && foundSid == spanningTreeId &&
           vtu_vid::valid.isSet(foundVid);
}
