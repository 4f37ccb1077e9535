#include "simulation/88e6096/Marvell88E6096TestSide.hpp"

#include "simulation/88e6096/Marvell88E6096.hpp"
#include "simulation/88e6096/Registers.hpp"

namespace simulation {

namespace {

constexpr unsigned numberOfVids = 4096;

template <typename Entry> std::optional<Entry> entryOf(std::map<unsigned, Entry> const& table, unsigned key) {
    auto const found = table.find(key);
    return found == table.end() ? std::nullopt : std::optional<Entry>(found->second);
}

} // namespace

Marvell88E6096TestSide::Marvell88E6096TestSide(Marvell88E6096& chip)
    : ChipTestSide(chip._context.services, chip._units,
                   {{CommandUnit::smi, &chip._smi.getTimer()},
                    {CommandUnit::smiPhy, &chip._global2.getTimer()},
                    {CommandUnit::vtu, &chip._global1.getVtu().getTimer()},
                    {CommandUnit::atu, &chip._global1.getAtu().getTimer()},
                    {CommandUnit::statistics, &chip._global1.getStatistics().getTimer()}}),
      _chip(chip) {}

void Marvell88E6096TestSide::failAccess(unsigned nth) {
    auto const held = lock();
    _chip._smi.getFault().arm(nth);
}

ChipForwarding* Marvell88E6096TestSide::getForwarding() {
    return &_chip._forwarding;
}

void Marvell88E6096TestSide::setCounter(unsigned port, unsigned counter, std::uint32_t value) {
    auto const held = lock();
    _chip._global1.getStatistics().setCounter(port, counter, value);
}

std::uint32_t Marvell88E6096TestSide::getCounter(unsigned port, unsigned counter) const {
    auto const held = lock();
    return _chip._global1.getStatistics().getCounter(port, counter);
}

void Marvell88E6096TestSide::plugLink(unsigned number, unsigned megabits, bool fullDuplex) {
    auto const held = lock();
    port(number).setLevelSpeed(megabits, fullDuplex);
    if (number < numberOfPhys) {
        _chip._phys[number].plug(megabits, fullDuplex);
    } else {
        port(number).setLevel(true);
    }
    _chip._forwarding.markPort(number);
}

void Marvell88E6096TestSide::unplugLink(unsigned number) {
    auto const held = lock();
    port(number);
    if (number < numberOfPhys) {
        _chip._phys[number].unplug();
    } else {
        port(number).setLevel(false);
    }
    _chip._forwarding.markPort(number);
}

void Marvell88E6096TestSide::setLinkLevel(unsigned number, bool up) {
    auto const held = lock();
    port(number).setLevel(up);
    _chip._forwarding.markPort(number);
}

bool Marvell88E6096TestSide::hasLink(unsigned number) const {
    auto const held = lock();
    return port(number).hasLink();
}

std::map<unsigned, Marvell88E6096TestSide::VtuEntry> Marvell88E6096TestSide::getVtu() const {
    auto const held = lock();
    return _chip._global1.getVtu().getVtu();
}

std::map<unsigned, Marvell88E6096TestSide::StuEntry> Marvell88E6096TestSide::getStu() const {
    auto const held = lock();
    return _chip._global1.getVtu().getStu();
}

std::optional<Marvell88E6096TestSide::VtuEntry> Marvell88E6096TestSide::getVtuEntry(unsigned vid) const {
    return entryOf(getVtu(), vid);
}

std::optional<Marvell88E6096TestSide::StuEntry> Marvell88E6096TestSide::getStuEntry(unsigned sid) const {
    return entryOf(getStu(), sid);
}

void Marvell88E6096TestSide::setVtuEntry(unsigned vid, VtuEntry const& entry) {
    auto const held = lock();
    require(vid < numberOfVids, "no such VID");
    _chip._global1.getVtu().setEntry(vid, entry);
}

void Marvell88E6096TestSide::setStuEntry(unsigned sid, StuEntry const& entry) {
    auto const held = lock();
    require(sid <= marvell::Vtu::highestSid(_chip._context.options), "no such SID");
    _chip._global1.getVtu().setEntry(sid, entry);
}

std::uint32_t Marvell88E6096TestSide::getAtuEntry(unsigned fid, std::uint64_t mac) const {
    auto const held = lock();
    return _chip._global1.getAtu().find(fid, mac);
}

void Marvell88E6096TestSide::setAtuEntry(unsigned fid, std::uint64_t mac, std::uint32_t data) {
    auto const held = lock();
    require(fid <= marvell::Atu::highestFid && mac <= marvell::Atu::highestMac, "no such FID or address");
    _chip._global1.getAtu().setEntry(fid, mac, data);
}

void Marvell88E6096TestSide::addVtuViolation(unsigned vid, unsigned sourcePort, VtuViolation violation) {
    auto const held = lock();
    require(vid < numberOfVids && sourcePort < numberOfPorts, "no such VID or port");
    _chip._global1.getVtu().addViolation(vid, sourcePort, violation);
}

unsigned Marvell88E6096TestSide::getAgeSeconds() const {
    auto const held = lock();
    return marvell::global1::ageTime.get(_chip._global1.peek(marvell::global1::atuControl)) *
           marvell::global1::secondsPerAgeUnit;
}

void Marvell88E6096TestSide::unplug() {
    auto const held = lock();
    _chip._smi.setPlugged(false);
}

void Marvell88E6096TestSide::plug() {
    auto const held = lock();
    _chip._smi.setPlugged(true);
}

void Marvell88E6096TestSide::moveTo(unsigned address) {
    auto const held = lock();
    require(address < MdioBus::numberOfAddresses && !_chip._mdioBus->isTaken(address),
            "no such free address");
    _chip._mdioBus->detach(_chip._address);
    _chip._address = address;
    _chip._mdioBus->attach(address, _chip._smi);
}

void Marvell88E6096TestSide::strapSingleChip() {
    auto const held = lock();
    _chip._mdioBus->detach(_chip._address);
    for (RegisterFile* const unit : _chip._units.getAll()) {
        unsigned const address = unit->getIdentity().place.unit;
        if (!_chip._mdioBus->isTaken(address)) {
            _chip._mdioBus->attach(address, _chip._direct.emplace_back(*unit));
        }
    }
}

marvell::Port& Marvell88E6096TestSide::port(unsigned number) const {
    require(number < numberOfPorts, "no such port");
    return _chip._ports[number];
}

} // namespace simulation
