#include "simulation/88e6096/Phy.hpp"

#include <utility>

#include "simulation/PhyControl.hpp"

namespace simulation::marvell {

namespace {

/// What negotiation works with, by IEEE 802.3.
constexpr unsigned advertisement = 4;
constexpr unsigned partnerAbility = 5;
constexpr unsigned expansion = 6;

/// The first register past those that all PHYs have: crossover.
constexpr unsigned mdiControl = 16;

/// What the PHYs of this maker show at once where others have to be asked twice.
constexpr unsigned specificStatus = 17;

/// Abilities to run at 10 and 100 Mbit/s, half and full duplex, to negotiate, and further registers.
constexpr std::uint32_t abilities = 0x7849;
constexpr Field negotiationComplete{"NegotiationComplete", 5};
constexpr Field link{"Link", 2};

/// 10 and 100 Mbit/s, half and full duplex, by IEEE 802.3.
constexpr std::uint32_t advertisementReset = 0x01E1;
constexpr std::uint32_t acknowledgedSelector = 0x4001;
constexpr std::uint32_t offers10Half = 0x0020;
constexpr std::uint32_t offers10Full = 0x0040;
constexpr std::uint32_t offers100Half = 0x0080;
constexpr std::uint32_t offers100Full = 0x0100;
constexpr Field partnerNegotiates{"PartnerNegotiates", 0};

constexpr Field specificSpeed{"Speed", 15, 14};
constexpr Field specificDuplex{"Duplex", 13};
constexpr Field specificResolved{"Resolved", 11};
constexpr Field specificLink{"Link", 10};

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
        statusRow(phy::status, "Status", [this] { return status(); }),
        Register(phy::identifier1, "Identifier1", identifier1Value).readOnly("Identifier", 15, 0),
        Register(phy::identifier2, "Identifier2", identifier2Value | _context.options.revision)
            .readOnly("Identifier", 15, 4)
            .readOnly("Revision", 3, 0),
        Register(advertisement, "Advertisement", advertisementReset).field("Offers", 15, 0),
        statusRow(partnerAbility, "PartnerAbility", [this] { return partnerOffers(); }),
        statusRow(expansion, "Expansion", [this] { return partnerNegotiates.placed(isNegotiated()); }),
        Register(mdiControl, "MdiControl", mdiReset)
            .field("Other", 15, 6)
            .field("MdiMode", 5, 4)
            .field("Other", 3, 0),
        statusRow(specificStatus, "SpecificStatus", [this] { return specific(); }),
    };
}

Register Phy::statusRow(unsigned address, char const* name, std::function<std::uint32_t()> value) {
    return Register(address, name)
        .unstable()
        .readOnly("Value", 15, 0)
        .onRead([value = std::move(value)](std::uint32_t /*stored*/) { return value(); });
}

bool Phy::isNegotiated() const {
    return hasLink() && phy::autoNegotiation.isSet(getStored(phy::control));
}

// The link is shown as it is: a loss that is over by the time of the look is not held for it.
std::uint32_t Phy::status() const {
    return abilities | negotiationComplete.placed(isNegotiated()) | link.placed(hasLink());
}

// A partner offers what it was plugged with and everything that is less.
std::uint32_t Phy::partnerOffers() const {
    if (!isNegotiated()) {
        return 0;
    }
    std::uint32_t offers = acknowledgedSelector | offers10Half;
    if (_partnerFullDuplex || _partnerMegabits > megabits10) {
        offers |= offers10Full;
    }
    if (_partnerMegabits > megabits10) {
        offers |= offers100Half | (_partnerFullDuplex ? offers100Full : 0);
    }
    return offers;
}

std::uint32_t Phy::specific() const {
    if (!hasLink()) {
        return 0;
    }
    unsigned const megabits = getMegabits();
    unsigned const speed = megabits < megabits100 ? 0 : megabits < megabits1000 ? 1 : 2;
    return specificSpeed.placed(speed) | specificDuplex.placed(isFullDuplex()) | specificResolved.getMask() |
           specificLink.getMask();
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
