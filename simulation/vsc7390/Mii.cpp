#include "simulation/vsc7390/Mii.hpp"

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

namespace {

/// The pulled-up line.
constexpr std::uint32_t idleLine = 0xFFFF;

} // namespace

Mii::Mii(Context& context, unsigned number, Phys* phys)
    : RegisterFile(
          context.services,
          {context.chip, UnitKind::mii, number, {UnitPlace::Space::block, block::memoryAndMii, number}}),
      _context(context),
      _phys(phys),
      _timer(context.services.clock) {
    define(table());
}

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
        store(mii::data, *_arriving);
        _arriving.reset();
    }
    return getStored(mii::data);
}

void Mii::operate(std::uint32_t word) {
    if (_timer.isBusy()) {
        report(MisuseReport::Kind::commandWhileBusy, mii::command, "the last transfer still runs");
    }
    data();
    Vsc7390Options const& options = _context.options;
    _timer.start(mii::withoutPreamble.isSet(getStored(mii::prescaler)) ? options.miiWithoutPreambleNanoseconds
                                                                       : options.miiNanoseconds);
    unsigned const phy = mii::phy.get(word);
    unsigned const address = mii::address.get(word);
    _isWrite = !mii::read.isSet(word);
    if (_isWrite) {
        writePhy(phy, address, mii::value.get(word));
    } else {
        _arriving = readPhy(phy, address);
    }
}

void Mii::forget() {
    _arriving.reset();
    _timer.release();
}

std::uint32_t Mii::readPhy(unsigned number, unsigned address) {
    Phy* const phy = find(number);
    if (phy == nullptr) {
        return mii::failure.getMask() | absentPhy(number).read(address, _context.transfer);
    }
    std::uint32_t const value = phy->read(address, _context.transfer);
    phy->wasRead(address);
    return value;
}

void Mii::writePhy(unsigned number, unsigned address, std::uint32_t value) {
    if (Phy* const phy = find(number)) {
        phy->write(address, value, _context.transfer);
    } else {
        absentPhy(number).write(address, value, _context.transfer);
    }
}

Phy* Mii::find(unsigned number) {
    bool const isThere = _phys != nullptr && number < _phys->size() && (*_phys)[number].isPlugged();
    return isThere ? &(*_phys)[number] : nullptr;
}

AbsentUnit Mii::absentPhy(unsigned number) const {
    std::string const name = "phy " + std::to_string(number);
    return {_context.services,
            _context.chip,
            _phys == nullptr ? getName() + " " + name : name,
            {UnitPlace::Space::phy, 0, number},
            idleLine};
}

} // namespace simulation::vitesse
