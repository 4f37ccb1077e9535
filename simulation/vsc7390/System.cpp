#include "simulation/vsc7390/System.hpp"

#include <utility>

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

System::System(Context& context, std::function<void()> resetChip)
    : RegisterFile(context.services,
                   {context.chip, UnitKind::system, 0, {UnitPlace::Space::block, block::system, 0}}),
      _context(context),
      _resetChip(std::move(resetChip)),
      _timer(context.services.clock) {
    define(table());
}

RegisterTable System::table() {
    Vsc7390Options const& options = _context.options;
    return {
        Register(system::busSetUp, "BusSetUp").unstable().field("SetUp", 31, 0),
        Register(system::globalReset, "GLORESET")
            .unstable()
            .field("Other", 31, 1)
            .selfClearing(system::masterReset)
            .onWrite([this](std::uint32_t value) { globalReset(value); }),
        Register(system::chipIdentifier, "CHIPID",
                 system::revision.placed(options.revision) | system::product.placed(system::productNumber) |
                     system::identifierLow.placed(options.identifierLow))
            .readOnly(system::revision)
            .readOnly(system::product)
            .readOnly(system::identifierLow),
        Register(system::indirectData, "IndirectData")
            .unstable()
            .changedByRead()
            .readOnly("Data", 31, 0)
            .onRead([this](std::uint32_t) { return data(); }),
        Register(system::indirectStatus, "IndirectStatus")
            .unstable()
            .changedByRead()
            .readOnly(system::dataReady)
            .onRead([this](std::uint32_t stored) { return stored | system::dataReady.placed(isReady()); }),
    };
}

void System::globalReset(std::uint32_t value) {
    if (!system::masterReset.isSet(value)) {
        return;
    }
    store(system::globalReset, value & ~system::masterReset.getMask());
    if (_context.options.masterReset == Vsc7390Options::MasterReset::restoresDefaults) {
        _resetChip();
    }
}

void System::startFetch(std::uint32_t value) {
    _before = data();
    _fetched = value;
    _timer.start(_context.options.indirectReadNanoseconds);
}

bool System::isReady() const {
    return _timer.isDone();
}

std::uint32_t System::data() const {
    return isReady() ? _fetched : _before;
}

} // namespace simulation::vitesse
