#include "switchctl/audit/AuditSelection.hpp"

#include <algorithm>
#include <array>

namespace switchctl::audit {

namespace {

struct Rule {
    /// How the unit's name begins.
    char const* unit;
    /// How the register's name begins.
    char const* name;
    /// Empty for the whole register.
    char const* field;
};

/// Staging registers and commands; what counts; what clears itself; what reaching the chip writes.
constexpr std::array<Rule, 23> excluded = {{
    {"global 1", "ATUFID", ""},
    {"global 1", "ATUOperation", ""},
    {"global 1", "ATUData", ""},
    {"global 1", "ATUMAC", ""},
    {"global 1", "VTU", ""},
    {"global 1", "Stats", ""},
    {"global 1", "GlobalControl", "SWReset"},
    {"global 2", "SMIPHY", ""},
    {"analyser", "MACHDATA", ""},
    {"analyser", "MACLDATA", ""},
    {"analyser", "MACACCESS", ""},
    {"analyser", "MACTINDX", ""},
    {"analyser", "VLANACCESS", ""},
    {"analyser", "VLANTIDX", ""},
    {"mii ", "MIIMCMD", ""},
    {"system", "GLORESET", ""},
    {"system", "Indirect", ""},
    {"system", "BusSetUp", ""},
    {"capture ", "", ""},
    {"memory", "", ""},
    {"phy ", "Status", ""},
    {"phy ", "Control", "Reset"},
    {"phy ", "Control", "RestartNegotiation"},
}};

/// Of a VSC7390's port.
constexpr unsigned firstCounter = 0x50;
constexpr unsigned lastCounter = 0x5B;

bool begins(std::string const& text, std::string const& start) {
    return text.compare(0, start.size(), start) == 0;
}

bool isRuledOut(chips::RegisterLocation const& location, std::string const& field) {
    return std::any_of(excluded.begin(), excluded.end(), [&](Rule const& rule) {
        return begins(location.unit, rule.unit) && begins(location.name, rule.name) && field == rule.field;
    });
}

bool isCounter(chips::RegisterAddress const& address, std::string const& unit) {
    return address.space == chips::RegisterAddress::Space::block && begins(unit, "port ") &&
           address.address >= firstCounter && address.address <= lastCounter;
}

} // namespace

bool AuditSelection::contains(chips::RegisterLocation const& location) {
    return !isRuledOut(location, "") && !isCounter(location.address, location.unit);
}

bool AuditSelection::contains(chips::RegisterLocation const& location,
                              simulation::Register::Field const& field) {
    std::uint32_t const bits = field.getMask();
    bool const isWritable = (location.description->getWritable() & bits) == bits;
    return isWritable && !isRuledOut(location, field.name);
}

std::string AuditSelection::explain() {
    return "Compared is what a bring-up of the document writes: registers, VLAN tables (VTU and STU of an\n"
           "88E6096, the VLAN table of a VSC7390), and the locked entries of a VSC7390's MAC table. Not\n"
           "compared are status, counters, bits that clear themselves, addresses that were learned,\n"
           "registers without a name, and the bus set-up of a VSC7390, which is written whenever the chip\n"
           "is reached.\n"
           "\n"
           "An audit changes nothing of what the chips do. To read tables and PHYs, it writes to staging\n"
           "and command registers, so nothing else may use the chips meanwhile.\n";
}

} // namespace switchctl::audit
