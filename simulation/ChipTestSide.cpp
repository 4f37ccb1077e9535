#include "simulation/ChipTestSide.hpp"

#include <stdexcept>
#include <utility>

namespace simulation {

ChipTestSide::ChipTestSide(Services& services, UnitDirectory const& units, Timers timers)
    : _services(services), _units(units), _timers(std::move(timers)) {}

std::vector<RegisterFile*> const& ChipTestSide::getUnits() const {
    return _units.getAll();
}

RegisterFile& ChipTestSide::getUnit(UnitKind kind, unsigned number) const {
    RegisterFile* const unit = _units.find(kind, number);
    require(unit != nullptr, "the chip has no such unit");
    return *unit;
}

RegisterFile& ChipTestSide::getUnit(std::string const& name) const {
    RegisterFile* const unit = _units.find(name);
    require(unit != nullptr, ("the chip has no unit \"" + name + "\"").c_str());
    return *unit;
}

void ChipTestSide::plugLink(unsigned /*number*/, unsigned /*megabits*/, bool /*fullDuplex*/) {}

void ChipTestSide::unplugLink(unsigned /*number*/) {}

void ChipTestSide::setBusyTime(CommandUnit unit, std::uint64_t nanoseconds) {
    auto const held = lock();
    getTimer(unit).setBusyTime(nanoseconds);
}

void ChipTestSide::hang(CommandUnit unit, unsigned nthCommand) {
    auto const held = lock();
    getTimer(unit).hang(nthCommand);
}

void ChipTestSide::release(CommandUnit unit) {
    auto const held = lock();
    getTimer(unit).release();
}

unsigned ChipTestSide::getCommands(CommandUnit unit) const {
    auto const held = lock();
    return getTimer(unit).getCommands();
}

std::unique_lock<std::recursive_mutex> ChipTestSide::lock() const {
    return std::unique_lock<std::recursive_mutex>(_services.mutex);
}

CommandTimer& ChipTestSide::getTimer(CommandUnit unit) const {
    auto const found = _timers.find(unit);
    require(found != _timers.end(), "the chip has no such unit");
    return *found->second;
}

void ChipTestSide::require(bool condition, char const* what) {
    if (!condition) {
        throw std::out_of_range(what);
    }
}

} // namespace simulation
