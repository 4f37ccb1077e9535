#include "simulation/vsc7390/Mii.hpp"

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

namespace {

/// The pulled-up line.
constexpr std::uint32_t idleLine = 0xFFFF;

} // namespace

Mii::Mii(Context& context, unsigned number, Phys* phys)
    : _context(context),
      _number(number),
      _phys(phys),
      _timer(context.services.clock),
      _registers(context.services, context.chip, "mii " + std::to_string(number), table()) {}

RegisterTable Mii::table() {
    return {
        Register(mii::status, "MIIMSTAT")
            .unstable()
            .readOnly(mii::busy)
            .readOnly(mii::readPending)
            .readOnly(mii::writePending)
            .onRead([this](std::uint32_t stored) { return stored | status(); }),
        Register(mii::command, "MIIMCMD")
            .staging()
            .field("SCAN", 27)
            .field(mii::read)
            .field(mii::phy)
            .field(mii::address)
            .field(mii::value)
            .onWrite([this](std::uint32_t word) { operate(word); }),
        Register(mii::data, "MIIMDATA")
            .staging()
            .readOnly(mii::failure)
            .readOnly(mii::value)
            .onRead([this](std::uint32_t) { return data(); }),
        Register(mii::prescaler, "MIIMPRES").field(mii::withoutPreamble).field("Prescaler", 5, 0),
    };
}

// Drivers look for the end of reads and of writes in the bit of the reads.
std::uint32_t Mii::status() const {
    if (!_timer.isBusy()) {
        return 0;
    }
    return mii::busy.getMask() | mii::readPending.getMask() | (_isWrite ? mii::writePending.getMask() : 0);
}

std::uint32_t Mii::data() {
    if (_arriving && !_timer.isBusy()) {
        _registers.store(mii::data, *_arriving);
        _arriving.reset();
    }
    return _registers.getStored(mii::data);
}

void Mii::operate(std::uint32_t word) {
    if (_timer.isBusy()) {
        _registers.report(MisuseReport::Kind::commandWhileBusy, mii::command, "the last transfer still runs");
    }
    data();
    Vsc7390Options const& options = _context.options;
    _timer.start(mii::withoutPreamble.isSet(_registers.getStored(mii::prescaler))
                     ? options.miiWithoutPreambleNanoseconds
                     : options.miiNanoseconds);
    unsigned const phy = mii::phy.get(word);
    unsigned const address = mii::address.get(word);
    _isWrite = !mii::read.isSet(word);
    if (_isWrite) {
        write(phy, address, mii::value.get(word));
    } else {
        _arriving = read(phy, address);
    }
}

std::uint32_t Mii::read(unsigned number, unsigned address) {
    if (Phy* const phy = find(number)) {
        return phy->getRegisters().read(address, _context.transfer);
    }
    _context.services.log.addRead(absentPhy(number), address, _context.transfer, idleLine);
    return mii::failure.getMask() | idleLine;
}

void Mii::write(unsigned number, unsigned address, std::uint32_t value) {
    if (Phy* const phy = find(number)) {
        phy->getRegisters().write(address, value, _context.transfer);
    } else {
        _context.services.log.addWrite(absentPhy(number), address, _context.transfer, value, idleLine,
                                       idleLine);
    }
}

Phy* Mii::find(unsigned phy) {
    if (_phys == nullptr || phy >= _phys->size() || !(*_phys)[phy]->isPlugged()) {
        return nullptr;
    }
    return (*_phys)[phy].get();
}

std::shared_ptr<UnitIdentity const> const& Mii::absentPhy(unsigned phy) {
    auto& identity = _absentPhys[phy];
    if (identity == nullptr) {
        std::string const unit =
            (_phys == nullptr ? "mii " + std::to_string(_number) + " phy " : "phy ") + std::to_string(phy);
        identity = std::make_shared<UnitIdentity const>(UnitIdentity{_context.chip, unit, {}});
    }
    return identity;
}

RegisterFile& Mii::getRegisters() {
    return _registers;
}

CommandTimer& Mii::getTimer() {
    return _timer;
}

} // namespace simulation::vitesse
