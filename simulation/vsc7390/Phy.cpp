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
        }),
        Register(phy::status, "Status", statusReset).unstable().changedByRead().readOnly("Status", 15, 0),
        Register(phy::identifier1, "Identifier1", identifier1Value).readOnly("Identifier", 15, 0),
        Register(phy::identifier2, "Identifier2", identifier2Value).readOnly("Identifier", 15, 0),
    };
    for (unsigned address = phy::identifier2 + 1; address < Vsc7390TestSide::numberOfPhyRegisters;
         ++address) {
        Register row =
            Register(address, "Register" + std::to_string(address)).unknownReset().field("Data", 15, 0);
        if (std::count(std::begin(harmless), std::end(harmless), address) == 0) {
            row.changedByRead();
        }
        table.add(row);
    }
    return table;
}

} // namespace simulation::vitesse
