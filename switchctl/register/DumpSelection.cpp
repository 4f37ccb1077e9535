#include "switchctl/register/DumpSelection.hpp"

#include <algorithm>
#include <array>

namespace switchctl::registers {

namespace {

using Space = chips::RegisterAddress::Space;

/// Control, identifiers, what is advertised and what the partner can do, 1000 Mbit/s, extended status.
constexpr std::array<unsigned, 9> harmlessPhyRegisters = {0, 2, 3, 4, 5, 7, 8, 9, 15};

/// The 88E6096's: what is at 16 is control, too.
constexpr char const* harmlessPhyRegister = "MdiControl";

struct Excluded {
    char const* unit;
    /// Empty for all of the unit.
    char const* name;
};

constexpr std::array<Excluded, 4> excluded = {{
    {"global 1", "GlobalStatus"},
    {"capture ", ""},
    {"system", "IndirectData"},
    {"system", "IndirectStatus"},
}};

bool isExcluded(chips::RegisterLocation const& location, Excluded const& rule) {
    std::string const unit = rule.unit;
    return location.unit.compare(0, unit.size(), unit) == 0 &&
           (*rule.name == '\0' || location.name == rule.name);
}

} // namespace

bool DumpSelection::contains(chips::RegisterLocation const& location, bool physOnly) {
    if (location.address.space == Space::phy) {
        bool const isHarmless = std::count(harmlessPhyRegisters.begin(), harmlessPhyRegisters.end(),
                                           location.address.address) != 0;
        return physOnly && (isHarmless || location.name == harmlessPhyRegister);
    }
    return !physOnly && std::none_of(excluded.begin(), excluded.end(),
                                     [&](Excluded const& rule) { return isExcluded(location, rule); });
}

std::string DumpSelection::explain() {
    return "A dump only has registers that can be read without changing the chip. Left out are:\n"
           "  tables (VLANs, MAC addresses) and captured statistics, which take a command to read\n"
           "  88E6096: GlobalStatus, which forgets finished commands when it is read\n"
           "  VSC7390: captured frames, which are gone when they are read; the data and status of\n"
           "  fetched reads, which each read changes\n"
           "  PHYs, which take a command to read; \"dump phy\" has them, without the registers that\n"
           "  latch or count until they are read, and without those that only their makers know\n";
}

} // namespace switchctl::registers
