#include "simulation/vsc7390/System.hpp"

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

System::System(Context& context)
    : RegisterFile(context.services,
                   {context.chip, UnitKind::system, 0, {UnitPlace::Space::block, block::system, 0}}),
      _context(context),
      _timer(context.services.clock) {
    define(table());
}

RegisterTable System::table() {
    Vsc7390Options const& options = _context.options;
    return {
        Register(system::busSetUp, "BusSetUp").unstable().field("SetUp", 31, 0),
        Register(system::globalReset, "GLORESET").unstable().field("Other", 31, 1).field("MASTER_RESET", 0),
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
