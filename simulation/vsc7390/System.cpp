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
        Register(system::busSetUp, "BusSetUp").field("SetUp", 31, 0),
        Register(system::globalReset, "GLORESET").field("Other", 31, 1).field("MASTER_RESET", 0),
        Register(system::chipIdentifier, "CHIPID",
                 placedAt(options.revision, system::revision) |
                     placedAt(system::productNumber, system::product) |
                     placedAt(options.identifierLow, system::identifierLow))
            .readOnly("Revision", system::revision.high, system::revision.low)
            .readOnly("Product", system::product.high, system::product.low)
            .readOnly("Other", system::identifierLow.high, system::identifierLow.low),
        Register(system::indirectData, "IndirectData").readOnly("Data", 31, 0).onRead([this](std::uint32_t) {
            return data();
        }),
        Register(system::indirectStatus, "IndirectStatus")
            .readOnly("DataReady", system::dataReady)
            .onRead([this](std::uint32_t stored) {
                return isReady() ? stored | bit(system::dataReady) : stored;
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
