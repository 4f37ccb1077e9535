#include "simulation/vsc7390/System.hpp"

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

System::System(Context& context)
    : _context(context),
      _timer(context.services.clock),
      _registers(context.services, context.chip, "system", table()) {}

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
            .onRead([this](std::uint32_t stored) {
                return isReady() ? stored | system::dataReady.getMask() : stored;
            }),
    };
}

RegisterFile& System::getRegisters() {
    return _registers;
}

CommandTimer& System::getTimer() {
    return _timer;
}

void System::startFetch(std::uint32_t value) {
    _before = data();
    _fetched = value;
    _timer.start(_context.options.indirectReadNanoseconds);
    _isLost = _fetchesToLose > 0;
    if (_isLost) {
        --_fetchesToLose;
    }
}

bool System::isReady() const {
    return _timer.isDone() && !_isLost;
}

void System::loseFetches(unsigned count) {
    _fetchesToLose = count;
}

void System::release() {
    _timer.release();
    _fetchesToLose = 0;
    _isLost = false;
}

std::uint32_t System::data() const {
    return isReady() ? _fetched : _before;
}

} // namespace simulation::vitesse
