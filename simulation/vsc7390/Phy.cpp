#include "simulation/vsc7390/Phy.hpp"

#include <algorithm>
#include <iterator>

#include "simulation/PhyControl.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace simulation::vitesse {

namespace {

/// Negotiates, 1000 Mbit/s, full duplex; can do all of 10 and 100, has extended registers.
constexpr std::uint32_t controlReset = 0x1140;
constexpr std::uint32_t statusReset = 0x7949;
constexpr std::uint32_t identifier1Value = 0x0007;
constexpr std::uint32_t identifier2Value = 0x0420;

constexpr Field negotiated{"NegotiationComplete", 5};
constexpr Field link{"Link", 2};

/// What the other end can do, in the registers that tell it.
enum Partner : unsigned { ability = 5, expansion = 6, gigabitStatus = 10 };
constexpr std::uint32_t acknowledged = 0x4001;
constexpr std::uint32_t half10 = 0x0020;
constexpr std::uint32_t full10 = 0x0040;
constexpr std::uint32_t half100 = 0x0080;
constexpr std::uint32_t full100 = 0x0100;
constexpr std::uint32_t canNegotiate = 0x0001;
constexpr std::uint32_t receiversWork = 0x3000;
constexpr std::uint32_t full1000 = 0x0800;
constexpr std::uint32_t half1000 = 0x0400;

constexpr unsigned gigabitEthernet = 1000;
constexpr unsigned fastEthernet = 100;

/// Past the identifiers: what is advertised and what the partner can do, 1000 Mbit/s, extended status. The
/// others latch or count until they are read, or are the maker's.
constexpr unsigned harmless[] = {4, 5, 7, 8, 9, 15};

} // namespace

Phy::Phy(Context& context, unsigned number)
    : RegisterFile(context.services,
                   {context.chip, UnitKind::phy, number, {UnitPlace::Space::phy, 0, number}}) {
    define(table());
}

RegisterTable Phy::table() {
    RegisterTable table = {
        phy::controlRow(controlReset).onWrite([this](std::uint32_t value) {
            store(phy::control, phy::kept(value));
            _wasLost = _wasLost || (_link == Link::up && !hasLink());
        }),
        Register(phy::status, "Status", statusReset)
            .unstable()
            .changedByRead()
            .readOnly("Abilities", 15, 6)
            .readOnly(negotiated)
            .readOnly("RemoteFault", 4)
            .readOnly("CanNegotiate", 3)
            .readOnly(link)
            .readOnly("Jabber", 1)
            .readOnly("Extended", 0)
            .onRead([this](std::uint32_t stored) { return status(stored); }),
        Register(phy::identifier1, "Identifier1", identifier1Value).readOnly("Identifier", 15, 0),
        Register(phy::identifier2, "Identifier2", identifier2Value).readOnly("Identifier", 15, 0),
    };
    for (unsigned address = phy::identifier2 + 1; address < Vsc7390TestSide::numberOfPhyRegisters;
         ++address) {
        table.add(row(address));
    }
    return table;
}

Register Phy::row(unsigned address) {
    Register row(address, "Register" + std::to_string(address));
    row.unknownReset();
    if (address == ability || address == expansion || address == gigabitStatus) {
        row.unstable().readOnly("Data", 15, 0).onRead([this, address](std::uint32_t stored) {
            return stored | partner(address);
        });
    } else {
        row.field("Data", 15, 0);
    }
    if (std::count(std::begin(harmless), std::end(harmless), address) == 0) {
        row.changedByRead();
    }
    return row;
}

void Phy::plugLink(unsigned megabits, bool fullDuplex) {
    _link = Link::up;
    _megabits = megabits;
    _fullDuplex = fullDuplex;
}

void Phy::unplugLink() {
    _wasLost = _wasLost || hasLink();
    _link = Link::down;
}

bool Phy::hasLink() const {
    return _link == Link::up && !phy::powerDown.isSet(getStored(phy::control));
}

void Phy::wasRead(unsigned address) {
    if (address == phy::status) {
        _wasLost = false;
    }
}

// The other end is taken to do exactly what both agreed on.
std::uint32_t Phy::status(std::uint32_t stored) const {
    bool const negotiates = phy::autoNegotiation.isSet(getStored(phy::control));
    return stored | negotiated.placed(hasLink() && negotiates) | link.placed(hasLink() && !_wasLost);
}

std::uint32_t Phy::partner(unsigned address) const {
    if (!hasLink() || !phy::autoNegotiation.isSet(getStored(phy::control))) {
        return 0;
    }
    if (address == expansion) {
        return canNegotiate;
    }
    if (address == gigabitStatus) {
        return _megabits == gigabitEthernet ? receiversWork | (_fullDuplex ? full1000 : half1000) : 0;
    }
    if (_megabits == gigabitEthernet) {
        return acknowledged;
    }
    std::uint32_t const full = _megabits == fastEthernet ? full100 : full10;
    std::uint32_t const half = _megabits == fastEthernet ? half100 : half10;
    return acknowledged | (_fullDuplex ? full : half);
}

} // namespace simulation::vitesse
