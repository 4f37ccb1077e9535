#include "simulation/vsc7390/Bus.hpp"

#include <fmt/format.h>

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

namespace {

constexpr std::uint32_t allOnes = 0xFFFFFFFF;

bool answersAtOnce(unsigned block) {
    return block == block::capture || block == block::system;
}

bool countsDown(unsigned& remaining) {
    if (remaining == 0) {
        return false;
    }
    --remaining;
    return remaining == 0;
}

} // namespace

Bus::Bus(Context& context, System& system, UnitDirectory const& units)
    : _context(context), _system(system), _units(units) {}

bool Bus::read(unsigned offset, unsigned& value) {
    std::lock_guard<std::recursive_mutex> const lock(_context.services.mutex);
    if (!passAccess()) {
        return false;
    }
    Place const place = placeOf(offset);
    if (!_isPlugged) {
        value = _context.options.idleBusValue;
        return true;
    }
    bool const answered = readWord(place, value);
    value = answered ? inOrder(value) : value;
    return answered;
}

bool Bus::readWord(Place const& place, unsigned& value) {
    if (isPollOfFetch(place)) {
        value = pollFetch(place.address);
        return true;
    }
    Fate const fate = startRegisterAccess();
    if (fate == Fate::refused) {
        return false;
    }
    std::uint32_t const sampled = fate == Fate::lost ? allOnes : sample(place);
    if (answersAtOnce(place.unit.block)) {
        value = sampled;
        return true;
    }
    _system.startFetch(sampled);
    value = _context.options.startingReadValue;
    return true;
}

bool Bus::write(unsigned offset, unsigned value) {
    std::lock_guard<std::recursive_mutex> const lock(_context.services.mutex);
    if (!passAccess()) {
        return false;
    }
    if (!_isPlugged) {
        return true;
    }
    Fate const fate = startRegisterAccess();
    if (fate == Fate::normal) {
        store(placeOf(offset), inOrder(value));
    }
    return fate != Fate::refused;
}

Bus::Place Bus::placeOf(unsigned offset) {
    return {{UnitPlace::Space::block, window::block.get(offset), window::subBlock.get(offset)},
            window::address.get(offset)};
}

std::uint32_t Bus::inOrder(std::uint32_t word) const {
    return _isTurned ? word >> 24 | (word >> 8 & 0xFF00U) | (word << 8 & 0xFF0000U) | word << 24 : word;
}

bool Bus::isPollOfFetch(Place const& place) {
    return place.unit.block == block::system && place.unit.unit == 0 &&
           (place.address == system::indirectData || place.address == system::indirectStatus);
}

// One access over the bus, answered or not.
bool Bus::passAccess() {
    _context.services.clock.advanceNanoseconds(_context.options.busAccessNanoseconds);
    _busNanoseconds += _context.options.busAccessNanoseconds;
    _context.services.log.countBusAccess();
    return !countsDown(_busAccessesToFailure);
}

Bus::Fate Bus::startRegisterAccess() {
    ++_context.transfer;
    if (!countsDown(_registerAccessesToFailure)) {
        return Fate::normal;
    }
    return _context.options.failedAccess == Vsc7390Options::FailedAccess::lost ? Fate::lost : Fate::refused;
}

std::uint32_t Bus::pollFetch(unsigned address) {
    RegisterFile& registers = _system;
    if (address == system::indirectData && !_system.isReady()) {
        registers.report(MisuseReport::Kind::dataNotReady, address, "read");
    }
    return registers.peek(address);
}

std::uint32_t Bus::sample(Place const& place) {
    if (RegisterFile* const registers = _units.find(place.unit)) {
        return registers->read(place.address, _context.transfer);
    }
    AbsentUnit const absent = absentBlock(place);
    std::uint32_t const value = absent.read(place.address, _context.transfer);
    absent.report(MisuseReport::Kind::absentBlock, place.address, "read");
    return value;
}

void Bus::store(Place const& place, std::uint32_t value) {
    if (RegisterFile* const registers = _units.find(place.unit)) {
        registers->write(place.address, value, _context.transfer);
        return;
    }
    AbsentUnit const absent = absentBlock(place);
    absent.write(place.address, value, _context.transfer);
    absent.report(MisuseReport::Kind::absentBlock, place.address, "write");
}

AbsentUnit Bus::absentBlock(Place const& place) const {
    std::string const name = fmt::format("block {}.{}", place.unit.block, place.unit.unit);
    return {_context.services, _context.chip, name, place.unit, _context.options.absentBlockValue};
}

} // namespace simulation::vitesse
