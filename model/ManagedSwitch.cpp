#include "model/ManagedSwitch.hpp"

#include <algorithm>
#include <memory>
#include <type_traits>

#include "host/Application.hpp"
#include "model/ManagedSwitchPort.hpp"
#include "model/OwnedMap.hpp"
#include "model/TrunkGroup.hpp"

namespace {

/// Inserts an owned object; one whose key is taken is deleted unless it is the very object that holds
/// the key already, and so is one that there is no memory to keep.
template <typename Map, typename Entry> void insertOwned(Map& map, Entry& entry) {
    std::unique_ptr<std::remove_pointer_t<typename Entry::second_type>> object(entry.second);
    auto const result = map.insert(entry);
    if (result.second || result.first->second == entry.second) {
        static_cast<void>(object.release());
    } else {
        entry.second = nullptr;
    }
}

/// Calls an operation of every object in a map; entries without an object are passed over.
template <typename Map, typename Operation> void forEach(Map const& map, Operation operation) {
    for (auto const& entry : map) {
        if (entry.second != nullptr) {
            operation(*entry.second);
        }
    }
}

template <typename Map> typename Map::mapped_type findIn(Map const& map, unsigned int id) {
    auto const entry = map.find(id);
    return entry == map.end() ? nullptr : entry->second;
}

} // namespace

ManagedSwitch::ManagedSwitch(Application& application, unsigned int id, unsigned char const* macAddress,
                             Xml& /*configuration*/, bool noHardwareAccess)
    : _id(id), _noHardwareAccess(noHardwareAccess), _application(&application) {
    std::copy_n(macAddress, sizeof _macAddress, _macAddress);
    _application->logInfo("ManagedSwitch::ManagedSwitch(%d) %02x:%02x:%02x:%02x:%02x:%02x\n", _id,
                          _macAddress[0], _macAddress[1], _macAddress[2], _macAddress[3], _macAddress[4],
                          _macAddress[5]);
}

ManagedSwitch::ManagedSwitch(Application& application, unsigned int id, unsigned short /*value*/,
                             bool noHardwareAccess)
    : _id(id), _noHardwareAccess(noHardwareAccess), _application(&application) {}

ManagedSwitch::~ManagedSwitch() {
    owned_map::deleteObjects(_ports);
    _ports.clear();
    owned_map::deleteObjects(_trunkGroups);
}

ManagedSwitchPort* ManagedSwitch::getPort(unsigned int id) {
    ManagedSwitchPort* const port = findIn(_ports, id);
    if (port == nullptr) {
        _application->logError("ManagedSwitch::getPort id %d out of bounds", id);
    }
    return port;
}

TrunkGroup* ManagedSwitch::getTrunkGroup(unsigned int id) {
    TrunkGroup* const trunkGroup = findIn(_trunkGroups, id);
    if (trunkGroup == nullptr) {
        _application->logError("ManagedSwitch::getTrunkgroup id %d out of bounds", id);
    }
    return trunkGroup;
}

void ManagedSwitch::insertPort(std::pair<unsigned int, ManagedSwitchPort*>& port) {
    insertOwned(_ports, port);
    ++_numberOfEntries;
}

void ManagedSwitch::insertTrunkGroup(std::pair<unsigned int, TrunkGroup*>& trunkGroup) {
    insertOwned(_trunkGroups, trunkGroup);
    ++_numberOfEntries;
}

void ManagedSwitch::configureVlans() {
    clearVlanTable();
    forEach(_ports, [](ManagedSwitchPort& port) { port.configureVlans(); });
}

void ManagedSwitch::configurePorts() {
    forEach(_ports, [](ManagedSwitchPort& port) { port.configurePorts(); });
}

void ManagedSwitch::configureMulticastFilters() {
    forEach(_ports, [](ManagedSwitchPort& port) { port.configureMulticastFilters(); });
}

void ManagedSwitch::configureTrunkGroups() {
    forEach(_trunkGroups, [this](TrunkGroup const& trunkGroup) {
        std::map<unsigned int const, ManagedSwitchPort*> members;
        for (auto const& member : trunkGroup.getTrunkedPorts()) {
            if (member.second != nullptr) {
                members.insert(member);
            }
        }
        writeAggregationGroup(members);
    });
}
