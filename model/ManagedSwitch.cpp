#include "model/ManagedSwitch.hpp"

#include <algorithm>

#include "host/Application.hpp"
#include "model/ManagedSwitchPort.hpp"
#include "model/OwnedMap.hpp"
#include "model/TrunkGroup.hpp"

namespace {

/// Inserts an owned object; one whose key is taken is kept aside, from where it may be inserted under another
/// key, unless the map has it already. One that there is no memory to keep is deleted.
template <typename Map, typename Object>
void insertOwned(Map& map, std::vector<std::unique_ptr<Object>>& aside,
                 std::pair<unsigned int, Object*> const& entry) {
    std::unique_ptr<Object> object(entry.second);
    auto const kept =
        std::find_if(aside.begin(), aside.end(), [&](auto const& other) { return other == object; });
    if (kept != aside.end()) {
        static_cast<void>(kept->release());
        aside.erase(kept);
    }
    auto const isTheObject = [&](auto const& other) { return other.second == entry.second; };
    if (map.insert(entry).second || std::any_of(map.begin(), map.end(), isTheObject)) {
        static_cast<void>(object.release());
    } else {
        aside.push_back(std::move(object));
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
    _portsAside.clear();
    owned_map::deleteObjects(_trunkGroups);
}

ManagedSwitchPort* ManagedSwitch::getPort(unsigned int id) {
    // What has no number must not meet the port that has none.
    ManagedSwitchPort* const port = id == static_cast<unsigned int>(noNumber) ? nullptr : findIn(_ports, id);
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
    insertOwned(_ports, _portsAside, port);
    ++_numberOfEntries;
}

void ManagedSwitch::insertTrunkGroup(std::pair<unsigned int, TrunkGroup*>& trunkGroup) {
    insertOwned(_trunkGroups, _trunkGroupsAside, trunkGroup);
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
