#include "simulation/vsc7390/Vsc7390TestSide.hpp"

#include "simulation/vsc7390/Vsc7390.hpp"

namespace simulation {

Vsc7390TestSide::Vsc7390TestSide(Vsc7390& chip)
    : ChipTestSide(chip._context.services, chip._units,
                   {{CommandUnit::indirectRead, &chip._system.getTimer()},
                    {CommandUnit::vlanTable, &chip._analyser.getVlanTable().getTimer()},
                    {CommandUnit::macTable, &chip._analyser.getMacTable().getTimer()},
                    {CommandUnit::mii0, &chip._miis[0].getTimer()},
                    {CommandUnit::mii1, &chip._miis[vitesse::mii::controllerOfPhys].getTimer()},
                    {CommandUnit::arbiter, &chip._arbiter.getTimer()}}),
      _chip(chip) {}

void Vsc7390TestSide::failAccess(unsigned nth) {
    auto const held = lock();
    _chip._bus.failRegisterAccess(nth);
}

ChipForwarding* Vsc7390TestSide::getForwarding() {
    return &*_chip._forwarding;
}

void Vsc7390TestSide::setCounter(unsigned number, unsigned counter, std::uint32_t value) {
    auto const held = lock();
    require(firstCounter <= counter && counter <= lastCounter, "no such counter");
    port(number).setCounter(counter, value);
}

std::uint32_t Vsc7390TestSide::getCounter(unsigned number, unsigned counter) const {
    auto const held = lock();
    require(firstCounter <= counter && counter <= lastCounter, "no such counter");
    return port(number).peek(counter);
}

Vsc7390TestSide::PortMac Vsc7390TestSide::getPortMac(unsigned number) const {
    auto const held = lock();
    return port(number).getMac();
}

void Vsc7390TestSide::queueFrames(unsigned number) {
    auto const held = lock();
    port(number);
    _chip._arbiter.queueFrames(number);
}

void Vsc7390TestSide::plugPhy(unsigned number) {
    auto const held = lock();
    phy(number).setPlugged(true);
}

void Vsc7390TestSide::unplugPhy(unsigned number) {
    auto const held = lock();
    phy(number).setPlugged(false);
}

void Vsc7390TestSide::plugLink(unsigned number, unsigned megabits, bool fullDuplex) {
    auto const held = lock();
    phy(number).plugLink(megabits, fullDuplex);
    _chip._forwarding->getSnapshot().refreshPort(number);
}

void Vsc7390TestSide::unplugLink(unsigned number) {
    auto const held = lock();
    phy(number).unplugLink();
    _chip._forwarding->getSnapshot().refreshPort(number);
}

Vsc7390TestSide::VlanEntry Vsc7390TestSide::getVlanEntry(unsigned vid) const {
    auto const held = lock();
    require(vid < numberOfVids, "no such VID");
    return _chip._analyser.getVlanTable().getEntry(vid);
}

std::map<unsigned, Vsc7390TestSide::VlanEntry> Vsc7390TestSide::getVlans() const {
    auto const held = lock();
    vitesse::VlanTable const& table = _chip._analyser.getVlanTable();
    std::map<unsigned, VlanEntry> vlans;
    for (unsigned vid = 0; vid < numberOfVids; ++vid) {
        if (!table.isCleared(vid)) {
            vlans.emplace(vid, table.getEntry(vid));
        }
    }
    return vlans;
}

void Vsc7390TestSide::setVlanEntry(unsigned vid, VlanEntry const& entry) {
    auto const held = lock();
    require(vid < numberOfVids, "no such VID");
    _chip._analyser.getVlanTable().setEntry(vid, entry);
}

std::optional<Vsc7390TestSide::MacEntry> Vsc7390TestSide::getMacEntry(unsigned row, unsigned bucket) const {
    auto const held = lock();
    require(row < numberOfRows && bucket < numberOfBuckets, "no such row or bucket");
    vitesse::MacEntry const& entry = _chip._analyser.getMacTable().at(row, bucket);
    return entry.isValid() ? std::optional<MacEntry>(entry.decode()) : std::nullopt;
}

std::map<Vsc7390TestSide::MacPlace, Vsc7390TestSide::MacEntry> Vsc7390TestSide::getMacTable() const {
    auto const held = lock();
    std::map<MacPlace, MacEntry> entries;
    for (unsigned row = 0; row < numberOfRows; ++row) {
        for (unsigned bucket = 0; bucket < numberOfBuckets; ++bucket) {
            if (auto const entry = getMacEntry(row, bucket)) {
                entries.emplace(MacPlace(row, bucket), *entry);
            }
        }
    }
    return entries;
}

void Vsc7390TestSide::setMacEntry(unsigned row, unsigned bucket, MacEntry const& entry) {
    auto const held = lock();
    require(row < numberOfRows && bucket < numberOfBuckets, "no such row or bucket");
    _chip._analyser.getMacTable().at(row, bucket) = vitesse::MacEntry(entry);
}

void Vsc7390TestSide::removeMacEntry(unsigned row, unsigned bucket) {
    auto const held = lock();
    require(row < numberOfRows && bucket < numberOfBuckets, "no such row or bucket");
    _chip._analyser.getMacTable().at(row, bucket) = vitesse::MacEntry();
}

unsigned Vsc7390TestSide::getRow(std::uint64_t mac, unsigned vid) const {
    return vitesse::MacTable::rowOf(mac, vid);
}

bool Vsc7390TestSide::learn(std::uint64_t mac, unsigned vid, unsigned number) {
    auto const held = lock();
    require(vid < numberOfVids, "no such VID");
    port(number);
    MacEntry entry;
    entry.mac = mac;
    entry.vid = vid;
    entry.destination = number;
    return _chip._analyser.getMacTable().insert(vitesse::MacEntry(entry),
                                                vitesse::MacTable::LockedSame::kept);
}

std::optional<std::uint32_t> Vsc7390TestSide::getMulticastPorts(std::uint64_t mac, unsigned vid) const {
    auto const held = lock();
    vitesse::MacEntry const* const entry = _chip._analyser.getMacTable().findGroup(mac, vid);
    return entry == nullptr ? std::nullopt : std::optional<std::uint32_t>(entry->decode().getPorts());
}

std::uint32_t Vsc7390TestSide::getEgressPorts(unsigned ingress, std::uint64_t destination,
                                              std::uint64_t source, unsigned vid) const {
    auto const held = lock();
    require(ingress <= cpuPort, "no such port");
    require(vid < numberOfVids, "no such VID");
    return _chip._forwarding->getRules().getEgressPorts(ingress, destination, source, vid);
}

void Vsc7390TestSide::failBusAccess(unsigned nth) {
    auto const held = lock();
    _chip._bus.failBusAccess(nth);
}

void Vsc7390TestSide::unplug() {
    auto const held = lock();
    _chip._bus.setPlugged(false);
}

void Vsc7390TestSide::plug() {
    auto const held = lock();
    _chip._bus.setPlugged(true);
}

void Vsc7390TestSide::turnBytes() {
    auto const held = lock();
    _chip._bus.turnBytes();
}

void Vsc7390TestSide::loseReads(unsigned count) {
    auto const held = lock();
    getTimer(CommandUnit::indirectRead).lose(count);
}

vitesse::Port& Vsc7390TestSide::port(unsigned number) const {
    require(number < numberOfPorts, "no such port");
    return _chip._ports[number];
}

vitesse::Phy& Vsc7390TestSide::phy(unsigned number) const {
    require(number < numberOfPhys, "no such PHY");
    return _chip._phys[number];
}

} // namespace simulation
