#include "simulation/88e6096/Phy.hpp"

#include "simulation/PhyControl.hpp"

namespace simulation::marvell {

namespace {

/// Of the chip's own.
constexpr unsigned mdiControl = 16;

constexpr std::uint32_t controlReset = 0x3100;
constexpr std::uint32_t mdiReset = 0x0030;
constexpr std::uint32_t identifier1Value = 0x0141;
constexpr std::uint32_t identifier2Value = 0x0C80;

constexpr unsigned megabits10 = 10;
constexpr unsigned megabits100 = 100;
constexpr unsigned megabits1000 = 1000;

} // namespace

Phy::Phy(Context& context, unsigned number)
    : RegisterFile(context.services,
                   {context.chip, UnitKind::phy, number, {UnitPlace::Space::phy, 0, number}}),
      _context(context) {
    define(table());
}

RegisterTable Phy::table() {
    return {
        phy::controlRow(controlReset).onWrite([this](std::uint32_t value) { control(value); }),
        Register(phy::identifier1, "Identifier1", identifier1Value).readOnly("Identifier", 15, 0),
        Register(phy::identifier2, "Identifier2", identifier2Value | _context.options.revision)
            .readOnly("Identifier", 15, 4)
            .readOnly("Revision", 3, 0),
        Register(mdiControl, "MdiControl", mdiReset)
            .field("Other", 15, 6)
            .field("MdiMode", 5, 4)
            .field("Other", 3, 0),
    };
}

void Phy::control(std::uint32_t value) {
    if (phy::reset.isSet(value) &&
        _context.options.phyReset == Marvell88E6096Options::PhyReset::restoresDefaults) {
        reset();
        return;
    }
    store(phy::control, phy::kept(value));
}

bool Phy::hasLink() const {
    return _isPlugged && !phy::powerDown.isSet(getStored(phy::control));
}

unsigned Phy::getMegabits() const {
    std::uint32_t const control = getStored(phy::control);
    if (phy::autoNegotiation.isSet(control)) {
        return _partnerMegabits;
    }
    if (phy::speedHigh.isSet(control)) {
        return megabits1000;
    }
    return phy::speedLow.isSet(control) ? megabits100 : megabits10;
}

bool Phy::isFullDuplex() const {
    std::uint32_t const control = getStored(phy::control);
    return phy::autoNegotiation.isSet(control) ? _partnerFullDuplex : phy::duplex.isSet(control);
}

void Phy::plug(unsigned megabits, bool fullDuplex) {
    _isPlugged = true;
    _partnerMegabits = megabits;
    _partnerFullDuplex = fullDuplex;
}

} // namespace simulation::marvell
