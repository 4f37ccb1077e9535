#include "board/faults/FaultKind.hpp"

#include <stdexcept>

#include "chips/ChipKinds.hpp"

namespace board {

using simulation::BusFaults;
using simulation::ChipTestSide;
using simulation::MdioBus;
using simulation::SerialController;

namespace {

using Argument = FaultKind::Argument;
using Target = FaultKind::Target;
using Unit = ChipTestSide::CommandUnit;
using Disturbance = SerialController::Disturbance;

constexpr std::uint16_t allLow = 0;
constexpr std::uint16_t allHigh = 0xFFFF;
/// The bits of Global 1's status that say how the chip is strapped.
constexpr simulation::Field switchMode{"SWMode", 13, 12};

ChipTestSide& chipOf(Target const& target) {
    return target.board.getChip(static_cast<unsigned>(target.number));
}

simulation::Marvell88E6096TestSide& marvellOf(Target const& target) {
    return target.board.getMarvell(static_cast<unsigned>(target.number));
}

FaultKind fromAccess(char const* name, BusFaults::Kind kind, char const* effect) {
    return {name, Argument::access, effect, [kind](Target const& target) {
                BusFaults& faults = target.board.getFaults();
                faults.strikeFrom(faults.getAccesses() + target.number, kind);
            }};
}

FaultKind oneAccess(char const* name, BusFaults::Kind kind, char const* effect) {
    return {name, Argument::oneAccess, effect, [kind](Target const& target) {
                BusFaults& faults = target.board.getFaults();
                faults.strike(faults.getAccesses() + target.number, kind);
            }};
}

FaultKind ofChip(char const* name, char const* effect, std::function<void(Target const&)> strike) {
    return {name, Argument::switchId, effect, std::move(strike)};
}

FaultKind stuck(char const* name, Unit unit, char const* effect) {
    return ofChip(name, effect, [unit](Target const& target) { chipOf(target).hang(unit); });
}

FaultKind ofLine(char const* name, Argument argument, Disturbance disturbance, char const* effect) {
    return {name, argument, effect,
            [disturbance](Target const& target) {
                target.line->disturb(disturbance, static_cast<unsigned>(target.number));
            },
            true};
}

/// Wherever the chip says what it is, it says something else, for good.
void changeIdentifier(Target const& target) {
    ChipTestSide& chip = chipOf(target);
    for (chips::ChipKind const* const kind : chips::ChipKinds::getAll()) {
        chips::ChipKind::Facts const& facts = kind->getFacts();
        for (simulation::RegisterFile* const unit : chip.getUnits()) {
            simulation::Register const* const row = unit->getTable().find(facts.identifier);
            bool const isIdentifier = unit->getIdentity().kind == facts.identifierUnit && row != nullptr &&
                                      facts.product.get(unit->peek(facts.identifier)) == facts.productNumber;
            if (isIdentifier) {
                std::uint32_t const other = facts.product.placed(facts.productNumber ^ 1U);
                unit->stick(facts.identifier, other, facts.product.getMask() & ~other);
            }
        }
    }
}

void moveAway(Target const& target) {
    simulation::Marvell88E6096TestSide& chip = marvellOf(target);
    for (unsigned step = 1; step < MdioBus::numberOfAddresses; ++step) {
        unsigned const address = (static_cast<unsigned>(target.number) + step) % MdioBus::numberOfAddresses;
        if (!target.board.getMdio().isTaken(address)) {
            return chip.moveTo(address);
        }
    }
    throw std::out_of_range("no MDIO address is free");
}

/// Drivers look for a second without a pause: with slower accesses that takes fewer looks.
void neverFetch(Target const& target) {
    constexpr std::uint64_t slowness = 10'000;
    chipOf(target).hang(Unit::indirectRead);
    target.board.getFaults().slowDown(slowness);
}

std::vector<FaultKind> ofBuses() {
    using Kind = BusFaults::Kind;
    return {
        fromAccess("access-fails", Kind::accessFails, "the processor's accesses to the chips fail"),
        fromAccess("all-zeros", Kind::allZeros, "all words arrive as 0"),
        fromAccess("all-ones", Kind::allOnes, "all words arrive as ones"),
        fromAccess("bit-flipped", Kind::bitFlipped, "the lowest bit of each word is turned over"),
        oneAccess("access-fails-once", Kind::accessFails, "one access fails"),
        oneAccess("all-zeros-once", Kind::allZeros, "one word arrives as 0"),
        oneAccess("all-ones-once", Kind::allOnes, "one word arrives as ones"),
        oneAccess("bit-flipped-once", Kind::bitFlipped, "the lowest bit of one word is turned over"),
        {"slow", Argument::nanoseconds, "each access takes longer",
         [](Target const& target) { target.board.getFaults().slowDown(target.number); }},
        {"mdio-stuck", Argument::frame, "the MDIO master stays busy after a frame",
         [](Target const& target) { target.board.getMac().hang(static_cast<unsigned>(target.number)); }},
        {"mdio-low", Argument::none, "the MDIO line is held low",
         [](Target const& target) { target.board.getMdio().holdLine(allLow); }},
        {"mdio-high", Argument::none, "the MDIO line is held high, or cut",
         [](Target const& target) { target.board.getMdio().holdLine(allHigh); }},
    };
}

std::vector<FaultKind> ofChips() {
    return {
        ofChip("unplugged", "the chip is not in its socket",
               [](Target const& target) { chipOf(target).unplug(); }),
        ofChip("other-id", "the chip says that it is another product", changeIdentifier),
        ofChip("other-address", "an 88E6096 answers at the next free MDIO address", moveAway),
        ofChip("single-chip", "an 88E6096 is strapped to single-chip mode",
               [](Target const& target) { marvellOf(target).strapSingleChip(); }),
        ofChip("cpu-strap", "an 88E6096's strap says to wait for a processor",
               [](Target const& target) { marvellOf(target).stick("global 1", 0, 0, switchMode.getMask()); }),
        ofChip("bytes-turned", "the bytes of a VSC7390's words come in the opposite order",
               [](Target const& target) {
                   target.board.getVitesse(static_cast<unsigned>(target.number)).turnBytes();
               }),
        ofChip("register-fails", "the next access to a register of the chip fails",
               [](Target const& target) { chipOf(target).failAccess(1); }),
        {"phy-absent", Argument::port, "the PHY of a VSC7390's port does not answer",
         [](Target const& target) {
             target.board.getVitesse(target.port.switchId).unplugPhy(target.port.portId);
         }},
        stuck("smi-stuck", Unit::smi, "an 88E6096's command register stays busy"),
        stuck("phy-unit-stuck", Unit::smiPhy, "an 88E6096's unit for PHYs stays busy"),
        stuck("vtu-stuck", Unit::vtu, "an 88E6096's VLAN table stays busy"),
        stuck("atu-stuck", Unit::atu, "an 88E6096's address table stays busy"),
        stuck("statistics-stuck", Unit::statistics, "an 88E6096's statistics stay busy"),
        ofChip("fetch-stuck", "a VSC7390 never has what it fetches; slow:10000 with it", neverFetch),
        stuck("vlan-table-stuck", Unit::vlanTable, "a VSC7390's VLAN table stays busy"),
        stuck("mac-table-stuck", Unit::macTable, "a VSC7390's MAC table stays busy"),
        stuck("mii-stuck", Unit::mii1, "a VSC7390's controller of PHYs stays busy"),
        stuck("arbiter-stuck", Unit::arbiter, "a VSC7390's arbiter never discards all frames"),
    };
}

std::vector<FaultKind> ofLines() {
    return {
        ofLine("serial-silent", Argument::none, Disturbance::silent, "no answer over the serial line"),
        ofLine("serial-garbled", Argument::none, Disturbance::garbled, "answers without digits"),
        ofLine("serial-short", Argument::characters, Disturbance::shortened, "answers lack their end"),
        ofLine("serial-long", Argument::characters, Disturbance::lengthened, "answers go on after their end"),
    };
}

} // namespace

char const* FaultKind::explainArgument() const {
    switch (argument) {
    case Argument::none:
        return "";
    case Argument::access:
        return "from the Nth access on, without it from the first";
    case Argument::oneAccess:
        return "which access, without it the first";
    case Argument::frame:
        return "after the Nth frame, without it the first";
    case Argument::nanoseconds:
        return "by so many nanoseconds, without it 1";
    case Argument::switchId:
        return "id of the switch";
    case Argument::port:
        return "the port, SWITCH.PORT";
    case Argument::characters:
        return "by so many characters, without it 1";
    }
    throw std::logic_error("an argument without a meaning");
}

std::vector<FaultKind> const& FaultKind::getAll() {
    static std::vector<FaultKind> const all = [] {
        std::vector<FaultKind> kinds = ofBuses();
        for (auto const& more : {ofChips(), ofLines()}) {
            kinds.insert(kinds.end(), more.begin(), more.end());
        }
        return kinds;
    }();
    return all;
}

FaultKind const* FaultKind::find(std::string const& name) {
    for (FaultKind const& kind : getAll()) {
        if (kind.name == name) {
            return &kind;
        }
    }
    return nullptr;
}

} // namespace board
