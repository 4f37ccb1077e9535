#include "simulation/vsc7390/Vsc7390TestAccess.hpp"

#include <stdexcept>

#include "simulation/vsc7390/Vsc7390.hpp"

namespace simulation {

namespace {

void require(bool condition, char const* what) {
    if (!condition) {
        throw std::out_of_range(what);
    }
}

void requirePlace(unsigned row, unsigned bucket) {
    require(row < Vsc7390TestSide::numberOfRows && bucket < Vsc7390TestSide::numberOfBuckets,
            "no such row or bucket");
}

void requireVid(unsigned vid) {
    require(vid < Vsc7390TestSide::numberOfVids, "no such VID");
}

} // namespace

Vsc7390TestAccess::Vsc7390TestAccess(Vsc7390& chip) : _chip(chip) {}

std::vector<std::string> Vsc7390TestAccess::getUnits() const {
    std::vector<std::string> names;
    for (RegisterFile const* const unit : _chip.getUnits()) {
        names.push_back(unit->getUnit());
    }
    return names;
}

RegisterTable const& Vsc7390TestAccess::getRegisters(std::string const& unit) const {
    auto const held = lock();
    return find(unit).getTable();
}

std::uint32_t Vsc7390TestAccess::peek(std::string const& unit, unsigned address) const {
    auto const held = lock();
    return find(unit).peek(address);
}

// Looked at first: what had arrived by now would otherwise come on top of the value later.
void Vsc7390TestAccess::poke(std::string const& unit, unsigned address, std::uint32_t value) {
    auto const held = lock();
    RegisterFile& registers = find(unit);
    registers.peek(address);
    registers.store(address, value);
}

void Vsc7390TestAccess::stick(std::string const& unit, unsigned address, std::uint32_t ones,
                              std::uint32_t zeros) {
    auto const held = lock();
    find(unit).stick(address, ones, zeros);
}

void Vsc7390TestAccess::failAccess(unsigned nth) {
    auto const held = lock();
    _chip._bus.failRegisterAccess(nth);
}

void Vsc7390TestAccess::setCounter(unsigned number, unsigned counter, std::uint32_t value) {
    auto const held = lock();
    port(number).getCounters().set(counter, value);
}

std::uint32_t Vsc7390TestAccess::getCounter(unsigned number, unsigned counter) const {
    auto const held = lock();
    return port(number).getCounters().get(counter);
}

Vsc7390TestSide::PortMac Vsc7390TestAccess::getPortMac(unsigned number) const {
    auto const held = lock();
    return port(number).getMac();
}

void Vsc7390TestAccess::queueFrames(unsigned number) {
    auto const held = lock();
    port(number);
    _chip._arbiter.queueFrames(number);
}

void Vsc7390TestAccess::plugPhy(unsigned number) {
    auto const held = lock();
    phy(number).setPlugged(true);
}

void Vsc7390TestAccess::unplugPhy(unsigned number) {
    auto const held = lock();
    phy(number).setPlugged(false);
}

void Vsc7390TestAccess::setPhyRegister(unsigned number, unsigned address, std::uint16_t value) {
    auto const held = lock();
    require(address < vitesse::phy::numberOfRegisters, "no such PHY register");
    phy(number).getRegisters().store(address, value);
}

std::uint16_t Vsc7390TestAccess::getPhyRegister(unsigned number, unsigned address) const {
    auto const held = lock();
    require(address < vitesse::phy::numberOfRegisters, "no such PHY register");
    return static_cast<std::uint16_t>(phy(number).getRegisters().peek(address));
}

Vsc7390TestSide::VlanEntry Vsc7390TestAccess::getVlanEntry(unsigned vid) const {
    auto const held = lock();
    requireVid(vid);
    return _chip._analyser.getVlanTable().getEntry(vid);
}

std::map<unsigned, Vsc7390TestSide::VlanEntry> Vsc7390TestAccess::getVlans() const {
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

void Vsc7390TestAccess::setVlanEntry(unsigned vid, VlanEntry const& entry) {
    auto const held = lock();
    requireVid(vid);
    _chip._analyser.getVlanTable().setEntry(vid, entry);
}

std::optional<Vsc7390TestSide::MacEntry> Vsc7390TestAccess::getMacEntry(unsigned row, unsigned bucket) const {
    auto const held = lock();
    requirePlace(row, bucket);
    vitesse::MacEntry const& entry = _chip._analyser.getMacTable().at(row, bucket);
    return entry.isValid() ? std::optional<MacEntry>(entry.decode()) : std::nullopt;
}

std::map<Vsc7390TestSide::MacPlace, Vsc7390TestSide::MacEntry> Vsc7390TestAccess::getMacTable() const {
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

void Vsc7390TestAccess::setMacEntry(unsigned row, unsigned bucket, MacEntry const& entry) {
    auto const held = lock();
    requirePlace(row, bucket);
    _chip._analyser.getMacTable().at(row, bucket) = vitesse::MacEntry(entry);
}

void Vsc7390TestAccess::removeMacEntry(unsigned row, unsigned bucket) {
    auto const held = lock();
    requirePlace(row, bucket);
    _chip._analyser.getMacTable().at(row, bucket) = vitesse::MacEntry();
}

unsigned Vsc7390TestAccess::getRow(std::uint64_t mac, unsigned vid) const {
    return vitesse::MacTable::rowOf(mac, vid);
}

bool Vsc7390TestAccess::learn(std::uint64_t mac, unsigned vid, unsigned number) {
    auto const held = lock();
    requireVid(vid);
    port(number);
    MacEntry entry;
    entry.mac = mac;
    entry.vid = vid;
    entry.destination = number;
    return _chip._analyser.getMacTable().insert(vitesse::MacEntry(entry));
}

std::optional<std::uint32_t> Vsc7390TestAccess::getMulticastPorts(std::uint64_t mac, unsigned vid) const {
    auto const held = lock();
    vitesse::MacEntry const* const entry = _chip._analyser.getMacTable().findGroup(mac, vid);
    return entry == nullptr ? std::nullopt : std::optional<std::uint32_t>(entry->decode().getPorts());
}

std::uint32_t Vsc7390TestAccess::getEgressPorts(unsigned ingress, std::uint64_t destination,
                                                std::uint64_t source, unsigned vid) const {
    auto const held = lock();
    require(ingress <= cpuPort, "no such port");
    requireVid(vid);
    return _chip._analyser.getEgressPorts(ingress, destination, source, vid);
}

void Vsc7390TestAccess::failBusAccess(unsigned nth) {
    auto const held = lock();
    _chip._bus.failBusAccess(nth);
}

void Vsc7390TestAccess::unplug() {
    auto const held = lock();
    _chip._bus.setPlugged(false);
}

void Vsc7390TestAccess::plug() {
    auto const held = lock();
    _chip._bus.setPlugged(true);
}

void Vsc7390TestAccess::loseReads(unsigned count) {
    auto const held = lock();
    _chip._system.loseFetches(count);
}

void Vsc7390TestAccess::setBusyTime(CommandUnit unit, std::uint64_t nanoseconds) {
    auto const held = lock();
    timer(unit).setBusyTime(nanoseconds);
}

void Vsc7390TestAccess::hang(CommandUnit unit, unsigned nthCommand) {
    auto const held = lock();
    timer(unit).hang(nthCommand);
}

void Vsc7390TestAccess::release(CommandUnit unit) {
    auto const held = lock();
    if (unit == CommandUnit::indirectRead) {
        _chip._system.release();
    } else {
        timer(unit).release();
    }
}

unsigned Vsc7390TestAccess::getCommands(CommandUnit unit) const {
    auto const held = lock();
    return timer(unit).getCommands();
}

std::unique_lock<std::recursive_mutex> Vsc7390TestAccess::lock() const {
    return std::unique_lock<std::recursive_mutex>(_chip._context.services.mutex);
}

RegisterFile& Vsc7390TestAccess::find(std::string const& unit) const {
    for (RegisterFile* const candidate : _chip.getUnits()) {
        if (candidate->getUnit() == unit) {
            return *candidate;
        }
    }
    throw std::out_of_range(_chip._context.chip + " has no unit \"" + unit + "\"");
}

vitesse::Port& Vsc7390TestAccess::port(unsigned number) const {
    require(number < numberOfPorts, "no such port");
    return *_chip._ports[number];
}

vitesse::Phy& Vsc7390TestAccess::phy(unsigned number) const {
    require(number < numberOfPhys, "no such PHY");
    return *_chip._phys[number];
}

CommandTimer& Vsc7390TestAccess::timer(CommandUnit unit) const {
    switch (unit) {
    case CommandUnit::indirectRead:
        return _chip._system.getTimer();
    case CommandUnit::vlanTable:
        return _chip._analyser.getVlanTable().getTimer();
    case CommandUnit::macTable:
        return _chip._analyser.getMacTable().getTimer();
    case CommandUnit::mii0:
        return _chip._miis[0].getTimer();
    case CommandUnit::mii1:
        return _chip._miis[vitesse::mii::controllerOfPhys].getTimer();
    case CommandUnit::arbiter:
        return _chip._arbiter.getTimer();
    }
    throw std::out_of_range("no such command unit");
}

} // namespace simulation
