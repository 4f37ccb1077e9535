#include "simulation/88e6096/Marvell88E6096TestAccess.hpp"

#include <stdexcept>

#include "simulation/88e6096/Marvell88E6096.hpp"
#include "simulation/88e6096/Registers.hpp"

namespace simulation {

namespace {

constexpr unsigned numberOfVids = 4096;

template <typename Entry> std::optional<Entry> entryOf(std::map<unsigned, Entry> const& table, unsigned key) {
    auto const found = table.find(key);
    return found == table.end() ? std::nullopt : std::optional<Entry>(found->second);
}

void require(bool condition, char const* what) {
    if (!condition) {
        throw std::out_of_range(what);
    }
}

} // namespace

Marvell88E6096TestAccess::Marvell88E6096TestAccess(Marvell88E6096& chip) : _chip(chip) {}

std::vector<std::string> Marvell88E6096TestAccess::getUnits() const {
    std::vector<std::string> names;
    for (RegisterFile const* const unit : _chip.getUnits()) {
        names.push_back(unit->getUnit());
    }
    return names;
}

RegisterTable const& Marvell88E6096TestAccess::getRegisters(std::string const& unit) const {
    auto const held = lock();
    return find(unit).getTable();
}

std::uint32_t Marvell88E6096TestAccess::peek(std::string const& unit, unsigned address) const {
    auto const held = lock();
    return find(unit).peek(address);
}

void Marvell88E6096TestAccess::poke(std::string const& unit, unsigned address, std::uint32_t value) {
    auto const held = lock();
    find(unit).store(address, value);
}

void Marvell88E6096TestAccess::stick(std::string const& unit, unsigned address, std::uint32_t ones,
                                     std::uint32_t zeros) {
    auto const held = lock();
    find(unit).stick(address, ones, zeros);
}

void Marvell88E6096TestAccess::failAccess(unsigned nth) {
    auto const held = lock();
    _chip._smi.getFault().arm(nth);
}

void Marvell88E6096TestAccess::setCounter(unsigned port, unsigned counter, std::uint32_t value) {
    auto const held = lock();
    _chip._global1.getStatistics().setCounter(port, counter, value);
}

std::uint32_t Marvell88E6096TestAccess::getCounter(unsigned port, unsigned counter) const {
    auto const held = lock();
    return _chip._global1.getStatistics().getCounter(port, counter);
}

void Marvell88E6096TestAccess::setInDiscards(unsigned number, std::uint32_t value) {
    auto const held = lock();
    port(number).getRegisters().store(marvell::port::inDiscardsLow, value & 0xFFFF);
    port(number).getRegisters().store(marvell::port::inDiscardsHigh, value >> marvell::bitsPerRegister);
}

void Marvell88E6096TestAccess::setInFiltered(unsigned number, std::uint16_t value) {
    auto const held = lock();
    port(number).getRegisters().store(marvell::port::inFiltered, value);
}

void Marvell88E6096TestAccess::setOutFiltered(unsigned number, std::uint16_t value) {
    auto const held = lock();
    port(number).getRegisters().store(marvell::port::outFiltered, value);
}

void Marvell88E6096TestAccess::plugLink(unsigned number, unsigned megabits, bool fullDuplex) {
    auto const held = lock();
    port(number).setLevelSpeed(megabits, fullDuplex);
    if (number < numberOfPhys) {
        _chip._phys[number]->plug(megabits, fullDuplex);
    } else {
        port(number).setLevel(true);
    }
}

void Marvell88E6096TestAccess::unplugLink(unsigned number) {
    auto const held = lock();
    port(number);
    if (number < numberOfPhys) {
        _chip._phys[number]->unplug();
    } else {
        port(number).setLevel(false);
    }
}

void Marvell88E6096TestAccess::setLinkLevel(unsigned number, bool up) {
    auto const held = lock();
    port(number).setLevel(up);
}

bool Marvell88E6096TestAccess::hasLink(unsigned number) const {
    auto const held = lock();
    return port(number).hasLink();
}

std::map<unsigned, Marvell88E6096TestSide::VtuEntry> Marvell88E6096TestAccess::getVtu() const {
    auto const held = lock();
    return _chip._global1.getVtu().getVtu();
}

std::map<unsigned, Marvell88E6096TestSide::StuEntry> Marvell88E6096TestAccess::getStu() const {
    auto const held = lock();
    return _chip._global1.getVtu().getStu();
}

std::optional<Marvell88E6096TestSide::VtuEntry> Marvell88E6096TestAccess::getVtuEntry(unsigned vid) const {
    return entryOf(getVtu(), vid);
}

std::optional<Marvell88E6096TestSide::StuEntry> Marvell88E6096TestAccess::getStuEntry(unsigned sid) const {
    return entryOf(getStu(), sid);
}

void Marvell88E6096TestAccess::setVtuEntry(unsigned vid, VtuEntry const& entry) {
    auto const held = lock();
    require(vid < numberOfVids, "no such VID");
    _chip._global1.getVtu().setEntry(vid, entry);
}

void Marvell88E6096TestAccess::setStuEntry(unsigned sid, StuEntry const& entry) {
    auto const held = lock();
    require(sid <= marvell::Vtu::highestSid(_chip._context.options), "no such SID");
    _chip._global1.getVtu().setEntry(sid, entry);
}

void Marvell88E6096TestAccess::addVtuViolation(unsigned vid, unsigned sourcePort, VtuViolation violation) {
    auto const held = lock();
    require(vid < numberOfVids && sourcePort < numberOfPorts, "no such VID or port");
    _chip._global1.getVtu().addViolation(vid, sourcePort, violation);
}

unsigned Marvell88E6096TestAccess::getAgeSeconds() const {
    auto const held = lock();
    std::uint32_t const control = _chip._global1.getRegisters().peek(marvell::global1::atuControl);
    return marvell::global1::ageTime.get(control) * marvell::global1::secondsPerAgeUnit;
}

void Marvell88E6096TestAccess::unplug() {
    auto const held = lock();
    _chip._smi.setPlugged(false);
}

void Marvell88E6096TestAccess::plug() {
    auto const held = lock();
    _chip._smi.setPlugged(true);
}

void Marvell88E6096TestAccess::setBusyTime(CommandUnit unit, std::uint64_t nanoseconds) {
    auto const held = lock();
    timer(unit).setBusyTime(nanoseconds);
}

void Marvell88E6096TestAccess::hang(CommandUnit unit, unsigned nthCommand) {
    auto const held = lock();
    timer(unit).hang(nthCommand);
}

void Marvell88E6096TestAccess::release(CommandUnit unit) {
    auto const held = lock();
    timer(unit).release();
}

unsigned Marvell88E6096TestAccess::getCommands(CommandUnit unit) const {
    auto const held = lock();
    return timer(unit).getCommands();
}

std::unique_lock<std::recursive_mutex> Marvell88E6096TestAccess::lock() const {
    return std::unique_lock<std::recursive_mutex>(_chip._context.services.mutex);
}

RegisterFile& Marvell88E6096TestAccess::find(std::string const& unit) const {
    for (RegisterFile* const candidate : _chip.getUnits()) {
        if (candidate->getUnit() == unit) {
            return *candidate;
        }
    }
    throw std::out_of_range(_chip._context.chip + " has no unit \"" + unit + "\"");
}

marvell::Port& Marvell88E6096TestAccess::port(unsigned number) const {
    require(number < numberOfPorts, "no such port");
    return *_chip._ports[number];
}

CommandTimer& Marvell88E6096TestAccess::timer(CommandUnit unit) const {
    switch (unit) {
    case CommandUnit::smi:
        return _chip._smi.getTimer();
    case CommandUnit::smiPhy:
        return _chip._global2.getTimer();
    case CommandUnit::vtu:
        return _chip._global1.getVtu().getTimer();
    case CommandUnit::atu:
        return _chip._global1.getAtu().getTimer();
    case CommandUnit::statistics:
        return _chip._global1.getStatistics().getTimer();
    }
    throw std::out_of_range("no such command unit");
}

} // namespace simulation
